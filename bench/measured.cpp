#include "bench/measured.h"

#include <cstdio>
#include <fstream>
#include <string>

#include <sys/resource.h>
#include <unistd.h>

namespace {

double secondsOf(const timeval& time)
{
    return double(time.tv_sec) + double(time.tv_usec) * 1e-6;
}

double processorSeconds()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
}

} // namespace

void sayFigure(const char* name, double value)
{
    std::printf("%s %.6f\n", name, value);
    std::fflush(stdout);
}

CMeasurement::CMeasurement()
    : m_processorSeconds(processorSeconds())
    , m_begin(std::chrono::steady_clock::now())
{
}

void CMeasurement::say() const
{
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - m_begin;
    sayFigure("seconds", taken.count());
    sayFigure("cpu", processorSeconds() - m_processorSeconds);
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    sayFigure("peak_kib", double(usage.ru_maxrss));
}

void measured(const std::function<void()>& work)
{
    const CMeasurement measurement;
    work();
    measurement.say();
}

double residentKiB()
{
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return double(resident) * double(::sysconf(_SC_PAGESIZE)) / 1024;
}
