#include "samples/deck_maker.h"

#include <H5Cpp.h>

#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

// Writes the deck of a heap and everything that belongs to it into the folder that it is given: a
// sample for the adapters, which do only what they can do exactly.

namespace {

const char* const Stem = "heap";
const char* const Particles = "Gravel";
const char* const Walls = "Steel";
constexpr unsigned int Revision = 38329;

DeckDescription heapDeck()
{
    DeckDescription deck;
    deck.revision = Revision;
    deck.opaqueText = "Sample deck: a heap of gravel on a floor of steel.\n";
    deck.companionText = "Companion of the sample deck.\n";
    deck.interactions = {{{pairKey(Particles, Particles)}, {0.5, 0.3, 0.1}},
                         {{pairKey(Particles, Walls)}, {0.5, 0.5, 0.1}}};
    deck.surfaceGeometry.standardRollingFriction = true;
    return deck;
}

void writeSample(const std::filesystem::path& folder)
{
    std::filesystem::create_directories(folder);
    const DeckPaths written = writeDeck(heapDeck(), folder, Stem);
    for (const char* name : {"heap.dfg", "heap.qsv", "heap.experiment"}) {
        std::filesystem::copy_file(std::filesystem::path(SAMPLE_COMPANIONS) / name, folder / name,
                                   std::filesystem::copy_options::overwrite_existing);
    }
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
