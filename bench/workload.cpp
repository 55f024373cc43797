#include "bench/workload.h"

#include "deck/app_settings.h"
#include "deck/deck_loading.h"
#include "deck/deck_serializer.h"
#include "deck/deck_store.h"
#include "parameters/parameter_entry.h"
#include "parameters/property_tree.h"
#include "parameters/property_tree_widget_item.h"
#include "samples/deck_maker.h"

#include <QString>
#include <QTreeWidget>

#include <H5Cpp.h>

#include <fstream>

namespace fs = std::filesystem;

namespace {

constexpr int format = 13;

std::string material(int number)
{
    return "material " + std::to_string(number);
}

/// Rows of pairs whose names stand in one member or in two.
std::vector<DeckRow> pairRows(int count, std::size_t values, bool inOne)
{
    std::vector<DeckRow> rows;
    for (int number = 0; number < count; ++number) {
        const std::string first = material(number);
        const std::string second = material(number + 1);
        rows.push_back({inOne ? std::vector<std::string>{pairKey(first, second)}
                              : std::vector<std::string>{first, second},
                        std::vector<double>(values, 0.5 + 1e-6 * number)});
    }
    return rows;
}

void writeText(const fs::path& file, std::size_t size)
{
    std::ofstream(file) << std::string(size, 'x');
}

/// What else stands in a deck's data file.
void addParticles(const fs::path& dataFile, std::size_t megabytes)
{
    const std::vector<double> positions((megabytes << 20U) / sizeof(double), 0.25);
    const hsize_t count = positions.size();
    H5::H5File file(dataFile.string(), H5F_ACC_RDWR);
    file.createDataSet("particles", H5::PredType::NATIVE_DOUBLE, H5::DataSpace(1, &count))
        .write(positions.data(), H5::PredType::NATIVE_DOUBLE);
}

/// The deck's own value stays in front of the others.
void vary(CParameterFields& field, int count)
{
    field.m_values.resize(1);
    for (int index = 0; index < count; ++index) {
        field.m_values.emplace_back(0.1 + 0.00125 * index);
    }
}

} // namespace

void Workload::writeTableDeck(const fs::path& folder, int rows)
{
    DeckDescription deck = plainDeck(format);
    deck.interactions = pairRows(rows, 3, true);
    deck.surfaceSurface.hertzMindlinJkr = pairRows(rows, 1, false);
    deck.surfaceSurface.linearSpring = pairRows(rows, 1, false);
    deck.surfaceSurface.hystereticInteractions = pairRows(rows, 2, false);
    deck.surfaceSurface.edinburghAdhesion = pairRows(rows, 6, false);
    deck.surfaceGeometry.hertzMindlinJkr = pairRows(rows, 1, false);
    writeDeck(deck, folder, "deck");
}

void Workload::writeJobDeck(const fs::path& folder, unsigned int megabytes)
{
    DeckDescription deck = plainDeck(format);
    deck.interactions = pairRows(14, 3, true);
    deck.surfaceSurface.linearSpring = pairRows(2, 1, false);
    const DeckPaths written = writeDeck(deck, folder, "deck");
    if (megabytes > 0) {
        addParticles(written.dataFile, megabytes);
    }
    for (const char* name : {"geometry.stl", "materials.txt", "settings.txt"}) {
        writeText(folder / name, 64 * 1024);
    }
}

void Workload::openJobDeck(const fs::path& folder, int cases)
{
    const QString path = QString::fromStdString((folder / "deck.zek").string());
    CAppSettings::instance()->setValue(CAppSettings::ZEKPath, path);
    CDeckSerializer serializer;
    CDeckStore* const store = CDeckStore::instance();
    store->creatorData() = {DeckLoading::loadDeck(serializer, path)};
    store->setSimulatorOptions(" -c ");
    QTreeWidget tree;
    int fields = 0;
    std::vector<CPropertyTreeWidgetItem*> items;
    CPropertyTree(&tree, fields, items)
        .build(store->creatorData().front(), CAppSettings::instance()->deckFormat());
    const auto& interactions = store->parameters().front()->m_keys;
    vary(*interactions.front()->m_fields.front(), 20);
    vary(*interactions[7]->m_fields[1], 50);
    vary(*interactions.back()->m_fields.back(), cases / 1000);
}
