#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <thread>

// A coupling server's place in the sample: it answers nobody, it waits as long as its first
// argument says in seconds, or until it is told to stop.

namespace {

constexpr double DefaultSeconds = 30.0;
volatile std::sig_atomic_t stopRequested = 0;

extern "C" void requestStop(int)
{
    stopRequested = 1;
}

double secondsOf(int argc, char** argv)
{
    if (argc < 2)
        return DefaultSeconds;
    char* end = nullptr;
    const double seconds = std::strtod(argv[1], &end);
    return end != argv[1] && seconds >= 0.0 ? seconds : DefaultSeconds;
}

} // namespace

int main(int argc, char** argv)
{
    std::signal(SIGTERM, requestStop);
    std::signal(SIGINT, requestStop);
    const std::chrono::duration<double> patience(secondsOf(argc, argv));
    std::cout << "Coupling sample: waiting for a client that never comes" << std::endl;
    const auto start = std::chrono::steady_clock::now();
    while (stopRequested == 0 && std::chrono::steady_clock::now() - start < patience)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    std::cout << (stopRequested != 0 ? "Coupling sample: told to stop"
                                     : "Coupling sample: waited long enough")
              << std::endl;
    return 0;
}
