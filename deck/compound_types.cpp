#include "deck/compound_types.h"

#include "app/constants/deck_keys.h"

#include <cstddef>

namespace HDF5DATATYPES {
namespace {

// A byte of padding would shift what follows against the file.
static_assert(sizeof(SBasicCmpd) == 264);
static_assert(sizeof(SAdvCmpd) == 520);
static_assert(sizeof(SInteraction) == 536);
static_assert(sizeof(SHystereticCmpdInter) == 528);
static_assert(sizeof(SOkaWearParamCmpd) == 536);
static_assert(sizeof(SEcmCmpd) == 1072);
static_assert(sizeof(SBondParamCmpd) == 552);
static_assert(sizeof(SBondV2ParamCmpd) == 568);
static_assert(sizeof(SCharDoubleDouble) == 528);

H5::StrType text(std::size_t length)
{
    return {H5::PredType::C_S1, length};
}

} // namespace

SBasicCmpdType::SBasicCmpdType()
    : H5::CompType(sizeof(SBasicCmpd))
{
    const H5::DataType& number = H5::PredType::NATIVE_DOUBLE;
    insertMember(DeckKeys::Name, offsetof(SBasicCmpd, name), text(sizeof(SBasicCmpd::name)));
    insertMember(DeckKeys::Value, offsetof(SBasicCmpd, value), number);
}

SAdvCmpdType::SAdvCmpdType()
    : H5::CompType(sizeof(SAdvCmpd))
{
    const H5::DataType& number = H5::PredType::NATIVE_DOUBLE;
    insertMember(DeckKeys::Name1, offsetof(SAdvCmpd, name1), text(sizeof(SAdvCmpd::name1)));
    insertMember(DeckKeys::Name2, offsetof(SAdvCmpd, name2), text(sizeof(SAdvCmpd::name2)));
    insertMember(DeckKeys::Value, offsetof(SAdvCmpd, value), number);
}

SInteractionType::SInteractionType()
    : H5::CompType(sizeof(SInteraction))
{
    const H5::DataType& number = H5::PredType::NATIVE_DOUBLE;
    insertMember(DeckKeys::Key, offsetof(SInteraction, key), text(sizeof(SInteraction::key)));
    insertMember(DeckKeys::Restitution, offsetof(SInteraction, restitution), number);
    insertMember(DeckKeys::StaticFriction, offsetof(SInteraction, staticFriction), number);
    insertMember(DeckKeys::RollingFriction, offsetof(SInteraction, rollingFriction), number);
}

SHystereticCmpdInterType::SHystereticCmpdInterType()
    : H5::CompType(sizeof(SHystereticCmpdInter))
{
    using Record = SHystereticCmpdInter;
    const H5::DataType& number = H5::PredType::NATIVE_DOUBLE;
    insertMember(DeckKeys::Name1, offsetof(Record, name1), text(sizeof(Record::name1)));
    insertMember(DeckKeys::Name2, offsetof(Record, name2), text(sizeof(Record::name2)));
    insertMember(DeckKeys::Damping, offsetof(Record, damping), number);
    insertMember(DeckKeys::Stiffness, offsetof(Record, stiffness), number);
}

SOkaWearParamCmpdType::SOkaWearParamCmpdType()
    : H5::CompType(sizeof(SOkaWearParamCmpd))
{
    using Record = SOkaWearParamCmpd;
    const H5::DataType& number = H5::PredType::NATIVE_DOUBLE;
    insertMember(DeckKeys::Name1, offsetof(Record, name1), text(sizeof(Record::name1)));
    insertMember(DeckKeys::Name2, offsetof(Record, name2), text(sizeof(Record::name2)));
    insertMember(DeckKeys::WearConstant, offsetof(Record, wearConstant), number);
    insertMember(DeckKeys::VickersHardness, offsetof(Record, vickersHardness), number);
    insertMember(DeckKeys::ScalingFactor, offsetof(Record, scalingFactor), number);
}

SEcmCmpdType::SEcmCmpdType()
    : H5::CompType(sizeof(SEcmCmpd))
{
    using Record = SEcmCmpd;
    const H5::DataType& number = H5::PredType::NATIVE_DOUBLE;
    insertMember(DeckKeys::Name1, offsetof(Record, name1), text(sizeof(Record::name1)));
    insertMember(DeckKeys::Name2, offsetof(Record, name2), text(sizeof(Record::name2)));
    insertMember(DeckKeys::ConstPullOffForce, offsetof(Record, constPullOffForce), number);
    insertMember(DeckKeys::SurfaceEnergy, offsetof(Record, surfaceEnergy), number);
    insertMember(DeckKeys::ContactPlasticityRatio, offsetof(Record, contactPlasticityRatio),
                 number);
    insertMember(DeckKeys::SlopeExponential, offsetof(Record, slopeExponential), number);
    insertMember(DeckKeys::TensileExponential, offsetof(Record, tensileExponential), number);
    insertMember(DeckKeys::TangentStiffMultiplier, offsetof(Record, tangentStiffMultiplier),
                 number);
}

SBondParamCmpdType::SBondParamCmpdType()
    : H5::CompType(sizeof(SBondParamCmpd))
{
    using Record = SBondParamCmpd;
    const H5::DataType& number = H5::PredType::NATIVE_DOUBLE;
    insertMember(DeckKeys::Key, offsetof(Record, key), text(sizeof(Record::key)));
    insertMember(DeckKeys::NormalStiffness, offsetof(Record, normalStiffness), number);
    insertMember(DeckKeys::ShearStiffness, offsetof(Record, shearStiffness), number);
    insertMember(DeckKeys::NormalStrength, offsetof(Record, normalStrength), number);
    insertMember(DeckKeys::ShearStrength, offsetof(Record, shearStrength), number);
    insertMember(DeckKeys::BondRadius, offsetof(Record, bondRadius), number);
}

SBondV2ParamCmpdType::SBondV2ParamCmpdType()
    : H5::CompType(sizeof(SBondV2ParamCmpd))
{
    using Record = SBondV2ParamCmpd;
    const H5::DataType& number = H5::PredType::NATIVE_DOUBLE;
    insertMember(DeckKeys::Key, offsetof(Record, key), text(sizeof(Record::key)));
    insertMember(DeckKeys::NormalStiffness, offsetof(Record, normalStiffness), number);
    insertMember(DeckKeys::NormalRange, offsetof(Record, normalRange), number);
    insertMember(DeckKeys::TangStiffness, offsetof(Record, tangStiffness), number);
    insertMember(DeckKeys::TangRange, offsetof(Record, tangRange), number);
    insertMember(DeckKeys::NormalStrength, offsetof(Record, normalStrength), number);
    insertMember(DeckKeys::ShearStrength, offsetof(Record, shearStrength), number);
    insertMember(DeckKeys::BondDiskScale, offsetof(Record, bondDiskScale), number);
}

SCharDoubleDoubleType::SCharDoubleDoubleType()
    : H5::CompType(sizeof(SCharDoubleDouble))
{
    using Record = SCharDoubleDouble;
    const H5::DataType& number = H5::PredType::NATIVE_DOUBLE;
    insertMember("name", offsetof(Record, name), text(sizeof(Record::name)));
    insertMember("first", offsetof(Record, first), number);
    insertMember("second", offsetof(Record, second), number);
}

} // namespace HDF5DATATYPES
