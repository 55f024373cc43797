#pragma once

#include <QString>

#include <memory>
#include <string>

namespace platform {

/// Whether the system's command interpreter speaks the language of Windows batch files.
bool speaksBatch();

/// The program that takes the commands of an analysis from its standard input.
QString analysisInterpreter();

/// What stands behind the command on that standard input.
std::string analysisCommandEnd();

} // namespace platform

/// The interpreter that runs a coupling server. Where interpreters have windows, that of the server
/// stays open behind the command and is left to the user.
class CServerInterpreter
{
public:
    CServerInterpreter();
    ~CServerInterpreter();

    /// Runs `command` one folder above the program's current one. Returns when the interpreter has
    /// ended or when its end was asked for.
    void run(const std::string& command);

    /// From any thread: asks the server to end, now and in every later `run`.
    void askToEnd();

    /// From any thread: as `askToEnd`, without leaving the server a choice.
    void end();

private:
    struct State;

    std::shared_ptr<State> m_state;
};
