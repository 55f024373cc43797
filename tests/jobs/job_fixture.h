#pragma once

#include "deck/creator_data.h"
#include "jobs/case_matrix.h"
#include "samples/deck_maker.h"

#include <QString>
#include <QTemporaryDir>

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// A program that was just started, in a folder of its own: settings and store are empty.
class CJobFixture
{
public:
    CJobFixture();

    std::string path(const std::string& name) const;
    std::string writeFile(const std::string& name, const std::string& content) const;

    /// A new empty folder below the fixture's, with its path.
    std::string folder(const std::string& name) const;

    /// Writes a deck `<stem>.zek` and makes it the program's deck, as its first page does.
    DeckPaths chooseDeck(const DeckDescription& description, const std::string& stem = "bed");

private:
    QTemporaryDir m_root;
};

/// Keys of an entry, each with the values of its fields.
using EntryKeys = std::vector<std::pair<std::string, std::vector<ValueList>>>;

/// Appends an entry to the store as the property tree does; the first value of a field is the
/// deck's.
void pushEntry(const std::string& name, const EntryKeys& keys);

/// The entries of the interactions of a plain deck, nothing varied.
void pushPlainInteractions();

/// The two entries of a force that the deck doesn't hold: zeros and a flag that is false.
void pushAbsentForce(const std::string& label);

/// Content of a file, byte for byte.
std::string contentOf(const std::string& path);

/// Names of a folder's files and folders, in order.
std::vector<std::string> namesIn(const std::string& folder);

/// The record that the data file holds.
CCreatorData recordIn(const std::string& dataFile);

/// What() of the std::filesystem::filesystem_error that `action` raises, empty if it raises none.
std::string filesystemErrorOf(const std::function<void()>& action);
