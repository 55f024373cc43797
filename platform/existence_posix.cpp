#include "platform/existence.h"

#include <sys/stat.h>

#include <cerrno>
#include <system_error>

namespace platform {

bool exists(const CPathArgument& path)
{
    struct stat attributes = {};
    if (::stat(path.c_str(), &attributes) == 0) {
        return true;
    }
    const int error = errno;
    if (error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG || error == EACCES) {
        return false;
    }
    throw std::filesystem::filesystem_error("exists", path,
                                            std::error_code(error, std::generic_category()));
}

} // namespace platform
