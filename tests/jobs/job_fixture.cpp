#include "tests/jobs/job_fixture.h"

#include "tests/support/native.h"

#include "deck/app_settings.h"
#include "deck/deck_loading.h"
#include "deck/deck_serializer.h"
#include "deck/deck_store.h"
#include "parameters/parameter_catalogue.h"
#include "parameters/parameter_entry.h"
#include "parameters/parameter_limits.h"
#include "tests/support/test_environment.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

CJobFixture::CJobFixture()
{
    CTestEnvironment::reset();
    ParameterCatalogue::initialise();
    initialiseParameterLimits();
}

std::string CJobFixture::path(const std::string& name) const
{
    return m_root.filePath(QString::fromStdString(name)).toStdString();
}

std::string CJobFixture::writeFile(const std::string& name, const std::string& content) const
{
    std::ofstream(path(name), std::ios::binary) << content;
    return path(name);
}

std::string CJobFixture::folder(const std::string& name) const
{
    fs::create_directories(path(name));
    return path(name);
}

DeckPaths CJobFixture::chooseDeck(const DeckDescription& description, const std::string& stem)
{
    const DeckPaths paths = writeDeck(description, folder("decks"), stem);
    const QString deck = QString::fromStdString(paths.deck.string());
    CAppSettings::instance()->setValue(CAppSettings::ZEKPath, deck);
    CDeckSerializer serializer;
    CDeckStore::instance()->creatorData() = {DeckLoading::loadDeck(serializer, deck)};
    return paths;
}

void pushEntry(const std::string& name, const EntryKeys& keys)
{
    static const ParameterLimit limit{Range, {0.0, 1.0}};
    auto entry = std::make_shared<CParameterEntry>();
    entry->m_name = name;
    for (const auto& [key, fields] : keys) {
        auto made = std::make_shared<CParameterKeys>();
        made->m_name = key;
        for (const ValueList& values : fields) {
            made->m_fields.push_back(std::make_shared<CParameterFields>(
                CParameterFields{&limit, 0, std::string(), values}));
        }
        entry->m_keys.push_back(made);
    }
    CDeckStore::instance()->pushParameter(entry);
}

void pushPlainInteractions()
{
    pushEntry("Interactions", {{"glass<>glass", {{0.75}, {0.25}, {0.02}}},
                               {"glass<>steel", {{0.5}, {0.4}, {0.01}}}});
}

void pushAbsentForce(const std::string& label)
{
    pushEntry(label, {{"Steady Flow Velocity", {{0.0}, {0.0}, {0.0}, {false}}}});
    pushEntry(label, {{"Steady Flow Velocity", {{0.0}, {0.0}, {0.0}}}});
}

std::string contentOf(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream),
                            std::istreambuf_iterator<char>()};
    return Native::fromTextFile(QByteArray::fromStdString(bytes)).toStdString();
}

std::vector<std::string> namesIn(const std::string& folder)
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

CCreatorData recordIn(const std::string& dataFile)
{
    CCreatorData record;
    CDeckSerializer serializer;
    DeckLoading::readDataFile(serializer, dataFile, record);
    return record;
}

std::string filesystemErrorOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const fs::filesystem_error& error) {
        return error.what();
    }
    return std::string();
}
