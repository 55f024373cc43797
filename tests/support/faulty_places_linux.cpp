#include "tests/support/faulty_places.h"

#include <linux/capability.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

bool s_mayMount = false;

void writeText(const char* path, const std::string& text)
{
    std::ofstream(path) << text;
}

/// Mounts of our own, as root or in a user namespace in which we are root.
bool enterOwnMounts()
{
    const std::string user = std::to_string(::geteuid());
    const std::string group = std::to_string(::getegid());
    if (::unshare(CLONE_NEWNS) != 0) {
        if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
            return false;
        }
        writeText("/proc/self/setgroups", "deny");
        writeText("/proc/self/uid_map", "0 " + user + " 1");
        writeText("/proc/self/gid_map", "0 " + group + " 1");
    }
    return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

bool tryMount()
{
    char folder[] = "/tmp/tarnel-mount-XXXXXX";
    if (::mkdtemp(folder) == nullptr) {
        return false;
    }
    const bool works = ::mount("tarnel", folder, "tmpfs", 0, "size=4096") == 0;
    if (works) {
        ::umount(folder);
    }
    ::rmdir(folder);
    return works;
}

void require(bool done, const char* what)
{
    if (!done) {
        std::perror(what);
        std::abort();
    }
}

/// Root is held to the rights of files, too, or no more.
void obeyRights(bool obey)
{
    constexpr unsigned int ignoring = (1U << CAP_DAC_OVERRIDE) | (1U << CAP_DAC_READ_SEARCH);
    __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[_LINUX_CAPABILITY_U32S_3] = {};
    require(::syscall(SYS_capget, &header, data) == 0, "capget");
    data[0].effective =
        obey ? data[0].effective & ~ignoring : data[0].effective | (data[0].permitted & ignoring);
    require(::syscall(SYS_capset, &header, data) == 0, "capset");
}

void changeRights(const std::string& folder, unsigned int rights)
{
    ::chmod(folder.c_str(), rights);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        ::chmod(entry.path().c_str(), entry.is_directory() ? rights : rights & 0666U);
    }
}

} // namespace

void FaultyPlaces::prepare()
{
    s_mayMount = ::getenv("TARNEL_NO_MOUNTS") == nullptr && enterOwnMounts() && tryMount();
}

const char* FaultyPlaces::kind()
{
    return s_mayMount ? "file systems of their own" : "RLIMIT_FSIZE and the rights of the folder";
}

bool FaultyPlaces::mayMount()
{
    return s_mayMount;
}

bool FaultyPlaces::canBeMade()
{
    return true;
}

CSmallDisk::CSmallDisk(std::string folder, std::size_t bytes)
    : m_folder(std::move(folder))
{
    if (s_mayMount) {
        const std::string size = "size=" + std::to_string(bytes);
        require(::mount("tarnel", m_folder.c_str(), "tmpfs", 0, size.c_str()) == 0, "mount");
        return;
    }
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit limit = {};
    require(::getrlimit(RLIMIT_FSIZE, &limit) == 0, "getrlimit");
    m_oldLimit = limit.rlim_cur;
    limit.rlim_cur = bytes;
    require(::setrlimit(RLIMIT_FSIZE, &limit) == 0, "setrlimit");
}

CSmallDisk::~CSmallDisk()
{
    if (s_mayMount) {
        ::umount2(m_folder.c_str(), MNT_DETACH);
        return;
    }
    rlimit limit = {};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = m_oldLimit;
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

CReadOnlyPlace::CReadOnlyPlace(std::string folder)
    : m_folder(std::move(folder))
{
    if (s_mayMount) {
        const char* const path = m_folder.c_str();
        require(::mount(path, path, nullptr, MS_BIND, nullptr) == 0, "mount");
        constexpr unsigned long again = MS_BIND | MS_REMOUNT | MS_RDONLY;
        require(::mount(nullptr, path, nullptr, again, nullptr) == 0, "remount");
        return;
    }
    changeRights(m_folder, 0555);
    obeyRights(true);
}

CReadOnlyPlace::~CReadOnlyPlace()
{
    if (s_mayMount) {
        ::umount2(m_folder.c_str(), MNT_DETACH);
        return;
    }
    obeyRights(false);
    changeRights(m_folder, 0755);
}
