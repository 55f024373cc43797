#pragma once

#include "cases/case_selection.h"

#include <QStringList>

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>

class QCommandLineParser;

namespace cases {

/// One sentence about a command line.
class CUsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A command's words, taken apart. What they say is looked at as a command asks for it; each
/// function throws CUsageError about words that mean nothing.
struct SCall
{
    QStringList positions;
    const QCommandLineParser* parser;

    bool isSet(const QString& option) const;
    std::string text(const QString& option) const;
    /// The canonical path of the folder at a position.
    std::filesystem::path folder(int position) const;
    /// A number of cases at a time, at least 1.
    std::size_t count(const QString& option, std::size_t otherwise) const;
    /// Of `--only`.
    CCaseSelection selection() const;
    /// The absolute path of `--simulator`, or nothing.
    std::string simulator() const;
};

} // namespace cases
