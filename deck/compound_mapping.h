#pragma once

#include "deck/compound_types.h"
#include "deck/creator_data.h"

#include <string>
#include <tuple>
#include <utility>

/// How each record stands in its map: the key, and the numbers in the order of the map's value.
namespace CompoundMapping {

/// The HDF5 type and the map of a record, and whether its names are searched for the separator.
template <class Hdf5Type, class RecordMap, bool Warns>
struct Traits
{
    using Type = Hdf5Type;
    using Map = RecordMap;
    static constexpr bool warnsOfSeparator = Warns;
};

template <class Record>
struct Mapping;

// clang-format off
template <> struct Mapping<HDF5DATATYPES::SBasicCmpd>
    : Traits<HDF5DATATYPES::SBasicCmpdType, SingleMap, false> {};
template <> struct Mapping<HDF5DATATYPES::SAdvCmpd>
    : Traits<HDF5DATATYPES::SAdvCmpdType, SingleMap, true> {};
template <> struct Mapping<HDF5DATATYPES::SInteraction>
    : Traits<HDF5DATATYPES::SInteractionType, TripleMap, false> {};
template <> struct Mapping<HDF5DATATYPES::SHystereticCmpdInter>
    : Traits<HDF5DATATYPES::SHystereticCmpdInterType, PairMap, true> {};
template <> struct Mapping<HDF5DATATYPES::SOkaWearParamCmpd>
    : Traits<HDF5DATATYPES::SOkaWearParamCmpdType, TripleMap, false> {};
template <> struct Mapping<HDF5DATATYPES::SEcmCmpd>
    : Traits<HDF5DATATYPES::SEcmCmpdType, SextupleMap, true> {};
template <> struct Mapping<HDF5DATATYPES::SBondParamCmpd>
    : Traits<HDF5DATATYPES::SBondParamCmpdType, QuintupleMap, false> {};
template <> struct Mapping<HDF5DATATYPES::SBondV2ParamCmpd>
    : Traits<HDF5DATATYPES::SBondV2ParamCmpdType, SeptupleMap, false> {};
template <> struct Mapping<HDF5DATATYPES::SCharDoubleDouble>
    : Traits<HDF5DATATYPES::SCharDoubleDoubleType, PairMap, false> {};
// clang-format on

inline double& numbers(HDF5DATATYPES::SBasicCmpd& record)
{
    return record.value;
}

inline double& numbers(HDF5DATATYPES::SAdvCmpd& record)
{
    return record.value;
}

inline auto numbers(HDF5DATATYPES::SInteraction& record)
{
    return std::tie(record.restitution, record.staticFriction, record.rollingFriction);
}

inline auto numbers(HDF5DATATYPES::SHystereticCmpdInter& record)
{
    return std::pair<double&, double&>(record.damping, record.stiffness);
}

/// Against the order of the members.
inline auto numbers(HDF5DATATYPES::SOkaWearParamCmpd& record)
{
    return std::tie(record.scalingFactor, record.vickersHardness, record.wearConstant);
}

inline auto numbers(HDF5DATATYPES::SEcmCmpd& record)
{
    return std::tie(record.constPullOffForce, record.surfaceEnergy, record.contactPlasticityRatio,
                    record.slopeExponential, record.tensileExponential,
                    record.tangentStiffMultiplier);
}

inline auto numbers(HDF5DATATYPES::SBondParamCmpd& record)
{
    return std::tie(record.normalStiffness, record.shearStiffness, record.normalStrength,
                    record.shearStrength, record.bondRadius);
}

inline auto numbers(HDF5DATATYPES::SBondV2ParamCmpd& record)
{
    return std::tie(record.normalStiffness, record.normalRange, record.tangStiffness,
                    record.tangRange, record.normalStrength, record.shearStrength,
                    record.bondDiskScale);
}

inline auto numbers(HDF5DATATYPES::SCharDoubleDouble& record)
{
    return std::pair<double&, double&>(record.first, record.second);
}

/// "name", "key", or "name1", the separator and "name2", whichever the record has.
template <class Record>
std::string keyOf(const Record& record);

/// The reverse of `keyOf`; a pair is split at its first separator. A text that leaves no room for a
/// NUL behind it ends the process.
template <class Record>
void setKey(Record& record, const std::string& key);

} // namespace CompoundMapping
