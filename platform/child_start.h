#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <vector>

#include <sys/types.h>

namespace platform {

/// What a child is started with. Texts are bytes as the system takes them.
struct SChildStart
{
    /// The program's name or path, then its arguments. A name without a slash is a file in the
    /// child's folder.
    std::vector<QByteArray> words;
    /// The child's working directory; that of the program where it is empty.
    QByteArray folder;
    /// "NAME=value" beside the variables of the program, or instead of those of that name.
    std::vector<QByteArray> variables;
    /// The descriptor of each standard stream, none below 3; -1 for the program's own stream.
    std::array<int, 3> streams{-1, -1, -1};
    /// The system is to end the child when the thread that starts it is gone.
    bool endsWithThread = false;
};

struct SStartedChild
{
    /// 0 where nothing was started.
    pid_t process = 0;
    /// The failed system call and the system's own cause, in QProcess's words.
    QString trouble;
};

/// Starts a program in a process group of its own. It takes the time that the system needs, however
/// much memory the caller has: nothing of it is copied. Returns when the program runs.
SStartedChild startChild(const SChildStart& start);

} // namespace platform
