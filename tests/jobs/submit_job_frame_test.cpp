#include "app/constants/icons.h"
#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "jobs/simulation_list_item.h"
#include "tests/jobs/page_fixture.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QMetaMethod>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTest>

#include <filesystem>

class SubmitJobFrameTest : public QObject
{
    Q_OBJECT

private slots:
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
    void emptiesTheListForAJobThatCannotBeLoaded();
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
    void loadsByTheExecutableOfTheFieldAndRunsTheStoredOne();
    void takesTheChosenFolder_data();
    void takesTheChosenFolder();
};

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

void SubmitJobFrameTest::emptiesTheListForAJobThatCannotBeLoaded()
{
    CPageFixture fixture;
    fixture.loadJob(2);
    fixture.load(fixture.newFolder());
    QCOMPARE(fixture.modals().texts(),
             QStringList(QStringLiteral("Jobspec does not contain valid h5 file")));
    QCOMPARE(fixture.widget<QListWidget>("m_listOngoingSimulations")->count(), 0);
    // Nothing takes back what the job before has enabled.
    QVERIFY(fixture.widget<QPushButton>("m_pbStartSimulating")->isEnabled());
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

void SubmitJobFrameTest::loadsByTheExecutableOfTheFieldAndRunsTheStoredOne()
{
    CPageFixture fixture;
    fixture.widget<QLineEdit>("m_leORVAExeLocation")->setText(QStringLiteral("/typed"));
    CAppSettings::instance()->setValue(CAppSettings::OrvaExeLocation, QString());
    const QString job = fixture.loadJob(1);
    QVERIFY(fixture.modals().texts().isEmpty());
    CAppSettings::instance()->setValue(CAppSettings::OrvaExeLocation, QStringLiteral("/stored"));
    fixture.widget<QRadioButton>("m_rbSimulationDistributed")->click();
    fixture.click("m_pbGenerateDistributedFiles");
    QCOMPARE(readFile(job + QStringLiteral("/JobFileLocation/RunAllSimulations.bat")),
             QByteArray("\"/stored\" -i \"Job0/deck0.zek\" -c \n"));
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
