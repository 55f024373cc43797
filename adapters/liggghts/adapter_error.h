#pragma once

#include <stdexcept>
#include <string>

namespace liggghts {

/// Ends the adapter with one sentence on the standard error stream.
class CAdapterError : public std::runtime_error
{
public:
    /// The exit code.
    enum ECause {
        Unexpected = 1,
        BadCommandLine = 2,
        BadDeck = 3, ///< or a bad experiment file
        BadExportSettings = 4,
        CannotWrite = 5,
        EngineFailed = 6
    };

    CAdapterError(ECause cause, const std::string& sentence)
        : std::runtime_error(sentence)
        , m_cause(cause)
    {
    }

    ECause cause() const { return m_cause; }

private:
    ECause m_cause;
};

} // namespace liggghts
