#include "tests/cases/case_root.h"

#include "tests/results/result_tree.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

namespace {

constexpr int CallTimeoutMs = 120000;

} // namespace

CCaseRoot::CCaseRoot(int cases, const QByteArray& script, const QString& lineEnd)
{
    setSimulator(script);
    QByteArray batch;
    for (int number = 0; number < cases; ++number) {
        const QString folder = QString("root/Job%1/").arg(number);
        const QString stem = QString("heap%1").arg(number);
        putFile(m_folder.path(), folder + stem + ".zek", "deck");
        putFile(m_folder.path(), folder + stem + ".ynd", "companion");
        putFile(m_folder.path(), folder + stem + "_data/0.h5",
                "data " + QByteArray::number(number));
        putFile(m_folder.path(), folder + "extra file.txt", "additional");
        const QString line = QString("\"%1\" -i \"Job%2/heap%2.zek\" -c  -r 1.000000");
        batch += line.arg(simulator()).arg(number).toUtf8() +
                 QString(lineEnd).replace("%1", QString::number(number)).toUtf8() + "\n";
    }
    putFile(path(), "RunAllSimulations.bat", batch);
}

QString CCaseRoot::path() const
{
    return m_folder.filePath("root");
}

QString CCaseRoot::caseFolder(int number) const
{
    return QString("%1/Job%2").arg(path()).arg(number);
}

QString CCaseRoot::inCase(int number, const QString& name) const
{
    return caseFolder(number) + "/" + name;
}

bool CCaseRoot::hasInCase(int number, const QString& name) const
{
    return QFile::exists(inCase(number, name));
}

QByteArray CCaseRoot::contentInCase(int number, const QString& name) const
{
    return contentOf(inCase(number, name));
}

QStringList CCaseRoot::log() const
{
    QFile file(m_folder.filePath("log"));
    return file.open(QIODevice::ReadOnly)
               ? QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts)
               : QStringList();
}

void CCaseRoot::setSimulator(const QByteArray& script)
{
    const QByteArray head = "#!/bin/sh\ndeck=$2\nfolder=$(dirname \"$deck\")\n"
                            "case=$(basename \"$folder\" | cut -c4-)\nlog='" +
                            m_folder.filePath("log").toUtf8() + "'\n";
    putFile(m_folder.path(), "simulator.sh", head + script);
    QFile(simulator()).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QString CCaseRoot::simulator() const
{
    return m_folder.filePath("simulator.sh");
}

QJsonObject CCaseRoot::note(int number) const
{
    QFile file(inCase(number, "case.json"));
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                          : QJsonObject();
}

QString CCaseRoot::state(int number) const
{
    return note(number).value("state").toString();
}

SAnswer callCases(const QStringList& arguments, const QProcessEnvironment& environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(TARNEL_CASES, arguments);
    SAnswer answer;
    if (process.waitForFinished(CallTimeoutMs) && process.exitStatus() == QProcess::NormalExit) {
        answer.exitCode = process.exitCode();
    }
    answer.output = QString::fromUtf8(process.readAllStandardOutput());
    answer.errors = QString::fromUtf8(process.readAllStandardError());
    return answer;
}

QJsonObject jsonOf(const SAnswer& answer)
{
    return QJsonDocument::fromJson(answer.output.toUtf8()).object();
}
