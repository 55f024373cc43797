#include "deck/guarded_transfer.h"

#include "app/constants/messages.h"

#include <exception>
#include <iostream>
#include <stdexcept>

namespace GuardedTransfer {
namespace {

// Far above any table of materials, and small enough that a made-up extent can't take all memory.
constexpr hsize_t mostElements = 1U << 20U;

/// Values that lie in the dataset's own header: HDF5 takes their count from elsewhere, and would
/// read or write past them.
void requireWholeHeader(const H5::DataSet& dataset, hsize_t count)
{
    // The layout is asked for last: the library copies a list of properties for it.
    if (dataset.getStorageSize() < count * dataset.getDataType().getSize() &&
        dataset.getCreatePlist().getLayout() == H5D_COMPACT) {
        throw std::runtime_error(dataset.getObjName() + " has fewer elements than it says");
    }
}

} // namespace

bool run(const std::function<void()>& transfer)
{
    try {
        transfer();
        return true;
    } catch (const H5::Exception&) {
        H5::Exception::printErrorStack(stderr);
    } catch (const std::exception& error) {
        std::cout << error.what() << std::endl;
    } catch (...) {
        std::cout << Messages::UnknownException << std::endl;
    }
    return false;
}

bool linkExists(const H5::Group& group, const char* path)
{
    // The library takes a missing first part for an error and would print a stack for every model
    // that a deck doesn't use.
    htri_t exists = 0;
    H5E_BEGIN_TRY
    {
        exists = H5Lexists(group.getId(), path, H5P_DEFAULT);
    }
    H5E_END_TRY
    return exists >= 1;
}

std::size_t elementCount(const H5::DataSet& dataset)
{
    const H5::DataSpace space = dataset.getSpace();
    if (space.getSimpleExtentNdims() != 1) {
        throw std::runtime_error(dataset.getObjName() + " is not one-dimensional");
    }
    hsize_t count = 0;
    space.getSimpleExtentDims(&count);
    if (count > mostElements) {
        throw std::runtime_error(dataset.getObjName() + " has too many elements");
    }
    requireWholeHeader(dataset, count);
    return static_cast<std::size_t>(count);
}

void requireClass(const H5::DataSet& dataset, H5T_class_t expected)
{
    if (dataset.getTypeClass() != expected) {
        throw std::runtime_error(dataset.getObjName() + " has elements of another class");
    }
}

void requireSingle(const H5::Attribute& attribute)
{
    if (attribute.getSpace().getSimpleExtentNpoints() != 1) {
        throw std::runtime_error("\"" + attribute.getName() + "\" does not hold one element");
    }
}

void reportOtherCount(const char* dataset, std::size_t fileCount, std::size_t caseCount)
{
    std::cerr << "Deck data \"" << dataset << "\": the file holds " << fileCount
              << " entries, the case " << caseCount << "; "
              << (caseCount == 0 ? "the file's stay" : "the file's keys stay") << std::endl;
}

} // namespace GuardedTransfer
