#include "app/startup.h"
#include "tests/load/footprint.h"
#include "tests/load/load_window.h"
#include "tests/support/job_maker.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>

#include <algorithm>

using Analysis = CLoadWindow::Analysis;

Q_DECLARE_METATYPE(CLoadWindow::Analysis)

namespace {

constexpr int concurrency = 4;
/// A row keeps what its case writes in every run; the rest is what the C library and Qt keep.
constexpr long heapGrowth = 128 * 1024;
constexpr long peakGrowthKiB = 4096;

/// What the process holds at this moment.
struct Held
{
    int handles = Footprint::handles();
    int threads = Footprint::threads();
    long heap = long(Footprint::heapBytes());
    long peak = Footprint::peakKiB();
};

} // namespace

class ManyRunsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { startup::fillConstants(); }
    void nothingGrowsFromRunToRun_data();
    void nothingGrowsFromRunToRun();

private:
    static void compare(const Held& before, const Held& after, int runs);
};

void ManyRunsTest::nothingGrowsFromRunToRun_data()
{
    QTest::addColumn<Analysis>("analysis");
    QTest::newRow("without analysis") << Analysis::None;
    QTest::newRow("with export") << Analysis::Export;
}

void ManyRunsTest::nothingGrowsFromRunToRun()
{
    QFETCH(Analysis, analysis);
    const int runs = sized(10, 200);
    const int warmUp = sized(4, 20);
    CLoadWindow window(plainDeck(13), analysis);
    window.prepare();
    CLoadWindow::vary({2, 2});
    window.generate();
    Held before;
    QElapsedTimer clock;
    clock.start();
    for (int run = 1; run <= runs; ++run) {
        window.run(concurrency);
        QCOMPARE(window.firstWrongRow(run), -1);
        if (run == warmUp) {
            before = Held();
        }
    }
    sayMilliseconds(QStringLiteral("%1 runs of 4 cases, %2")
                        .arg(runs)
                        .arg(QLatin1String(QTest::currentDataTag())),
                    clock.elapsed());
    if (analysis == Analysis::Export) {
        QVERIFY(readFile(window.caseRoot() + QStringLiteral("/Job3/results.csv"))
                    .startsWith("EXTRACTED DATA"));
    }
    compare(before, Held(), runs - warmUp);
}

void ManyRunsTest::compare(const Held& before, const Held& after, int runs)
{
    const auto say = [runs](const char* what, long more, const char* unit) {
        sayFigure(QStringLiteral("%1 after %2 runs more %3")
                      .arg(QLatin1String(what))
                      .arg(runs)
                      .arg(QLatin1String(QTest::currentDataTag())),
                  QStringLiteral("%1 more%2").arg(more).arg(QLatin1String(unit)));
    };
    say("handles", after.handles - before.handles, "");
    say("threads", after.threads - before.threads, "");
    say("heap", after.heap - before.heap, " bytes");
    say("peak", after.peak - before.peak, " KiB");
    QCOMPARE(after.handles, before.handles);
    // Windows lends threads of its own, and takes those that have nothing to do back after a while.
    constexpr int longestLoan = 15000;
    QTRY_VERIFY_WITH_TIMEOUT(std::min(after.threads, Footprint::threads()) <= before.threads,
                             longestLoan);
    if (Footprint::tellsMemory()) {
        QVERIFY(after.heap - before.heap < heapGrowth);
        QVERIFY(after.peak - before.peak < peakGrowthKiB);
    }
}

TARNEL_TEST_MAIN(ManyRunsTest)
#include "many_runs_test.moc"
