#pragma once

#include "adapters/liggghts/experiment.h"
#include "tests/samples/sample_case.h"

#include <QMap>
#include <QString>
#include <QStringList>

/// A case for the adapter: a deck of gravel and steel with its experiment, in a folder.
namespace AdapterCase {

/// Whether the engine is installed.
bool engineIsThere();

/// Path of the adapter.
QString program();

/// Writes case.zek with its files, case.dfg and, unless it is empty, case.experiment.
void write(const DeckDescription& deck, const QString& experiment, const QString& folder);

/// Runs the adapter on case.zek of that folder.
SProgramEnd run(const QString& folder, const QStringList& further);

/// The last values of the export's table, by title.
QMap<QString, double> results(const QString& folder);

/// "experiment = ..." with gravel as the particles and steel around them; the further lines
/// follow.
QString experiment(const QString& kind, const QStringList& furtherLines = {});

/// The experiment that these lines describe.
liggghts::SExperiment parsed(const QString& text);

} // namespace AdapterCase
