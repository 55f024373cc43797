#pragma once

/// The order in which a process comes up.
namespace startup {

/// Fills every constant module and builds the parameter tables. Needs the application object, since
/// the texts pass its translation look-up; nothing may read a constant earlier.
void fillConstants();

/// Numbers are read and written as in C whatever the user's language: QApplication has just put the
/// user's locale in force.
void keepNumbersNeutral();

/// A whole process: the application, what stands above, and the window until it is closed. Gives
/// the exit code.
int run(int argc, char** argv);

} // namespace startup
