#include "adapters/liggghts/engine_process.h"

#include "adapters/liggghts/input_script.h"
#include "adapters/liggghts/numbers.h"

#include <sstream>

namespace liggghts {
CEngineProcess::CEngineProcess(SEngineTask task, Say say)
    : m_task(std::move(task))
    , m_say(std::move(say))
{
}

void CEngineProcess::run(const QString& engine)
{
    // The engine runs alone: without these Open MPI starts helpers of its own first.
    m_process.setVariable(QStringLiteral("OMPI_MCA_ess_singleton_isolated"), QStringLiteral("1"));
    m_process.setVariable(QStringLiteral("OMPI_MCA_btl"), QStringLiteral("self"));
    m_process.setVariable(QStringLiteral("OMPI_MCA_pml"), QStringLiteral("ob1"));
    m_process.setWorkingDirectory(QString::fromStdString(m_task.folder.string()));
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setOutputHandler([this] { read(); });
    m_process.start(engine, {QStringLiteral("-in"), QString::fromLatin1(EngineFiles::Input),
                             QStringLiteral("-log"), QString::fromLatin1(EngineFiles::Log)});
    m_switch.arm(m_process.processId());
    m_process.closeWriteChannel();
    m_process.waitForFinished(-1);
    m_switch.disarm();
    read();
}

void CEngineProcess::end()
{
    m_switch.end();
}

std::string CEngineProcess::complaint() const
{
    if (m_process.error() == QProcess::FailedToStart) {
        return "The engine can't be started: " + m_process.errorString().toStdString() + ".";
    }
    return complaintAbout(m_task, m_process.exitStatus() != QProcess::NormalExit,
                          m_process.exitCode(), m_words);
}

void CEngineProcess::read()
{
    m_rest += m_process.readAllStandardOutput();
    for (int end = m_rest.indexOf('\n'); end >= 0; end = m_rest.indexOf('\n')) {
        take(m_rest.left(end));
        m_rest.remove(0, end + 1);
    }
}

/// Words for the adapter, and lines of step, spheres and kinetic energy; two runs in a row tell the
/// step between them twice.
void CEngineProcess::take(const QByteArray& line)
{
    const std::string text = trimmed(line.toStdString());
    if (text.rfind("@ ", 0) == 0) {
        m_words.push_back(text.substr(2));
        if (m_words.back() == EngineWords::Released) {
            m_releaseStep = m_step;
        }
        return;
    }
    if (text.rfind("ERROR", 0) == 0) {
        m_say(m_task.name + ": " + text);
        return;
    }
    std::istringstream words(text);
    long step = 0;
    long spheres = 0;
    double energy = 0.0;
    std::string more;
    if (!(words >> step >> spheres >> energy) || words >> more || step == m_step || spheres <= 0) {
        return;
    }
    m_step = step;
    const bool released = m_releaseStep >= 0;
    const double seconds =
        static_cast<double>(released ? step - m_releaseStep : step) * m_task.timeStep;
    m_say(m_task.name + ": " + (released ? "released" : "filling") + ", time " +
          numberText(seconds) + " s, " + std::to_string(spheres) +
          " spheres, mean kinetic energy " + numberText(energy / static_cast<double>(spheres)) +
          " J");
}

} // namespace liggghts
