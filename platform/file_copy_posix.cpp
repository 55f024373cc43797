#include "platform/file_copy.h"

#include "platform/descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace platform {
namespace {

/// Whether all of so many bytes have been copied.
bool copyBytes([[maybe_unused]] int from, [[maybe_unused]] int to, off_t count)
{
#ifdef __linux__
    while (count > 0) {
        const ssize_t copied =
            ::copy_file_range(from, nullptr, to, nullptr, static_cast<std::size_t>(count), 0);
        if (copied <= 0) {
            return false;
        }
        count -= copied;
    }
#endif
    return count == 0;
}

/// Copies to a path where nothing is yet, by the file system's own means: where it can, the copy
/// shares the blocks of the original until one of them is written. False where it couldn't and
/// nothing was left behind; the cause is for the standard library to find.
bool copyByFileSystem(const fs::path& from, const fs::path& to)
{
    const CDescriptor source(::open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (!source.isOpen() || ::fstat(source.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return false;
    }
    const CDescriptor target(::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IWUSR));
    if (!target.isOpen()) {
        return false;
    }
    if (::fchmod(target.get(), status.st_mode) == 0 &&
        copyBytes(source.get(), target.get(), status.st_size)) {
        return true;
    }
    ::unlink(to.c_str());
    return false;
}

} // namespace

void copyFile(const fs::path& from, const fs::path& to, fs::copy_options options,
              std::error_code& error)
{
    error.clear();
    if (!copyByFileSystem(from, to)) {
        fs::copy_file(from, to, options, error);
    }
}

void copyInto(const std::filesystem::path& file, const std::filesystem::path& folder,
              std::error_code& error)
{
    std::filesystem::copy(file, folder, error);
}

} // namespace platform
