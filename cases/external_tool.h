#pragma once

#include <QString>
#include <QStringList>

namespace cases {

/// What a program of the system answered.
struct SToolAnswer
{
    bool started = false;
    int exitCode = -1;
    QString output;
    QString errors;

    bool good() const { return started && exitCode == 0; }
    /// The last line that it complained with, for a sentence to the user.
    QString complaint() const;
};

/// Runs a program and waits for it.
SToolAnswer callTool(const QString& program, const QStringList& arguments);

} // namespace cases
