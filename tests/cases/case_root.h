#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A case root as preparation leaves it, with a shell script as simulator, and the companion that
/// works on it. Removed with the object.
class CCaseRoot
{
public:
    /// `script` is run by sh with $deck, $case (the number) and $folder (the case's) set. The batch
    /// line ends in `lineEnd`, in which "%1" stands for the case number.
    CCaseRoot(int cases, const QByteArray& script, const QString& lineEnd = QString());

    QString path() const;
    QString caseFolder(int number) const;
    QString inCase(int number, const QString& name) const;
    bool hasInCase(int number, const QString& name) const;
    QByteArray contentInCase(int number, const QString& name) const;

    /// What the simulators appended to the file `$log`, line by line.
    QStringList log() const;
    void setSimulator(const QByteArray& script);
    QString simulator() const;

    /// The note of a case, empty where there is none.
    QJsonObject note(int number) const;
    QString state(int number) const;

private:
    QTemporaryDir m_folder;
};

/// One call of the companion.
struct SAnswer
{
    int exitCode = -1;
    QString output;
    QString errors;
};

SAnswer
callCases(const QStringList& arguments,
          const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

/// The JSON that a call wrote.
QJsonObject jsonOf(const SAnswer& answer);
