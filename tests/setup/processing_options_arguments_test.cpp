#include "setup/simulator_options.h"
#include "tests/setup/expected_options.h"
#include "tests/setup/options_page.h"
#include "tests/support/test_environment.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include <vector>

namespace {

/// One widget changed there and back, and what differs from the default options each time.
struct SChange
{
    const char* widget;
    QVariant there;
    const char* afterThere;
    QVariant back;
    const char* afterBack = "";
};

/// Every widget of the page that takes an input.
std::vector<SChange> changes()
{
    return {
        {"sbSimTime", 2.5, "-r=2.500000", 1e-6},
        {"fbWriteEvery", 0.01, "-w=0.010000", 1e-12},
        {"sbGridSizeM", 3.0, "-g=3.000000", 2.5},
        {"sbFixedTime", 1e-3, "-t=0.001000", 0.00000012, "-t=0.000000"},
        {"chkAutoTimeStep", true, "-t=0", false},
        {"sbNumProcs", 16, "-p=16", 1},
        {"m_cbSimulatorEngine", 1, "-E=1; --gpu-split=X; --sp=0; --acd=0", 0,
         "-E=0; --sp=0; --acd=0"},
        {"leDeviceIndex", "0 (1)", "-D=0 (1)", "", "-D="},
        {"cbRewind", true, "-R=", false},
        {"cbRecalculate", true, "--particle-properties=", false},
        {"sbStepLimit", 1e9, "-n=1000000000.000000", 0.0, "-n=0.000000"},
        {"chkStepLimit", true, "-n=0.000000", false},
        {"gbDynamicDomain", true,
         "--dyn=1; --dyn-interval=0.000000; --dyn-check=0; --dyn-disp=0.000000", false},
        {"m_dynamicDomainCheckInterval", 0.25, "--dyn-interval=0.250000", 1.0,
         "--dyn-interval=1.000000"},
        {"m_dynamicDomainNumberOfChecks", 7, "--dyn-check=7", 0, "--dyn-check=0"},
        {"m_dynamicDomainParticleDisplacement", 12.5, "--dyn-disp=12.500000", 1.0,
         "--dyn-disp=1.000000"},
        {"m_cbGPUSplitAxis", 2, "--gpu-split=Z", 1, "--gpu-split=Y"},
        {"chkGPUSplit", true, "--gpu-split=X", false},
        {"m_chkSimExport", true, "--simExport=", false},
        {"gbCouplingServer", true, "--cs=", false},
        {"m_chkAutoGridResizing", true, "--auto-grid=", false},
        {"m_chkConnectionCleanUp", true, "--wait=", false},
        {"m_chkCompressData", true, "--compress-data=1", false},
        {"m_chkSinglePrecisionContactDetection", true, "--sp=1", false, "--sp=0"},
        {"m_chkAlternativeContactDetection", true, "--sp=0; --acd=1", false, "--sp=0; --acd=0"},
        {"m_leCouplingLocation", "/server", "", ""},
        {"leCouplingCommand", "--port 1", "", ""},
        {"m_chkSimulationOutputs", true, "", false},
    };
}

bool takesInput(const QWidget& widget)
{
    const auto* const group = qobject_cast<const QGroupBox*>(&widget);
    const bool isField = qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
                         qobject_cast<const QCheckBox*>(&widget) != nullptr ||
                         qobject_cast<const QComboBox*>(&widget) != nullptr ||
                         qobject_cast<const QLineEdit*>(&widget) != nullptr;
    return isField || (group != nullptr && group->isCheckable());
}

} // namespace

Q_DECLARE_METATYPE(SChange)

class CProcessingOptionsArgumentsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void everyWidgetFeedsItsArgument_data();
    void everyWidgetFeedsItsArgument();
    void noWidgetIsLeftOutOfTheChanges();
    void everythingChangedAtOnce();
    void noOptionsBeforeThePageIsEntered();
    void withoutADeckEnteringDoesNothing();
    void defaultsOfAnOldDeck();
    void defaultsOfANewerDeck();
    void theFirstFillLeavesOutAnEmptyDeviceIndex();
    void theFirstFillTakesWhatTheWidgetsHold();
    void aFlagThatNeverEnteredStaysOut();
    void anUnknownFlagRenewsTheOptionsAllTheSame();
    void aNewerDeckAddsItsFlagsButLeavesTheWidgetsHidden();
    void aTimeStepSetWhileAutomaticLastsUntilTheNextEntry();
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
    QTest::addColumn<int>("deckFormat");
    QTest::addColumn<SChange>("change");

    for (int deckFormat : {1, 2}) {
        for (const SChange& change : changes()) {
            QTest::addRow("%s, format %d", change.widget, deckFormat) << deckFormat << change;
        }
    }
}

void CProcessingOptionsArgumentsTest::everyWidgetFeedsItsArgument()
{
    QFETCH(int, deckFormat);
    QFETCH(SChange, change);

    COptionsPage page(deckFormat);
    page.enter();
    QCOMPARE(page.options(), expectedOptions(QString(), deckFormat));
    page.set(change.widget, change.there);
    QCOMPARE(page.options(), expectedOptions(change.afterThere, deckFormat));
    page.set(change.widget, change.back);
    QCOMPARE(page.options(), expectedOptions(change.afterBack, deckFormat));
}

void CProcessingOptionsArgumentsTest::noWidgetIsLeftOutOfTheChanges()
{
    COptionsPage page;
    QStringList onThePage;
    for (const QWidget* widget : page.page().findChildren<QWidget*>()) {
        // The fields within the spin boxes are no widgets of the form.
        if (takesInput(*widget) && !widget->objectName().startsWith(QStringLiteral("qt_"))) {
            onThePage.append(widget->objectName());
        }
    }
    QStringList changed;
    for (const SChange& change : changes()) {
        changed.append(change.widget);
    }
    onThePage.sort();
    changed.sort();
    QCOMPARE(changed, onThePage);
}

void CProcessingOptionsArgumentsTest::everythingChangedAtOnce()
{
    COptionsPage page(2);
    page.enter();
    for (const SChange& change : changes()) {
        page.set(change.widget, change.there);
    }
    const QString automatic = QStringLiteral(
        " -c  -r 2.500000 -w 0.010000 -g 3.000000 -t 0 -p 16 -E 1 -D 0 (1) -R "
        " --particle-properties  -n 1000000000.000000 --dyn 1 --dyn-interval 0.250000"
        " --dyn-check 7 --dyn-disp 12.500000 --gpu-split Z --simExport  --cs  --auto-grid "
        " --wait  --compress-data 1 --sp 1 --acd 1");
    QCOMPARE(page.options(), automatic);
    page.enter();
    QCOMPARE(page.options(), automatic);
    page.set("chkAutoTimeStep", false);
    QCOMPARE(page.options(), QString(automatic).replace(" -t 0 ", " -t 0.001000 "));
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
    QVERIFY(page.child<>("m_chkSinglePrecisionContactDetection").isHidden());
    QVERIFY(page.child<>("m_chkAlternativeContactDetection").isHidden());
    page.set("m_chkAlternativeContactDetection", true);
    QCOMPARE(page.options(), expectedOptions("--sp=0; --acd=1"));
}

void CProcessingOptionsArgumentsTest::aTimeStepSetWhileAutomaticLastsUntilTheNextEntry()
{
    COptionsPage page(2);
    page.set("chkAutoTimeStep", true);
    page.enter();
    page.set("sbFixedTime", 0.5);
    QCOMPARE(page.options(), expectedOptions("-t=0.500000"));
    page.enter();
    QCOMPARE(page.options(), expectedOptions("-t=0"));
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
    page.set("chkStepLimit", false);
    page.set("sbStepLimit", 6.0);
    page.enter();
    QCOMPARE(page.options(), expectedOptions(QString()));
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
