#pragma once

#include "samples/deck_description.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

/// How a program ended and what it said.
struct SProgramEnd
{
    int exitCode = -1; ///< -1 if it didn't start, crashed or took more than two minutes
    QByteArray output;
    QByteArray errors;
};

/// A table of the export: values over time by title, "TIME" among them.
using SampleTable = QMap<QString, QVector<double>>;

namespace SampleCase {

SProgramEnd run(const QString& program, const QStringList& arguments, const QString& folder);

/// A deck of gravel in a steel box in which both contacts have these values.
DeckDescription deckOf(double restitution, double staticFriction, double rollingFriction);

/// Writes case.zek with its files, and case.dfg, into the folder.
void write(const DeckDescription& deck, const QString& folder);

QByteArray contentOf(const QString& file);

QStringList linesOf(const QString& file);

/// The table behind the line that starts with "TIME"; empty if there is none.
SampleTable tableOf(const QString& exportFile);

} // namespace SampleCase
