#include "cases/call.h"

#include <QCommandLineParser>

namespace fs = std::filesystem;

namespace cases {

bool SCall::isSet(const QString& option) const
{
    return parser->isSet(option);
}

std::string SCall::text(const QString& option) const
{
    return parser->value(option).toStdString();
}

fs::path SCall::folder(int position) const
{
    const fs::path given(positions[position].toStdString());
    std::error_code error;
    fs::path folder = fs::canonical(given, error);
    if (error || !fs::is_directory(folder)) {
        throw CUsageError("there is no folder " + given.string());
    }
    return folder;
}

std::size_t SCall::count(const QString& option, std::size_t otherwise) const
{
    if (!isSet(option)) {
        return otherwise;
    }
    bool isNumber = false;
    const uint number = parser->value(option).toUInt(&isNumber);
    if (!isNumber || number == 0) {
        throw CUsageError("\"" + text(option) + "\" is no number of cases at a time");
    }
    return number;
}

CCaseSelection SCall::selection() const
{
    return CCaseSelection::fromText(isSet("only") ? text("only") : "missing");
}

std::string SCall::simulator() const
{
    if (!isSet("simulator")) {
        return {};
    }
    const fs::path path(text("simulator"));
    if (!fs::exists(path)) {
        throw CUsageError("there is no simulator " + path.string());
    }
    return fs::absolute(path).lexically_normal().string();
}

} // namespace cases
