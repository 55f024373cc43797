#pragma once

#include "deck/creator_data.h"

#include <QString>

#include <string>

class CDeckSerializer;

/// Reading a deck that belongs to the user: its data file has to be opened for writing, but neither
/// its bytes nor its time stamp change.
namespace DeckLoading {

/// Opens the data file, reads it into the record, closes it and puts its modification time back,
/// also where an exception passes. Throws H5::FileIException for a file that can't be opened and
/// what CDeckSerializer::walk lets pass.
void readDataFile(CDeckSerializer& serializer, const std::string& path, CCreatorData& record);

/// The deck of that .zek path. A data file that can't be read yields an empty record named
/// "bad data", with HDF5's error stack on the standard error stream; a data file that lacks a group
/// below its first lets H5::GroupIException pass.
CCreatorData loadDeck(CDeckSerializer& serializer, const QString& path);

} // namespace DeckLoading
