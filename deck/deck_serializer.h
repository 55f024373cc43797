#pragma once

#include "deck/creator_data.h"

#include <H5Cpp.h>

#include <any>
#include <string>
#include <vector>

/// Transfers every model's data between a deck's HDF5 file and a record. One walk serves both
/// directions; what the file doesn't hold is skipped in both, and nothing is ever created in it.
/// A failing item is printed and the walk goes on with the next.
class CDeckSerializer
{
public:
    /// Any other mode opens what a walk opens and transfers nothing.
    enum Mode : unsigned int { Read = 0, Write = 1 };

    /// Always true. Sets the deck format from the file's version in every mode. Lets pass what the
    /// opening of a group throws, and std::out_of_range "invalid vector subscript" for a force that
    /// names more shapes than it has values. Nothing of the file stays open.
    bool walk(H5::H5File& file, CCreatorData& record, unsigned int mode);

private:
    void readFormat();
    void renameKeys() const;

    void walkSurfaceSurface(CCreatorData& record, unsigned int mode);
    void walkSurfaceGeometry(CCreatorData& record, unsigned int mode);
    void walkExternalForces(CCreatorData& record, unsigned int mode);
    /// Takes the group over and closes it.
    void walkModelSet(CModelSet& set, unsigned int mode, H5::Group group);

    void transferRollingFriction(CModelSet& set, unsigned int mode, H5::Group& group);
    void transferBonding(CSurfaceSurfaceModels& models, unsigned int mode, H5::Group& group);
    void transferBondingV2(CSurfaceSurfaceModels& models, unsigned int mode, H5::Group& group);
    void transferTimeMode(unsigned int mode, H5::Group& group);
    void transferWear(CSurfaceGeometryModels& models, unsigned int mode, H5::Group& group);
    void transferForce(CForce& force, const char* name, unsigned int mode, H5::Group& forces);
    void transferShapeFactors(SingleMap& factors, unsigned int mode, H5::Group& group);
    void writeShapeFactors(const SingleMap& factors, H5::Group& group);

    /// `target` holds a std::reference_wrapper of the record's map; another type is a
    /// programming error and lets std::bad_any_cast pass.
    template <class Record>
    void transferCompound(H5::Group& group, const char* name, std::any target, unsigned int mode);

    /// Does nothing where `parent` has no such subgroup; a missing attribute is a failure.
    void transferAttribute(H5::Group& parent, const char* subgroup, const char* attribute,
                           const H5::DataType& type, void* value, unsigned int mode);
    void transferFlag(H5::Group& parent, const char* subgroup, const char* attribute, bool* value,
                      unsigned int mode);

    /// As transferAttribute, for a bool or a double; a value that was read gets the tag "Active".
    template <class T>
    void transferTaggedAttribute(H5::Group& parent, const char* subgroup, const char* attribute,
                                 const H5::PredType& type, CTaggedValue<T>* value,
                                 unsigned int mode);

    /// `target` holds a std::reference_wrapper of a std::vector<double>; a read replaces its
    /// content.
    void transferDoubles(H5::Group& group, const char* name, std::any target, unsigned int mode);
    /// A read appends.
    void transferStrings(H5::Group& group, const char* name, std::vector<std::string>& target,
                         unsigned int mode);

    int m_iFormat = 0;
    H5::Group m_creatorData;
    H5::Group m_physicsModels;
};
