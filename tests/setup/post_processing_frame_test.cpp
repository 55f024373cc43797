#include "setup/post_processing_frame.h"

#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "samples/player/modal_watcher.h"
#include "tests/support/named_child.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QValidator>

#include <filesystem>

namespace {

const CDeckStore::PostProcessing NONE{0, {""}};

CDeckStore::PostProcessing stored()
{
    return CDeckStore::instance()->postProcessing();
}

void setSetting(CAppSettings::Selector selector, const QString& value)
{
    CAppSettings::instance()->setValue(selector, value);
}

} // namespace

class CPostProcessingFrameTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void formTable_data();
    void formTable();
    void formAtStart();
    void fieldsAndButtonsHaveTheirSizes();
    void everyModeIsStoredWithItsStrings();
    void switchingModesStoresWithoutTouchingNext();
    void enteringProposesTheFilesBesideTheDeck();
    void enteringOverwritesWhatWasChosen();
    void enteringShowsTheStoredModeAndLeavesTheButtons();
    void enteringWithAnUnknownModeStoresNoStrings();
    void aNewDeckAtEntryStoresTheVisibleModeFirst();
    void withoutADeckModeOneStaysIncomplete();
    void aDeckExtensionInAFolderNameIsRewrittenToo();
    void aDfgWithoutItsQsvIsIncomplete();
    void bothFilesMakeModeOneComplete();
    void anUpperCaseExtensionIsIncomplete();
    void aFolderNamedLikeAFilePasses();
    void aScriptMakesModeTwoComplete();
    void modeZeroIsAlwaysComplete();
    void aPythonSetUpKeepsNextWhenTheModeChanges();
    void theDeckFlagFollowsItsGroup();
    void commandLineWordsRefuseShellCharacters();
    void theScriptLocationTakesAnyCharacter();
    void everyEditIsStoredAsTyped();
    void eachButtonAsksForItsOwnFile_data();
    void eachButtonAsksForItsOwnFile();
    void aCancelledDialogChangesNothing();
    void anExistenceThatCannotBeAskedIsAFailure();
    void theFilesAreAskedForInOrder();

private:
    template <class Child>
    Child& child(const char* name) const
    {
        return named<Child>(*m_page, QString::fromLatin1(name));
    }
    QLineEdit& edit(const char* name) const { return child<QLineEdit>(name); }
    void choose(const char* radioButton) const { child<QRadioButton>(radioButton).click(); }
    int shownMode() const { return child<QStackedWidget>("sw_PostProcessing").currentIndex(); }
    QString newFile(const QString& name) const;
    /// A path that can't be asked about: a link to a link that leads back; empty for no links.
    /// What validateFields threw; empty for nothing.
    QString failureOfValidating() const;
    /// What the last signal said; the test fails where there was none.
    bool lastComplete() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<CPostProcessingFrame> m_page;
    std::unique_ptr<QSignalSpy> m_complete;
};

void CPostProcessingFrameTest::init()
{
    CTestEnvironment::reset();
    m_folder = std::make_unique<QTemporaryDir>();
    m_page = std::make_unique<CPostProcessingFrame>(nullptr);
    m_complete = std::make_unique<QSignalSpy>(m_page.get(), &IFrame::stageComplete);
}

void CPostProcessingFrameTest::cleanup()
{
    m_complete.reset();
    m_page.reset();
}

QString CPostProcessingFrameTest::newFile(const QString& name) const
{
    const QString path = m_folder->filePath(name);
    QFile file(path);
    return file.open(QIODevice::WriteOnly) ? path : QString();
}

QString CPostProcessingFrameTest::failureOfValidating() const
{
    try {
        QMetaObject::invokeMethod(m_page.get(), "validateFields", Qt::DirectConnection);
    } catch (const std::filesystem::filesystem_error& failure) {
        return QString::fromLatin1(failure.what());
    }
    return QString();
}

bool CPostProcessingFrameTest::lastComplete() const
{
    if (m_complete->isEmpty()) {
        qFatal("the page has said nothing");
    }
    return m_complete->last().first().toBool();
}

void CPostProcessingFrameTest::formTable_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("text");

    const auto row = [](const char* name, const char* kind, const char* property = "",
                        const char* text = "") {
        QTest::newRow(name) << QString(kind) << QString(property) << QString(text);
    };
    row("m_gbPostProcessingImportChoice", "QGroupBox", "title", "Choose Post Processing Settings");
    row("m_rbNoPostProcessing", "QRadioButton", "text", "No Analysis");
    row("m_rbPostProcessingORVA", "QRadioButton", "text", "ORVA");
    row("m_rbPythonPostProcessing", "QRadioButton", "text", "Python Analysis");
    row("sw_PostProcessing", "QStackedWidget");
    row("pg_None", "QWidget");
    row("pg_ORVA", "QWidget");
    row("m_lblDfgLocation", "QLabel", "text", "ORVA .dfg File Location");
    row("m_leDfgLocation", "QLineEdit", "text");
    row("m_pbDfgLocationSelect", "QPushButton", "text", "...");
    row("m_lblQsvLocation", "QLabel", "text", "ORVA .qsv File Location");
    row("m_leQsvLocation", "QLineEdit", "text");
    row("m_pbQsvLocationSelect", "QPushButton", "text", "...");
    row("pg_Python", "QWidget");
    row("m_gbPythonDeckArgument", "QGroupBox", "title",
        "Python script takes an ORVA deck argument");
    row("m_lblPythonDeckFlag", "QLabel", "text", "Deck Specification flag:");
    row("m_lePythonDeckFlag", "QLineEdit", "text", "-d");
    row("m_lblPythonLocation", "QLabel", "text", "Python file location:");
    row("m_lePythonLocation", "QLineEdit", "text");
    row("m_pbPyLocationSelect", "QPushButton", "text", "...");
    row("m_lblPythonAdditionalFlags", "QLabel", "text", "Additional flags:");
    row("m_lePythonAdditionalFlags", "QLineEdit", "text");
}

void CPostProcessingFrameTest::formTable()
{
    QFETCH(QString, kind);
    QFETCH(QString, property);
    QFETCH(QString, text);

    const auto& widget = child<QWidget>(QTest::currentDataTag());
    QCOMPARE(QString::fromLatin1(widget.metaObject()->className()), kind);
    if (!property.isEmpty()) {
        QCOMPARE(widget.property(qPrintable(property)).toString(), text);
    }
}

void CPostProcessingFrameTest::formAtStart()
{
    QCOMPARE(m_page->windowTitle(), QStringLiteral("PostProcessingFrameUI"));
    QVERIFY(child<QRadioButton>("m_rbNoPostProcessing").isChecked());
    auto& stack = child<QStackedWidget>("sw_PostProcessing");
    QCOMPARE(stack.count(), 3);
    QCOMPARE(stack.currentIndex(), 0);
    QCOMPARE(stack.frameShape(), QFrame::StyledPanel);
    QCOMPARE(stack.frameShadow(), QFrame::Sunken);
    QCOMPARE(stack.widget(0)->objectName(), QStringLiteral("pg_None"));
    QCOMPARE(stack.widget(1)->objectName(), QStringLiteral("pg_ORVA"));
    QCOMPARE(stack.widget(2)->objectName(), QStringLiteral("pg_Python"));
    QVERIFY(child<QGroupBox>("m_gbPythonDeckArgument").isCheckable());
    QVERIFY(child<QGroupBox>("m_gbPythonDeckArgument").isChecked());
    QCOMPARE(stored(), NONE);
}

void CPostProcessingFrameTest::fieldsAndButtonsHaveTheirSizes()
{
    for (const char* name : {"m_leDfgLocation", "m_leQsvLocation", "m_lePythonDeckFlag",
                             "m_lePythonLocation", "m_lePythonAdditionalFlags"}) {
        QVERIFY2(edit(name).minimumHeight() == 22 && edit(name).maximumHeight() == 22, name);
    }
    for (const char* name :
         {"m_pbDfgLocationSelect", "m_pbQsvLocationSelect", "m_pbPyLocationSelect"}) {
        const auto& button = child<QPushButton>(name);
        QVERIFY2(button.minimumSize() == QSize(22, 22), name);
        QVERIFY2(button.maximumSize() == QSize(22, 22), name);
        QVERIFY2(!button.autoDefault(), name);
    }
}

void CPostProcessingFrameTest::everyModeIsStoredWithItsStrings()
{
    edit("m_leDfgLocation").setText(QStringLiteral(" a.dfg "));
    edit("m_leQsvLocation").setText(QStringLiteral("b.qsv"));
    edit("m_lePythonLocation").setText(QStringLiteral("C:\\c.py"));
    edit("m_lePythonAdditionalFlags").setText(QStringLiteral("--verbose 3"));
    choose("m_rbPostProcessingORVA");
    QCOMPARE(shownMode(), 1);
    QCOMPARE(stored(), CDeckStore::PostProcessing(1, {" a.dfg ", "b.qsv"}));
    choose("m_rbPythonPostProcessing");
    QCOMPARE(shownMode(), 2);
    QCOMPARE(stored(), CDeckStore::PostProcessing(2, {"C:\\c.py", "-d", "--verbose 3"}));
    choose("m_rbNoPostProcessing");
    QCOMPARE(shownMode(), 0);
    QCOMPARE(stored(), NONE);
}

void CPostProcessingFrameTest::switchingModesStoresWithoutTouchingNext()
{
    choose("m_rbPostProcessingORVA");
    choose("m_rbPythonPostProcessing");
    QCOMPARE(m_complete->count(), 0);
}

void CPostProcessingFrameTest::enteringProposesTheFilesBesideTheDeck()
{
    setSetting(CAppSettings::ZEKPath, QStringLiteral("/decks/drum.zek"));
    m_page->onPageEntered();
    QCOMPARE(edit("m_leDfgLocation").text(), QStringLiteral("/decks/drum.dfg"));
    QCOMPARE(edit("m_leQsvLocation").text(), QStringLiteral("/decks/drum.qsv"));
    QCOMPARE(m_complete->count(), 2);
    m_page->onPageEntered();
    QCOMPARE(m_complete->count(), 2);
}

void CPostProcessingFrameTest::enteringOverwritesWhatWasChosen()
{
    setSetting(CAppSettings::ZEKPath, QStringLiteral("/decks/drum.zek"));
    edit("m_leDfgLocation").setText(QStringLiteral("/other.dfg"));
    m_page->onPageEntered();
    QCOMPARE(edit("m_leDfgLocation").text(), QStringLiteral("/decks/drum.dfg"));
}

void CPostProcessingFrameTest::enteringShowsTheStoredModeAndLeavesTheButtons()
{
    CDeckStore::instance()->setPostProcessing({2, {"job.py", "-x", "more"}});
    m_page->onPageEntered();
    QCOMPARE(shownMode(), 2);
    QVERIFY(child<QRadioButton>("m_rbNoPostProcessing").isChecked());
    QCOMPARE(stored(), CDeckStore::PostProcessing(2, {"", "-d", ""}));
}

void CPostProcessingFrameTest::enteringWithAnUnknownModeStoresNoStrings()
{
    CDeckStore::instance()->setPostProcessing({7, {"x"}});
    m_page->onPageEntered();
    QCOMPARE(shownMode(), 0);
    QCOMPARE(stored(), CDeckStore::PostProcessing(7, {}));
}

void CPostProcessingFrameTest::aNewDeckAtEntryStoresTheVisibleModeFirst()
{
    // The proposed files change their fields, and every edit stores the page that is shown.
    setSetting(CAppSettings::ZEKPath, QStringLiteral("/decks/drum.zek"));
    CDeckStore::instance()->setPostProcessing({2, {"job.py", "-x", "more"}});
    m_page->onPageEntered();
    QCOMPARE(shownMode(), 0);
    QCOMPARE(stored(), NONE);
}

void CPostProcessingFrameTest::withoutADeckModeOneStaysIncomplete()
{
    edit("m_leDfgLocation").setText(QStringLiteral("a.dfg"));
    edit("m_leQsvLocation").setText(QStringLiteral("a.qsv"));
    choose("m_rbPostProcessingORVA");
    m_page->onPageEntered();
    QCOMPARE(edit("m_leDfgLocation").text(), QString());
    QCOMPARE(edit("m_leQsvLocation").text(), QString());
    QVERIFY(!lastComplete());
}

void CPostProcessingFrameTest::aDeckExtensionInAFolderNameIsRewrittenToo()
{
    QVERIFY(QDir().mkpath(m_folder->filePath(QStringLiteral("old.zek.d"))));
    QVERIFY(!newFile(QStringLiteral("old.zek.d/deck.dfg")).isEmpty());
    const QString qsv = newFile(QStringLiteral("old.zek.d/deck.qsv"));
    setSetting(CAppSettings::ZEKPath, m_folder->filePath(QStringLiteral("old.zek.d/deck.zek")));
    choose("m_rbPostProcessingORVA");
    m_page->onPageEntered();
    QCOMPARE(edit("m_leDfgLocation").text(),
             m_folder->filePath(QStringLiteral("old.dfg.d/deck.dfg")));
    QCOMPARE(edit("m_leQsvLocation").text(),
             m_folder->filePath(QStringLiteral("old.qsv.d/deck.qsv")));
    QVERIFY(!lastComplete());
    edit("m_leQsvLocation").setText(qsv);
    QVERIFY(!lastComplete());
    edit("m_leDfgLocation").setText(m_folder->filePath(QStringLiteral("old.zek.d/deck.dfg")));
    QVERIFY(lastComplete());
}

void CPostProcessingFrameTest::aDfgWithoutItsQsvIsIncomplete()
{
    newFile(QStringLiteral("deck.dfg"));
    setSetting(CAppSettings::ZEKPath, m_folder->filePath(QStringLiteral("deck.zek")));
    choose("m_rbPostProcessingORVA");
    m_page->onPageEntered();
    QVERIFY(!lastComplete());
}

void CPostProcessingFrameTest::bothFilesMakeModeOneComplete()
{
    choose("m_rbPostProcessingORVA");
    edit("m_leDfgLocation").setText(newFile(QStringLiteral("deck.dfg")));
    QVERIFY(!lastComplete());
    edit("m_leQsvLocation").setText(newFile(QStringLiteral("other.qsv")));
    QVERIFY(lastComplete());
    edit("m_leDfgLocation").setText(newFile(QStringLiteral("deck.dfg.bak")));
    QVERIFY(!lastComplete());
}

void CPostProcessingFrameTest::anUpperCaseExtensionIsIncomplete()
{
    choose("m_rbPostProcessingORVA");
    edit("m_leQsvLocation").setText(newFile(QStringLiteral("x.qsv")));
    edit("m_leDfgLocation").setText(newFile(QStringLiteral("X.DFG")));
    QVERIFY(!lastComplete());
    edit("m_leDfgLocation").setText(newFile(QStringLiteral("x.dfg")));
    edit("m_leQsvLocation").setText(newFile(QStringLiteral("X.QSV")));
    QVERIFY(!lastComplete());
    choose("m_rbPythonPostProcessing");
    edit("m_lePythonLocation").setText(newFile(QStringLiteral("X.PY")));
    QVERIFY(!lastComplete());
}

void CPostProcessingFrameTest::aFolderNamedLikeAFilePasses()
{
    QVERIFY(QDir().mkpath(m_folder->filePath(QStringLiteral("folder.py"))));
    choose("m_rbPythonPostProcessing");
    edit("m_lePythonLocation").setText(m_folder->filePath(QStringLiteral("folder.py")));
    QVERIFY(lastComplete());
}

void CPostProcessingFrameTest::aScriptMakesModeTwoComplete()
{
    choose("m_rbPythonPostProcessing");
    edit("m_lePythonLocation").setText(m_folder->filePath(QStringLiteral("missing.py")));
    QVERIFY(!lastComplete());
    edit("m_lePythonLocation").setText(newFile(QStringLiteral("\u00fcber.py")));
    QVERIFY(lastComplete());
    edit("m_lePythonDeckFlag").clear();
    QVERIFY(lastComplete());
    edit("m_lePythonLocation").setText(newFile(QStringLiteral("script.pyc")));
    QVERIFY(!lastComplete());
}

void CPostProcessingFrameTest::modeZeroIsAlwaysComplete()
{
    edit("m_leDfgLocation").setText(QStringLiteral("nowhere"));
    QVERIFY(lastComplete());
    QCOMPARE(stored(), NONE);
}

void CPostProcessingFrameTest::aPythonSetUpKeepsNextWhenTheModeChanges()
{
    choose("m_rbPythonPostProcessing");
    edit("m_lePythonLocation").setText(newFile(QStringLiteral("script.py")));
    QVERIFY(lastComplete());
    m_complete->clear();
    choose("m_rbPostProcessingORVA");
    QCOMPARE(m_complete->count(), 0);
    edit("m_leQsvLocation").setText(QStringLiteral("a.qsv"));
    QVERIFY(!lastComplete());
}

void CPostProcessingFrameTest::theDeckFlagFollowsItsGroup()
{
    auto& group = child<QGroupBox>("m_gbPythonDeckArgument");
    choose("m_rbPythonPostProcessing");
    group.setChecked(false);
    QCOMPARE(stored(), CDeckStore::PostProcessing(2, {"", "PYTHON_NO_DECK_FLAG", ""}));
    QCOMPARE(m_complete->count(), 1);
    group.setChecked(true);
    QCOMPARE(stored(), CDeckStore::PostProcessing(2, {"", "-d", ""}));
    edit("m_lePythonDeckFlag").setText(QStringLiteral("--deck"));
    QCOMPARE(stored(), CDeckStore::PostProcessing(2, {"", "--deck", ""}));
}

void CPostProcessingFrameTest::commandLineWordsRefuseShellCharacters()
{
    const QString refused = QStringLiteral("|<>&%()[]:^{}=;!'+,`~#$\\\"/?*");
    QCOMPARE(refused.size(), 28);
    for (const char* name : {"m_lePythonDeckFlag", "m_lePythonAdditionalFlags"}) {
        edit(name).clear();
        QTest::keyClicks(&edit(name), refused);
        QCOMPARE(edit(name).text(), QString());
        QTest::keyClicks(&edit(name), QStringLiteral("--verbose 3.a_B@-"));
        QCOMPARE(edit(name).text(), QStringLiteral("--verbose 3.a_B@-"));
    }
    QVERIFY(edit("m_lePythonDeckFlag").validator() ==
            edit("m_lePythonAdditionalFlags").validator());
    QVERIFY(edit("m_lePythonDeckFlag").validator()->parent() == m_page.get());
}

void CPostProcessingFrameTest::theScriptLocationTakesAnyCharacter()
{
    QTest::keyClicks(&edit("m_lePythonLocation"), QStringLiteral("C:\\a & b/c.py"));
    QCOMPARE(edit("m_lePythonLocation").text(), QStringLiteral("C:\\a & b/c.py"));
}

void CPostProcessingFrameTest::everyEditIsStoredAsTyped()
{
    choose("m_rbPostProcessingORVA");
    QTest::keyClicks(&edit("m_leDfgLocation"), QStringLiteral("ab"));
    QCOMPARE(m_complete->count(), 2);
    QCOMPARE(stored(), CDeckStore::PostProcessing(1, {"ab", ""}));
}

void CPostProcessingFrameTest::eachButtonAsksForItsOwnFile_data()
{
    QTest::addColumn<QString>("edit");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("file");

    QTest::newRow("m_pbDfgLocationSelect") << "m_leDfgLocation"
                                           << "Choose .dfg File"
                                           << "Dfg file (*.dfg)"
                                           << "a.dfg";
    QTest::newRow("m_pbQsvLocationSelect") << "m_leQsvLocation"
                                           << "Choose .qsv File"
                                           << "Qsv file (*.qsv)"
                                           << "a.qsv";
    QTest::newRow("m_pbPyLocationSelect") << "m_lePythonLocation"
                                          << "Choose .py File"
                                          << "Python file (*.py)"
                                          << "a.py";
}

void CPostProcessingFrameTest::eachButtonAsksForItsOwnFile()
{
    QFETCH(QString, edit);
    QFETCH(QString, title);
    QFETCH(QString, filter);
    QFETCH(QString, file);

    setSetting(CAppSettings::RootPath, m_folder->path() + QLatin1Char('/'));
    const QString path = newFile(file);
    CModalWatcher watcher;
    watcher.answerNextFileDialog({path});
    child<QPushButton>(QTest::currentDataTag()).click();

    QCOMPARE(watcher.fileDialogs().size(), std::size_t(1));
    const SShownFileDialog& dialog = watcher.fileDialogs().front();
    QCOMPARE(dialog.title, title);
    QCOMPARE(dialog.nameFilters, QStringList(filter));
    QCOMPARE(QDir(dialog.directory), QDir(m_folder->path()));
    QCOMPARE(dialog.fileMode, QFileDialog::ExistingFile);
    QVERIFY(dialog.hasParent);
    for (const char* name : {"m_leDfgLocation", "m_leQsvLocation", "m_lePythonLocation"}) {
        QCOMPARE(this->edit(name).text(), QString(name) == edit ? path : QString());
    }
}

void CPostProcessingFrameTest::aCancelledDialogChangesNothing()
{
    edit("m_leDfgLocation").setText(QStringLiteral("kept.dfg"));
    CModalWatcher watcher;
    watcher.cancelNextFileDialog();
    child<QPushButton>("m_pbDfgLocationSelect").click();
    QCOMPARE(watcher.fileDialogs().size(), std::size_t(1));
    QCOMPARE(edit("m_leDfgLocation").text(), QStringLiteral("kept.dfg"));
}

void CPostProcessingFrameTest::anExistenceThatCannotBeAskedIsAFailure()
{
    const QString unaskable = Native::unaskablePath(m_folder->path(), QStringLiteral("a.py"));
    choose("m_rbPythonPostProcessing");
    const QSignalBlocker blocker(edit("m_lePythonLocation"));
    edit("m_lePythonLocation").setText(unaskable);
    const QString failure = failureOfValidating();
    QVERIFY2(failure.contains(QStringLiteral("exists")), qPrintable(failure));
    QCOMPARE(m_complete->count(), 0);
}

void CPostProcessingFrameTest::theFilesAreAskedForInOrder()
{
    const QString unaskable = Native::unaskablePath(m_folder->path(), QStringLiteral("a.qsv"));
    choose("m_rbPostProcessingORVA");
    const QSignalBlocker dfgBlocker(edit("m_leDfgLocation"));
    const QSignalBlocker qsvBlocker(edit("m_leQsvLocation"));
    edit("m_leQsvLocation").setText(unaskable);
    edit("m_leDfgLocation").setText(m_folder->filePath(QStringLiteral("missing.dfg")));
    QCOMPARE(failureOfValidating(), QString());
    QVERIFY(!lastComplete());
    // Both files are asked for before either extension is looked at.
    edit("m_leDfgLocation").setText(newFile(QStringLiteral("deck.txt")));
    QVERIFY(failureOfValidating().contains(QStringLiteral("exists")));
    QCOMPARE(m_complete->count(), 1);
}

TARNEL_TEST_MAIN(CPostProcessingFrameTest)

#include "post_processing_frame_test.moc"
