#include "tests/support/job_maker.h"

#include "samples/deck_maker.h"

#include <QFile>

namespace {

QByteArray matrixText(const JobDescription& description)
{
    QByteArray text = "Job ID#,a,b,c,d,e,f,Simulator Options\n";
    for (int number = 0; number < description.cases; ++number) {
        text += QByteArray::number(number) + ",0.5,0.4,0.01,0.75,0.25,0.02," +
                description.options.toUtf8() + "\n";
    }
    return text;
}

void writeLines(const QString& path, const QStringList& lines)
{
    writeFile(path, lines.join(QLatin1Char('\n')).toUtf8() + "\n");
}

} // namespace

void writeFile(const QString& path, const QByteArray& bytes, bool executable)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("can't write %s", qPrintable(path));
    }
    if (executable) {
        file.setPermissions(file.permissions() | QFile::ExeOwner | QFile::ExeUser);
    }
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void makeJob(const QString& folder, const JobDescription& description)
{
    const QString within = folder + QLatin1Char('/');
    writeDeck(plainDeck(13), folder.toStdString(), "deck");
    writeFile(within + QStringLiteral("input_jobID-Matrix.csv"), matrixText(description));
    writeLines(within + QStringLiteral("Additional File Directory.txt"),
               QStringList(QStringLiteral("deck")) + description.additionalFiles);
    for (const QString& name : description.additionalFiles) {
        writeFile(within + name, name.toUtf8());
    }
    if (!description.couplingFile.isEmpty()) {
        writeFile(within + description.couplingFile, description.couplingText.toUtf8(), true);
        writeLines(within + QStringLiteral("Coupling File Directory.txt"),
                   {description.couplingFile, description.couplingCommand});
    }
    if (!description.pythonDetails.isEmpty()) {
        writeLines(within + QStringLiteral("PyDetails.txt"), description.pythonDetails);
    }
}
