#include "platform/interpreter.h"

#include "app/constants/file_names.h"

#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <thread>

namespace platform {

bool speaksBatch()
{
    return true;
}

QString analysisInterpreter()
{
    return QString::fromStdString(FileNames::CommandInterpreter);
}

std::string analysisCommandEnd()
{
    return " \n\r";
}

} // namespace platform

struct CServerInterpreter::State
{
    std::mutex mutex;
    std::condition_variable changed;
    bool running = false;
    bool left = false;
};

CServerInterpreter::CServerInterpreter()
    : m_state(std::make_shared<State>())
{
}

CServerInterpreter::~CServerInterpreter() = default;

// The window outlives its case, so a thread that nobody waits for stays with it.
void CServerInterpreter::run(const std::string& command)
{
    const std::string text = FileNames::CommandInterpreter + " /k \"cd.. & " + command + "\"";
    const std::shared_ptr<State> state = m_state;
    std::unique_lock<std::mutex> lock(state->mutex);
    if (state->left) {
        return;
    }
    state->running = true;
    std::thread([text, state] {
        std::system(text.c_str());
        const std::lock_guard<std::mutex> ended(state->mutex);
        state->running = false;
        state->changed.notify_all();
    }).detach();
    state->changed.wait(lock, [&state] { return !state->running || state->left; });
}

void CServerInterpreter::askToEnd()
{
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    m_state->left = true;
    m_state->changed.notify_all();
}

void CServerInterpreter::end()
{
    askToEnd();
}
