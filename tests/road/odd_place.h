#pragma once

#include <QString>
#include <QStringList>

/// A folder with a deck, a place for jobs and a simulator in it, under names of any kind.
struct SOddPlace
{
    QString deck;
    QString save;
    QString simulator;

    QString job() const { return save + QStringLiteral("/JobSpec"); }
    QString root() const { return job() + QStringLiteral("/JobFileLocation"); }
};

namespace OddPlace {

/// How many cases the roads run.
constexpr int Cases = 2;

/// Makes such a folder; it must not be there yet.
SOddPlace in(const QString& folder, const QString& deckName = QStringLiteral("bed"));

/// Paths of all files and folders below.
QStringList filesBelow(const QString& folder);

/// The road from the deck to the combined file, through the window. Fails the test where deck, job,
/// cases and combined file don't lie there, under names with those letters.
void requireWholeRoad(const SOddPlace& place, const QString& deckName = QStringLiteral("bed"));

} // namespace OddPlace
