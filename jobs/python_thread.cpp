#include "jobs/python_thread.h"

#include "platform/interpreter.h"

#include <utility>

CPythonThread::CPythonThread(std::string workingDirectory, std::string command)
    : m_workingDirectory(std::move(workingDirectory))
    , m_command(std::move(command))
{
}

CPythonThread::~CPythonThread()
{
    m_interpreter.end();
    wait();
}

void CPythonThread::run()
{
    CChildProcess process;
    process.setWorkingDirectory(QString::fromStdString(m_workingDirectory));
    // Nobody reads what an analysis prints; its complaints go where ours go.
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(platform::analysisInterpreter(), QStringList());
    m_interpreter.arm(process.processId());
    process.write(QByteArray::fromStdString(m_command + platform::analysisCommandEnd()));
    process.waitForFinished(-1);
    m_interpreter.disarm();
}
