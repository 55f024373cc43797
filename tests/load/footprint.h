#pragma once

#include <cstddef>

/// What this process holds; read from the kernel and from the C library.
namespace Footprint {

/// Open file descriptors.
int handles();
int threads();

/// Bytes that the program holds of its heap. Says nothing under a sanitizer, whose heap is another.
std::size_t heapBytes();

/// The largest resident size since the last call of `forgetPeak`, in KiB.
long peakKiB();
/// Gives back what the heap keeps for later, and starts the peak anew.
void forgetPeak();

/// Seconds of the processor that this process took, and its children that have ended. Other
/// programs of the machine don't make it longer.
double processorSeconds();

/// Whether memory can be told at all: not under the address and thread sanitizers.
constexpr bool tellsMemory()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return false;
#else
    return true;
#endif
}

} // namespace Footprint
