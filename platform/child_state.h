#pragma once

#include "platform/child_process.h"
#include "platform/descriptor.h"

#include <QDeadlineTimer>

#include <atomic>
#include <string>
#include <sys/types.h>
#include <vector>

/// The child of a CChildProcess where we start it ourselves, from its preparation to its end.
struct CChildProcess::State
{
    using Descriptor = platform::CDescriptor;

    static std::atomic<bool> endsWithThreads;

    // How it is started.
    QString program;
    QString folder;
    std::vector<QByteArray> variables;
    QProcess::ProcessChannelMode mode = QProcess::SeparateChannels;
    QString inputFile;
    QString outputFile;
    QIODevice::OpenMode outputMode = QIODevice::Truncate;
    QString errorFile = QProcess::nullDevice();
    std::function<void()> outputHandler;

    // While it runs.
    pid_t process = 0;
    bool running = false;
    Descriptor end;
    Descriptor input;
    Descriptor output;
    std::string toWrite;
    bool closesInput = false;
    QByteArray unread;
    bool hasNewOutput = false;

    // What came of it.
    QProcess::ProcessError error = QProcess::UnknownError;
    QString trouble;
    QProcess::ExitStatus exitStatus = QProcess::NormalExit;
    int exitCode = 0;

    bool openInput(Descriptor& childs);
    bool openOutput(Descriptor& childs);
    bool openError(Descriptor& childs, int childsOutput) const;
    std::vector<QByteArray> words(const QStringList& arguments) const;
    void start(const QStringList& arguments);
    void fail(const QString& text);

    void step(const QDeadlineTimer& deadline);
    void writeInput();
    ssize_t takeOutput();
    void takeRest();
    void lookForEnd();
    void keepResult(int status);
};
