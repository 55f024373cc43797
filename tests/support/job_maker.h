#pragma once

#include <QString>
#include <QStringList>

/// What a job is to hold beside its deck "deck".
struct JobDescription
{
    int cases = 3;
    QString options = QStringLiteral(" -c ");
    QStringList additionalFiles; ///< bare names; written with their name as content
    QString couplingFile;        ///< bare name, none if empty
    QString couplingText;        ///< content of that file, which becomes executable
    QString couplingCommand;
    QStringList pythonDetails; ///< three lines, no analysis if empty
};

/// Writes a job as if it had been generated. `folder` exists and is empty.
void makeJob(const QString& folder, const JobDescription& description);

/// Writes a file, executable if told so. The folder exists.
void writeFile(const QString& path, const QByteArray& bytes, bool executable = false);

/// The bytes of a file, empty where there is none.
QByteArray readFile(const QString& path);
