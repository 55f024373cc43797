#pragma once

#include <H5Cpp.h>

/// The elements of a deck's datasets: plain records without padding, and the HDF5 type of each.
/// Names and offsets are the deck's file format; texts need not end in a NUL.
namespace HDF5DATATYPES {

/// A value for one material or name.
struct SBasicCmpd
{
    char name[256];
    double value;
};

/// A value for a pair of names.
struct SAdvCmpd
{
    char name1[256];
    char name2[256];
    double value;
};

/// A row of the material interaction table.
struct SInteraction
{
    char key[512];
    double restitution;
    double staticFriction;
    double rollingFriction;
};

/// Hysteretic spring parameters of a pair.
struct SHystereticCmpdInter
{
    char name1[256];
    char name2[256];
    double damping;
    double stiffness;
};

/// Oka wear parameters of a pair.
struct SOkaWearParamCmpd
{
    char name1[256];
    char name2[256];
    double wearConstant;
    double vickersHardness;
    double scalingFactor;
};

/// Edinburgh Elasto-Plastic Adhesion parameters of a pair; its names are longer than the others'.
struct SEcmCmpd
{
    char name1[512];
    char name2[512];
    double constPullOffForce;
    double surfaceEnergy;
    double contactPlasticityRatio;
    double slopeExponential;
    double tensileExponential;
    double tangentStiffMultiplier;
};

/// Bonding parameters.
struct SBondParamCmpd
{
    char key[512];
    double normalStiffness;
    double shearStiffness;
    double normalStrength;
    double shearStrength;
    double bondRadius;
};

/// Bonding V2 parameters.
struct SBondV2ParamCmpd
{
    char key[512];
    double normalStiffness;
    double normalRange;
    double tangStiffness;
    double tangRange;
    double normalStrength;
    double shearStrength;
    double bondDiskScale;
};

/// A name with two values.
struct SCharDoubleDouble
{
    char name[512];
    double first;
    double second;
};

// The constructors let H5::Exception pass; they need the names of DeckKeys.

class SBasicCmpdType : public H5::CompType
{
public:
    SBasicCmpdType();
};

class SAdvCmpdType : public H5::CompType
{
public:
    SAdvCmpdType();
};

class SInteractionType : public H5::CompType
{
public:
    SInteractionType();
};

class SHystereticCmpdInterType : public H5::CompType
{
public:
    SHystereticCmpdInterType();
};

class SOkaWearParamCmpdType : public H5::CompType
{
public:
    SOkaWearParamCmpdType();
};

class SEcmCmpdType : public H5::CompType
{
public:
    SEcmCmpdType();
};

class SBondParamCmpdType : public H5::CompType
{
public:
    SBondParamCmpdType();
};

class SBondV2ParamCmpdType : public H5::CompType
{
public:
    SBondV2ParamCmpdType();
};

class SCharDoubleDoubleType : public H5::CompType
{
public:
    SCharDoubleDoubleType();
};

} // namespace HDF5DATATYPES
