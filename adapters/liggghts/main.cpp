#include "adapters/liggghts/adapter_error.h"
#include "adapters/liggghts/case_run.h"
#include "adapters/liggghts/command_line.h"
#include "app/constants/deck_keys.h"
#include "app/constants/file_names.h"
#include "app/constants/messages.h"
#include "platform/child_process.h"

#include <QCoreApplication>
#include <QLocale>

#include <clocale>
#include <iostream>

// Takes the simulator's command line and runs the case with LIGGGHTS.

namespace {

int runCase(const std::vector<std::string>& words)
{
    const auto say = [](const std::string& line) { std::cout << line << std::endl; };
    try {
        liggghts::CCaseRun(liggghts::parseCommandLine(words), say).run();
        std::cout << "finished" << std::endl;
        return 0;
    } catch (const liggghts::CAdapterError& error) {
        std::cerr << error.what() << std::endl;
        return error.cause();
    } catch (const std::exception& error) {
        std::cerr << "The adapter failed: " << error.what() << std::endl;
        return liggghts::CAdapterError::Unexpected;
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    // Numbers in files are written with a point, whatever the user's language.
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(QLocale::c());
    CChildProcess::endWithStartingThreads();
    DeckKeys::initialise();
    Messages::initialise();
    FileNames::initialise();
    return runCase(std::vector<std::string>(argv + 1, argv + argc));
}
