#include "tests/support/processes.h"

#include <QCoreApplication>
#include <QDir>
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

/// State, parent and the rest, which stand behind the name in parentheses; it may hold anything.
QList<QByteArray> fieldsOf(const QByteArray& processId)
{
    const QByteArray status = statusOf(processId);
    return status.isEmpty() ? QList<QByteArray>()
                            : status.mid(status.lastIndexOf(')') + 2).split(' ');
}

} // namespace

bool processExists(const QByteArray& processId)
{
    return !statusOf(processId).isEmpty();
}

bool isAlive(const QByteArray& processId)
{
    const QList<QByteArray> fields = fieldsOf(processId);
    return !fields.isEmpty() && fields.first() != "Z";
}

QList<QByteArray> zombies()
{
    const QByteArray own = QByteArray::number(QCoreApplication::applicationPid());
    QList<QByteArray> found;
    for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        const QList<QByteArray> fields = fieldsOf(name.toLatin1());
        if (fields.value(0) == "Z" && fields.value(1) == own) {
            found.append(name.toLatin1());
        }
    }
    return found;
}

bool isAnythingLeftOf(qint64 /*processId*/, const QString& argument)
{
    for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        QFile file(QStringLiteral("/proc/%1/cmdline").arg(name));
        if (file.open(QIODevice::ReadOnly) && file.readAll().contains(argument.toUtf8())) {
            return true;
        }
    }
    return false;
}

void endProcess(const QByteArray& processId)
{
    if (processId.toInt() > 0) {
        ::kill(processId.toInt(), SIGKILL);
    }
}
