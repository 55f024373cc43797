#pragma once

#include <H5Cpp.h>

#include <cstddef>
#include <functional>

/// What every transfer of one item of a deck needs. A deck's file isn't trusted: ranks, classes and
/// counts are asked before a buffer is filled.
namespace GuardedTransfer {

/// Runs the transfer of one item. Its failure is printed (HDF5's on the standard error stream, any
/// other on the standard output) and the walk goes on. Returns whether it succeeded.
bool run(const std::function<void()>& transfer);

/// Whether the group has a link of that path; false as well where the path's first part is missing.
bool linkExists(const H5::Group& group, const char* path);

/// Elements of a one-dimensional dataset. Throws std::runtime_error for another rank, for a count
/// that no deck has, and where the dataset's header holds fewer.
std::size_t elementCount(const H5::DataSet& dataset);

/// Throws std::runtime_error for another class.
void requireClass(const H5::DataSet& dataset, H5T_class_t expected);

/// Throws std::runtime_error unless the attribute holds one element.
void requireSingle(const H5::Attribute& attribute);

/// The line on the standard error stream for a case that doesn't hold as many entries as the
/// dataset that it is written to.
void reportOtherCount(const char* dataset, std::size_t fileCount, std::size_t caseCount);

} // namespace GuardedTransfer
