#pragma once

#include "adapters/liggghts/engine_run.h"
#include "platform/child_process.h"

#include <QByteArray>

namespace liggghts {

/// The engine at work on one task, and what it says.
class CEngineProcess
{
public:
    CEngineProcess(SEngineTask task, Say say);

    /// Returns when the engine has ended or couldn't be started.
    void run(const QString& engine);

    /// Ends the engine at once, from any thread; one that is yet to start ends then.
    void end();

    /// Of the run that has ended; empty if it is good.
    std::string complaint() const;

private:
    void read();
    void take(const QByteArray& line);

    SEngineTask m_task;
    Say m_say;
    CChildProcess m_process;
    CKillSwitch m_switch;
    QByteArray m_rest; ///< of a line that isn't complete yet
    long m_releaseStep = -1;
    long m_step = 0;
    std::vector<std::string> m_words;
};

} // namespace liggghts
