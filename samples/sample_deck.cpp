#include "samples/deck_maker.h"

#include <H5Cpp.h>

#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

// Writes the sample's deck and everything that belongs to it into the folder that it is given.

namespace {

const char* const Stem = "column";
const char* const Particles = "Gravel";
const char* const Walls = "Steel";
constexpr unsigned int Revision = 38329;

DeckRow interaction(const char* first, const char* second, double restitution,
                    double staticFriction, double rollingFriction)
{
    return {{pairKey(first, second)}, {restitution, staticFriction, rollingFriction}};
}

DeckDescription columnDeck()
{
    DeckDescription deck;
    deck.revision = Revision;
    deck.opaqueText = "Sample deck: a column of gravel collapses in a box of steel.\n";
    deck.companionText = "Companion of the sample deck.\n";
    deck.interactions = {interaction(Particles, Particles, 0.5, 0.5, 0.1),
                         interaction(Particles, Walls, 0.5, 0.5, 0.1),
                         interaction(Walls, Walls, 0.5, 0.3, 0.01)};
    deck.surfaceSurface.hertzMindlinJkr = {{{Particles, Particles}, {0.05}}};
    deck.surfaceSurface.linearCohesionV2 = {{{Particles, Particles}, {100.0}}};
    deck.surfaceGeometry.hertzMindlinJkr = {{{Particles, Walls}, {0.02}}};
    deck.surfaceGeometry.standardRollingFriction = true;
    return deck;
}

void copyCompanions(const std::filesystem::path& folder)
{
    std::filesystem::create_directories(folder / "stand_ins");
    for (const char* name : {"column.dfg", "column.qsv", "box.txt", "analyse.py", "join_results.py",
                             "stand_ins/conda", "stand_ins/conda.bat"}) {
        // Not every library on Windows can copy over a file.
        std::filesystem::remove(folder / name);
        std::filesystem::copy_file(std::filesystem::path(SAMPLE_COMPANIONS) / name, folder / name);
    }
}

void writeSample(const std::filesystem::path& folder)
{
    std::filesystem::create_directories(folder);
    const DeckPaths written = writeDeck(columnDeck(), folder, Stem);
    copyCompanions(folder);
    std::cout << "Sample deck: " << written.deck.string() << std::endl;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "Name one folder for the sample deck." << std::endl;
        return 2;
    }
    try {
        writeSample(argv[1]);
        return 0;
    } catch (const H5::Exception& failure) {
        std::cerr << "The sample deck can't be written: " << failure.getDetailMsg() << std::endl;
    } catch (const std::exception& failure) {
        std::cerr << "The sample deck can't be written: " << failure.what() << std::endl;
    }
    return 1;
}
