#pragma once

#include <H5Cpp.h>

/// Stands before the library's H5Dread and H5Dwrite.
namespace InterposedTransfers {

/// What is told of a call before it is done: the dataset, and the spaces in memory and in the file.
using Listener = void (*)(hid_t dataset, hid_t inMemory, hid_t inFile);

/// From now on each listener hears of all calls of its function by this program, its C++ library
/// included.
void listen(Listener reads, Listener writes);

} // namespace InterposedTransfers
