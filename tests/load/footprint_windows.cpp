#include "tests/load/footprint.h"

#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

double secondsOf(const FILETIME& time)
{
    constexpr double ticksPerSecond = 1e7;
    return (double(time.dwHighDateTime) * 4294967296.0 + double(time.dwLowDateTime)) /
           ticksPerSecond;
}

std::size_t bytesOf(HANDLE heap)
{
    std::size_t bytes = 0;
    PROCESS_HEAP_ENTRY entry{};
    // Nothing may be allocated while it is locked.
    ::HeapLock(heap);
    while (::HeapWalk(heap, &entry) != 0) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) {
            bytes += entry.cbData;
        }
    }
    ::HeapUnlock(heap);
    return bytes;
}

} // namespace

namespace Footprint {

// Each value that a handle may have is asked for: Wine answers GetProcessHandleCount with none.
int handles()
{
    constexpr std::uintptr_t step = 4;
    constexpr std::uintptr_t end = 0x10000;
    int count = 0;
    for (std::uintptr_t value = step; value < end; value += step) {
        DWORD flags = 0;
        if (::GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != 0) {
            ++count;
        }
    }
    return count;
}

int threads()
{
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    int count = 0;
    for (BOOL found = ::Thread32First(snapshot, &entry); found != 0;
         found = ::Thread32Next(snapshot, &entry)) {
        if (entry.th32OwnerProcessID == ::GetCurrentProcessId()) {
            ++count;
        }
    }
    ::CloseHandle(snapshot);
    return count;
}

std::size_t heapBytes()
{
    std::array<HANDLE, 256> heaps{};
    const std::size_t count = ::GetProcessHeaps(DWORD(heaps.size()), heaps.data());
    std::size_t bytes = 0;
    for (std::size_t index = 0; index < std::min(count, heaps.size()); ++index) {
        bytes += bytesOf(heaps[index]);
    }
    return bytes;
}

long peakKiB()
{
    PROCESS_MEMORY_COUNTERS memory{};
    ::GetProcessMemoryInfo(::GetCurrentProcess(), &memory, sizeof memory);
    return long(memory.PeakWorkingSetSize / 1024);
}

bool forgetsPeak()
{
    return false;
}

void forgetPeak() {}

double processorSeconds()
{
    FILETIME created{};
    FILETIME ended{};
    FILETIME kernel{};
    FILETIME user{};
    ::GetProcessTimes(::GetCurrentProcess(), &created, &ended, &kernel, &user);
    return secondsOf(kernel) + secondsOf(user);
}

// Only Wine has that function.
bool answersInTime()
{
    return tellsMemory() &&
           ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") == nullptr;
}

} // namespace Footprint
