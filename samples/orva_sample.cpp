#include "samples/sample_deck_reader.h"
#include "samples/sample_error.h"
#include "samples/sample_options.h"
#include "samples/sample_run.h"

#include <chrono>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr std::chrono::milliseconds ClientPatience(700);

// A sample has no client to talk to; it keeps the order of things and goes on.
void awaitClient()
{
    std::cout << "Awaiting Client connection..." << SAMPLE_LINE_END << std::flush;
    std::this_thread::sleep_for(ClientPatience);
    std::cout << "No client is needed by the sample." << std::endl;
}

void checkExportSettings(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    std::string line;
    std::getline(stream, line);
    if (line.rfind("!format=KEYPATHVALUE", 0) != 0)
        throw CSampleError(CSampleError::BadExportSettings,
                           "The export settings \"" + file.string() +
                               "\" are missing or not in the KEYPATHVALUE format.");
}

void announce(const SSampleOptions& options, const SSampleDeck& deck)
{
    std::cout << "ORVA sample, a small stand-in for the simulator\n"
              << "deck " << options.deck.string() << ": " << deck.particleMaterial
              << " in a box of " << deck.wallMaterial << std::endl;
    if (options.engine != 0)
        std::cout << "The sample computes on the processor whatever the engine." << std::endl;
}

void runCase(const std::vector<std::string>& arguments)
{
    const SSampleOptions options = parseSampleOptions(arguments);
    if (options.awaitClient)
        awaitClient();
    const SSampleDeck deck = readSampleDeck(options.deck);
    if (!options.exportSettings.empty())
        checkExportSettings(options.exportSettings);
    announce(options, deck);
    CSampleRun(options, deck).run();
    std::cout << "finished" << std::endl;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        runCase(std::vector<std::string>(argv + 1, argv + argc));
        return 0;
    } catch (const CSampleError& error) {
        std::cerr << error.what() << std::endl;
        return error.cause();
    } catch (const std::exception& error) {
        std::cerr << "The sample failed: " << error.what() << std::endl;
        return CSampleError::Unexpected;
    }
}
