#include "samples/deck_maker.h"

#include <filesystem>
#include <iostream>

// Writes the seeds of the deck's fuzzer into the folder that it is given: data files with every
// model of a format and one element a dataset, since a fuzzer gets through small files faster.

namespace fs = std::filesystem;

namespace {

void shorten(DeckRows& rows)
{
    if (rows) {
        rows->resize(1);
    }
}

void shorten(ContactModels& models)
{
    for (DeckRows* rows :
         {&models.hertzMindlinJkr, &models.hertzMindlinJkrV2, &models.linearSpring,
          &models.hystereticInteractions, &models.hystereticYields, &models.edinburghAdhesion,
          &models.linearCohesionV2, &models.sprayCoating}) {
        shorten(*rows);
    }
}

void shorten(std::optional<BondingModel>& model)
{
    if (model) {
        shorten(model->data);
    }
}

DeckDescription shortDeck(int format)
{
    DeckDescription deck = fullDeck(format);
    shorten(deck.interactions);
    shorten(deck.temperatureUpdate);
    shorten(static_cast<ContactModels&>(deck.surfaceSurface));
    shorten(deck.surfaceSurface.bonding);
    shorten(deck.surfaceSurface.bondingV2);
    shorten(deck.surfaceSurface.heatConduction);
    shorten(static_cast<ContactModels&>(deck.surfaceGeometry));
    for (DeckRows* rows : {&deck.surfaceGeometry.heatConductionParticle,
                           &deck.surfaceGeometry.heatConductionGeometry,
                           &deck.surfaceGeometry.archardWear, &deck.surfaceGeometry.okaWear}) {
        shorten(*rows);
    }
    return deck;
}

void writeSeed(const DeckDescription& description, const fs::path& seed)
{
    const fs::path folder = seed.parent_path() / "maker";
    fs::create_directory(folder);
    fs::rename(writeDeck(description, folder, "seed").dataFile, seed);
    fs::remove_all(folder);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: fuzz_seed_maker <folder>" << std::endl;
        return 2;
    }
    for (const int format : {0, 1, 2, 3, 11, 14}) {
        writeSeed(shortDeck(format), fs::path(argv[1]) / ("format" + std::to_string(format)));
    }
    writeSeed(plainDeck(14), fs::path(argv[1]) / "plain");
}
