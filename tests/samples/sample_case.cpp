#include "tests/samples/sample_case.h"

#include "samples/deck_maker.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace {

constexpr int Patience = 120000;

void writeText(const QString& file, const QByteArray& text)
{
    QFile target(file);
    target.open(QIODevice::WriteOnly);
    target.write(text);
}

} // namespace

SProgramEnd SampleCase::run(const QString& program, const QStringList& arguments,
                            const QString& folder)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(program, arguments);
    SProgramEnd end;
    if (process.waitForFinished(Patience) && process.exitStatus() == QProcess::NormalExit) {
        end.exitCode = process.exitCode();
    }
    end.output = process.readAllStandardOutput();
    end.errors = process.readAllStandardError();
    return end;
}

DeckDescription SampleCase::deckOf(double restitution, double staticFriction,
                                   double rollingFriction)
{
    const std::vector<double> values{restitution, staticFriction, rollingFriction};
    DeckDescription deck;
    deck.revision = 38329;
    deck.interactions = {{{pairKey("Gravel", "Gravel")}, values},
                         {{pairKey("Gravel", "Steel")}, values},
                         {{pairKey("Steel", "Steel")}, values}};
    return deck;
}

void SampleCase::write(const DeckDescription& deck, const QString& folder)
{
    QDir().mkpath(folder);
    writeDeck(deck, folder.toStdString(), "case");
    writeText(folder + QStringLiteral("/case.dfg"), "!format=KEYPATHVALUE\n");
}

QByteArray SampleCase::contentOf(const QString& file)
{
    QFile source(file);
    source.open(QIODevice::ReadOnly);
    return source.readAll();
}

QStringList SampleCase::linesOf(const QString& file)
{
    QString text = QString::fromUtf8(contentOf(file));
    text.remove(QLatin1Char('\r'));
    QStringList lines = text.split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty()) {
        lines.removeLast();
    }
    return lines;
}

SampleTable SampleCase::tableOf(const QString& exportFile)
{
    SampleTable table;
    QStringList titles;
    for (const QString& line : linesOf(exportFile)) {
        const QStringList cells = line.split(QLatin1Char(','));
        if (cells.first() == QLatin1String("TIME")) {
            titles = cells;
            continue;
        }
        for (int i = 0; i < qMin(titles.size(), cells.size()); ++i) {
            table[titles.at(i)].append(cells.at(i).toDouble());
        }
    }
    return table;
}
