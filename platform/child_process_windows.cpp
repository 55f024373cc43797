#include "platform/child_process.h"

#include <QProcessEnvironment>

#include <utility>
#include <windows.h>

struct CChildProcess::State
{
    QProcess process;
    qint64 processId = 0;
};

CChildProcess::CChildProcess()
    : m_state(std::make_unique<State>())
{
    m_state->process.setStandardErrorFile(QProcess::nullDevice());
}

CChildProcess::~CChildProcess()
{
    m_state->process.disconnect();
    m_state->process.kill();
    m_state->process.waitForFinished(-1);
}

void CChildProcess::endWithStartingThreads() {}

void CChildProcess::setWorkingDirectory(const QString& folder)
{
    m_state->process.setWorkingDirectory(folder);
}

void CChildProcess::setVariable(const QString& name, const QString& value)
{
    QProcessEnvironment environment = m_state->process.processEnvironment();
    if (environment.isEmpty()) {
        environment = QProcessEnvironment::systemEnvironment();
    }
    environment.insert(name, value);
    m_state->process.setProcessEnvironment(environment);
}

void CChildProcess::setProcessChannelMode(QProcess::ProcessChannelMode mode)
{
    m_state->process.setProcessChannelMode(mode);
}

void CChildProcess::setStandardInputFile(const QString& file)
{
    m_state->process.setStandardInputFile(file);
}

void CChildProcess::setStandardOutputFile(const QString& file, QIODevice::OpenMode mode)
{
    m_state->process.setStandardOutputFile(file, mode);
}

void CChildProcess::setStandardErrorFile(const QString& file)
{
    m_state->process.setStandardErrorFile(file);
}

// No context object: the thread that waits needs no event loop.
void CChildProcess::setOutputHandler(std::function<void()> handler)
{
    QObject::connect(&m_state->process, &QProcess::readyRead, std::move(handler));
}

void CChildProcess::start(const QString& program, const QStringList& arguments)
{
    m_state->process.start(program, arguments);
    m_state->process.waitForStarted(-1);
    m_state->processId = m_state->process.processId();
}

qint64 CChildProcess::processId() const
{
    return m_state->processId;
}

QString CChildProcess::program() const
{
    return m_state->process.program();
}

bool CChildProcess::waitForStarted() const
{
    return m_state->processId != 0;
}

bool CChildProcess::waitForReadyRead(int milliseconds)
{
    return m_state->process.waitForReadyRead(milliseconds);
}

bool CChildProcess::waitForFinished(int milliseconds)
{
    return m_state->process.waitForFinished(milliseconds);
}

bool CChildProcess::canReadLine() const
{
    return m_state->process.canReadLine();
}

QByteArray CChildProcess::readLine()
{
    return m_state->process.readLine();
}

QByteArray CChildProcess::readAllStandardOutput()
{
    return m_state->process.readAllStandardOutput();
}

void CChildProcess::write(const QByteArray& bytes)
{
    m_state->process.write(bytes);
}

void CChildProcess::closeWriteChannel()
{
    m_state->process.closeWriteChannel();
}

void CChildProcess::kill()
{
    m_state->process.kill();
}

QProcess::ProcessError CChildProcess::error() const
{
    return m_state->process.error();
}

QString CChildProcess::errorString() const
{
    return m_state->process.errorString();
}

QProcess::ExitStatus CChildProcess::exitStatus() const
{
    return m_state->process.exitStatus();
}

int CChildProcess::exitCode() const
{
    return m_state->process.exitCode();
}

CKillSwitch::~CKillSwitch()
{
    disarm();
}

void CKillSwitch::arm(qint64 processId)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_processId = processId;
    if (m_processId > 0) {
        m_handle = ::OpenProcess(PROCESS_ALL_ACCESS, TRUE, static_cast<DWORD>(m_processId));
    }
    fulfil();
}

void CKillSwitch::disarm()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_handle != nullptr) {
        ::CloseHandle(m_handle);
    }
    m_handle = nullptr;
    m_processId = 0;
}

void CKillSwitch::end()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_wish = Wish::End;
    fulfil();
}

// There is no request that a program without a window would understand.
void CKillSwitch::askToEnd() {}

void CKillSwitch::fulfil()
{
    if (m_wish == Wish::End && m_handle != nullptr) {
        ::TerminateProcess(m_handle, 0);
    }
}
