#pragma once

#include "platform/path_argument.h"

namespace platform {

/// Whether the file could be opened for writing now, as the HDF5 library does it: with the right to
/// write, and on systems with advisory locks with nobody else's lock on it. Changes nothing of it.
bool canBeWritten(const CPathArgument& file);

} // namespace platform
