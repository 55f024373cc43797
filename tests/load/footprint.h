#pragma once

#include <cstddef>

/// What this process holds; read from the system and from the C library.
namespace Footprint {

/// Open file descriptors; on Windows handles of all kinds.
int handles();
int threads();

/// Bytes that the program holds of its heap. Says nothing under a sanitizer, whose heap is another.
std::size_t heapBytes();

/// The largest resident size since the last call of `forgetPeak`, in KiB; since the start of the
/// process where the peak can't be forgotten.
long peakKiB();
/// Whether the peak can be started anew: Windows can't. Peaks of several sizes say nothing about
/// each other then.
bool forgetsPeak();
/// Gives back what the heap keeps for later, and starts the peak anew. Does nothing where the peak
/// can't be forgotten.
void forgetPeak();

/// Seconds of the processor that this process took, and its children that have ended; on Windows
/// the children's aren't in there. Other programs of the machine don't make it longer.
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

/// Whether a limit on the time to a click's answer says something about the program: not under the
/// sanitizers, which make all of it several times slower, nor under Wine, where sixteen programs
/// that start at a time keep the processor from the window for most of the limit, or for a second
/// beside programs that have precedence.
bool answersInTime();

} // namespace Footprint
