#include "samples/deck_maker.h"

#include <H5Cpp.h>

#include <cstring>
#include <fstream>
#include <stdexcept>

namespace {

/// How a dataset's elements lie in the file: texts of one length first, numbers behind them.
struct Layout
{
    std::vector<std::string> names;
    std::size_t nameLength = 0;
    std::vector<std::string> values;

    std::size_t size() const { return names.size() * nameLength + values.size() * sizeof(double); }
};

const Layout basicLayout{{"name"}, 256, {"value"}};
const Layout pairLayout{{"name1", "name2"}, 256, {"value"}};
const Layout interactionLayout{{"key"}, 512, {"restitution", "staticFriction", "rollingFriction"}};
const Layout hystereticLayout{{"name1", "name2"}, 256, {"damping", "stiffness"}};
const Layout okaLayout{
    {"name1", "name2"}, 256, {"wearConstant", "vickersHardness", "scalingFactor"}};
const Layout edinburghLayout{{"name1", "name2"},
                             512,
                             {"constPullOffForce", "surfaceEnergy", "contactPlasticityRatio",
                              "slopeExponential", "tensileExponential", "tangentStiffMultiplier"}};
const Layout bondingLayout{
    {"key"},
    512,
    {"normalStiffness", "shearStiffness", "normalStrength", "shearStrength", "bondRadius"}};
const Layout bondingV2Layout{{"key"},
                             512,
                             {"normalStiffness", "normalRange", "tangStiffness", "tangRange",
                              "normalStrength", "shearStrength", "bondDiskScale"}};
const Layout twoValuesLayout{{"name"}, 512, {"first", "second"}};

H5::CompType typeOf(const Layout& layout)
{
    H5::CompType type(layout.size());
    std::size_t offset = 0;
    for (const std::string& name : layout.names) {
        type.insertMember(name, offset, H5::StrType(H5::PredType::C_S1, layout.nameLength));
        offset += layout.nameLength;
    }
    for (const std::string& value : layout.values) {
        type.insertMember(value, offset, H5::PredType::NATIVE_DOUBLE);
        offset += sizeof(double);
    }
    return type;
}

void appendRow(std::vector<char>& bytes, const DeckRow& row, const Layout& layout)
{
    if (row.names.size() != layout.names.size() || row.values.size() != layout.values.size()) {
        throw std::runtime_error("a deck's row has another shape than its dataset");
    }
    for (const std::string& name : row.names) {
        // A name may fill its member to the last byte: it need not end in a NUL.
        if (name.size() > layout.nameLength) {
            throw std::runtime_error("a deck's name is too long: " + name);
        }
        bytes.insert(bytes.end(), name.begin(), name.end());
        bytes.insert(bytes.end(), layout.nameLength - name.size(), '\0');
    }
    const std::size_t numbers = bytes.size();
    bytes.resize(numbers + row.values.size() * sizeof(double));
    std::memcpy(bytes.data() + numbers, row.values.data(), row.values.size() * sizeof(double));
}

/// The group of that name, made where it isn't there yet.
H5::Group groupAt(H5::Group& parent, const std::string& name)
{
    return parent.nameExists(name) ? parent.openGroup(name) : parent.createGroup(name);
}

/// `path` is a dataset's name, behind the name of a group and "/" where it lies in one.
void writeRows(H5::Group& parent, const std::string& path, const DeckRows& rows,
               const Layout& layout)
{
    if (!rows) {
        return;
    }
    const std::size_t slash = path.find('/');
    H5::Group group = slash == std::string::npos ? parent : groupAt(parent, path.substr(0, slash));
    std::vector<char> bytes;
    for (const DeckRow& row : *rows) {
        appendRow(bytes, row, layout);
    }
    const hsize_t count = rows->size();
    const H5::CompType type = typeOf(layout);
    H5::DataSet dataset =
        group.createDataSet(path.substr(slash + 1), type, H5::DataSpace(1, &count));
    if (count > 0) {
        dataset.write(bytes.data(), type);
    }
}

template <class Value>
void writeAttribute(H5::H5Object& owner, const char* name, const H5::DataType& type,
                    const Value& value)
{
    owner.createAttribute(name, type, H5::DataSpace()).write(type, &value);
}

void writeNumber(H5::H5Object& owner, const char* name, const std::optional<double>& value)
{
    if (value) {
        writeAttribute(owner, name, H5::PredType::NATIVE_DOUBLE, *value);
    }
}

void writeFlag(H5::H5Object& owner, const char* name, const std::optional<bool>& value)
{
    if (value) {
        const hbool_t flag = *value;
        writeAttribute(owner, name, H5::PredType::NATIVE_HBOOL, flag);
    }
}

void writeContactModels(H5::Group& parent, const ContactModels& models)
{
    writeRows(parent, "Hertz-Mindlin with JKR/data", models.hertzMindlinJkr, pairLayout);
    writeRows(parent, "Hertz-Mindlin with JKR V2/data", models.hertzMindlinJkrV2, pairLayout);
    writeRows(parent, "Linear Spring/data", models.linearSpring, pairLayout);
    writeRows(parent, "Hysteretic Spring/interactions", models.hystereticInteractions,
              hystereticLayout);
    writeRows(parent, "Hysteretic Spring/yields", models.hystereticYields, basicLayout);
    writeRows(parent, "Edinburgh Elasto-Plastic Adhesion/data", models.edinburghAdhesion,
              edinburghLayout);
    writeRows(parent, "Linear Cohesion V2/data", models.linearCohesionV2, pairLayout);
    writeRows(parent, "Spray Coating/data", models.sprayCoating, basicLayout);
    if (models.linearSpringValue) {
        H5::Group spring = groupAt(parent, "Linear Spring");
        writeNumber(spring, "data", models.linearSpringValue);
    }
    if (models.typeCRollingFriction) {
        const TypeCRollingFriction& friction = *models.typeCRollingFriction;
        H5::Group group = groupAt(parent, "Type C Rolling Friction");
        writeNumber(group, "coefficient of rolling stiffness",
                    friction.coefficientOfRollingStiffness);
        writeNumber(group, "rolling viscous damping ratio", friction.rollingViscousDampingRatio);
        writeFlag(group, "tangential rotation only", friction.tangentialRotationOnly);
        writeFlag(group, "undamped force only", friction.undampedForceOnly);
    }
}

void writeBonding(H5::Group& parent, const std::string& name,
                  const std::optional<BondingModel>& model, const Layout& layout)
{
    if (!model) {
        return;
    }
    H5::Group group = groupAt(parent, name);
    writeRows(group, "data", model->data, layout);
    writeNumber(group, "bonding time mode", model->timeMode);
    writeNumber(group, "start time", model->startTime);
    writeFlag(group, "torque feedback", model->torqueFeedback);
}

void writeParticleModels(H5::Group& physics, const ParticleModels& models)
{
    H5::Group group = groupAt(physics, "SurfaceSurface");
    writeContactModels(group, models);
    writeBonding(group, "Bonding", models.bonding, bondingLayout);
    writeBonding(group, "Bonding V2", models.bondingV2, bondingV2Layout);
    writeRows(group, models.heatConductionName, models.heatConduction, basicLayout);
}

void writeWearFlag(H5::Group& parent, const char* name, const char* attribute,
                   const std::optional<bool>& flag)
{
    if (flag) {
        H5::Group group = groupAt(parent, name);
        writeFlag(group, attribute, flag);
    }
}

void writeGeometryModels(H5::Group& physics, const GeometryModels& models)
{
    H5::Group group = groupAt(physics, "SurfaceGeometry");
    writeContactModels(group, models);
    writeWearFlag(group, "Standard Rolling Friction", "enable rolling friction",
                  models.standardRollingFriction);
    writeRows(group, "Heat Conduction/particle data", models.heatConductionParticle, basicLayout);
    writeRows(group, "Heat Conduction/geometry data", models.heatConductionGeometry,
              twoValuesLayout);
    const bool byPair = models.archardWear && !models.archardWear->empty() &&
                        models.archardWear->front().names.size() == 2;
    writeRows(group, "Archard Wear/data", models.archardWear, byPair ? pairLayout : basicLayout);
    writeWearFlag(group, "Archard Wear", "deformation", models.archardDeformation);
    writeRows(group, "Oka Wear/data", models.okaWear, okaLayout);
    writeWearFlag(group, "Oka Wear", "oka deformation", models.okaDeformation);
}

void writeShapeFactors(H5::Group& group, const std::vector<std::pair<std::string, double>>& factors)
{
    std::vector<const char*> types;
    std::vector<double> values;
    for (const auto& [type, value] : factors) {
        types.push_back(type.c_str());
        values.push_back(value);
    }
    const hsize_t count = factors.size();
    const H5::DataSpace space(1, &count);
    const H5::StrType text(H5::PredType::C_S1, H5T_VARIABLE);
    H5::DataSet typeSet = group.createDataSet("type", text, space);
    H5::DataSet valueSet = group.createDataSet("value", H5::PredType::NATIVE_DOUBLE, space);
    if (count > 0) {
        typeSet.write(types.data(), text);
        valueSet.write(values.data(), H5::PredType::NATIVE_DOUBLE);
    }
}

void writeForce(H5::Group& parent, const std::string& name, const ForceModel& force)
{
    H5::Group group = groupAt(parent, name);
    writeNumber(group, "density", force.density);
    writeNumber(group, "field scale", force.fieldScale);
    writeNumber(group, "viscosity", force.viscosity);
    const hsize_t axes = force.steadyFlowVelocity.size();
    writeAttribute(group, "steady flow velocity",
                   H5::ArrayType(H5::PredType::NATIVE_DOUBLE, 1, &axes), force.steadyFlowVelocity);
    writeNumber(group, "using steady flow", force.usingSteadyFlow);
    if (force.shapeFactors) {
        writeShapeFactors(group, *force.shapeFactors);
    }
}

void writeDataFile(const DeckDescription& description, const std::filesystem::path& path)
{
    H5::H5File file(path.string(), H5F_ACC_TRUNC);
    H5::Group root = file.createGroup("CreatorData");
    H5::Group deck = root.createGroup("0");
    if (description.revision) {
        writeAttribute(deck, "svn version", H5::PredType::NATIVE_UINT, *description.revision);
    }
    writeRows(deck, "Interactions", description.interactions, interactionLayout);
    H5::Group physics = deck.createGroup("PhysicsModels");
    writeParticleModels(physics, description.surfaceSurface);
    writeGeometryModels(physics, description.surfaceGeometry);
    H5::Group forces = physics.createGroup("ExternalForces");
    for (const auto& [name, force] : description.forces) {
        writeForce(forces, name, force);
    }
    writeRows(forces, description.temperatureUpdateName, description.temperatureUpdate,
              basicLayout);
}

void writeText(const std::filesystem::path& path, const std::string& text)
{
    std::ofstream stream(path, std::ios::binary);
    stream << text;
    stream.close();
    if (!stream) {
        throw std::runtime_error("can't write " + path.string());
    }
}

} // namespace

DeckPaths writeDeck(const DeckDescription& description, const std::filesystem::path& folder,
                    const std::string& stem)
{
    DeckPaths paths{folder / (stem + ".zek"), folder / (stem + ".ynd"),
                    folder / (stem + "_data") / "0.h5"};
    std::filesystem::create_directories(paths.dataFile.parent_path());
    writeText(paths.deck, description.opaqueText);
    writeText(paths.companion, description.companionText);
    writeDataFile(description, paths.dataFile);
    return paths;
}
