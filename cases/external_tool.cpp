#include "cases/external_tool.h"

#include <QProcess>

namespace cases {

QString SToolAnswer::complaint() const
{
    return errors.trimmed().section('\n', -1).trimmed();
}

SToolAnswer callTool(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    SToolAnswer answer;
    answer.started = process.waitForStarted(-1);
    if (!answer.started) {
        answer.errors = process.errorString();
        return answer;
    }
    process.waitForFinished(-1);
    answer.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    answer.output = QString::fromLocal8Bit(process.readAllStandardOutput());
    answer.errors = QString::fromLocal8Bit(process.readAllStandardError());
    return answer;
}

} // namespace cases
