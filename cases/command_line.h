#pragma once

#include <QStringList>

namespace cases {

/// Runs the command that the arguments name, the program's own name first among them. Returns the
/// exit code: 0 where all cases asked for are done, 1 where one is not, 2 behind a sentence on the
/// standard error stream about what can't be done.
int runCommand(const QStringList& arguments);

} // namespace cases
