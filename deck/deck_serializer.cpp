#include "deck/deck_serializer.h"

#include "app/constants/deck_keys.h"
#include "app/constants/messages.h"
#include "app/message_box.h"
#include "deck/app_settings.h"
#include "deck/compound_types.h"
#include "deck/guarded_transfer.h"

#include <array>
#include <functional>

using namespace HDF5DATATYPES;

namespace {

/// An open group keeps its file open and locked, whichever way the walk ends.
class CGroupCloser
{
public:
    explicit CGroupCloser(H5::Group& group)
        : m_group(group)
    {
    }
    ~CGroupCloser() { m_group = H5::Group(); }

    CGroupCloser(const CGroupCloser&) = delete;
    CGroupCloser& operator=(const CGroupCloser&) = delete;

private:
    H5::Group& m_group;
};

} // namespace

bool CDeckSerializer::walk(H5::H5File& file, CCreatorData& record, unsigned int mode)
{
    const CGroupCloser creatorDataCloser(m_creatorData);
    const CGroupCloser physicsModelsCloser(m_physicsModels);
    m_creatorData = file.openGroup(DeckKeys::CreatorData);
    readFormat();
    m_iFormat = CAppSettings::instance()->deckFormat();
    renameKeys();
    transferCompound<SInteraction>(m_creatorData, DeckKeys::Interactions,
                                   std::ref(record.m_interactions), mode);
    m_physicsModels = m_creatorData.openGroup(DeckKeys::PhysicsModels);
    walkSurfaceSurface(record, mode);
    walkSurfaceGeometry(record, mode);
    walkExternalForces(record, mode);
    return true;
}

void CDeckSerializer::readFormat()
{
    unsigned int revision = 0;
    bool exists = false;
    const bool read = GuardedTransfer::run([&]() {
        // Even the question fails where the group's header is damaged.
        exists = m_creatorData.attrExists(DeckKeys::SvnVersion);
        if (!exists) {
            return;
        }
        const H5::Attribute attribute = m_creatorData.openAttribute(DeckKeys::SvnVersion);
        GuardedTransfer::requireSingle(attribute);
        attribute.read(H5::PredType::NATIVE_UINT, &revision);
    });
    if (read && exists) {
        // A revision that the table lacks enters it with format 0.
        CAppSettings::instance()->setDeckFormat(DeckKeys::FormatForRevision[revision]);
    }
}

void CDeckSerializer::renameKeys() const
{
    // For the rest of the process: later decks are asked for the changed names, too.
    if (m_iFormat == 1) {
        DeckKeys::TemperatureUpdateData = DeckKeys::TemperatureUpdateParticleData;
    }
    if (m_iFormat == 2) {
        DeckKeys::HeatConductionData = DeckKeys::HeatConductionParticleData;
    }
}

void CDeckSerializer::walkModelSet(CModelSet& set, unsigned int mode, H5::Group group)
{
    transferCompound<SAdvCmpd>(group, DeckKeys::HertzMindlinWithJKRData,
                               std::ref(set.m_hertzMindlinJkr), mode);
    transferCompound<SAdvCmpd>(group, DeckKeys::HertzMindlinWithJKRV2Data,
                               std::ref(set.m_hertzMindlinJkrV2), mode);
    if (m_iFormat >= 2) {
        const std::string name = std::string(DeckKeys::LinearSpring) + "/" + DeckKeys::Data;
        transferCompound<SAdvCmpd>(group, name.c_str(), std::ref(set.m_linearSpring), mode);
    } else {
        transferTaggedAttribute(group, DeckKeys::LinearSpring, DeckKeys::Data,
                                H5::PredType::NATIVE_DOUBLE, &set.m_linearSpringValue, mode);
    }
    transferCompound<SHystereticCmpdInter>(group, DeckKeys::HystereticSpringInteractions,
                                           std::ref(set.m_hystereticInteractions), mode);
    transferCompound<SBasicCmpd>(group, DeckKeys::HystereticSpringYields,
                                 std::ref(set.m_hystereticYields), mode);
    transferCompound<SEcmCmpd>(group, DeckKeys::EdinburghElastoPlasticAdhesionData,
                               std::ref(set.m_edinburghAdhesion), mode);
    transferRollingFriction(set, mode, group);
    transferCompound<SAdvCmpd>(group, DeckKeys::LinearCohesionV2Data,
                               std::ref(set.m_linearCohesionV2), mode);
    if (m_iFormat >= 11) {
        transferCompound<SBasicCmpd>(group, DeckKeys::SprayCoatingData,
                                     std::ref(set.m_sprayCoating), mode);
    }
    group.close();
}

void CDeckSerializer::transferRollingFriction(CModelSet& set, unsigned int mode, H5::Group& group)
{
    const char* const model = DeckKeys::TypeCRollingFriction;
    transferAttribute(group, model, DeckKeys::CoefficientOfRollingStiffness,
                      H5::PredType::NATIVE_DOUBLE, &set.m_coefficientOfRollingStiffness, mode);
    transferAttribute(group, model, DeckKeys::RollingViscousDampingRatio,
                      H5::PredType::NATIVE_DOUBLE, &set.m_rollingViscousDampingRatio, mode);
    transferFlag(group, model, DeckKeys::TangentialRotationOnly, &set.m_bTangentialRotationOnly,
                 mode);
    transferFlag(group, model, DeckKeys::UndampedForceOnly, &set.m_bUndampedForceOnly, mode);
}

void CDeckSerializer::walkSurfaceSurface(CCreatorData& record, unsigned int mode)
{
    H5::Group group = m_physicsModels.openGroup(DeckKeys::SurfaceSurface);
    CSurfaceSurfaceModels& models = record.m_surfaceSurface;
    walkModelSet(models, mode, m_physicsModels.openGroup(DeckKeys::SurfaceSurface));
    transferBonding(models, mode, group);
    if (m_iFormat >= 1) {
        transferBondingV2(models, mode, group);
    }
    transferCompound<SBasicCmpd>(group, DeckKeys::HeatConductionData,
                                 std::ref(models.m_heatConduction), mode);
}

void CDeckSerializer::transferBonding(CSurfaceSurfaceModels& models, unsigned int mode,
                                      H5::Group& group)
{
    transferCompound<SBondParamCmpd>(group, DeckKeys::BondingData, std::ref(models.m_bonding),
                                     mode);
    transferTaggedAttribute(group, DeckKeys::Bonding, DeckKeys::StartTime,
                            H5::PredType::NATIVE_DOUBLE, &models.m_bondingStartTime, mode);
    transferTaggedAttribute(group, DeckKeys::Bonding, DeckKeys::TorqueFeedback,
                            H5::PredType::NATIVE_HBOOL, &models.m_bondingTorqueFeedback, mode);
}

void CDeckSerializer::transferBondingV2(CSurfaceSurfaceModels& models, unsigned int mode,
                                        H5::Group& group)
{
    transferCompound<SBondV2ParamCmpd>(group, DeckKeys::BondingV2Data, std::ref(models.m_bondingV2),
                                       mode);
    transferTimeMode(mode, group);
    if (m_iFormat < 3) {
        transferTaggedAttribute(group, DeckKeys::BondingV2, DeckKeys::StartTime,
                                H5::PredType::NATIVE_DOUBLE, &models.m_bondingV2StartTime, mode);
    }
    transferTaggedAttribute(group, DeckKeys::BondingV2, DeckKeys::TorqueFeedback,
                            H5::PredType::NATIVE_HBOOL, &models.m_bondingV2TorqueFeedback, mode);
}

void CDeckSerializer::transferTimeMode(unsigned int mode, H5::Group& group)
{
    // Not part of the record: cases always carry the time mode 0.
    CTaggedValue<double> timeMode{std::string(), 0.0};
    transferTaggedAttribute(group, DeckKeys::BondingV2, DeckKeys::BondingTimeMode,
                            H5::PredType::NATIVE_DOUBLE, &timeMode, mode);
    if (m_iFormat < 3 && timeMode.second == 1.0) {
        MessageBox::warning(Messages::Warning, Messages::BondCreationTime);
    }
}

void CDeckSerializer::walkSurfaceGeometry(CCreatorData& record, unsigned int mode)
{
    H5::Group group = m_physicsModels.openGroup(DeckKeys::SurfaceGeometry);
    CSurfaceGeometryModels& models = record.m_surfaceGeometry;
    walkModelSet(models, mode, m_physicsModels.openGroup(DeckKeys::SurfaceGeometry));
    transferTaggedAttribute(group, DeckKeys::StandardRollingFriction,
                            DeckKeys::EnableRollingFriction, H5::PredType::NATIVE_HBOOL,
                            &models.m_standardRollingFriction, mode);
    transferCompound<SBasicCmpd>(group, DeckKeys::HeatConductionParticleData,
                                 std::ref(models.m_heatConductionParticle), mode);
    transferCompound<SCharDoubleDouble>(group, DeckKeys::HeatConductionGeometryData,
                                        std::ref(models.m_heatConductionGeometry), mode);
    transferWear(models, mode, group);
}

void CDeckSerializer::transferWear(CSurfaceGeometryModels& models, unsigned int mode,
                                   H5::Group& group)
{
    if (m_iFormat == 0) {
        transferCompound<SBasicCmpd>(group, DeckKeys::ArchardWearData,
                                     std::ref(models.m_archardWear), mode);
    }
    if (m_iFormat >= 11) {
        transferTaggedAttribute(group, DeckKeys::ArchardWear, DeckKeys::Deformation,
                                H5::PredType::NATIVE_HBOOL, &models.m_archardDeformation, mode);
    }
    if (m_iFormat >= 1) {
        transferCompound<SAdvCmpd>(group, DeckKeys::ArchardWearData, std::ref(models.m_archardWear),
                                   mode);
    }
    if (m_iFormat >= 11) {
        transferTaggedAttribute(group, DeckKeys::OkaWear, DeckKeys::OkaDeformation,
                                H5::PredType::NATIVE_HBOOL, &models.m_okaDeformation, mode);
        transferCompound<SOkaWearParamCmpd>(group, DeckKeys::OkaWearData,
                                            std::ref(models.m_okaWear), mode);
    }
}

void CDeckSerializer::walkExternalForces(CCreatorData& record, unsigned int mode)
{
    H5::Group group = m_physicsModels.openGroup(DeckKeys::ExternalForces);
    CExternalForces& forces = record.m_externalForces;
    struct Model
    {
        const char* name;
        CForce& force;
        SingleMap* shapeFactors;
    };
    const std::array<Model, 6> models = {{
        {DeckKeys::GanserDrag, forces.m_ganserDrag, &forces.m_ganserDrag.m_shapeFactors},
        {DeckKeys::HaiderAndLevenspielDrag, forces.m_haiderLevenspielDrag,
         &forces.m_haiderLevenspielDrag.m_shapeFactors},
        {DeckKeys::MagnusLift, forces.m_magnusLift, nullptr},
        {DeckKeys::MorsiAndAlexanderDrag, forces.m_morsiAlexanderDrag, nullptr},
        {DeckKeys::SaffmanLift, forces.m_saffmanLift, nullptr},
        {DeckKeys::SchillerAndNaumannDrag, forces.m_schillerNaumannDrag, nullptr},
    }};
    for (const Model& model : models) {
        if (!GuardedTransfer::linkExists(group, model.name)) {
            continue;
        }
        if (mode == Read || mode == Write) {
            model.force.m_sName = model.name;
        }
        if (model.shapeFactors != nullptr) {
            H5::Group forceGroup = group.openGroup(model.name);
            transferShapeFactors(*model.shapeFactors, mode, forceGroup);
        }
        transferForce(model.force, model.name, mode, group);
    }
    transferCompound<SBasicCmpd>(group, DeckKeys::TemperatureUpdateData,
                                 std::ref(forces.m_temperatureUpdate), mode);
}

void CDeckSerializer::transferForce(CForce& force, const char* name, unsigned int mode,
                                    H5::Group& forces)
{
    const H5::PredType& number = H5::PredType::NATIVE_DOUBLE;
    transferAttribute(forces, name, DeckKeys::Density, number, &force.m_density, mode);
    transferAttribute(forces, name, DeckKeys::FieldScale, number, &force.m_fieldScale, mode);
    transferAttribute(forces, name, DeckKeys::Viscosity, number, &force.m_viscosity, mode);
    auto& [x, y, z] = force.m_steadyFlowVelocity;
    std::array<double, 3> velocity = {x, y, z};
    const hsize_t axes = velocity.size();
    transferAttribute(forces, name, DeckKeys::SteadyFlowVelocity, H5::ArrayType(number, 1, &axes),
                      velocity.data(), mode);
    if (mode == Read) {
        force.m_steadyFlowVelocity = {velocity[0], velocity[1], velocity[2]};
    }
    transferAttribute(forces, name, DeckKeys::UsingSteadyFlow, number, &force.m_usingSteadyFlow,
                      mode);
}
