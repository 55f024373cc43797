#include "samples/player/modal_watcher.h"
#include "setup/simulator_options.h"
#include "tests/setup/options_page.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QTest>

#include <any>
#include <stdexcept>

namespace {

const QByteArray GENERAL = "PROCESSOR:GENERAL:";
const QByteArray GPU = "PROCESSOR:GPU PARAMETERS:";

/// Lets the page read a file with these lines and tells what it throws.
template <class Exception>
bool enteringThrows(COptionsPage& page, const QByteArray& body)
{
    page.writeDfg(body);
    try {
        page.enter();
    } catch (const Exception&) {
        return true;
    }
    return false;
}

} // namespace

class CProcessingOptionsFrameTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void everyKeySetsItsWidget();
    void theLegacyModeIsTheOppositeOfItsGroup();
    void anEngineIndexMayBeUnsigned();
    void anAxisOfAnotherTypeIsSkipped();
    void anIndexBeyondTheListClearsTheChoice();
    void unknownKeysAndIgnoredSectionsDoNothing();
    void numbersOutOfBoundsAreNoFailure();
    void anAutomaticTimeStepOfTheFileReadsZero();
    void everyEntryPutsTheFileBack();
    void valuesOfTheFirstFileStayForLaterDecks();
    void noFileLeavesTheWidgets();
    void aWrongTypeIsAFailure_data();
    void aWrongTypeIsAFailure();
    void whatTheReaderThrowsLeavesThePage();
    void automaticTimeStepDisablesTheFixedOne();
    void automaticGridDisablesTheCellSize();
    void theDynamicDomainEnablesItsWidgets();
    void theGpuSplitEnablesItsAxis();
    void onlyTheGpuEngineOffersSplitAndContactDetection();
    void theContactDetectionEnablesSinglePrecision();
    void enteringEnablesByTheWidgetsAlone();
    void couplingKeepsItsBlankAfterAToggle();
    void couplingKeepsItsBlankAfterAnEdit();
    void aCommandIsStoredWhileCouplingIsOff();
    void enteringStoresTheCouplingWithoutABlank();
    void aTypedLocationWaitsForTheNextEvent();
    void theDialogStoresTheLocationWithoutABlank();
    void aCancelledDialogChangesNothing();
    void couplingEnablesItsCommand();
};

void CProcessingOptionsFrameTest::initTestCase()
{
    SimulatorOptions::initialise();
}

void CProcessingOptionsFrameTest::init()
{
    CTestEnvironment::reset();
}

void CProcessingOptionsFrameTest::everyKeySetsItsWidget()
{
    COptionsPage page(2);
    page.writeDfg(GENERAL + "AUTO GRIDCELL=BOOLEAN:TRUE\n" + GENERAL +
                  "AUTO TIMESTEP=BOOLEAN:FALSE\n" + GENERAL + "DYNAMIC DOMAIN=BOOLEAN:TRUE\n" +
                  GENERAL + "ENGINE_INDEX=INT:1\n" + GENERAL + "FIXED TIMESTEP=DOUBLE:2e-5\n" +
                  GENERAL + "NUM THREADS=INT:4\n" + GENERAL + "PSI=INT:12\n" + GENERAL +
                  "RADIUS_COEFFICIENT=DOUBLE:7.5\n" + GENERAL + "TAU=DOUBLE:0.05\n" + GPU +
                  "GPU DOMAIN SPLIT DIMENSION=INT:2\nPROCESSOR:WRITE:INTERVAL=DOUBLE:0.01\n"
                  "PROCESSOR:WRITE:TOTAL=DOUBLE:3\nPROCESSOR:WRITE:COMPRESS DATA=BOOLEAN:TRUE\n" +
                  GPU + "GPU_CONTACT DETECTION SINGLE PRECISION=BOOLEAN:TRUE\n" + GPU +
                  "GPU CONTACT DETECTION LEGACY MODE=BOOLEAN:FALSE\n");
    page.enter();

    QVERIFY(page.child<QCheckBox>("m_chkAutoGridResizing").isChecked());
    QVERIFY(!page.child<QCheckBox>("chkAutoTimeStep").isChecked());
    QVERIFY(page.child<QGroupBox>("gbDynamicDomain").isChecked());
    QCOMPARE(page.child<QComboBox>("m_cbSimulatorEngine").currentIndex(), 1);
    QVERIFY(page.child<CDoubleSpinBox>("sbFixedTime").storedValue() == 2e-5);
    QCOMPARE(page.child<CIntegerSpinBox>("sbNumProcs").value(), 4);
    QCOMPARE(page.child<CIntegerSpinBox>("m_dynamicDomainNumberOfChecks").value(), 12);
    QVERIFY(page.child<CDoubleSpinBox>("m_dynamicDomainParticleDisplacement").storedValue() == 7.5);
    QVERIFY(page.child<CDoubleSpinBox>("m_dynamicDomainCheckInterval").storedValue() == 0.05);
    QCOMPARE(page.child<QComboBox>("m_cbGPUSplitAxis").currentText(), QStringLiteral("Z"));
    QVERIFY(page.child<CDoubleSpinBox>("fbWriteEvery").storedValue() == 0.01);
    QVERIFY(page.child<CDoubleSpinBox>("sbSimTime").storedValue() == 3.0);
    QVERIFY(page.child<QCheckBox>("m_chkCompressData").isChecked());
    QVERIFY(page.child<QCheckBox>("m_chkSinglePrecisionContactDetection").isChecked());
    QVERIFY(page.child<QGroupBox>("m_chkAlternativeContactDetection").isChecked());
    // The two contact detections entered behind the file's changes, and enter disabled.
    QCOMPARE(page.options(),
             QStringLiteral(" -c  -r 3.000000 -w 0.010000 -g 2.500000 -t 0.000020 -p 4 -E 1"
                            " --dyn 1 --dyn-interval 0.050000 --dyn-check 12"
                            " --dyn-disp 7.500000 --auto-grid  --compress-data 1"));
    QVERIFY(page.isEnabled("chkGPUSplit"));
    QVERIFY(!page.isEnabled("sbGridSizeM"));
}

void CProcessingOptionsFrameTest::theLegacyModeIsTheOppositeOfItsGroup()
{
    COptionsPage page(2);
    page.set("m_chkAlternativeContactDetection", true);
    page.writeDfg(GPU + "GPU CONTACT DETECTION LEGACY MODE=BOOLEAN:TRUE\n");
    page.enter();
    QVERIFY(!page.child<QGroupBox>("m_chkAlternativeContactDetection").isChecked());
}

void CProcessingOptionsFrameTest::anEngineIndexMayBeUnsigned()
{
    COptionsPage page;
    page.writeDfg(GENERAL + "ENGINE_INDEX=UNSIGNED INT:2\n" + GPU +
                  "GPU DOMAIN SPLIT DIMENSION=UNSIGNED INT:1\n");
    page.enter();
    QCOMPARE(page.child<QComboBox>("m_cbSimulatorEngine").currentIndex(), 2);
    QCOMPARE(page.child<QComboBox>("m_cbGPUSplitAxis").currentIndex(), 1);
}

void CProcessingOptionsFrameTest::anAxisOfAnotherTypeIsSkipped()
{
    COptionsPage page;
    page.writeDfg(GPU + "GPU DOMAIN SPLIT DIMENSION=DOUBLE:1\n" + GENERAL +
                  "ENGINE_INDEX=QT STRING:1\n" + GENERAL + "NUM THREADS=INT:3\n");
    page.enter();
    QCOMPARE(page.child<QComboBox>("m_cbGPUSplitAxis").currentIndex(), 0);
    QCOMPARE(page.child<QComboBox>("m_cbSimulatorEngine").currentIndex(), 0);
    QCOMPARE(page.child<CIntegerSpinBox>("sbNumProcs").value(), 3);
}

void CProcessingOptionsFrameTest::anIndexBeyondTheListClearsTheChoice()
{
    COptionsPage page;
    page.writeDfg(GENERAL + "ENGINE_INDEX=INT:7\n");
    page.enter();
    QCOMPARE(page.child<QComboBox>("m_cbSimulatorEngine").currentIndex(), -1);
    QVERIFY(page.options().contains(QStringLiteral(" -E -1 ")));
}

void CProcessingOptionsFrameTest::unknownKeysAndIgnoredSectionsDoNothing()
{
    COptionsPage page;
    page.writeDfg(GENERAL + "OTHER=BOOLEAN:TRUE\nCREATOR:X=STRANGE:1\nANALYST:X=STRANGE:1\n"
                            "VIEWS:X=STRANGE:1\nGENERAL:NUM THREADS=INT:9\n");
    page.enter();
    QCOMPARE(page.child<CIntegerSpinBox>("sbNumProcs").value(), 1);
}

void CProcessingOptionsFrameTest::numbersOutOfBoundsAreNoFailure()
{
    COptionsPage page;
    page.writeDfg("PROCESSOR:WRITE:TOTAL=DOUBLE:1e9\n" + GENERAL + "PSI=INT:1000\n");
    page.enter();
    QVERIFY(page.child<CDoubleSpinBox>("sbSimTime").storedValue() == 1e9);
    QVERIFY(page.child<CDoubleSpinBox>("sbSimTime").value() == 1e5);
    QVERIFY(page.options().contains(QStringLiteral(" -r 100000.000000 ")));
    QCOMPARE(page.child<CIntegerSpinBox>("m_dynamicDomainNumberOfChecks").value(), 99);
}

void CProcessingOptionsFrameTest::anAutomaticTimeStepOfTheFileReadsZero()
{
    COptionsPage page;
    page.writeDfg(GENERAL + "AUTO TIMESTEP=BOOLEAN:TRUE\n" + GENERAL +
                  "FIXED TIMESTEP=DOUBLE:0.5\n");
    page.enter();
    QVERIFY(page.options().contains(QStringLiteral(" -t 0 -p ")));
    QVERIFY(!page.isEnabled("sbFixedTime"));
    QVERIFY(!page.isEnabled("lblFixedTS"));
}

void CProcessingOptionsFrameTest::everyEntryPutsTheFileBack()
{
    COptionsPage page;
    page.writeDfg(GENERAL + "NUM THREADS=INT:4\n");
    page.enter();
    page.set("sbNumProcs", 8);
    page.set("sbSimTime", 2.0);
    QVERIFY(page.options().contains(QStringLiteral(" -p 8 ")));
    page.enter();
    QVERIFY(page.options().contains(QStringLiteral(" -p 4 ")));
    QVERIFY(page.options().contains(QStringLiteral(" -r 2.000000 ")));
}

void CProcessingOptionsFrameTest::valuesOfTheFirstFileStayForLaterDecks()
{
    COptionsPage page;
    page.writeDfg(GENERAL + "NUM THREADS=INT:4\n");
    page.enter();
    page.writeDfg(GENERAL + "NUM THREADS=INT:6\n" + GENERAL + "PSI=INT:5\n");
    page.enter();
    QCOMPARE(page.child<CIntegerSpinBox>("sbNumProcs").value(), 4);
    QCOMPARE(page.child<CIntegerSpinBox>("m_dynamicDomainNumberOfChecks").value(), 5);
}

void CProcessingOptionsFrameTest::noFileLeavesTheWidgets()
{
    COptionsPage page;
    page.set("sbNumProcs", 8);
    page.enter();
    QCOMPARE(page.child<CIntegerSpinBox>("sbNumProcs").value(), 8);
    QVERIFY(page.options().contains(QStringLiteral(" -p 8 ")));
}

void CProcessingOptionsFrameTest::aWrongTypeIsAFailure_data()
{
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("unsigned cores") << QByteArray(GENERAL + "NUM THREADS=UNSIGNED INT:4");
    QTest::newRow("number for a check box") << QByteArray(GENERAL + "AUTO TIMESTEP=INT:1");
    QTest::newRow("number for a group") << QByteArray(GENERAL + "DYNAMIC DOMAIN=INT:1");
    QTest::newRow("int for a double") << QByteArray(GENERAL + "TAU=INT:1");
    QTest::newRow("text for a double") << QByteArray("PROCESSOR:WRITE:TOTAL=QT STRING:1");
}

void CProcessingOptionsFrameTest::aWrongTypeIsAFailure()
{
    QFETCH(QByteArray, line);

    COptionsPage page;
    QVERIFY(enteringThrows<std::bad_any_cast>(page, line + '\n'));
    QCOMPARE(page.options(), QString());
}

void CProcessingOptionsFrameTest::whatTheReaderThrowsLeavesThePage()
{
    COptionsPage page;
    QVERIFY(enteringThrows<std::out_of_range>(page, GENERAL + "TAU=STRANGE:1\n"));
    QVERIFY(enteringThrows<std::invalid_argument>(page, GENERAL + "TAU=DOUBLE:x\n"));
}

void CProcessingOptionsFrameTest::automaticTimeStepDisablesTheFixedOne()
{
    COptionsPage page;
    page.enter();
    for (bool automatic : {true, false}) {
        page.set("chkAutoTimeStep", automatic);
        QCOMPARE(page.isEnabled("sbFixedTime"), !automatic);
        QCOMPARE(page.isEnabled("lblFixedTS"), !automatic);
    }
}

void CProcessingOptionsFrameTest::automaticGridDisablesTheCellSize()
{
    COptionsPage page;
    page.enter();
    for (bool automatic : {true, false}) {
        page.set("m_chkAutoGridResizing", automatic);
        QCOMPARE(page.isEnabled("sbGridSizeM"), !automatic);
    }
}

void CProcessingOptionsFrameTest::theDynamicDomainEnablesItsWidgets()
{
    COptionsPage page;
    page.enter();
    for (bool on : {false, true, false}) {
        page.set("gbDynamicDomain", on);
        for (const char* name :
             {"m_dynamicDomainCheckInterval", "m_dynamicDomainNumberOfChecks",
              "m_dynamicDomainParticleDisplacement", "m_lblTau", "m_lblPsi", "m_lblRadiusCoef"}) {
            QVERIFY2(page.isEnabled(name) == on, name);
        }
    }
}

void CProcessingOptionsFrameTest::theGpuSplitEnablesItsAxis()
{
    COptionsPage page;
    page.enter();
    page.set("m_cbSimulatorEngine", 1);
    for (bool on : {false, true, false}) {
        page.set("chkGPUSplit", on);
        QCOMPARE(page.isEnabled("m_cbGPUSplitAxis"), on);
        QCOMPARE(page.isEnabled("m_lblGPUSplitAxis"), on);
    }
}

void CProcessingOptionsFrameTest::onlyTheGpuEngineOffersSplitAndContactDetection()
{
    COptionsPage page(2);
    page.enter();
    QVERIFY(!page.isEnabled("chkGPUSplit"));
    QVERIFY(!page.isEnabled("m_chkAlternativeContactDetection"));
    for (int engine : {1, 2, 1, 0}) {
        page.set("m_cbSimulatorEngine", engine);
        QCOMPARE(page.isEnabled("chkGPUSplit"), engine == 1);
        QCOMPARE(page.isEnabled("m_chkAlternativeContactDetection"), engine == 1);
    }
}

void CProcessingOptionsFrameTest::theContactDetectionEnablesSinglePrecision()
{
    COptionsPage page(2);
    page.enter();
    page.set("m_cbSimulatorEngine", 1);
    for (bool on : {true, false, true}) {
        page.set("m_chkAlternativeContactDetection", on);
        QCOMPARE(page.isEnabled("m_chkSinglePrecisionContactDetection"), on);
    }
}

void CProcessingOptionsFrameTest::enteringEnablesByTheWidgetsAlone()
{
    COptionsPage page;
    page.enter();
    page.child<>("sbFixedTime").setEnabled(false);
    page.child<>("sbStepLimit").setEnabled(true);
    page.child<>("sbGridSizeM").setEnabled(false);
    page.child<>("leCouplingCommand").setEnabled(true);
    page.enter();
    QVERIFY(page.isEnabled("sbFixedTime"));
    QVERIFY(!page.isEnabled("sbStepLimit"));
    QVERIFY(page.isEnabled("sbGridSizeM"));
    QVERIFY(!page.isEnabled("leCouplingCommand"));
}

void CProcessingOptionsFrameTest::couplingKeepsItsBlankAfterAToggle()
{
    const COptionsPage page;
    page.set("m_leCouplingLocation", "/server");
    page.set("gbCouplingServer", true);
    QCOMPARE(page.coupling(), CDeckStore::Coupling("/server", " "));
    page.set("gbCouplingServer", false);
    QCOMPARE(page.coupling(), CDeckStore::Coupling());
}

void CProcessingOptionsFrameTest::couplingKeepsItsBlankAfterAnEdit()
{
    const COptionsPage page;
    page.set("m_leCouplingLocation", "/server");
    page.set("gbCouplingServer", true);
    page.set("leCouplingCommand", "--port 1");
    QCOMPARE(page.coupling(), CDeckStore::Coupling("/server", " --port 1"));
}

void CProcessingOptionsFrameTest::aCommandIsStoredWhileCouplingIsOff()
{
    const COptionsPage page;
    page.set("leCouplingCommand", "x");
    QCOMPARE(page.coupling(), CDeckStore::Coupling("", " x"));
}

void CProcessingOptionsFrameTest::enteringStoresTheCouplingWithoutABlank()
{
    COptionsPage page;
    page.set("m_leCouplingLocation", "/server");
    page.set("leCouplingCommand", "--port 1");
    page.enter();
    QCOMPARE(page.coupling(), CDeckStore::Coupling());
    page.set("gbCouplingServer", true);
    page.enter();
    QCOMPARE(page.coupling(), CDeckStore::Coupling("/server", "--port 1"));
    QVERIFY(page.options().contains(QStringLiteral(" --cs ")));
}

void CProcessingOptionsFrameTest::aTypedLocationWaitsForTheNextEvent()
{
    const COptionsPage page;
    page.set("gbCouplingServer", true);
    page.set("m_leCouplingLocation", "/typed");
    QCOMPARE(page.coupling(), CDeckStore::Coupling("", " "));
    page.set("leCouplingCommand", "x");
    QCOMPARE(page.coupling(), CDeckStore::Coupling("/typed", " x"));
}

void CProcessingOptionsFrameTest::theDialogStoresTheLocationWithoutABlank()
{
    QTemporaryDir folder;
    QFile server(folder.filePath(QStringLiteral("server.exe")));
    QVERIFY(server.open(QIODevice::WriteOnly));
    server.close();
    const COptionsPage page;
    CAppSettings::instance()->setValue(CAppSettings::RootPath, folder.path() + '/');
    page.set("gbCouplingServer", true);
    page.set("leCouplingCommand", "--port 1");
    CModalWatcher watcher;
    watcher.answerNextFileDialog({server.fileName()});
    page.child<QPushButton>("m_pbCouplingLocationSelect").click();

    QCOMPARE(watcher.fileDialogs().size(), std::size_t(1));
    const SShownFileDialog& dialog = watcher.fileDialogs().front();
    QCOMPARE(dialog.title, QStringLiteral("Choose .exe File"));
    QCOMPARE(dialog.nameFilters.first(), QStringLiteral("Executable file (*.exe)"));
    QCOMPARE(QDir(dialog.directory), QDir(folder.path()));
    QCOMPARE(page.child<QLineEdit>("m_leCouplingLocation").text(), server.fileName());
    QCOMPARE(page.coupling(), CDeckStore::Coupling(server.fileName().toStdString(), "--port 1"));
}

void CProcessingOptionsFrameTest::aCancelledDialogChangesNothing()
{
    const COptionsPage page;
    page.set("gbCouplingServer", true);
    page.set("m_leCouplingLocation", "/kept");
    CModalWatcher watcher;
    watcher.cancelNextFileDialog();
    page.child<QPushButton>("m_pbCouplingLocationSelect").click();
    QCOMPARE(watcher.fileDialogs().size(), std::size_t(1));
    QCOMPARE(page.child<QLineEdit>("m_leCouplingLocation").text(), QStringLiteral("/kept"));
    QCOMPARE(page.coupling(), CDeckStore::Coupling("", " "));
}

void CProcessingOptionsFrameTest::couplingEnablesItsCommand()
{
    const COptionsPage page;
    for (bool on : {true, false, true}) {
        page.set("gbCouplingServer", on);
        QCOMPARE(page.isEnabled("leCouplingCommand"), on);
        QCOMPARE(page.isEnabled("m_lblCouplingCommand"), on);
    }
}

TARNEL_TEST_MAIN(CProcessingOptionsFrameTest)

#include "processing_options_frame_test.moc"
