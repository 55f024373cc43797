#pragma once

namespace cases {

/// While it lives, the signals by which a user or a cluster ends a program (SIGINT, SIGTERM,
/// SIGHUP) no longer do so, but can be waited for. One at a time.
class CInterrupt
{
public:
    CInterrupt();
    ~CInterrupt();

    CInterrupt(const CInterrupt&) = delete;
    CInterrupt& operator=(const CInterrupt&) = delete;

    enum class Event { Signal, Wake, Timeout };

    /// Waits for a signal or for `wake`.
    Event wait(int milliseconds);

    /// From any thread: ends the wait.
    void wake();
};

} // namespace cases
