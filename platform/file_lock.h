#pragma once

#include <filesystem>

namespace platform {

/// An exclusive lock on a file, held until the object or the process ends; seen by every process
/// and, where the file system shares locks, on every machine.
class CFileLock
{
public:
    CFileLock() = default;
    ~CFileLock();

    CFileLock(CFileLock&& other) noexcept;
    CFileLock& operator=(CFileLock&& other) noexcept;

    /// Makes the file where it is missing. Without the lock where somebody else holds it. Throws
    /// std::filesystem::filesystem_error "lock" where it can't be asked for.
    static CFileLock tryToTake(const std::filesystem::path& file);

    /// Whether somebody holds the lock of that file; asking takes nothing from anybody.
    static bool isTaken(const std::filesystem::path& file);

    explicit operator bool() const { return m_descriptor >= 0; }

private:
    void release();

    int m_descriptor = -1;
};

} // namespace platform
