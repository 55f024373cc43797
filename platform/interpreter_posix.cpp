#include "platform/interpreter.h"

#include "platform/child_process.h"

#include <QStringList>

#include <cstdio>

namespace platform {

bool speaksBatch()
{
    return false;
}

QString analysisInterpreter()
{
    return QStringLiteral("sh");
}

std::string analysisCommandEnd()
{
    return " \n";
}

} // namespace platform

struct CServerInterpreter::State
{
    CKillSwitch server;
};

CServerInterpreter::CServerInterpreter()
    : m_state(std::make_shared<State>())
{
}

CServerInterpreter::~CServerInterpreter() = default;

// What the shell and the server print goes where the program's own output goes: there is no window.
void CServerInterpreter::run(const std::string& command)
{
    CChildProcess shell;
    shell.setProcessChannelMode(QProcess::ForwardedChannels);
    shell.setStandardInputFile(QProcess::nullDevice());
    // The trap keeps the shell, and with it its group, for as long as the server doesn't end.
    shell.start(QStringLiteral("sh"),
                {QStringLiteral("-c"), QString::fromStdString("trap : TERM ; cd .. ; " + command)});
    std::fprintf(stderr, "Coupling server: process %lld\n",
                 static_cast<long long>(shell.processId()));
    m_state->server.arm(shell.processId());
    shell.waitForFinished(-1);
    m_state->server.disarm();
}

void CServerInterpreter::askToEnd()
{
    m_state->server.askToEnd();
}

void CServerInterpreter::end()
{
    m_state->server.end();
}
