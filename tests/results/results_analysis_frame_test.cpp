#include "results/results_analysis_frame.h"

#include "app/constants/settings_keys.h"
#include "deck/app_settings.h"
#include "platform/interpreter.h"
#include "samples/player/modal_watcher.h"
#include "tests/results/progress_recorder.h"
#include "tests/results/result_tree.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QLineEdit>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTextBrowser>
#include <QThreadPool>
#include <QtConcurrent>
#include <QtTest>

#include <filesystem>
#include <memory>

class CResultsAnalysisFrameTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theFormIsAsTabled();
    void enteringThePageDoesNothing();
    void browsingStartsAtTheStoredFolderAndFillsTheField();
    void aCancelledBrowseLeavesTheField();

    void anEmptyFieldAsksForADirectory();
    void aMissingFolderIsNamedSo();
    void aFileIsNoFolder();
    void aFailingWalkLeavesTheSlot();
    void aFolderWithoutNumberSkipsTheRestWithoutAWord();
    void aFolderWithAShortNameSkipsTheRestWithoutAWord();
    void aCombinedFileThatCannotBeCreatedIsNotNoticed();
    void theDialogsButtonHidesItAndTheWorkGoesOn();

    void job10ComesAfterJob9();
    void aSuffixBehindTheNumberIsIgnored();
    void noCsvAndNoScriptGiveAnEmptyFile();
    void aScriptWithoutCsvGivesTheHeadingAlone();
    void aCsvWithoutExtractedDataGivesAnEmptyLine();
    void rowsBehindTheTableComeOutBeforeIt();
    void aSecondTimeLineAppendsItsHeadings();
    void aShortTableLineShortensTheLaterColumns();
    void anOldCombinedFileDoesNotCutOffTheCases();
    void aJobMatrixInTheJobFolderEndsTheGathering();
    void aSubfoldersNameDecidesTheCase();
    void aScriptAnywhereChoosesTheScriptsLayout();
    void upperCaseExtensionsAreNotGathered();
    void aSecondRunRewritesTheFile();

    void theDialogIsShownAtOnceAndItsLabelsTrail();
    void theBarMovesInTheSimulatorsLayout();
    void theBarStandsStillInTheScriptsLayout();
    void lateProgressMeetsNoClosedDialog();
    void collatesWhileCasesOccupyTheGlobalPool();
    void thePageDisconnectsItselfAtItsEnd();

private:
    QPushButton* generateButton() const;
    void generate() const;
    QByteArray collated() const;
    void put(const char* name, const QByteArray& content = {}) const;

    QTemporaryDir m_root;
    QString m_folder;
    std::unique_ptr<QWidget> m_window;
    CResultsAnalysisFrame* m_page = nullptr;
    std::unique_ptr<CModalWatcher> m_watcher;
};

namespace {

template <class Widget>
Widget* child(const QWidget* parent, const char* name)
{
    auto* widget = parent->findChild<Widget*>(QString::fromLatin1(name));
    if (widget == nullptr) {
        qFatal("no widget %s", name);
    }
    return widget;
}

const QStringList complete = {QStringLiteral("Operation Complete")};

} // namespace

void CResultsAnalysisFrameTest::init()
{
    CTestEnvironment::reset();
    m_folder = QDir(m_root.path()).filePath(QString::fromLatin1(QTest::currentTestFunction()));
    QDir().mkpath(m_folder);
    m_window = std::make_unique<QWidget>();
    m_page = new CResultsAnalysisFrame(m_window.get());
    m_window->resize(500, 300);
    m_window->show();
    m_watcher = std::make_unique<CModalWatcher>();
}

void CResultsAnalysisFrameTest::cleanup()
{
    m_watcher.reset();
    m_window.reset();
}

QPushButton* CResultsAnalysisFrameTest::generateButton() const
{
    return child<QPushButton>(m_page, "m_pbGenerateMasterResults");
}

// The work hangs on the press, so the button isn't let go.
void CResultsAnalysisFrameTest::generate() const
{
    QTest::mousePress(generateButton(), Qt::LeftButton);
}

QByteArray CResultsAnalysisFrameTest::collated() const
{
    child<QLineEdit>(m_page, "m_leDistributedFilePath")->setText(m_folder);
    generate();
    return Native::fromTextFile(
        contentOf(QDir(m_folder).filePath(QStringLiteral("CollatedResults.csv"))));
}

void CResultsAnalysisFrameTest::put(const char* name, const QByteArray& content) const
{
    putFile(m_folder, QString::fromLatin1(name), content);
}

void CResultsAnalysisFrameTest::theFormIsAsTabled()
{
    const CResultsAnalysisFrame page;
    QCOMPARE(page.windowTitle(), QStringLiteral("ResultsAnalysisFrameUI"));
    QCOMPARE(page.size(), QSize(394, 154));
    QVERIFY(page.minimumSizeHint().height() <= page.height());
    const auto* text = child<QTextBrowser>(&page, "textBrowser");
    QCOMPARE(text->toPlainText(),
             QStringLiteral("Select the job file location directory containing the multiple "
                            "simulations. \nIf the Post-Processing option to generate results "
                            "Comma Separated Variables files has been selected, choose Generate "
                            "combined results file to collate the results to one file. "));
    QCOMPARE(text->lineWidth(), 0);
    QCOMPARE(text->sizeAdjustPolicy(), QAbstractScrollArea::AdjustToContents);
    QCOMPARE(text->document()->blockCount(), 1);
    QTextCursor cursor(text->document());
    cursor.movePosition(QTextCursor::NextCharacter);
    QCOMPARE(cursor.charFormat().fontPointSize(), 8.0);
    const auto* label = child<QLabel>(&page, "m_lblDistributedFilePath");
    QCOMPARE(label->text(), QStringLiteral("Select directory containing distributed files:"));
    QCOMPARE(label->lineWidth(), 0);
    QCOMPARE(child<QLineEdit>(&page, "m_leDistributedFilePath")->maximumHeight(), 22);
    QCOMPARE(child<QLineEdit>(&page, "m_leDistributedFilePath")->text(), QString());
    const auto* browse = child<QPushButton>(&page, "m_pbDistributedSelectFile");
    QCOMPARE(browse->text(), QStringLiteral("..."));
    QCOMPARE(browse->maximumSize(), QSize(22, 22));
    QVERIFY(!browse->autoDefault());
    QCOMPARE(child<QPushButton>(&page, "m_pbGenerateMasterResults")->text(),
             QStringLiteral("Generate Combined Results File"));
}

void CResultsAnalysisFrameTest::enteringThePageDoesNothing()
{
    const QSignalSpy completed(m_page, &IFrame::stageComplete);
    child<QLineEdit>(m_page, "m_leDistributedFilePath")->setText(QStringLiteral("kept"));
    m_page->onPageEntered();
    QCOMPARE(child<QLineEdit>(m_page, "m_leDistributedFilePath")->text(), QStringLiteral("kept"));
    QCOMPARE(completed.count(), 0);
}

void CResultsAnalysisFrameTest::browsingStartsAtTheStoredFolderAndFillsTheField()
{
    CAppSettings::instance()->setValue(CAppSettings::RootPath, m_root.path());
    m_watcher->answerNextFileDialog({m_folder});
    QTest::mousePress(child<QPushButton>(m_page, "m_pbDistributedSelectFile"), Qt::LeftButton);
    QCOMPARE(child<QLineEdit>(m_page, "m_leDistributedFilePath")->text(), m_folder);
    QCOMPARE(m_watcher->fileDialogs().size(), std::size_t(1));
    const SShownFileDialog shown = m_watcher->fileDialogs().front();
    QCOMPARE(shown.title, QStringLiteral("Browse for folder"));
    QCOMPARE(shown.directory, m_root.path());
    QCOMPARE(shown.fileMode, QFileDialog::Directory);
    QVERIFY(shown.directoriesOnly);
    QVERIFY(shown.hasParent);
}

void CResultsAnalysisFrameTest::aCancelledBrowseLeavesTheField()
{
    child<QLineEdit>(m_page, "m_leDistributedFilePath")->setText(QStringLiteral("kept"));
    m_watcher->cancelNextFileDialog();
    QTest::mousePress(child<QPushButton>(m_page, "m_pbDistributedSelectFile"), Qt::LeftButton);
    QCOMPARE(m_watcher->fileDialogs().size(), std::size_t(1));
    QCOMPARE(child<QLineEdit>(m_page, "m_leDistributedFilePath")->text(), QStringLiteral("kept"));
}

void CResultsAnalysisFrameTest::anEmptyFieldAsksForADirectory()
{
    CProgressRecorder progress;
    generate();
    QCOMPARE(m_watcher->texts(), QStringList(QStringLiteral("Please enter a directory")));
    QCOMPARE(m_watcher->messages().front().icon, QMessageBox::NoIcon);
    QCOMPARE(m_watcher->messages().front().title, QString());
    QVERIFY(!m_watcher->messages().front().hasParent);
    QCOMPARE(progress.shown, 0);
}

void CResultsAnalysisFrameTest::aMissingFolderIsNamedSo()
{
    CProgressRecorder progress;
    m_folder += QStringLiteral("/missing");
    QCOMPARE(collated(), QByteArray("no file"));
    QCOMPARE(m_watcher->texts(),
             QStringList(QStringLiteral("The directory entered does not exist")));
    QCOMPARE(progress.shown, 0);
    QVERIFY(!QDir(m_folder).exists());
}

void CResultsAnalysisFrameTest::aFileIsNoFolder()
{
    put("a.csv");
    m_folder += QStringLiteral("/a.csv");
    collated();
    QCOMPARE(m_watcher->texts(),
             QStringList(QStringLiteral("The directory entered does not exist")));
}

void CResultsAnalysisFrameTest::aFailingWalkLeavesTheSlot()
{
    if (platform::speaksBatch()) {
        QSKIP("neither the C++ library there nor Wine makes links");
    }
    std::filesystem::create_symlink("loop", m_folder.toStdString() + "/loop");
    child<QLineEdit>(m_page, "m_leDistributedFilePath")->setText(m_folder);
    QVERIFY_EXCEPTION_THROWN(emit generateButton()->pressed(), std::filesystem::filesystem_error);
    QCOMPARE(m_watcher->texts(), QStringList());
    QVERIFY(!QFile::exists(m_folder + QStringLiteral("/CollatedResults.csv")));
}

void CResultsAnalysisFrameTest::aFolderWithoutNumberSkipsTheRestWithoutAWord()
{
    put("all/plots/x.csv", "EXTRACTED DATA\nno case\n");
    const CCapturedErrors errors;
    QCOMPARE(collated(), QByteArray());
    QCOMPARE(m_watcher->texts(), complete);
    QVERIFY(QDir::fromNativeSeparators(errors.text()).contains("all/plots/x.csv"));
}

void CResultsAnalysisFrameTest::aFolderWithAShortNameSkipsTheRestWithoutAWord()
{
    put("Job1/x.csv", "a\n");
    put("Job1/script.py");
    put("Job1/ab/x.csv", "no case\n");
    const CCapturedErrors errors;
    const QByteArray text = collated();
    QVERIFY(text.startsWith("-1,ID#,\n\n"));
    QVERIFY(!text.contains("no case"));
    QCOMPARE(m_watcher->texts(), complete);
    QVERIFY(QDir::fromNativeSeparators(errors.text()).contains("ab/x.csv"));
}

void CResultsAnalysisFrameTest::aCombinedFileThatCannotBeCreatedIsNotNoticed()
{
    put("Job1/x.csv", "EXTRACTED DATA\na\n");
    QDir(m_folder).mkdir(QStringLiteral("CollatedResults.csv"));
    collated();
    QCOMPARE(m_watcher->texts(), complete);
    QVERIFY(QDir(m_folder + QStringLiteral("/CollatedResults.csv")).isEmpty());
}

void CResultsAnalysisFrameTest::theDialogsButtonHidesItAndTheWorkGoesOn()
{
    for (int number = 0; number < 50; ++number) {
        put(qPrintable(QStringLiteral("Job%1/x.csv").arg(number)), "EXTRACTED DATA\na\n");
    }
    CProgressRecorder progress;
    progress.pressButtonAtOnce = true;
    const QByteArray text = collated();
    QCOMPARE(text.count('\n'), 100);
    QCOMPARE(progress.shown, 1);
    QCOMPARE(progress.values, std::vector<int>());
    QCOMPARE(m_watcher->texts(), complete);
}

void CResultsAnalysisFrameTest::job10ComesAfterJob9()
{
    put("Job10/x.csv", "EXTRACTED DATA\nten\n");
    put("Job9/x.csv", "EXTRACTED DATA\nnine\n");
    QCOMPARE(collated(), QByteArray("9,nine,\n\n10,ten,\n\n"));
    const QString combined = QDir(m_folder).filePath(QStringLiteral("CollatedResults.csv"));
    QCOMPARE(contentOf(combined), Native::inTextMode("9,nine,\n\n10,ten,\n\n"));
    QCOMPARE(m_watcher->texts(), complete);
}

void CResultsAnalysisFrameTest::aSuffixBehindTheNumberIsIgnored()
{
    put("Job12_retry/x.csv", "EXTRACTED DATA\na\n");
    QCOMPARE(collated(), QByteArray("12,a,\n\n"));
}

void CResultsAnalysisFrameTest::noCsvAndNoScriptGiveAnEmptyFile()
{
    put("Job1/notes.txt", "nothing");
    QCOMPARE(collated(), QByteArray());
    QCOMPARE(m_watcher->texts(), complete);
}

void CResultsAnalysisFrameTest::aScriptWithoutCsvGivesTheHeadingAlone()
{
    put("Job1/analysis.py");
    QCOMPARE(collated(), QByteArray("-1,ID#,\n\n"));
}

void CResultsAnalysisFrameTest::aCsvWithoutExtractedDataGivesAnEmptyLine()
{
    put("Job1/x.csv", "TIME,a\n0,1\n");
    put("Job2/x.csv", "EXTRACTED DATA\nTIME,a\n0,1\n");
    QCOMPARE(collated(), QByteArray("\n2,TIME,0,\n2,a,1,\n\n"));
}

void CResultsAnalysisFrameTest::rowsBehindTheTableComeOutBeforeIt()
{
    put("Job1/x.csv", "EXTRACTED DATA\nTIME,a\n0,1\nTIME:,end\nlast\n");
    QCOMPARE(collated(), QByteArray("1,TIME:,end,\n1,last,\n1,TIME,0,\n1,a,1,\n\n"));
}

void CResultsAnalysisFrameTest::aSecondTimeLineAppendsItsHeadings()
{
    put("Job1/x.csv", "EXTRACTED DATA\nTIME,a\n0,1\nTIME,b\n2,3\n");
    QCOMPARE(collated(), QByteArray("1,TIME,0,TIME,2,\n1,a,1,b,3,\n\n"));
}

void CResultsAnalysisFrameTest::aShortTableLineShortensTheLaterColumns()
{
    put("Job1/x.csv", "EXTRACTED DATA\nTIME,a,b\n0,1\n2,3,4\n");
    QCOMPARE(collated(), QByteArray("1,TIME,0,2,\n1,a,1,3,\n1,b,4,\n\n"));
}

void CResultsAnalysisFrameTest::anOldCombinedFileDoesNotCutOffTheCases()
{
    put("CollatedResults.csv", "1,from an earlier run,\n");
    QByteArray expected;
    for (int number = 0; number < 30; ++number) {
        put(qPrintable(QStringLiteral("Job%1/x.csv").arg(number)), "EXTRACTED DATA\na\n");
        expected += QByteArray::number(number) + ",a,\n\n";
    }
    const CCapturedErrors errors;
    QCOMPARE(collated(), expected);
    QCOMPARE(m_watcher->texts(), complete);
    QVERIFY(QDir::fromNativeSeparators(errors.text())
                .contains(m_folder + QStringLiteral("/CollatedResults.csv")));
}

void CResultsAnalysisFrameTest::aJobMatrixInTheJobFolderEndsTheGathering()
{
    put("JobSpec/input_jobID-Matrix.csv", "Job ID#,a\n0,1\n");
    m_folder += QStringLiteral("/JobSpec");
    const CCapturedErrors errors;
    QCOMPARE(collated(), QByteArray());
    QCOMPARE(m_watcher->texts(), complete);
    QVERIFY(errors.text().contains(QLatin1String("input_jobID-Matrix.csv")));
}

void CResultsAnalysisFrameTest::aSubfoldersNameDecidesTheCase()
{
    put("Job3/Run5/x.csv", "EXTRACTED DATA\na\n");
    QCOMPARE(collated(), QByteArray("5,a,\n\n"));
}

void CResultsAnalysisFrameTest::aScriptAnywhereChoosesTheScriptsLayout()
{
    put("Job7/x.csv", "1.5,2\n3\n");
    put("Job8/x.csv", "\n");
    put("Job7/deep/analysis.py");
    QCOMPARE(collated(), QByteArray("-1,ID#,\n\n7,1.5,2,\n7,3,\n\n8,,\n\n"));
}

void CResultsAnalysisFrameTest::upperCaseExtensionsAreNotGathered()
{
    put("Job1/x.CSV", "EXTRACTED DATA\na\n");
    put("Job1/x.PY");
    QCOMPARE(collated(), QByteArray());
}

void CResultsAnalysisFrameTest::aSecondRunRewritesTheFile()
{
    put("Job1/x.csv", "EXTRACTED DATA\na,long,line\n");
    QCOMPARE(collated(), QByteArray("1,a,long,line,\n\n"));
    QTest::mouseRelease(generateButton(), Qt::LeftButton);
    put("Job1/x.csv", "EXTRACTED DATA\nb\n");
    const CCapturedErrors errors;
    QCOMPARE(collated(), QByteArray("1,b,\n\n"));
    QCOMPARE(m_watcher->texts(), complete + complete);
}

void CResultsAnalysisFrameTest::theDialogIsShownAtOnceAndItsLabelsTrail()
{
    put("Job1/x.csv", "EXTRACTED DATA\na\n");
    put("Job1/y.csv");
    CProgressRecorder progress;
    collated();
    QCOMPARE(progress.labels,
             QStringList({QStringLiteral("Gathering Data"), QStringLiteral("Close Progress Bar"),
                          QStringLiteral("Writing Data")}));
    QVERIFY(progress.shown >= 1);
    QCOMPARE(progress.buttonText, QStringLiteral("Closing File"));
    QCOMPARE(progress.maximum, 2);
    QVERIFY(progress.modal);
    QVERIFY(progress.hasParent);
    QVERIFY(progress.dialog.isNull());
}

void CResultsAnalysisFrameTest::theBarMovesInTheSimulatorsLayout()
{
    QByteArray table("EXTRACTED DATA\nTIME,a,b,c\n");
    for (int line = 0; line < 20000; ++line) {
        table += "0.5,1.5,2.5,3.5\n";
    }
    for (int number = 0; number < 20; ++number) {
        put(qPrintable(QStringLiteral("Job%1/x.csv").arg(number)), table);
    }
    CProgressRecorder progress;
    collated();
    QVERIFY(progress.values.size() > 1);
    QVERIFY(std::is_sorted(progress.values.begin(), progress.values.end()));
    QVERIFY(progress.values.back() > 0);
    QVERIFY(progress.onlyFromTheGuiThread);
}

void CResultsAnalysisFrameTest::theBarStandsStillInTheScriptsLayout()
{
    put("Job0/analysis.py");
    for (int number = 0; number < 20; ++number) {
        put(qPrintable(QStringLiteral("Job%1/x.csv").arg(number)), QByteArray(200000, '\n'));
    }
    CProgressRecorder progress;
    collated();
    QCOMPARE(progress.values, std::vector<int>({0}));
    QVERIFY(progress.onlyFromTheGuiThread);
}

void CResultsAnalysisFrameTest::lateProgressMeetsNoClosedDialog()
{
    for (int number = 0; number < 2000; ++number) {
        put(qPrintable(QStringLiteral("Job%1/x.csv").arg(number)), "EXTRACTED DATA\n");
    }
    CProgressRecorder progress;
    collated();
    QVERIFY(progress.dialog.isNull());
    const int shown = progress.shown;
    QTest::qWait(50);
    QCOMPARE(progress.shown, shown);
}

void CResultsAnalysisFrameTest::collatesWhileCasesOccupyTheGlobalPool()
{
    put("Job1/x.csv", "EXTRACTED DATA\na\n");
    QThreadPool* global = QThreadPool::globalInstance();
    const int formerCount = global->maxThreadCount();
    global->setMaxThreadCount(1);
    QSemaphore caseMayEnd;
    const QFuture<void> runningCase = QtConcurrent::run([&caseMayEnd] { caseMayEnd.acquire(); });
    QTimer deadlock;
    connect(&deadlock, &QTimer::timeout, [&caseMayEnd] { caseMayEnd.release(); });
    deadlock.start(10000);
    const QByteArray text = collated();
    const bool caseStillRan = runningCase.isRunning();
    caseMayEnd.release();
    global->waitForDone();
    global->setMaxThreadCount(formerCount);
    QCOMPARE(text, QByteArray("1,a,\n\n"));
    QVERIFY(caseStillRan);
}

void CResultsAnalysisFrameTest::thePageDisconnectsItselfAtItsEnd()
{
    auto page = std::make_unique<CResultsAnalysisFrame>();
    auto* button = child<QPushButton>(page.get(), "m_pbGenerateMasterResults");
    button->setParent(nullptr);
    page.reset();
    emit button->pressed();
    QCOMPARE(m_watcher->texts(), QStringList());
    delete button;
}

TARNEL_TEST_MAIN(CResultsAnalysisFrameTest)
#include "results_analysis_frame_test.moc"
