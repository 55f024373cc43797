#include "tests/samples/sample_case.h"

#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

// How the results of the sample simulator follow the values of the deck that it is given.

namespace {

struct SResponse
{
    double runOut = 0.0;
    double height = 0.0;
    double settlingTime = 0.0;
};

double settlingTimeOf(const QString& exportFile)
{
    for (const QString& line : SampleCase::linesOf(exportFile)) {
        if (line.startsWith(QLatin1String("Settling time (s),"))) {
            return line.section(QLatin1Char(','), 1).toDouble();
        }
    }
    return -1.0;
}

} // namespace

class HeapResponseTest : public QObject
{
    Q_OBJECT

private slots:
    void moreStaticFrictionGivesAHigherHeapAndAShorterRunOut();
    void moreRollingFrictionGivesAHigherHeapAndAShorterRunOut();
    void moreRestitutionTakesLongerToSettle();
    void surfaceEnergyHoldsTheHeapTogether();
    void cohesionHoldsTheHeapTogether();
    void aBoxWithoutRollingFrictionLetsTheHeapRunFarther();
    void aSmallChangeOfFrictionGivesASmallChangeOfRunOut();

private:
    SResponse respond(const DeckDescription& deck);

    QTemporaryDir m_root;
    int m_caseCount = 0;
};

SResponse HeapResponseTest::respond(const DeckDescription& deck)
{
    const QString folder = m_root.filePath(QString::number(m_caseCount++));
    SampleCase::write(deck, folder);
    const SProgramEnd end =
        SampleCase::run(QStringLiteral(ORVA_SAMPLE),
                        {"-i", "case.zek", "-r", "1.2", "-w", "0.02", "-e", "case.dfg"}, folder);
    const QString results = folder + QStringLiteral("/case.csv");
    const SampleTable table = SampleCase::tableOf(results);
    if (end.exitCode != 0 || table.isEmpty()) {
        qWarning() << "the case failed" << end.exitCode << end.errors;
        return {-1.0, -1.0, -1.0};
    }
    return {table[QStringLiteral("Run-out (m)")].last(),
            table[QStringLiteral("Heap height (m)")].last(), settlingTimeOf(results)};
}

void HeapResponseTest::moreStaticFrictionGivesAHigherHeapAndAShorterRunOut()
{
    const SResponse little = respond(SampleCase::deckOf(0.5, 0.1, 0.1));
    const SResponse some = respond(SampleCase::deckOf(0.5, 0.3, 0.1));
    const SResponse much = respond(SampleCase::deckOf(0.5, 0.7, 0.1));
    QVERIFY(little.height > 0.0);
    QVERIFY(little.height < some.height && some.height < much.height);
    QVERIFY(little.runOut > some.runOut && some.runOut > much.runOut);
}

void HeapResponseTest::moreRollingFrictionGivesAHigherHeapAndAShorterRunOut()
{
    const SResponse little = respond(SampleCase::deckOf(0.5, 0.5, 0.02));
    const SResponse some = respond(SampleCase::deckOf(0.5, 0.5, 0.1));
    const SResponse much = respond(SampleCase::deckOf(0.5, 0.5, 0.4));
    QVERIFY(little.height > 0.0);
    QVERIFY(little.height < some.height && some.height < much.height);
    QVERIFY(little.runOut > some.runOut && some.runOut > much.runOut);
}

void HeapResponseTest::moreRestitutionTakesLongerToSettle()
{
    const SResponse dull = respond(SampleCase::deckOf(0.1, 0.5, 0.2));
    const SResponse lively = respond(SampleCase::deckOf(0.7, 0.5, 0.2));
    const SResponse bouncy = respond(SampleCase::deckOf(0.95, 0.5, 0.2));
    QVERIFY(dull.settlingTime > 0.0);
    QVERIFY2(dull.settlingTime < lively.settlingTime && lively.settlingTime < bouncy.settlingTime,
             qPrintable(QStringLiteral("%1 %2 %3")
                            .arg(dull.settlingTime)
                            .arg(lively.settlingTime)
                            .arg(bouncy.settlingTime)));
}

void HeapResponseTest::surfaceEnergyHoldsTheHeapTogether()
{
    DeckDescription sticky = SampleCase::deckOf(0.5, 0.5, 0.1);
    sticky.surfaceSurface.hertzMindlinJkr = {{{"Gravel", "Gravel"}, {5.0}}};
    const SResponse dry = respond(SampleCase::deckOf(0.5, 0.5, 0.1));
    const SResponse held = respond(sticky);
    QVERIFY(held.runOut > 0.0);
    QVERIFY(held.runOut < 0.9 * dry.runOut);
    QVERIFY(held.height > dry.height);
}

void HeapResponseTest::cohesionHoldsTheHeapTogether()
{
    DeckDescription sticky = SampleCase::deckOf(0.5, 0.5, 0.1);
    sticky.surfaceSurface.linearCohesionV2 = {{{"Gravel", "Gravel"}, {100000.0}}};
    const SResponse dry = respond(SampleCase::deckOf(0.5, 0.5, 0.1));
    const SResponse held = respond(sticky);
    QVERIFY(held.runOut > 0.0);
    QVERIFY2(held.runOut < 0.95 * dry.runOut,
             qPrintable(QStringLiteral("%1 %2").arg(held.runOut).arg(dry.runOut)));
}

void HeapResponseTest::aBoxWithoutRollingFrictionLetsTheHeapRunFarther()
{
    DeckDescription free = SampleCase::deckOf(0.5, 0.5, 0.2);
    free.surfaceGeometry.standardRollingFriction = false;
    DeckDescription resisting = free;
    resisting.surfaceGeometry.standardRollingFriction = true;
    const SResponse far = respond(free);
    const SResponse near = respond(resisting);
    QVERIFY(near.runOut > 0.0);
    QVERIFY(far.runOut > 1.1 * near.runOut);
}

void HeapResponseTest::aSmallChangeOfFrictionGivesASmallChangeOfRunOut()
{
    const double before = respond(SampleCase::deckOf(0.5, 0.5, 0.1)).runOut;
    const double after = respond(SampleCase::deckOf(0.5, 0.52, 0.1)).runOut;
    QVERIFY(before > 0.0);
    QVERIFY2(qAbs(after - before) < 0.1 * before,
             qPrintable(QStringLiteral("%1 %2").arg(before).arg(after)));
}

TARNEL_TEST_MAIN(HeapResponseTest)
#include "heap_response_test.moc"
