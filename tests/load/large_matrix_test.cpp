#include "app/startup.h"
#include "deck/deck_store.h"
#include "jobs/simulation_list_item.h"
#include "tests/load/footprint.h"
#include "tests/load/load_window.h"
#include "tests/support/job_maker.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTest>

namespace {

/// A matrix as it would have been generated, without the forces' columns: what a row doesn't have
/// keeps its default.
QByteArray matrixOf(const VariedCases& cases)
{
    QByteArray text = "Job ID#,a,b,c,d,e,f,Simulator Options\n";
    for (int number = 0; number < cases.count(); ++number) {
        text += cases.line(number, " -c ") + '\n';
    }
    return text;
}

int firstWrongCase(const CLoadWindow& window, const VariedCases& cases)
{
    const auto& records = CDeckStore::instance()->creatorData();
    for (int number = 0; number < cases.count(); ++number) {
        const auto& interactions = records[std::size_t(number) + 1].m_interactions;
        if (window.row(number)->text() != QStringLiteral("deck%1").arg(number) ||
            !qFuzzyCompare(std::get<0>(interactions.at("glass<>glass")), cases.first(number)) ||
            !qFuzzyCompare(std::get<2>(interactions.at("glass<>steel")), cases.last(number))) {
            return number;
        }
    }
    return -1;
}

} // namespace

class LargeMatrixTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { startup::fillConstants(); }
    void loadsEveryRowInStepWithTheirNumber();

private:
    static double heapOf(const VariedCases& cases);
};

/// Loads such a matrix. Returns the heap that its rows hold, in KiB; -1 where a row isn't right.
double LargeMatrixTest::heapOf(const VariedCases& cases)
{
    CLoadWindow window(plainDeck(13));
    window.prepare();
    const QString job = window.path(QStringLiteral("job"));
    QDir().mkpath(job);
    makeJob(job, {});
    writeFile(job + QStringLiteral("/input_jobID-Matrix.csv"), matrixOf(cases));
    const std::size_t before = Footprint::heapBytes();
    Footprint::forgetPeak();
    QElapsedTimer clock;
    clock.start();
    window.load(job);
    sayMilliseconds(QStringLiteral("loading a matrix of %1 rows").arg(cases.count()),
                    clock.elapsed());
    const double heap = double(Footprint::heapBytes() - before) / 1024;
    sayFigure(QStringLiteral("heap held by %1 rows").arg(cases.count()),
              QStringLiteral("%1 KiB").arg(heap, 0, 'f', 0));
    sayFigure(QStringLiteral("peak of the process with %1 rows").arg(cases.count()),
              QStringLiteral("%1 KiB").arg(Footprint::peakKiB()));
    if (window.rows().count() != cases.count() ||
        int(CDeckStore::instance()->creatorData().size()) != cases.count() + 1) {
        return -1.0;
    }
    return firstWrongCase(window, cases) == -1 ? heap : -1.0;
}

void LargeMatrixTest::loadsEveryRowInStepWithTheirNumber()
{
    std::vector<double> heap;
    for (const int part : {4, 2, 1}) {
        heap.push_back(heapOf({sized(40, 2000) / part, 50}));
        QVERIFY(heap.back() >= 0.0);
    }
    if (Footprint::tellsMemory()) {
        QVERIFY(heap[2] - heap[1] < 2.5 * (heap[1] - heap[0]) + 512);
    }
}

TARNEL_TEST_MAIN(LargeMatrixTest)
#include "large_matrix_test.moc"
