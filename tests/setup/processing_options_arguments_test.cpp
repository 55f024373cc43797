#include "setup/simulator_options.h"
#include "tests/setup/options_page.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QMap>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

/// Every flag in the order of the command line.
const QStringList ORDER{" -r ",
                        " -w ",
                        " -g ",
                        " -t ",
                        " -p ",
                        " -E ",
                        " -D ",
                        " -R ",
                        " --particle-properties ",
                        " -n ",
                        " --dyn ",
                        " --dyn-interval ",
                        " --dyn-check ",
                        " --dyn-disp ",
                        " --gpu-split ",
                        " --simExport ",
                        " --cs ",
                        " --auto-grid ",
                        " --wait ",
                        " --compress-data ",
                        " --sp ",
                        " --acd "};

/// The options of the page as it starts, for a deck of the newer formats.
const QMap<QString, QString> DEFAULTS{
    {" -r ", "0.000001"}, {" -w ", "0.000000"}, {" -g ", "2.500000"}, {" -t ", "0.000000"},
    {" -p ", "1"},        {" -E ", "0"},        {" --dyn ", "0"},     {" --compress-data ", "0"}};

/// The default options with changes, each a flag followed by "=" and its value or by "!" for its
/// absence, several of them separated by "; ".
QString expectedOptions(const QString& changes)
{
    QMap<QString, QString> values = DEFAULTS;
    for (const QString& change : changes.split(QStringLiteral("; "), Qt::SkipEmptyParts)) {
        const int end = change.indexOf(QRegularExpression(QStringLiteral("[=!]")));
        const QString flag = QLatin1Char(' ') + change.left(end) + QLatin1Char(' ');
        if (end < 0 || !ORDER.contains(flag)) {
            qFatal("no such flag: %s", qPrintable(change));
        }
        if (change.at(end) == QLatin1Char('!')) {
            values.remove(flag);
        } else {
            values[flag] = change.mid(end + 1);
        }
    }
    QString options = QStringLiteral(" -c ");
    for (const QString& flag : ORDER) {
        if (values.contains(flag)) {
            options += flag + values[flag];
        }
    }
    return options;
}

} // namespace

class CProcessingOptionsArgumentsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void everyWidgetFeedsItsArgument_data();
    void everyWidgetFeedsItsArgument();
    void noOptionsBeforeThePageIsEntered();
    void withoutADeckEnteringDoesNothing();
    void defaultsOfAnOldDeck();
    void defaultsOfANewerDeck();
    void theFirstFillLeavesOutAnEmptyDeviceIndex();
    void theFirstFillTakesWhatTheWidgetsHold();
    void aFlagThatNeverEnteredStaysOut();
    void anUnknownFlagRenewsTheOptionsAllTheSame();
    void aNewerDeckAddsItsFlagsButLeavesTheWidgetsHidden();
    void theStepLimitIsLeftOutAtEntryWhileUnchecked();
    void theDynamicDomainIsLeftOutAtEntryWhileUnchecked();
    void theGpuSplitReturnsAtEntryWhateverTheEngine();
    void theCudaEngineRemovesTheGpuSplit();
    void theGpuEngineTakesOverBothContactDetections();
    void aClearedDeviceIndexLeavesItsFlagAlone();
    void theSentinelAsDeviceIndexRemovesTheFlag();
    void anEmptyDeviceIndexStaysOutAtEveryEntry();
    void reducingTheOutputsLeavesTheOptionsUntouched();
    void enteringRebuildsWhatAJobReplaced();
    void anEmptyDeckNamedDefaultIsTakenForTheLastOne();
    void nextIsNeverTouched();
};

void CProcessingOptionsArgumentsTest::initTestCase()
{
    SimulatorOptions::initialise();
}

void CProcessingOptionsArgumentsTest::init()
{
    CTestEnvironment::reset();
}

void CProcessingOptionsArgumentsTest::everyWidgetFeedsItsArgument_data()
{
    QTest::addColumn<QVariant>("there");
    QTest::addColumn<QString>("afterThere");
    QTest::addColumn<QVariant>("back");
    QTest::addColumn<QString>("afterBack");

    const auto row = [](const char* name, const QVariant& there, const char* afterThere,
                        const QVariant& back, const char* afterBack = "") {
        QTest::newRow(name) << there << QString(afterThere) << back << QString(afterBack);
    };
    row("sbSimTime", 2.5, "-r=2.500000", 1e-6);
    row("fbWriteEvery", 0.01, "-w=0.010000", 1e-12);
    row("sbGridSizeM", 3.0, "-g=3.000000", 2.5);
    row("sbFixedTime", 1e-3, "-t=0.001000", 0.00000012, "-t=0.000000");
    row("chkAutoTimeStep", true, "-t=0", false);
    row("sbNumProcs", 16, "-p=16", 1);
    row("m_cbSimulatorEngine", 1, "-E=1; --gpu-split=X; --sp=0; --acd=0", 0,
        "-E=0; --sp=0; --acd=0");
    row("leDeviceIndex", "0 (1)", "-D=0 (1)", "", "-D=");
    row("cbRewind", true, "-R=", false);
    row("cbRecalculate", true, "--particle-properties=", false);
    row("sbStepLimit", 1e9, "-n=1000000000.000000", 0.0, "-n=0.000000");
    row("chkStepLimit", true, "-n=0.000000", false);
    row("gbDynamicDomain", true,
        "--dyn=1; --dyn-interval=0.000000; --dyn-check=0; --dyn-disp=0.000000", false);
    row("m_dynamicDomainCheckInterval", 0.25, "--dyn-interval=0.250000", 1.0,
        "--dyn-interval=1.000000");
    row("m_dynamicDomainNumberOfChecks", 7, "--dyn-check=7", 0, "--dyn-check=0");
    row("m_dynamicDomainParticleDisplacement", 12.5, "--dyn-disp=12.500000", 1.0,
        "--dyn-disp=1.000000");
    row("m_cbGPUSplitAxis", 2, "--gpu-split=Z", 1, "--gpu-split=Y");
    row("chkGPUSplit", true, "--gpu-split=X", false);
    row("m_chkSimExport", true, "--simExport=", false);
    row("gbCouplingServer", true, "--cs=", false);
    row("m_chkAutoGridResizing", true, "--auto-grid=", false);
    row("m_chkConnectionCleanUp", true, "--wait=", false);
    row("m_chkCompressData", true, "--compress-data=1", false);
    row("m_chkSinglePrecisionContactDetection", true, "--sp=1", false, "--sp=0");
    row("m_chkAlternativeContactDetection", true, "--sp=0; --acd=1", false, "--sp=0; --acd=0");
    row("m_leCouplingLocation", "/server", "", "");
    row("leCouplingCommand", "--port 1", "", "");
    row("m_chkSimulationOutputs", true, "", false);
}

void CProcessingOptionsArgumentsTest::everyWidgetFeedsItsArgument()
{
    QFETCH(QVariant, there);
    QFETCH(QString, afterThere);
    QFETCH(QVariant, back);
    QFETCH(QString, afterBack);

    COptionsPage page(2);
    page.enter();
    QCOMPARE(page.options(), expectedOptions(QString()));
    page.set(QTest::currentDataTag(), there);
    QCOMPARE(page.options(), expectedOptions(afterThere));
    page.set(QTest::currentDataTag(), back);
    QCOMPARE(page.options(), expectedOptions(afterBack));
}

void CProcessingOptionsArgumentsTest::noOptionsBeforeThePageIsEntered()
{
    const COptionsPage page;
    QCOMPARE(page.options(), QString());
}

void CProcessingOptionsArgumentsTest::withoutADeckEnteringDoesNothing()
{
    COptionsPage page;
    CDeckStore::instance()->creatorData().clear();
    page.enter();
    QCOMPARE(page.options(), QString());
    QVERIFY(!page.child<>("m_chkCompressData").isHidden());
}

void CProcessingOptionsArgumentsTest::defaultsOfAnOldDeck()
{
    COptionsPage page(1);
    page.enter();
    QCOMPARE(page.options(), QStringLiteral(" -c  -r 0.000001 -w 0.000000 -g 2.500000"
                                            " -t 0.000000 -p 1 -E 0 --dyn 0"));
    for (const char* name : {"m_chkCompressData", "m_chkSinglePrecisionContactDetection",
                             "m_chkAlternativeContactDetection"}) {
        QVERIFY2(page.child<>(name).isHidden(), name);
    }
}

void CProcessingOptionsArgumentsTest::defaultsOfANewerDeck()
{
    COptionsPage page(2);
    page.enter();
    QCOMPARE(page.options(), QStringLiteral(" -c  -r 0.000001 -w 0.000000 -g 2.500000"
                                            " -t 0.000000 -p 1 -E 0 --dyn 0 --compress-data 0"));
    QVERIFY(!page.child<>("m_chkCompressData").isHidden());
}

void CProcessingOptionsArgumentsTest::theFirstFillLeavesOutAnEmptyDeviceIndex()
{
    COptionsPage page(2);
    page.set("leDeviceIndex", "1");
    page.set("leDeviceIndex", "");
    page.enter();
    QCOMPARE(page.options(), expectedOptions(QString()));
}

void CProcessingOptionsArgumentsTest::theFirstFillTakesWhatTheWidgetsHold()
{
    COptionsPage page(2);
    for (const char* name : {"cbRewind", "cbRecalculate", "m_chkSimExport", "gbCouplingServer",
                             "m_chkAutoGridResizing", "m_chkConnectionCleanUp", "m_chkCompressData",
                             "gbDynamicDomain", "chkStepLimit", "chkGPUSplit", "chkAutoTimeStep"}) {
        page.set(name, true);
    }
    page.set("leDeviceIndex", "2");
    page.set("sbStepLimit", 5.0);
    page.set("m_dynamicDomainNumberOfChecks", 3);
    QCOMPARE(page.options(), QStringLiteral(" -c "));
    page.enter();
    QCOMPARE(page.options(),
             expectedOptions("-t=0; -D=2; -R=; --particle-properties=; -n=5.000000; --dyn=1; "
                             "--dyn-interval=0.000000; --dyn-check=3; --dyn-disp=0.000000; "
                             "--gpu-split=X; --simExport=; --cs=; --auto-grid=; --wait=; "
                             "--compress-data=1"));
}

void CProcessingOptionsArgumentsTest::aFlagThatNeverEnteredStaysOut()
{
    COptionsPage page(1);
    page.enter();
    page.set("m_chkCompressData", true);
    page.set("m_chkAlternativeContactDetection", true);
    page.set("m_chkSinglePrecisionContactDetection", true);
    QCOMPARE(page.options(), expectedOptions("--compress-data!"));
}

void CProcessingOptionsArgumentsTest::anUnknownFlagRenewsTheOptionsAllTheSame()
{
    COptionsPage page(2);
    page.enter();
    CDeckStore::instance()->setSimulatorOptions("replaced");
    page.page().setSimulatorArgument(" --other ", "1");
    QCOMPARE(page.options(), expectedOptions(QString()));
}

void CProcessingOptionsArgumentsTest::aNewerDeckAddsItsFlagsButLeavesTheWidgetsHidden()
{
    COptionsPage page(1);
    page.enter();
    page.setFormat(5);
    QCOMPARE(page.options(), expectedOptions("--compress-data!"));
    page.enter();
    QCOMPARE(page.options(), expectedOptions(QString()));
    QVERIFY(page.child<>("m_chkCompressData").isHidden());
    QVERIFY(page.child<>("m_chkAlternativeContactDetection").isHidden());
    page.set("m_chkAlternativeContactDetection", true);
    QCOMPARE(page.options(), expectedOptions("--sp=0; --acd=1"));
}

void CProcessingOptionsArgumentsTest::theStepLimitIsLeftOutAtEntryWhileUnchecked()
{
    COptionsPage page(2);
    page.set("sbStepLimit", 5.0);
    page.enter();
    QCOMPARE(page.options(), expectedOptions(QString()));
    QVERIFY(!page.isEnabled("sbStepLimit"));
    page.set("chkStepLimit", true);
    QCOMPARE(page.options(), expectedOptions("-n=5.000000"));
    QVERIFY(page.isEnabled("sbStepLimit"));
}

void CProcessingOptionsArgumentsTest::theDynamicDomainIsLeftOutAtEntryWhileUnchecked()
{
    COptionsPage page(2);
    page.enter();
    page.set("m_dynamicDomainCheckInterval", 2.0);
    QCOMPARE(page.options(), expectedOptions("--dyn-interval=2.000000"));
    page.enter();
    QCOMPARE(page.options(), expectedOptions(QString()));
}

void CProcessingOptionsArgumentsTest::theGpuSplitReturnsAtEntryWhateverTheEngine()
{
    COptionsPage page(2);
    page.enter();
    page.set("m_cbSimulatorEngine", 1);
    page.set("chkGPUSplit", true);
    page.set("m_cbGPUSplitAxis", 1);
    page.set("m_cbSimulatorEngine", 0);
    QCOMPARE(page.options(), expectedOptions("--sp=0; --acd=0"));
    page.enter();
    QCOMPARE(page.options(), expectedOptions("--gpu-split=Y; --sp=0; --acd=0"));
    QVERIFY(!page.isEnabled("chkGPUSplit"));
}

void CProcessingOptionsArgumentsTest::theCudaEngineRemovesTheGpuSplit()
{
    COptionsPage page(2);
    page.set("chkGPUSplit", true);
    page.enter();
    QCOMPARE(page.options(), expectedOptions("--gpu-split=X"));
    page.set("m_cbSimulatorEngine", 2);
    QCOMPARE(page.options(), expectedOptions("-E=2; --sp=0; --acd=0"));
}

void CProcessingOptionsArgumentsTest::theGpuEngineTakesOverBothContactDetections()
{
    COptionsPage page(2);
    page.enter();
    page.set("m_chkAlternativeContactDetection", true);
    page.set("m_chkSinglePrecisionContactDetection", true);
    QCOMPARE(page.options(), expectedOptions("--sp=1; --acd=1"));
    page.set("m_cbSimulatorEngine", 2);
    QCOMPARE(page.options(), expectedOptions("-E=2; --sp=0; --acd=0"));
    page.set("m_cbSimulatorEngine", 1);
    QCOMPARE(page.options(), expectedOptions("-E=1; --gpu-split=X; --sp=1; --acd=1"));
    page.set("m_chkAlternativeContactDetection", false);
    QCOMPARE(page.options(), expectedOptions("-E=1; --gpu-split=X; --sp=0; --acd=0"));
    page.set("m_chkAlternativeContactDetection", true);
    QCOMPARE(page.options(), expectedOptions("-E=1; --gpu-split=X; --sp=1; --acd=1"));
}

void CProcessingOptionsArgumentsTest::aClearedDeviceIndexLeavesItsFlagAlone()
{
    COptionsPage page(2);
    page.enter();
    auto& edit = page.child<QLineEdit>("leDeviceIndex");
    QTest::keyClicks(&edit, QStringLiteral("1"));
    QCOMPARE(page.options(), expectedOptions("-D=1"));
    QTest::keyClick(&edit, Qt::Key_Backspace);
    QCOMPARE(page.options(), expectedOptions("-D="));
    QVERIFY(page.options().contains(QStringLiteral(" -E 0 -D  --dyn 0")));
    page.enter();
    QCOMPARE(page.options(), expectedOptions("-D="));
}

void CProcessingOptionsArgumentsTest::theSentinelAsDeviceIndexRemovesTheFlag()
{
    COptionsPage page(2);
    page.set("leDeviceIndex", "1");
    page.enter();
    page.set("leDeviceIndex", "Disabled");
    QCOMPARE(page.options(), expectedOptions(QString()));
}

void CProcessingOptionsArgumentsTest::anEmptyDeviceIndexStaysOutAtEveryEntry()
{
    COptionsPage page(2);
    page.enter();
    page.enter();
    QCOMPARE(page.options(), expectedOptions(QString()));
}

void CProcessingOptionsArgumentsTest::reducingTheOutputsLeavesTheOptionsUntouched()
{
    COptionsPage page(2);
    page.enter();
    CDeckStore::instance()->setSimulatorOptions("untouched");
    page.set("m_chkSimulationOutputs", true);
    QVERIFY(CDeckStore::instance()->simulationOutputs());
    page.set("m_chkSimulationOutputs", false);
    QVERIFY(!CDeckStore::instance()->simulationOutputs());
    QCOMPARE(page.options(), QStringLiteral("untouched"));
}

void CProcessingOptionsArgumentsTest::enteringRebuildsWhatAJobReplaced()
{
    COptionsPage page(2);
    page.enter();
    CDeckStore::instance()->setSimulatorOptions("of a job");
    page.enter();
    QCOMPARE(page.options(), expectedOptions(QString()));
}

void CProcessingOptionsArgumentsTest::anEmptyDeckNamedDefaultIsTakenForTheLastOne()
{
    COptionsPage page;
    CDeckStore::instance()->creatorData().front().m_sName = "Default";
    page.enter();
    QCOMPARE(page.options(), QStringLiteral(" -c "));
    QVERIFY(!page.child<>("m_chkCompressData").isHidden());
}

void CProcessingOptionsArgumentsTest::nextIsNeverTouched()
{
    COptionsPage page(2);
    QSignalSpy complete(&page.page(), &IFrame::stageComplete);
    page.enter();
    page.set("cbRewind", true);
    QCOMPARE(complete.count(), 0);
}

TARNEL_TEST_MAIN(CProcessingOptionsArgumentsTest)

#include "processing_options_arguments_test.moc"
