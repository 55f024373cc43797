#pragma once

#include <stdexcept>
#include <string>

/// Ends the sample simulator with one sentence on the standard error stream.
class CSampleError : public std::runtime_error
{
public:
    /// The exit code.
    enum ECause {
        Unexpected = 1,
        BadCommandLine = 2,
        BadDeck = 3,
        BadExportSettings = 4,
        CannotWrite = 5
    };

    CSampleError(ECause cause, const std::string& sentence)
        : std::runtime_error(sentence)
        , m_cause(cause)
    {
    }

    ECause cause() const { return m_cause; }

private:
    ECause m_cause;
};
