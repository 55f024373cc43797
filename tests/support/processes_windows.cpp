#include "tests/support/processes.h"

#include <windows.h>

#include <tlhelp32.h>

namespace {

/// A handle on the process of that id, null where there is none.
HANDLE opened(const QByteArray& processId, DWORD rights)
{
    const DWORD number = processId.toUInt();
    return number == 0 ? nullptr : ::OpenProcess(rights, FALSE, number);
}

bool isSuspended(DWORD threadId)
{
    const HANDLE thread = ::OpenThread(THREAD_SUSPEND_RESUME, FALSE, threadId);
    if (thread == nullptr) {
        return false;
    }
    const DWORD timesBefore = ::SuspendThread(thread);
    ::ResumeThread(thread);
    ::CloseHandle(thread);
    return timesBefore != DWORD(-1) && timesBefore > 0;
}

/// A process is made with its thread suspended, and let run by who makes it. Where that one dies in
/// between, it never runs.
bool hasNeverRun(DWORD processId)
{
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof entry;
    bool runs = false;
    for (BOOL more = ::Thread32First(snapshot, &entry); more != 0 && !runs;
         more = ::Thread32Next(snapshot, &entry)) {
        runs = entry.th32OwnerProcessID == processId && !isSuspended(entry.th32ThreadID);
    }
    ::CloseHandle(snapshot);
    return !runs;
}

} // namespace

// Nobody has to wait for a process here; one that has ended stays while somebody holds it.
bool processExists(const QByteArray& processId)
{
    return isAlive(processId);
}

bool isAlive(const QByteArray& processId)
{
    const HANDLE process = opened(processId, SYNCHRONIZE);
    if (process == nullptr) {
        return false;
    }
    const bool runs = ::WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    ::CloseHandle(process);
    return runs;
}

QList<QByteArray> zombies()
{
    return {};
}

bool isAnythingLeftOf(qint64 processId, const QString& /*argument*/)
{
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    bool found = false;
    for (BOOL more = ::Process32FirstW(snapshot, &entry); more != 0 && !found;
         more = ::Process32NextW(snapshot, &entry)) {
        const QByteArray child = QByteArray::number(quint32(entry.th32ProcessID));
        if (entry.th32ParentProcessID == DWORD(processId) && isAlive(child)) {
            found = !hasNeverRun(entry.th32ProcessID);
            if (!found) {
                endProcess(child);
            }
        }
    }
    ::CloseHandle(snapshot);
    return found;
}

void endProcess(const QByteArray& processId)
{
    const HANDLE process = opened(processId, PROCESS_TERMINATE);
    if (process != nullptr) {
        ::TerminateProcess(process, 1);
        ::CloseHandle(process);
    }
}
