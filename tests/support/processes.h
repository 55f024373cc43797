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

/// Whether a process has that command line, begun with `program` and holding `argument`: the
/// program itself, or a copy that it has made of itself to start another. Windows makes no copies,
/// and who has waited for the program there knows that it has gone: always false.
bool hasCopies(const QString& program, const QString& argument);

/// Ends a process that a test has left behind.
void endProcess(const QByteArray& processId);
