#include "app/constants/icons.h"
#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "jobs/simulation_list_item.h"
#include "tests/jobs/page_fixture.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMetaMethod>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTest>
#include <QTextEdit>

#include <filesystem>

class SubmitJobFrameTest : public QObject
{
    Q_OBJECT

private slots:
    void bearsTheTextsOfItsForm_data();
    void bearsTheTextsOfItsForm();
    void keepsTheSizesOfItsForm();
    void alignsItsLocations();
    void standsInTheOrderOfItsForm();
    void hasItsSlotsInOrder();
    void startsWithoutAJob();
    void showsTheStoredExecutable();
    void neverSaysThatItIsComplete();

    void refusesAnEmptyLoadLocation();
    void refusesALoadLocationThatDoesNotExist();
    void refusesToLoadWithoutAnExecutable();
    void listsTheCasesOfALoadedJob();
    void listsNothingForAMatrixOfAHeadingAlone();
    void loadsTheSameJobAgain();
    void staysDisabledAfterAJobWithoutDeck();
    void generatesAJobAndLoadsIt();
    void listsNothingOfAGeneratedJobWithoutAnExecutable();
    void generatesNothingInAMissingSaveLocation();

    void switchesTheStackPageOnly();
    void failsToWriteDistributedFilesWithoutAJob();
    void writesDistributedFiles();
    void movesTheDistributedProgressInThreeSteps();

    void storesTheChosenExecutable();
    void clearsTheExecutableWhenItsDialogIsCancelled();
    void keepsAnExecutableTypedByHandOutOfTheSettings();
    void takesTheChosenFolder_data();
    void takesTheChosenFolder();
};

void SubmitJobFrameTest::bearsTheTextsOfItsForm_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const char* property, const char* text) {
        QTest::newRow(name) << QByteArray(property) << QString::fromLatin1(text);
    };
    row("m_pbJobSaveLocationSelect", "text", "...");
    row("m_lblJobSaveLocation", "text", "Job Save Location:");
    row("m_pbGenerateJob", "text", "Generate Job Specification");
    row("m_pbJobLoadLocationSelect", "text", "...");
    row("m_lblJobLoadLocation", "text", "Job Load Location:");
    row("m_pbJobLoad", "text", "Load Job Specification");
    row("m_lblORVAExeLocation", "text", "ORVA Executable Location:");
    row("m_pbORVAExeLocationSelect", "text", "...");
    row("m_gbSimulationExecutionOptions", "title", "Simulation Execution Options");
    row("m_rbSimulationLocal", "text", "Generate files and Simulate Locally");
    row("m_rbSimulationDistributed", "text", "Generate Files for Distributed Simulation");
    row("m_lblConcurrentSims", "text", "Number of Concurrent Simulations:");
    row("m_sbConcurrentSimulations", "value", "1");
    row("m_gbOngoingSimulations", "title", "Ongoing Simulations");
    row("m_gbInspector", "title", "Inspector");
    row("m_lblJobName", "text", "Select a finished Job to view it's output");
    row("m_pbStartSimulating", "text", "Start Simulating");
    row("m_pbCancelSimulating", "text", "Cancel Queued Simulations");
    row("m_progBarCompletedSimulations", "value", "0");
    row("m_pbGenerateDistributedFiles", "text", "Generate Distributed Files");
    row("m_distributedFileProgress", "value", "0");
    for (const char* name :
         {"frame_2", "horizontalFrame1", "gridFrame_4", "sw_SimExecution", "m_pageLocalSimulations",
          "horizontalFrame_5", "m_pageDistributedFiles", "horizontalFrame_4"}) {
        row(name, "objectName", name);
    }
}

void SubmitJobFrameTest::bearsTheTextsOfItsForm()
{
    QFETCH(QByteArray, property);
    QFETCH(QString, text);
    const CPageFixture fixture;
    const QWidget* const widget = fixture.widget<QWidget>(QTest::currentDataTag());
    QCOMPARE(widget->property(property.constData()).toString(), text);
}

void SubmitJobFrameTest::keepsTheSizesOfItsForm()
{
    CPageFixture fixture;
    QCOMPARE(fixture.page().windowTitle(), QStringLiteral("SubmitJobFrameUI"));
    for (const char* name :
         {"m_pbJobSaveLocationSelect", "m_pbJobLoadLocationSelect", "m_pbORVAExeLocationSelect"}) {
        QCOMPARE(fixture.widget<QPushButton>(name)->size(), QSize(22, 22));
    }
    for (const char* name : {"m_leJobSaveLocation", "m_leJobLoadLocation"}) {
        QCOMPARE(fixture.widget<QLineEdit>(name)->height(), 22);
    }
    for (const char* name : {"m_lblJobSaveLocation", "m_lblJobLoadLocation"}) {
        QCOMPARE(fixture.widget<QLabel>(name)->minimumWidth(), 100);
    }
    for (const char* name : {"m_pbGenerateJob", "m_pbJobLoad"}) {
        QCOMPARE(fixture.widget<QPushButton>(name)->minimumWidth(), 150);
    }
    QCOMPARE(fixture.widget<QWidget>("m_sbConcurrentSimulations")->minimumWidth(), 100);
    QCOMPARE(fixture.widget<QTextEdit>("m_inspectorDetails")->lineWrapMode(), QTextEdit::NoWrap);
    QVERIFY(fixture.widget<QProgressBar>("m_progBarCompletedSimulations")->isTextVisible());
}

void SubmitJobFrameTest::alignsItsLocations()
{
    CPageFixture fixture;
    fixture.page().resize(1000, 600);
    QTest::qWait(1);
    const auto* const save = fixture.widget<QLineEdit>("m_leJobSaveLocation");
    for (const char* name : {"m_leJobLoadLocation", "m_leORVAExeLocation"}) {
        const auto* const edit = fixture.widget<QLineEdit>(name);
        QCOMPARE(edit->mapTo(&fixture.page(), QPoint()).x(),
                 save->mapTo(&fixture.page(), QPoint()).x());
        QCOMPARE(edit->width(), save->width());
    }
}

void SubmitJobFrameTest::standsInTheOrderOfItsForm()
{
    const QStringList order{"frame_2",
                            "m_pbJobSaveLocationSelect",
                            "m_leJobSaveLocation",
                            "m_lblJobSaveLocation",
                            "m_pbGenerateJob",
                            "horizontalFrame1",
                            "m_pbJobLoadLocationSelect",
                            "m_leJobLoadLocation",
                            "m_lblJobLoadLocation",
                            "m_pbJobLoad"};
    CPageFixture fixture;
    QStringList names;
    for (const char* frame : {"frame_2", "horizontalFrame1"}) {
        names << frame;
        for (const QWidget* widget : fixture.widget<QWidget>(frame)->findChildren<QWidget*>()) {
            names << widget->objectName();
        }
    }
    QCOMPARE(names, order);
}

void SubmitJobFrameTest::hasItsSlotsInOrder()
{
    QStringList names;
    const QMetaObject& meta = CSubmitJobFrame::staticMetaObject;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        names << QString::fromLatin1(meta.method(index).name());
    }
    QCOMPARE(names.join(QLatin1Char(' ')),
             QStringLiteral("browseForFolder generateJobSpec generateDistributedCases loadJobSpec "
                            "runCasesLocally executeCase updateLocalSimulationTracker"));
}

void SubmitJobFrameTest::startsWithoutAJob()
{
    const CPageFixture fixture;
    QVERIFY(!fixture.widget<QPushButton>("m_pbStartSimulating")->isEnabled());
    QVERIFY(fixture.widget<QPushButton>("m_pbStartSimulating")->isVisible());
    QVERIFY(!fixture.widget<QPushButton>("m_pbCancelSimulating")->isEnabled());
    QVERIFY(!fixture.widget<QPushButton>("m_pbCancelSimulating")->isVisible());
    QVERIFY(!fixture.widget<QWidget>("m_sbConcurrentSimulations")->isEnabled());
    QVERIFY(!fixture.widget<QWidget>("m_gbSimulationExecutionOptions")->isEnabled());
    QVERIFY(fixture.widget<QRadioButton>("m_rbSimulationLocal")->isChecked());
    QCOMPARE(fixture.widget<QStackedWidget>("sw_SimExecution")->currentIndex(), 0);
    QVERIFY(fixture.widget<QPushButton>("m_pbGenerateDistributedFiles")->isEnabled());
}

void SubmitJobFrameTest::showsTheStoredExecutable()
{
    const CPageFixture fixture;
    QCOMPARE(fixture.widget<QLineEdit>("m_leORVAExeLocation")->text(), CPageFixture::simulator());
}

void SubmitJobFrameTest::neverSaysThatItIsComplete()
{
    CPageFixture fixture;
    const QSignalSpy spy(&fixture.page(), &IFrame::stageComplete);
    fixture.page().onPageEntered();
    fixture.loadJob(1);
    QVERIFY(fixture.run());
    QCOMPARE(spy.count(), 0);
}

void SubmitJobFrameTest::refusesAnEmptyLoadLocation()
{
    CPageFixture fixture;
    fixture.click("m_pbJobLoad");
    QCOMPARE(fixture.modals().messages().size(), std::size_t(1));
    const SShownMessage& message = fixture.modals().messages().front();
    QCOMPARE(message.title, QStringLiteral("Information"));
    QCOMPARE(message.text, QStringLiteral("Invalid path. Please enter a valid path"));
    QCOMPARE(message.icon, QMessageBox::Information);
    QVERIFY(!message.hasParent);
    QVERIFY(!fixture.widget<QPushButton>("m_pbStartSimulating")->isEnabled());
}

void SubmitJobFrameTest::refusesALoadLocationThatDoesNotExist()
{
    CPageFixture fixture;
    fixture.loadJob(2);
    fixture.load(QStringLiteral("/no/such/job"));
    QCOMPARE(fixture.modals().texts(),
             QStringList(QStringLiteral("Invalid path. Please enter a valid path")));
    QCOMPARE(fixture.widget<QListWidget>("m_listOngoingSimulations")->count(), 2);
}

void SubmitJobFrameTest::refusesToLoadWithoutAnExecutable()
{
    CPageFixture fixture;
    fixture.widget<QLineEdit>("m_leORVAExeLocation")->clear();
    fixture.loadJob(2);
    QCOMPARE(fixture.modals().texts(),
             QStringList(QStringLiteral("No ORVA executable found, please browse for one in the "
                                        "associated text box")));
    QCOMPARE(fixture.modals().messages().front().title, QStringLiteral("Information"));
    QVERIFY(!fixture.widget<QPushButton>("m_pbStartSimulating")->isEnabled());
}

void SubmitJobFrameTest::listsTheCasesOfALoadedJob()
{
    CPageFixture fixture;
    fixture.loadJob(3);
    const auto* const list = fixture.widget<QListWidget>("m_listOngoingSimulations");
    QCOMPARE(list->count(), 3);
    for (int number = 0; number < 3; ++number) {
        QCOMPARE(list->item(number)->text(), QStringLiteral("deck%1").arg(number));
        QCOMPARE(fixture.row(number)->id(), number);
        QVERIFY(fixture.isWaiting(number));
    }
    for (const char* name : {"m_pbStartSimulating", "m_pbCancelSimulating",
                             "m_sbConcurrentSimulations", "m_gbSimulationExecutionOptions"}) {
        QVERIFY2(fixture.widget<QWidget>(name)->isEnabled(), name);
    }
    QVERIFY(!fixture.widget<QPushButton>("m_pbCancelSimulating")->isVisible());
}

void SubmitJobFrameTest::listsNothingForAMatrixOfAHeadingAlone()
{
    CPageFixture fixture;
    fixture.loadJob(0);
    QCOMPARE(fixture.widget<QListWidget>("m_listOngoingSimulations")->count(), 0);
    QCOMPARE(CDeckStore::instance()->creatorData().size(), std::size_t(1));
    QVERIFY(fixture.widget<QPushButton>("m_pbStartSimulating")->isEnabled());
}

void SubmitJobFrameTest::loadsTheSameJobAgain()
{
    CPageFixture fixture;
    const QString job = fixture.loadJob(2);
    QVERIFY(fixture.run());
    fixture.load(job);
    QCOMPARE(fixture.widget<QListWidget>("m_listOngoingSimulations")->count(), 2);
    QVERIFY(fixture.isWaiting(0) && fixture.isWaiting(1));
    QCOMPARE(CDeckStore::instance()->creatorData().size(), std::size_t(3));
}

void SubmitJobFrameTest::staysDisabledAfterAJobWithoutDeck()
{
    CPageFixture fixture;
    const QString job = fixture.newFolder();
    makeJob(job, JobDescription());
    QVERIFY(QFile::remove(job + QStringLiteral("/deck_data/0.h5")));
    fixture.load(job);
    QCOMPARE(fixture.modals().texts(),
             QStringList(QStringLiteral("Jobspec does not contain valid h5 file")));
    QVERIFY(!fixture.widget<QPushButton>("m_pbStartSimulating")->isEnabled());
}

void SubmitJobFrameTest::generatesAJobAndLoadsIt()
{
    CPageFixture fixture;
    fixture.loadJob(1);
    const QString save = fixture.newFolder();
    fixture.widget<QLineEdit>("m_leJobSaveLocation")->setText(save);
    fixture.click("m_pbGenerateJob");
    fixture.click("m_pbGenerateJob");
    QCOMPARE(fixture.widget<QLineEdit>("m_leJobLoadLocation")->text(),
             save + QStringLiteral("/JobSpec0"));
    QVERIFY(QFileInfo::exists(save + QStringLiteral("/JobSpec/input_jobID-Matrix.csv")));
    QVERIFY(CAppSettings::instance()
                ->text(CAppSettings::ZEKPath)
                .startsWith(save + QStringLiteral("/JobSpec0")));
    QCOMPARE(fixture.widget<QListWidget>("m_listOngoingSimulations")->count(), 1);
}

void SubmitJobFrameTest::listsNothingOfAGeneratedJobWithoutAnExecutable()
{
    CPageFixture fixture;
    const QString loaded = fixture.loadJob(1);
    const QString save = fixture.newFolder();
    fixture.widget<QLineEdit>("m_leJobSaveLocation")->setText(save);
    fixture.widget<QLineEdit>("m_leORVAExeLocation")->clear();
    fixture.click("m_pbGenerateJob");
    QCOMPARE(fixture.modals().texts(),
             QStringList(QStringLiteral("No ORVA executable found, please browse for one in the "
                                        "associated text box")));
    const QString job = save + QStringLiteral("/JobSpec");
    QCOMPARE(fixture.widget<QLineEdit>("m_leJobLoadLocation")->text(), job);
    for (const char* name : {"/input_jobID-Matrix.csv", "/Additional File Directory.txt",
                             "/deck.zek", "/deck.ynd", "/deck_data/0.h5"}) {
        QVERIFY2(QFileInfo::exists(job + QLatin1String(name)), name);
    }
    // The refused load touched nothing: list and settings are those of the job before.
    QCOMPARE(fixture.widget<QListWidget>("m_listOngoingSimulations")->count(), 1);
    QVERIFY(CAppSettings::instance()->text(CAppSettings::ZEKPath).startsWith(loaded));
}

void SubmitJobFrameTest::generatesNothingInAMissingSaveLocation()
{
    CPageFixture fixture;
    fixture.loadJob(1);
    const QString loaded = fixture.widget<QLineEdit>("m_leJobLoadLocation")->text();
    fixture.widget<QLineEdit>("m_leJobSaveLocation")->setText(QStringLiteral("/no/such/folder"));
    fixture.click("m_pbGenerateJob");
    QCOMPARE(fixture.widget<QLineEdit>("m_leJobLoadLocation")->text(), loaded);
    QVERIFY(fixture.modals().texts().isEmpty());
}

void SubmitJobFrameTest::switchesTheStackPageOnly()
{
    CPageFixture fixture;
    fixture.loadJob(2);
    const auto* const stack = fixture.widget<QStackedWidget>("sw_SimExecution");
    fixture.widget<QRadioButton>("m_rbSimulationDistributed")->click();
    QCOMPARE(stack->currentWidget(), fixture.widget<QWidget>("m_pageDistributedFiles"));
    QCOMPARE(fixture.widget<QListWidget>("m_listOngoingSimulations")->count(), 2);
    QVERIFY(fixture.widget<QPushButton>("m_pbStartSimulating")->isEnabled());
    fixture.widget<QRadioButton>("m_rbSimulationLocal")->click();
    QCOMPARE(stack->currentWidget(), fixture.widget<QWidget>("m_pageLocalSimulations"));
}

void SubmitJobFrameTest::failsToWriteDistributedFilesWithoutAJob()
{
    CPageFixture fixture;
    QString what;
    try {
        QMetaObject::invokeMethod(&fixture.page(), "generateDistributedCases",
                                  Qt::DirectConnection);
    } catch (const std::filesystem::filesystem_error& error) {
        what = QString::fromUtf8(error.what());
    }
    QVERIFY2(what.contains(QStringLiteral("create_directory")), qPrintable(what));
}

void SubmitJobFrameTest::writesDistributedFiles()
{
    CPageFixture fixture;
    const QString job = fixture.loadJob(2);
    fixture.widget<QRadioButton>("m_rbSimulationDistributed")->click();
    fixture.click("m_pbGenerateDistributedFiles");
    QCOMPARE(fixture.widget<QProgressBar>("m_distributedFileProgress")->value(), 100);
    const QString simulator = CPageFixture::simulator();
    QCOMPARE(
        QString::fromUtf8(readFile(job + QStringLiteral("/JobFileLocation/RunAllSimulations.bat"))),
        QStringLiteral("\"%1\" -i \"Job0/deck0.zek\" -c \n\"%1\" -i \"Job1/deck1.zek\" -c \n")
            .arg(simulator));
}

void SubmitJobFrameTest::movesTheDistributedProgressInThreeSteps()
{
    CPageFixture fixture;
    fixture.loadJob(1);
    fixture.widget<QRadioButton>("m_rbSimulationDistributed")->click();
    const auto* const bar = fixture.widget<QProgressBar>("m_distributedFileProgress");
    QCOMPARE(bar->minimum(), 0);
    QCOMPARE(bar->maximum(), 100);
    fixture.click("m_pbGenerateDistributedFiles");
    QSignalSpy spy(bar, &QProgressBar::valueChanged);
    fixture.click("m_pbGenerateDistributedFiles");
    QCOMPARE(spy, QList<QVariantList>({{0}, {50}, {100}}));
}

void SubmitJobFrameTest::storesTheChosenExecutable()
{
    CPageFixture fixture;
    const QString folder = fixture.newFolder();
    const QString executable = folder + QStringLiteral("/orva");
    writeFile(executable, "");
    CAppSettings::instance()->setValue(CAppSettings::RootPath, folder);
    fixture.modals().answerNextFileDialog({executable});
    fixture.click("m_pbORVAExeLocationSelect");
    QCOMPARE(fixture.widget<QLineEdit>("m_leORVAExeLocation")->text(), executable);
    QCOMPARE(CAppSettings::instance()->text(CAppSettings::OrvaExeLocation), executable);
    const SShownFileDialog& dialog = fixture.modals().fileDialogs().front();
    QCOMPARE(dialog.title, QStringLiteral("Choose .exe File"));
    QCOMPARE(dialog.directory, folder);
    QCOMPARE(dialog.nameFilters.first(), QStringLiteral("Executable file (*.exe)"));
}

void SubmitJobFrameTest::clearsTheExecutableWhenItsDialogIsCancelled()
{
    CPageFixture fixture;
    fixture.modals().cancelNextFileDialog();
    fixture.click("m_pbORVAExeLocationSelect");
    QVERIFY(fixture.widget<QLineEdit>("m_leORVAExeLocation")->text().isEmpty());
    QVERIFY(CAppSettings::instance()->text(CAppSettings::OrvaExeLocation).isEmpty());
}

void SubmitJobFrameTest::keepsAnExecutableTypedByHandOutOfTheSettings()
{
    CPageFixture fixture;
    auto* const edit = fixture.widget<QLineEdit>("m_leORVAExeLocation");
    edit->selectAll();
    QTest::keyClicks(edit, QStringLiteral("/typed"));
    QCOMPARE(edit->text(), QStringLiteral("/typed"));
    QCOMPARE(CAppSettings::instance()->text(CAppSettings::OrvaExeLocation),
             CPageFixture::simulator());
}

void SubmitJobFrameTest::takesTheChosenFolder_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QByteArray>("edit");
    QTest::newRow("save") << QByteArray("m_pbJobSaveLocationSelect")
                          << QByteArray("m_leJobSaveLocation");
    QTest::newRow("load") << QByteArray("m_pbJobLoadLocationSelect")
                          << QByteArray("m_leJobLoadLocation");
}

void SubmitJobFrameTest::takesTheChosenFolder()
{
    QFETCH(QByteArray, button);
    QFETCH(QByteArray, edit);
    CPageFixture fixture;
    const QString start = fixture.newFolder();
    const QString folder = fixture.newFolder();
    CAppSettings::instance()->setValue(CAppSettings::RootPath, start);
    fixture.modals().answerNextFileDialog({folder});
    fixture.click(button.constData());
    const auto* const lineEdit = fixture.widget<QLineEdit>(edit.constData());
    QCOMPARE(lineEdit->text(), folder);
    const SShownFileDialog& dialog = fixture.modals().fileDialogs().front();
    QCOMPARE(dialog.title, QStringLiteral("Browse for folder"));
    QCOMPARE(dialog.directory, start);
    QCOMPARE(dialog.fileMode, QFileDialog::Directory);
    QVERIFY(dialog.directoriesOnly);

    fixture.modals().cancelNextFileDialog();
    fixture.click(button.constData());
    QVERIFY(lineEdit->text().isEmpty());
}

TARNEL_TEST_MAIN(SubmitJobFrameTest)

#include "submit_job_frame_test.moc"
