#pragma once

#include <QString>

namespace platform {

/// The name filters of a dialog that chooses a program: `executables` first, and behind it all
/// files where programs carry no ending.
QString executableFilter(const QString& executables);

} // namespace platform
