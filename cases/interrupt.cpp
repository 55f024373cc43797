#include "cases/interrupt.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <system_error>
#include <unistd.h>

namespace cases {
namespace {

constexpr int Signals[] = {SIGINT, SIGTERM, SIGHUP};

// A signal handler reaches nothing but what is static.
int pipeEnds[2] = {-1, -1};

void send(char event)
{
    const int before = errno;
    [[maybe_unused]] const ssize_t written = ::write(pipeEnds[1], &event, 1);
    errno = before;
}

void onSignal(int)
{
    send('s');
}

void handleSignals(void (*handler)(int))
{
    for (const int number : Signals) {
        struct sigaction action = {};
        action.sa_handler = handler;
        action.sa_flags = SA_RESTART;
        ::sigaction(number, &action, nullptr);
    }
}

} // namespace

CInterrupt::CInterrupt()
{
    if (::pipe2(pipeEnds, O_CLOEXEC) != 0) {
        throw std::system_error(errno, std::generic_category(), "pipe");
    }
    handleSignals(&onSignal);
}

CInterrupt::~CInterrupt()
{
    handleSignals(SIG_DFL);
    ::close(pipeEnds[0]);
    ::close(pipeEnds[1]);
}

CInterrupt::Event CInterrupt::wait(int milliseconds)
{
    struct pollfd readable = {pipeEnds[0], POLLIN, 0};
    char event = 0;
    if (::poll(&readable, 1, milliseconds) <= 0 || ::read(pipeEnds[0], &event, 1) != 1) {
        return Event::Timeout;
    }
    return event == 's' ? Event::Signal : Event::Wake;
}

void CInterrupt::wake()
{
    send('w');
}

} // namespace cases
