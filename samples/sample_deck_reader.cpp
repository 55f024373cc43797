#include "samples/sample_deck_reader.h"

#include "samples/sample_error.h"

#include <H5Cpp.h>

#include <cmath>
#include <cstddef>
#include <cstring>
#include <map>
#include <vector>

namespace {

struct SInteractionRow
{
    char key[512];
    double restitution;
    double staticFriction;
    double rollingFriction;
};

struct SPairRow
{
    char name1[256];
    char name2[256];
    double value;
};

using PairName = std::pair<std::string, std::string>;
using Interactions = std::map<PairName, SContactValues>;

const char* const ParticleModels = "/CreatorData/0/PhysicsModels/SurfaceSurface/";
const char* const WallModels = "/CreatorData/0/PhysicsModels/SurfaceGeometry/";

[[noreturn]] void refuse(const std::string& sentence)
{
    throw CSampleError(CSampleError::BadDeck, sentence);
}

template <std::size_t Length>
std::string textOf(const char (&text)[Length])
{
    return std::string(text, strnlen(text, Length));
}

H5::CompType interactionType()
{
    H5::CompType type(sizeof(SInteractionRow));
    type.insertMember("key", HOFFSET(SInteractionRow, key), H5::StrType(H5::PredType::C_S1, 512));
    type.insertMember("restitution", HOFFSET(SInteractionRow, restitution),
                      H5::PredType::NATIVE_DOUBLE);
    type.insertMember("staticFriction", HOFFSET(SInteractionRow, staticFriction),
                      H5::PredType::NATIVE_DOUBLE);
    type.insertMember("rollingFriction", HOFFSET(SInteractionRow, rollingFriction),
                      H5::PredType::NATIVE_DOUBLE);
    return type;
}

H5::CompType pairType()
{
    H5::CompType type(sizeof(SPairRow));
    const H5::StrType name(H5::PredType::C_S1, 256);
    type.insertMember("name1", HOFFSET(SPairRow, name1), name);
    type.insertMember("name2", HOFFSET(SPairRow, name2), name);
    type.insertMember("value", HOFFSET(SPairRow, value), H5::PredType::NATIVE_DOUBLE);
    return type;
}

// H5Lexists fails rather than answers where a group on the way is missing.
bool isThere(const H5::H5File& file, const std::string& path)
{
    for (std::size_t slash = path.find('/', 1); slash != std::string::npos;
         slash = path.find('/', slash + 1)) {
        if (!file.nameExists(path.substr(0, slash)))
            return false;
    }
    return file.nameExists(path);
}

template <typename Row>
std::vector<Row> readRows(const H5::H5File& file, const std::string& path, const H5::CompType& type)
{
    if (!isThere(file, path))
        return {};
    const H5::DataSet dataset = file.openDataSet(path);
    const H5::DataSpace space = dataset.getSpace();
    if (space.getSimpleExtentNdims() != 1 || dataset.getTypeClass() != H5T_COMPOUND)
        refuse("The deck's \"" + path + "\" is not a list of records.");
    std::vector<Row> rows(static_cast<std::size_t>(space.getSimpleExtentNpoints()));
    if (!rows.empty())
        dataset.read(rows.data(), type);
    return rows;
}

bool isUsable(const SContactValues& values)
{
    return values.restitution > 0.0 && values.restitution <= 1.0 && values.staticFriction >= 0.0 &&
           values.rollingFriction >= 0.0 && std::isfinite(values.staticFriction) &&
           std::isfinite(values.rollingFriction);
}

PairName splitKey(const std::string& key)
{
    const std::size_t at = key.find("<>");
    if (at == std::string::npos)
        refuse("The interaction \"" + key + "\" does not name two materials.");
    return {key.substr(0, at), key.substr(at + 2)};
}

Interactions readInteractions(const H5::H5File& file)
{
    Interactions result;
    const std::string path = "/CreatorData/0/Interactions";
    for (const SInteractionRow& row : readRows<SInteractionRow>(file, path, interactionType())) {
        SContactValues values;
        values.restitution = row.restitution;
        values.staticFriction = row.staticFriction;
        values.rollingFriction = row.rollingFriction;
        if (!isUsable(values))
            refuse("The interaction \"" + textOf(row.key) +
                   "\" has a restitution outside 0 to 1 or a friction below 0.");
        result.emplace(splitKey(textOf(row.key)), values);
    }
    return result;
}

std::string particleMaterialOf(const Interactions& interactions)
{
    for (const auto& [names, values] : interactions) {
        if (names.first == names.second)
            return names.first;
    }
    refuse("The deck has no interaction of a material with itself.");
}

std::string wallMaterialOf(const Interactions& interactions, const std::string& particles)
{
    for (const auto& [names, values] : interactions) {
        if (names.first != names.second && names.first == particles)
            return names.second;
        if (names.first != names.second && names.second == particles)
            return names.first;
    }
    refuse("The deck has no interaction of \"" + particles + "\" with another material.");
}

SContactValues between(const Interactions& interactions, const std::string& a, const std::string& b)
{
    const auto found = interactions.find({a, b});
    return found != interactions.end() ? found->second : interactions.at({b, a});
}

double pairValue(const H5::H5File& file, const std::string& path, const PairName& pair)
{
    for (const SPairRow& row : readRows<SPairRow>(file, path, pairType())) {
        const PairName names{textOf(row.name1), textOf(row.name2)};
        if (names != pair && PairName(names.second, names.first) != pair)
            continue;
        if (!std::isfinite(row.value))
            refuse("The deck's \"" + path + "\" holds a value that is not a number.");
        return row.value;
    }
    return 0.0;
}

void readContactModels(const H5::H5File& file, const std::string& group, const PairName& pair,
                       SContactValues& values)
{
    values.surfaceEnergy = pairValue(file, group + "Hertz-Mindlin with JKR/data", pair);
    values.energyDensity = pairValue(file, group + "Linear Cohesion V2/data", pair);
}

bool rollingIsOff(const H5::H5File& file)
{
    const std::string path = std::string(WallModels) + "Standard Rolling Friction";
    if (!isThere(file, path))
        return false;
    const H5::Group group = file.openGroup(path);
    if (!group.attrExists("enable rolling friction"))
        return false;
    const H5::Attribute attribute = group.openAttribute("enable rolling friction");
    if (attribute.getStorageSize() != sizeof(unsigned char))
        refuse("The deck's \"enable rolling friction\" is not a flag.");
    unsigned char enabled = 1;
    attribute.read(attribute.getDataType(), &enabled);
    return enabled == 0;
}

SSampleDeck readDeckFile(const H5::H5File& file)
{
    const Interactions interactions = readInteractions(file);
    if (interactions.empty())
        refuse("The deck has no interactions.");
    SSampleDeck deck;
    deck.particleMaterial = particleMaterialOf(interactions);
    deck.wallMaterial = wallMaterialOf(interactions, deck.particleMaterial);
    const PairName particles{deck.particleMaterial, deck.particleMaterial};
    const PairName walls{deck.particleMaterial, deck.wallMaterial};
    deck.values.particles = between(interactions, particles.first, particles.second);
    deck.values.walls = between(interactions, walls.first, walls.second);
    readContactModels(file, ParticleModels, particles, deck.values.particles);
    readContactModels(file, WallModels, walls, deck.values.walls);
    if (rollingIsOff(file))
        deck.values.walls.rollingFriction = 0.0;
    return deck;
}

} // namespace

std::filesystem::path besideDeck(const std::filesystem::path& deck, const std::string& ending)
{
    return deck.parent_path() / (deck.stem().string() + ending);
}

std::filesystem::path dataFolderOf(const std::filesystem::path& deck)
{
    return besideDeck(deck, "_data");
}

SSampleDeck readSampleDeck(const std::filesystem::path& deck)
{
    if (deck.extension() != ".zek")
        refuse("The deck \"" + deck.string() + "\" is not a .zek file.");
    if (!std::filesystem::is_regular_file(deck))
        refuse("There is no deck \"" + deck.string() + "\".");
    const std::filesystem::path data = dataFolderOf(deck) / "0.h5";
    H5::Exception::dontPrint();
    try {
        return readDeckFile(H5::H5File(data.string(), H5F_ACC_RDONLY));
    } catch (const H5::Exception& failure) {
        refuse("The deck's data \"" + data.string() + "\" can't be read (" +
               failure.getDetailMsg() + ").");
    }
}
