#include "tests/adapters/adapter_case.h"

#include "tests/support/test_environment.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QtTest>

#include <cmath>

// A calibration whose answer is known: a run with hidden parameters is the measurement, and the
// wizard's job over a grid that holds them has to find them.

namespace {

constexpr double TrueStaticFriction = 0.3;
constexpr double TrueRollingFriction = 0.2;
constexpr int PatienceMs = 270000;
const QStringList Measured{"Heap height (m)", "Radius of 90 % (m)"};

/// A line of the comparison's table.
struct SRanked
{
    int rank = 0;
    double distance = 0.0;
    double staticFriction = 0.0;
    double rollingFriction = 0.0;
    int number = 0;
};

QByteArray smallExperiment(const QByteArray& seeds)
{
    return "experiment = angle of repose\nparticles = Gravel\nwall = Steel\ncount = 250\n"
           "vessel radius = 0.022\nseeds = " +
           seeds + "\n";
}

void replaceFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

QStringList cellsOf(const QString& line)
{
    return line.split(QLatin1Char(','));
}

} // namespace

class KnownTruthTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theTrueCaseIsFoundAmongTwelve();

private:
    void copySample() const;
    QMap<QString, double> measurement() const;
    QList<SRanked> ranking(const QMap<QString, double>& measurement) const;
    double spreadOfCase(int number, const QMap<QString, double>& measurement) const;
    QString path(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
};

void KnownTruthTest::initTestCase()
{
    if (!AdapterCase::engineIsThere()) {
        QSKIP("LIGGGHTS is not installed.");
    }
}

void KnownTruthTest::copySample() const
{
    QDir().mkpath(path("sample/heap_data"));
    for (const char* name : {"heap.zek", "heap.ynd", "heap.dfg", "heap.qsv", "heap_data/0.h5"}) {
        QVERIFY(QFile::copy(QString(ENGINE_SAMPLE "/%1").arg(name),
                            path(QString("sample/%1").arg(name))));
    }
    replaceFile(path("sample/heap.experiment"), smallExperiment("15485863, 32452843, 49979687"));
}

/// With seeds that no case of the grid has.
QMap<QString, double> KnownTruthTest::measurement() const
{
    DeckDescription deck;
    deck.revision = 38329;
    deck.interactions = {
        {{pairKey("Gravel", "Gravel")}, {0.5, TrueStaticFriction, TrueRollingFriction}},
        {{pairKey("Gravel", "Steel")}, {0.5, 0.5, 0.1}}};
    AdapterCase::write(deck, smallExperiment("67867967, 86028121, 104395301"), path("truth"));
    const SProgramEnd end =
        AdapterCase::run(path("truth"), {"-r", "3", "-w", "0.05", "-p", "2", "-e", "case.dfg"});
    if (end.exitCode != 0) {
        qWarning("%s", end.errors.constData());
    }
    return AdapterCase::results(path("truth"));
}

QList<SRanked> KnownTruthTest::ranking(const QMap<QString, double>& measurement) const
{
    QStringList words{"compare", path("work/JobSpec"), path("work/JobSpec/JobFileLocation")};
    for (const QString& name : Measured) {
        words << "--measured" << QString("%1=%2").arg(name).arg(measurement[name], 0, 'g', 9);
    }
    const SProgramEnd end = SampleCase::run(TARNEL_CASES, words, m_folder.path());
    if (end.exitCode != 0) {
        qWarning("%s", end.errors.constData());
    }
    qInfo("%s", end.output.constData());
    const QStringList lines =
        SampleCase::linesOf(path("work/JobSpec/JobFileLocation/Comparison.csv"));
    const QStringList titles = cellsOf(lines.value(0));
    const auto cell = [&titles](const QStringList& cells, const QString& ending) {
        for (int index = 0; index < titles.size(); ++index) {
            if (titles[index].endsWith(ending)) {
                return cells.value(index).toDouble();
            }
        }
        return std::nan("");
    };
    QList<SRanked> ranked;
    for (const QString& line : lines.mid(1)) {
        const QStringList cells = cellsOf(line);
        ranked.append({int(cell(cells, "rank")), cell(cells, "distance"),
                       cell(cells, "Static Friction"), cell(cells, "Rolling Friction"),
                       cells.first().toInt()});
    }
    return ranked;
}

/// What the seeds alone make of the distance, as a mean over the measures.
double KnownTruthTest::spreadOfCase(int number, const QMap<QString, double>& measurement) const
{
    const SampleTable table = SampleCase::tableOf(
        path(QString("work/JobSpec/JobFileLocation/Job%1/heap%1.csv").arg(number)));
    double spread = 0.0;
    for (const QString& name : Measured) {
        spread += table.value("Spread of " + name).last() / measurement[name] / Measured.size();
    }
    return spread;
}

void KnownTruthTest::theTrueCaseIsFoundAmongTwelve()
{
    copySample();
    const QMap<QString, double> truth = measurement();
    QVERIFY(truth.value("Heap height (m)") > 0.0);
    QElapsedTimer timer;
    timer.start();
    QProcess player;
    player.setWorkingDirectory(m_folder.path());
    player.start(PLAY_SAMPLE, {"--sample", path("sample"), "--work", path("work"), "--engine",
                               AdapterCase::program()});
    QVERIFY(player.waitForFinished(PatienceMs));
    QVERIFY2(player.exitCode() == 0,
             player.readAllStandardError() + player.readAllStandardOutput());
    qInfo("twelve cases in %lld s", timer.elapsed() / 1000);
    const QList<SRanked> ranked = ranking(truth);
    QCOMPARE(ranked.size(), 12);
    const auto found = std::find_if(ranked.begin(), ranked.end(), [](const SRanked& one) {
        return std::abs(one.staticFriction - TrueStaticFriction) < 1e-9 &&
               std::abs(one.rollingFriction - TrueRollingFriction) < 1e-9;
    });
    QVERIFY(found != ranked.end());
    const double spread = spreadOfCase(found->number, truth);
    qInfo("true case: rank %d, distance %g, first %g, spread %g", found->rank, found->distance,
          ranked.first().distance, spread);
    QVERIFY(found->distance <= ranked.first().distance + spread);
    QVERIFY(found->rank <= 3);
    // The seeds' spread must not be what makes everything equal.
    QVERIFY(ranked.last().distance > found->distance + 3.0 * spread);
}

TARNEL_TEST_MAIN(KnownTruthTest)
#include "known_truth_test.moc"
