#include "tests/adapters/adapter_case.h"

#include "adapters/liggghts/experiment_file.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <sstream>

bool AdapterCase::engineIsThere()
{
    return !QStandardPaths::findExecutable(QStringLiteral("liggghts")).isEmpty();
}

QString AdapterCase::program()
{
    return QStringLiteral(ORVA_LIGGGHTS);
}

void AdapterCase::write(const DeckDescription& deck, const QString& experiment,
                        const QString& folder)
{
    SampleCase::write(deck, folder);
    QFile file(folder + QStringLiteral("/case.experiment"));
    if (!experiment.isEmpty() && file.open(QIODevice::WriteOnly)) {
        file.write(experiment.toUtf8());
    }
}

SProgramEnd AdapterCase::run(const QString& folder, const QStringList& further)
{
    return SampleCase::run(program(), QStringList{"-i", "case.zek"} + further, folder);
}

QMap<QString, double> AdapterCase::results(const QString& folder)
{
    const SampleTable table = SampleCase::tableOf(folder + QStringLiteral("/case.csv"));
    QMap<QString, double> results;
    for (auto column = table.begin(); column != table.end(); ++column) {
        if (!column.value().isEmpty()) {
            results[column.key()] = column.value().last();
        }
    }
    return results;
}

QString AdapterCase::experiment(const QString& kind, const QStringList& furtherLines)
{
    const QStringList lines{QStringLiteral("experiment = ") + kind,
                            QStringLiteral("particles = Gravel"), QStringLiteral("wall = Steel")};
    return (lines + furtherLines).join(QLatin1Char('\n')) + QLatin1Char('\n');
}

liggghts::SExperiment AdapterCase::parsed(const QString& text)
{
    std::istringstream stream(text.toStdString());
    return liggghts::readExperiment(stream);
}
