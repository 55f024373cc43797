#include "app/startup.h"
#include "deck/deck_store.h"
#include "jobs/simulation_list_item.h"
#include "tests/load/click_probe.h"
#include "tests/load/footprint.h"
#include "tests/load/load_window.h"
#include "tests/support/job_maker.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTest>

#include <memory>

namespace {

constexpr double longestAnswer = 200.0;

VariedCases allCases()
{
    return {sized(4, 200), sized(20, 50)};
}

/// What so many cases take from their generation to the end of their run.
struct Taken
{
    double heapKiB = 0.0;
    double peakKiB = 0.0;
    double secondsPerCase = 0.0; ///< of the processor
};

QString named(const char* what, int cases, int concurrency)
{
    return QStringLiteral("%1, %2 cases, %3 at a time")
        .arg(QLatin1String(what))
        .arg(cases)
        .arg(concurrency);
}

/// Time by the clock and time of the processor.
void sayTimes(const QString& what, qint64 milliseconds, double seconds)
{
    sayFigure(what, QStringLiteral("%1 ms, %2 ms of processor")
                        .arg(milliseconds)
                        .arg(seconds * 1000, 0, 'f', 0));
}

/// Number of the first case whose record or line in the matrix isn't that of its values; -1 for
/// none.
int firstWrongCase(const QString& job, const VariedCases& cases)
{
    const QList<QByteArray> lines =
        Native::fromTextFile(readFile(job + QStringLiteral("/input_jobID-Matrix.csv"))).split('\n');
    const auto& records = CDeckStore::instance()->creatorData();
    const QByteArray options =
        QByteArray::fromStdString(CDeckStore::instance()->simulatorOptions());
    if (lines.size() != cases.count() + 2 || int(records.size()) != cases.count() + 1) {
        return cases.count();
    }
    for (int number = 0; number < cases.count(); ++number) {
        const auto& interactions = records[std::size_t(number) + 1].m_interactions;
        if (lines[number + 1] != cases.line(number, options) ||
            !qFuzzyCompare(std::get<0>(interactions.at("glass<>glass")), cases.first(number)) ||
            !qFuzzyCompare(std::get<2>(interactions.at("glass<>steel")), cases.last(number))) {
            return number;
        }
    }
    return -1;
}

} // namespace

class ManyCasesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void memoryAndTimeGrowInStepWithTheCases();
    void allCasesRunAndTheWindowAnswers_data();
    void allCasesRunAndTheWindowAnswers();
    void cancelOfManyCasesActsAtOnce();

private:
    static std::unique_ptr<CLoadWindow> generated(const VariedCases& cases);
    void runAnswering(CLoadWindow& window, int concurrency, int runs);

    std::unique_ptr<CLoadWindow> m_window;
};

void ManyCasesTest::initTestCase()
{
    startup::fillConstants();
    m_window = generated(allCases());
}

void ManyCasesTest::cleanupTestCase()
{
    m_window.reset();
}

std::unique_ptr<CLoadWindow> ManyCasesTest::generated(const VariedCases& cases)
{
    auto window = std::make_unique<CLoadWindow>(plainDeck(13));
    window->prepare();
    CLoadWindow::vary(cases);
    QElapsedTimer clock;
    clock.start();
    window->generate();
    sayMilliseconds(QStringLiteral("generating and loading %1 cases").arg(cases.count()),
                    clock.elapsed());
    return window;
}

void ManyCasesTest::runAnswering(CLoadWindow& window, int concurrency, int runs)
{
    CClickProbe probe(window.rows());
    QElapsedTimer clock;
    clock.start();
    const double before = Footprint::processorSeconds();
    qint64 prepared = 0;
    double preparing = 0.0;
    // The first event that the run takes: all case folders are there.
    QTimer::singleShot(0, &window.rows(), [&] {
        prepared = clock.elapsed();
        preparing = Footprint::processorSeconds() - before;
        probe.start();
    });
    window.run(concurrency);
    const qint64 ended = clock.elapsed();
    probe.stop();
    const int cases = window.rows().count();
    sayTimes(named("preparing", cases, concurrency), prepared, preparing);
    sayTimes(named("running", cases, concurrency), ended - prepared,
             Footprint::processorSeconds() - before - preparing);
    sayFigure(
        named("longest answer to a click", cases, concurrency),
        QStringLiteral("%1 ms of %2 clicks").arg(probe.longestMilliseconds()).arg(probe.clicks()));
    QCOMPARE(window.firstWrongRow(runs), -1);
    QVERIFY(probe.clicks() > 0);
    QVERIFY2(!Footprint::answersInTime() || probe.longestMilliseconds() <= longestAnswer,
             qPrintable(QString::number(probe.longestMilliseconds())));
}

void ManyCasesTest::memoryAndTimeGrowInStepWithTheCases()
{
    if (!Footprint::tellsMemory()) {
        QSKIP("a sanitizer keeps what was given back");
    }
    std::vector<Taken> taken;
    for (const int part : {4, 2, 1}) {
        m_window.reset();
        CTestEnvironment::reset();
        const VariedCases cases{allCases().inner / part, allCases().outer};
        const std::size_t before = Footprint::heapBytes();
        const double begin = Footprint::processorSeconds();
        Footprint::forgetPeak();
        m_window = generated(cases);
        runAnswering(*m_window, 16, 1);
        taken.push_back({double(Footprint::heapBytes() - before) / 1024,
                         double(Footprint::peakKiB()),
                         (Footprint::processorSeconds() - begin) / cases.count()});
        sayFigure(QStringLiteral("heap held by %1 cases").arg(cases.count()),
                  QStringLiteral("%1 KiB").arg(taken.back().heapKiB, 0, 'f', 0));
        sayFigure(QStringLiteral("peak of the process with %1 cases").arg(cases.count()),
                  QStringLiteral("%1 KiB").arg(taken.back().peakKiB, 0, 'f', 0));
        sayFigure(QStringLiteral("processor for one of %1 cases").arg(cases.count()),
                  QStringLiteral("%1 ms").arg(taken.back().secondsPerCase * 1000, 0, 'f', 2));
        QCOMPARE(firstWrongCase(m_window->job(), cases), -1);
    }
    // The second step is twice the first; a part that grew with the square would make it four
    // times.
    constexpr double slackKiB = 4096;
    QVERIFY(taken[2].heapKiB - taken[1].heapKiB <
            2.5 * (taken[1].heapKiB - taken[0].heapKiB) + slackKiB);
    if (Footprint::forgetsPeak()) {
        QVERIFY(taken[2].peakKiB - taken[1].peakKiB <
                2.5 * qMax(0.0, taken[1].peakKiB - taken[0].peakKiB) + slackKiB);
    }
    // A few cases don't pay for what the first of them costs.
    constexpr double longerWithFourTimesTheCases = 1.25;
    QVERIFY(!takesFullSizes() ||
            taken[2].secondsPerCase < longerWithFourTimesTheCases * taken[0].secondsPerCase);
}

void ManyCasesTest::allCasesRunAndTheWindowAnswers_data()
{
    QTest::addColumn<int>("concurrency");
    QTest::newRow("one at a time") << 1;
    QTest::newRow("two at a time") << 2;
    QTest::newRow("sixteen at a time") << 16;
}

void ManyCasesTest::allCasesRunAndTheWindowAnswers()
{
    QFETCH(int, concurrency);
    // The rows keep what the runs before this one have written.
    m_window->load(m_window->job());
    QCOMPARE(m_window->rows().count(), allCases().count());
    runAnswering(*m_window, concurrency, 1);
}

void ManyCasesTest::cancelOfManyCasesActsAtOnce()
{
    auto* const cancel = m_window->hand().find<QPushButton>(QStringLiteral("m_pbCancelSimulating"));
    QElapsedTimer sinceClick;
    QTimer::singleShot(0, cancel, [&] {
        sinceClick.start();
        QTest::mouseClick(cancel, Qt::LeftButton);
    });
    m_window->run(16);
    const qint64 taken = sinceClick.elapsed();
    sayMilliseconds(QStringLiteral("cancelling %1 cases").arg(allCases().count()), taken);
    QVERIFY(cancel->isHidden());
    QVERIFY2(!Footprint::tellsMemory() || double(taken) <= longestAnswer,
             qPrintable(QString::number(taken)));
}

TARNEL_TEST_MAIN(ManyCasesTest)
#include "many_cases_test.moc"
