#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// Whether there is a process of that id, given in decimal; one that has ended and that nobody has
/// waited for is there as well.
bool processExists(const QByteArray& processId);

/// Whether a process of that id runs.
bool isAlive(const QByteArray& processId);

/// Ids of this program's children that have ended and that nobody has waited for.
QList<QByteArray> zombies();

/// Whether anything is left of a program that has ended: something that it started, or a copy that
/// it made of itself to start something. POSIX tells it by `argument`, which stands in the command
/// lines of all of them; Windows by `processId`, which a process keeps of who started it. One that
/// was made there and not let run before its maker died doesn't count, and is ended.
bool isAnythingLeftOf(qint64 processId, const QString& argument);

/// Ends a process that a test has left behind.
void endProcess(const QByteArray& processId);
