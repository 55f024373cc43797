#pragma once

#include "cases/call.h"

#include <QCommandLineOption>
#include <QList>

#include <functional>

namespace cases {

// What a command ends with.
constexpr int AllDone = 0;
constexpr int NotAllDone = 1;

struct SCommand
{
    QString name;
    QString purpose;
    QStringList positions; ///< names of what has to be given
    QList<QCommandLineOption> options;
    /// Returns the exit code. Throws an exception with a sentence where it can't be done.
    std::function<int(const SCall&)> run;
};

/// All commands, in the order in which they are told.
QList<SCommand> commands();

} // namespace cases
