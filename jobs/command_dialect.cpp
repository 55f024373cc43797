#include "jobs/command_dialect.h"

#include "app/constants/file_names.h"
#include "platform/interpreter.h"

#include <QProcess>
#include <QString>
#include <QStringList>

namespace {

std::string doubleQuoted(const std::string& path)
{
    return "\"" + path + "\"";
}

std::string asTheyStand(const std::string& options)
{
    return options;
}

std::string singleQuoted(const std::string& text)
{
    QString word = QString::fromStdString(text);
    return "'" + word.replace("'", "'\\''").toStdString() + "'";
}

/// The words of a command text, those that mean something to the shell in quotes.
std::string shellWords(const std::string& options)
{
    static const std::string plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                     "0123456789+-.,:/=_@%";
    std::string words;
    for (const QString& part : QProcess::splitCommand(QString::fromStdString(options))) {
        const std::string word = part.toStdString();
        const bool safe = !word.empty() && word.find_first_not_of(plain) == std::string::npos;
        words += " " + (safe ? word : singleQuoted(word));
    }
    return words;
}

} // namespace

const CommandDialect& batchDialect()
{
    static const CommandDialect dialect{&doubleQuoted,
                                        &asTheyStand,
                                        '\\',
                                        " " + FileNames::CommandSeparator,
                                        " & ",
                                        FileNames::CommandSeparator,
                                        "",
                                        ""};
    return dialect;
}

const CommandDialect& shellDialect()
{
    static const CommandDialect dialect{&singleQuoted,
                                        &shellWords,
                                        '/',
                                        " ; ",
                                        " ; ",
                                        "",
                                        "eval \"$(conda shell.posix hook </dev/null)\"",
                                        " </dev/null"};
    return dialect;
}

const CommandDialect& localDialect()
{
    return platform::speaksBatch() ? batchDialect() : shellDialect();
}
