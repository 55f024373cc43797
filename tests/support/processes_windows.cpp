#include "tests/support/processes.h"

#include <windows.h>

namespace {

/// A handle on the process of that id, null where there is none.
HANDLE opened(const QByteArray& processId, DWORD rights)
{
    const DWORD number = processId.toUInt();
    return number == 0 ? nullptr : ::OpenProcess(rights, FALSE, number);
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

bool hasCopies(const QString& /*program*/, const QString& /*argument*/)
{
    return false;
}

void endProcess(const QByteArray& processId)
{
    const HANDLE process = opened(processId, PROCESS_TERMINATE);
    if (process != nullptr) {
        ::TerminateProcess(process, 1);
        ::CloseHandle(process);
    }
}
