#pragma once

#include <sys/resource.h>

#include <fcntl.h>
#include <unistd.h>

/// Lets the process open only so many more files while it lives: a folder or file that can't be
/// opened, for the administrator too.
class CDescriptorLimit
{
public:
    explicit CDescriptorLimit(int openable)
    {
        const int lowestFree = ::open("/dev/null", O_RDONLY);
        ::close(lowestFree);
        ::getrlimit(RLIMIT_NOFILE, &m_former);
        rlimit limited = m_former;
        limited.rlim_cur = static_cast<rlim_t>(lowestFree + openable);
        ::setrlimit(RLIMIT_NOFILE, &limited);
    }
    ~CDescriptorLimit() { ::setrlimit(RLIMIT_NOFILE, &m_former); }

private:
    rlimit m_former = {};
};
