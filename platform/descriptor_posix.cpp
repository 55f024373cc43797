#include "platform/descriptor.h"

#include <cerrno>
#include <fcntl.h>

namespace platform {

CDescriptor besideStandardStreams(int descriptor)
{
    CDescriptor low(descriptor);
    if (descriptor < 0 || descriptor > STDERR_FILENO) {
        return low;
    }
    CDescriptor high(::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    const int error = errno;
    low.close();
    errno = error;
    return high;
}

bool openPipe(std::array<CDescriptor, 2>& ends)
{
    int descriptors[2] = {-1, -1};
    if (::pipe2(descriptors, O_CLOEXEC) != 0) {
        return false;
    }
    ends = {CDescriptor(descriptors[0]), CDescriptor(descriptors[1])};
    for (CDescriptor& end : ends) {
        end = besideStandardStreams(end.release());
    }
    return ends[0].isOpen() && ends[1].isOpen();
}

} // namespace platform
