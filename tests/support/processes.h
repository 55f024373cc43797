#pragma once

#include <QByteArray>
#include <QList>

/// Whether there is a process of that id, given in decimal; one that has ended and that nobody has
/// waited for is there as well.
bool processExists(const QByteArray& processId);

/// Whether a process of that id runs.
bool isAlive(const QByteArray& processId);

/// Ids of this program's children that have ended and that nobody has waited for.
QList<QByteArray> zombies();

/// Ends a process that a test has left behind.
void endProcess(const QByteArray& processId);
