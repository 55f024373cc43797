#pragma once

#include "platform/child_process.h"

#include <QThread>

#include <string>

/// Runs the analysis of a case in an interpreter of its own. Nothing asks that interpreter to exit:
/// the thread goes on until it is destroyed.
class CPythonThread : public QThread
{
    Q_OBJECT

public:
    CPythonThread(std::string workingDirectory, std::string command);
    /// Ends the interpreter with all that it has started, and waits for the thread.
    ~CPythonThread() override;

protected:
    void run() override;

private:
    const std::string m_workingDirectory;
    const std::string m_command;
    CKillSwitch m_interpreter;
};
