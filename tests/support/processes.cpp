#include "tests/support/processes.h"

#include <QFile>

#include <signal.h>

namespace {

QByteArray statusOf(const QByteArray& processId)
{
    if (processId.toInt() <= 0) {
        return QByteArray();
    }
    QFile file(QStringLiteral("/proc/%1/stat").arg(QString::fromLatin1(processId)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

bool processExists(const QByteArray& processId)
{
    return !statusOf(processId).isEmpty();
}

bool isAlive(const QByteArray& processId)
{
    const QByteArray status = statusOf(processId);
    // The state stands behind the name, which is in parentheses and may hold anything.
    return !status.isEmpty() && status.mid(status.lastIndexOf(')') + 2, 1) != "Z";
}

void endProcess(const QByteArray& processId)
{
    if (processId.toInt() > 0) {
        ::kill(processId.toInt(), SIGKILL);
    }
}
