#pragma once

#include <array>
#include <unistd.h>
#include <utility>

namespace platform {

/// A file descriptor that is closed with its owner; none where it is negative.
class CDescriptor
{
public:
    explicit CDescriptor(int descriptor = -1)
        : m_descriptor(descriptor)
    {
    }
    ~CDescriptor() { close(); }

    CDescriptor(CDescriptor&& other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    CDescriptor& operator=(CDescriptor&& other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;

    int get() const { return m_descriptor; }
    bool isOpen() const { return m_descriptor >= 0; }
    int release() { return std::exchange(m_descriptor, -1); }
    void close()
    {
        if (isOpen()) {
            ::close(release());
        }
    }

private:
    int m_descriptor;
};

/// The descriptor, or another one of the same file where a standard stream has its number: the
/// program may have been started without such streams. `errno` tells a failure.
CDescriptor besideStandardStreams(int descriptor);

/// The reading and the writing end of a new pipe, which no child inherits. False, and `errno`,
/// where the system has none.
bool openPipe(std::array<CDescriptor, 2>& ends);

} // namespace platform
