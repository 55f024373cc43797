#include "platform/file_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace platform {
namespace {

// Locks of the open file rather than of the process: two threads exclude each other as well, and
// closing some other descriptor of the file doesn't lose the lock.
#ifdef F_OFD_SETLK
constexpr int SetLock = F_OFD_SETLK;
constexpr int GetLock = F_OFD_GETLK;
#else
constexpr int SetLock = F_SETLK;
constexpr int GetLock = F_GETLK;
#endif

struct flock wholeFile(short kind)
{
    struct flock range = {};
    range.l_type = kind;
    range.l_whence = SEEK_SET;
    return range;
}

} // namespace

CFileLock::~CFileLock()
{
    release();
}

CFileLock::CFileLock(CFileLock&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1))
{
}

CFileLock& CFileLock::operator=(CFileLock&& other) noexcept
{
    if (this != &other) {
        release();
        m_descriptor = std::exchange(other.m_descriptor, -1);
    }
    return *this;
}

// Unlocked by name: a child that was forked just now holds the same open file until its exec.
void CFileLock::release()
{
    if (m_descriptor >= 0) {
        struct flock range = wholeFile(F_UNLCK);
        ::fcntl(m_descriptor, SetLock, &range);
        ::close(m_descriptor);
        m_descriptor = -1;
    }
}

CFileLock CFileLock::tryToTake(const std::filesystem::path& file)
{
    CFileLock lock;
    lock.m_descriptor = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    struct flock range = wholeFile(F_WRLCK);
    if (lock.m_descriptor >= 0 && ::fcntl(lock.m_descriptor, SetLock, &range) == 0) {
        return lock;
    }
    const int error = errno;
    if (lock.m_descriptor >= 0) {
        ::close(std::exchange(lock.m_descriptor, -1));
        if (error == EAGAIN || error == EACCES) {
            return lock;
        }
    }
    throw std::filesystem::filesystem_error("lock", file,
                                            std::error_code(error, std::generic_category()));
}

bool CFileLock::isTaken(const std::filesystem::path& file)
{
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    struct flock range = wholeFile(F_WRLCK);
    const bool asked = ::fcntl(descriptor, GetLock, &range) == 0;
    ::close(descriptor);
    return asked && range.l_type != F_UNLCK;
}

} // namespace platform
