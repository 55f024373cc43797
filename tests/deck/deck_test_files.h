#pragma once

#include "deck/creator_data.h"
#include "deck/deck_serializer.h"
#include "samples/deck_maker.h"

#include <QByteArray>
#include <QStringList>

#include <H5Cpp.h>

#include <string>

/// Helpers of the deck tests: real files, real child processes.
namespace DeckTestFiles {

/// Writes the deck into a new folder of the test program.
DeckPaths newDeck(const DeckDescription& description, const std::string& stem = "hopper");

/// Gives the deck another name, which may have any letters. Returns the path of its .zek file.
QString renamed(const DeckPaths& deck, const QString& stem);

/// Walks the data file in that mode with a serialiser of its own.
void walk(const DeckPaths& deck, CCreatorData& record, unsigned int mode);

/// A new record, read from the deck.
CCreatorData read(const DeckPaths& deck);

QByteArray bytesOf(const std::filesystem::path& path);

/// Sets the file's modification time to a moment long ago and returns it.
std::filesystem::file_time_type makeOld(const std::filesystem::path& path);

/// What a child process left behind.
struct SChildEnd
{
    bool aborted = false; ///< by std::abort
    int exitCode = -1;
    QByteArray output;
    QByteArray error;
};

/// Runs a program with a folder of its own for temporary files and for what it leaves behind.
SChildEnd runProgram(const QString& program, const QStringList& arguments);

/// Runs the deck probe, see deck_probe.cpp, with its own folder for temporary files.
SChildEnd runProbe(const QStringList& arguments);

/// Runs a Python script with the system's interpreter, which has h5py.
SChildEnd runPython(const QString& script, const QStringList& arguments);

} // namespace DeckTestFiles
