#pragma once

#include "deck/creator_data.h"
#include "samples/deck_description.h"

/// The record that a deck of that description must be read into, for what its format visits.
CCreatorData expectedRecord(const DeckDescription& description, int format,
                            const std::string& name = std::string());

/// Another record with the same keys, tags and names: every number doubled, every flag turned.
CCreatorData changedRecord(CCreatorData record);
