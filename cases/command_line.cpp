#include "cases/command_line.h"

#include "cases/commands.h"

#include <QCommandLineParser>

#include <iostream>

namespace cases {
namespace {

constexpr int CannotDo = 2;

std::string overview(const QList<SCommand>& all)
{
    std::string text = "Usage: tarnel-cases COMMAND ...\n\n"
                       "Runs, watches and compares the cases of a folder that Tarnel made with\n"
                       "\"Generate Distributed Files\".\n\n";
    for (const SCommand& command : all) {
        text += "  " + command.name.leftJustified(9).toStdString() + command.purpose.toStdString() +
                "\n";
    }
    return text + "\ntarnel-cases COMMAND --help tells more.\n";
}

int runParsed(const SCommand& command, const QStringList& words)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(command.purpose);
    const QCommandLineOption help({"h", "help"}, "Show this help.");
    parser.addOption(help);
    parser.addOptions(command.options);
    if (!parser.parse(words)) {
        throw CUsageError(parser.errorText().toStdString());
    }
    if (parser.isSet(help)) {
        const QString usage = "Usage: tarnel-cases " + command.name + " [options] ";
        std::cout << usage.toStdString() << command.positions.join(' ').toStdString() << "\n"
                  << parser.helpText().section('\n', 1).toStdString();
        return AllDone;
    }
    const QStringList positions = parser.positionalArguments().mid(1);
    if (positions.size() != command.positions.size()) {
        throw CUsageError(command.name.toStdString() + " needs " +
                          command.positions.join(" and ").toStdString() + ", and nothing else");
    }
    return command.run({positions, &parser});
}

int dispatch(const QStringList& arguments)
{
    const QList<SCommand> all = commands();
    const QString name = arguments.value(1);
    if (name == "--help" || name == "-h") {
        std::cout << overview(all);
        return AllDone;
    }
    for (const SCommand& command : all) {
        if (command.name == name) {
            return runParsed(command, arguments);
        }
    }
    throw CUsageError(name.isEmpty() ? "no command is given; see tarnel-cases --help"
                                     : "there is no command \"" + name.toStdString() +
                                           "\"; see tarnel-cases --help");
}

} // namespace

int runCommand(const QStringList& arguments)
{
    try {
        return dispatch(arguments);
    } catch (const std::exception& error) {
        std::cerr << "tarnel-cases: " << error.what() << std::endl;
        return CannotDo;
    }
}

} // namespace cases
