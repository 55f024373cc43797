#include "platform/write_access.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace platform {

bool canBeWritten(const CPathArgument& file)
{
    const int handle = ::open(file.c_str(), O_RDWR | O_CLOEXEC);
    if (handle < 0) {
        return false;
    }
    // A file system without locks keeps nobody out.
    const bool free = ::flock(handle, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    ::close(handle);
    return free;
}

} // namespace platform
