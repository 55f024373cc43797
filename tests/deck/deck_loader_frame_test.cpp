#include "deck/deck_loader_frame.h"

#include "app/constants/icons.h"
#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "platform/interpreter.h"
#include "samples/player/modal_watcher.h"
#include "tests/deck/deck_test_files.h"
#include "tests/deck/expected_record.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QBitmap>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTextCodec>
#include <QtTest>

namespace fs = std::filesystem;
using DeckTestFiles::newDeck;

namespace {

QString text(const fs::path& path)
{
    return QString::fromStdString(path.generic_string());
}

QString stored(int selector)
{
    return CAppSettings::instance()->text(selector);
}

const std::vector<CCreatorData>& records()
{
    return CDeckStore::instance()->creatorData();
}

QString newFile(const DeckPaths& deck, const char* name)
{
    const QString path = text(deck.deck.parent_path() / name);
    QFile(path).open(QIODevice::WriteOnly);
    return path;
}

/// The page as a user meets it.
struct SPage
{
    CDeckLoaderFrame frame;
    QSignalSpy complete{&frame, &IFrame::stageComplete};

    template <class Widget = QWidget>
    Widget* find(const char* name) const
    {
        return frame.findChild<Widget*>(QString::fromLatin1(name));
    }
    QLineEdit* deckEdit() const { return find<QLineEdit>("m_leDeckFilePath"); }
    QLineEdit* additionalEdit() const { return find<QLineEdit>("m_leAdditionalFilesPath"); }
    bool lastAnswer() const { return complete.last().first().toBool(); }
};

} // namespace

class TestDeckLoaderFrame : public QObject
{
    Q_OBJECT

private slots:
    void init() { CTestEnvironment::reset(); }

    void logoIsTheWindowsIcon()
    {
        const SPage page;
        const auto* logo = page.find<QLabel>("m_Logo");
        QCOMPARE(logo->minimumSize(), QSize(64, 64));
        const QSize size = Icons::MainWindow.actualSize(QSize(64, 64));
        QVERIFY(!size.isEmpty());
        QCOMPARE(logo->pixmap(Qt::ReturnByValue).size(), size);
        QCOMPARE(logo->pixmap(Qt::ReturnByValue).toImage(),
                 Icons::MainWindow.pixmap(size).toImage());
        QCOMPARE(logo->mask().isEmpty(), Icons::MainWindow.pixmap(size).mask().isNull());
    }

    void editsStartEmptyAndNothingIsEmitted()
    {
        CAppSettings::instance()->setValue(CAppSettings::ZEKPath, QStringLiteral("/a.zek"));
        SPage page;
        page.frame.onPageEntered();
        QVERIFY(page.deckEdit()->text().isEmpty());
        QVERIFY(page.additionalEdit()->text().isEmpty());
        QCOMPARE(page.complete.count(), 0);
        QVERIFY(records().empty());
    }

    void validDeckIsStoredAndLoaded()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        CDeckStore::instance()->creatorData().resize(3);
        SPage page;
        page.deckEdit()->setText(text(deck.deck));
        QCOMPARE(page.complete.count(), 1);
        QVERIFY(page.lastAnswer());
        QCOMPARE(records().size(), std::size_t(1));
        QVERIFY(records().front() == expectedRecord(fullDeck(14), 14, "hopper"));
        QCOMPARE(stored(CAppSettings::ZEKPath), text(deck.deck));
        QCOMPARE(stored(CAppSettings::RootPath), text(deck.deck.parent_path()) + "/");
        QCOMPARE(stored(CAppSettings::AdditionalFilesPath), QString());
    }

    void settingsAreWrittenBeforeTheDeckIsLoaded()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        const DeckPaths broken = newDeck(fullDeck(14), "broken");
        H5::H5File(broken.dataFile.string(), H5F_ACC_RDWR)
            .unlink(std::string("/CreatorData/0/PhysicsModels"));
        SPage page;
        page.deckEdit()->setText(text(deck.deck));
        page.deckEdit()->blockSignals(true);
        page.deckEdit()->setText(text(broken.deck));
        QVERIFY_EXCEPTION_THROWN(QMetaObject::invokeMethod(&page.frame, "validateFileSelections"),
                                 H5::GroupIException);
        QCOMPARE(stored(CAppSettings::ZEKPath), text(broken.deck));
        QVERIFY(records().empty());
        QCOMPARE(page.complete.count(), 1);
    }

    void eachChangeLoadsAgain()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        SPage page;
        page.deckEdit()->setText(text(deck.deck));
        const QString file = newFile(deck, "notes.txt");
        writeDeck(fullDeck(14), deck.deck.parent_path(), "hopper");
        QVERIFY(records().front().m_surfaceSurface.m_hertzMindlinJkr.empty());
        page.additionalEdit()->setText(file);
        QVERIFY(page.lastAnswer());
        QVERIFY(!records().front().m_surfaceSurface.m_hertzMindlinJkr.empty());
        QCOMPARE(stored(CAppSettings::AdditionalFilesPath), file);
    }

    void emptyDeckEditIsInvalidAndKeepsTheStore()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        SPage page;
        page.deckEdit()->setText(text(deck.deck));
        page.deckEdit()->clear();
        QCOMPARE(page.complete.count(), 2);
        QVERIFY(!page.lastAnswer());
        QCOMPARE(records().front().m_sName, std::string("hopper"));
        QCOMPARE(stored(CAppSettings::ZEKPath), text(deck.deck));
    }

    void otherEndingsAreInvalid_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("upper case") << "hopper.ZEK";
        QTest::newRow("behind it") << "hopper.zek2";
        QTest::newRow("none") << "hopper";
    }
    void otherEndingsAreInvalid()
    {
        QFETCH(QString, name);
        const DeckPaths deck = newDeck(plainDeck(14));
        const QString path = newFile(deck, qPrintable(name));
        SPage page;
        page.deckEdit()->setText(path);
        QVERIFY(!page.lastAnswer());
        QVERIFY(records().empty());
        QVERIFY(CAppSettings::instance()->settings().allKeys().isEmpty());
    }

    void missingDeckIsInvalid()
    {
        SPage page;
        page.deckEdit()->setText(QStringLiteral("/no/such/folder/hopper.zek"));
        QVERIFY(!page.lastAnswer());
    }

    void pathThatCannotBeAskedForIsRaised()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        const QString unaskable =
            Native::unaskablePath(text(deck.deck.parent_path()), QStringLiteral("loop.zek"));
        SPage page;
        page.deckEdit()->blockSignals(true);
        page.deckEdit()->setText(unaskable);
        try {
            QMetaObject::invokeMethod(&page.frame, "validateFileSelections");
            QFAIL("nothing was raised");
        } catch (const fs::filesystem_error& error) {
            QVERIFY(QByteArray(error.what()).contains("exists"));
            QCOMPARE(QString::fromStdString(error.path1().u8string()), unaskable);
        }
        QCOMPARE(page.complete.count(), 0);
        const auto end = DeckTestFiles::runProbe({"page", unaskable});
        QVERIFY(end.aborted);
        QVERIFY2(end.error.contains("exists"), end.error.constData());
    }

    void folderIsValidAndItsLoadIsBadData()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        const QString folder = text(deck.deck.parent_path() / "x.zek");
        QVERIFY(QDir().mkpath(folder));
        SPage page;
        page.deckEdit()->setText(folder);
        QVERIFY(page.lastAnswer());
        QVERIFY(records().front() == CCreatorData("bad data"));
    }

    void missingDataFileIsBadDataAndNextStays()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        fs::remove(deck.dataFile);
        CModalWatcher watcher;
        SPage page;
        page.deckEdit()->setText(text(deck.deck));
        QVERIFY(watcher.messages().empty());
        QCOMPARE(page.complete.count(), 1);
        QVERIFY(page.lastAnswer());
        QCOMPARE(records().size(), std::size_t(1));
        QVERIFY(records().front() == CCreatorData("bad data"));
        QCOMPARE(stored(CAppSettings::ZEKPath), text(deck.deck));
    }

    void pathOutsideAsciiExistsInUtf8AndIsOpenedInTheLocalEncoding_data()
    {
        QTest::addColumn<QByteArray>("encoding");
        QTest::addColumn<QString>("name");
        QTest::newRow("local is UTF-8") << QByteArray("UTF-8") << QStringLiteral("M\u00fchle");
        QTest::newRow("local is another") << QByteArray("ISO-8859-1") << QStringLiteral("bad data");
    }
    void pathOutsideAsciiExistsInUtf8AndIsOpenedInTheLocalEncoding()
    {
        QFETCH(QByteArray, encoding);
        QFETCH(QString, name);
        const QString deck = DeckTestFiles::renamed(newDeck(plainDeck(14)), "M\u00fchle");
        QTextCodec* const codec = QTextCodec::codecForLocale();
        QTextCodec::setCodecForLocale(QTextCodec::codecForName(encoding));
        SPage page;
        page.deckEdit()->setText(deck);
        QTextCodec::setCodecForLocale(codec);
        if (platform::speaksBatch()) {
            // The bytes of UTF-8 are taken in the system's code page there.
            QVERIFY(!page.lastAnswer());
            return;
        }
        QVERIFY(page.lastAnswer());
        QCOMPARE(QString::fromStdString(records().front().m_sName), name);
        QCOMPARE(stored(CAppSettings::ZEKPath), deck);
    }

    void everyLetterTypedIsAnAnswer()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        const QString path = text(deck.deck);
        SPage page;
        page.deckEdit()->setText(path.chopped(3));
        QTest::keyClicks(page.deckEdit(), QStringLiteral("zekx"));
        QCOMPARE(page.complete.count(), 5);
        QVERIFY(page.complete.at(3).first().toBool());
        QVERIFY(!page.lastAnswer());
        QCOMPARE(records().size(), std::size_t(1));
        QCOMPARE(stored(CAppSettings::ZEKPath), path);
    }

    void additionalFilesDecideToo_data()
    {
        QTest::addColumn<QString>("files");
        QTest::addColumn<bool>("valid");
        QTest::newRow("one") << "%1/a.txt" << true;
        QTest::newRow("two") << "%1/a.txt;%1/b.txt" << true;
        QTest::newRow("a folder") << "%1" << true;
        QTest::newRow("trailing separator") << "%1/a.txt;" << false;
        QTest::newRow("leading separator") << ";%1/a.txt" << false;
        QTest::newRow("separator alone") << ";" << false;
        QTest::newRow("second missing") << "%1/a.txt;%1/c.txt" << false;
        QTest::newRow("first missing") << "%1/c.txt;%1/a.txt" << false;
    }
    void additionalFilesDecideToo()
    {
        QFETCH(QString, files);
        QFETCH(bool, valid);
        const DeckPaths deck = newDeck(plainDeck(14));
        newFile(deck, "a.txt");
        newFile(deck, "b.txt");
        SPage page;
        page.deckEdit()->setText(text(deck.deck));
        CDeckStore::instance()->creatorData().front().m_sName = "not loaded again";
        const QString paths =
            files.contains("%1") ? files.arg(text(deck.deck.parent_path())) : files;
        page.additionalEdit()->setText(paths);
        QCOMPARE(page.lastAnswer(), valid);
        QCOMPARE(records().front().m_sName, std::string(valid ? "hopper" : "not loaded again"));
        QCOMPARE(stored(CAppSettings::AdditionalFilesPath), valid ? paths : QString());
    }

    void invalidDeckStaysInvalidWithGoodAdditionalFiles()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        SPage page;
        page.additionalEdit()->setText(newFile(deck, "a.txt"));
        QVERIFY(!page.lastAnswer());
    }

    void browsingFillsTheDeckEdit()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        const QString folder = text(deck.deck.parent_path()) + "/";
        CAppSettings::instance()->setValue(CAppSettings::RootPath, folder);
        CModalWatcher watcher;
        watcher.answerNextFileDialog({text(deck.deck)});
        SPage page;
        page.find<QPushButton>("m_pbZekFilesSelect")->click();
        QCOMPARE(watcher.fileDialogs().size(), std::size_t(1));
        const SShownFileDialog& dialog = watcher.fileDialogs().front();
        QCOMPARE(dialog.title, QStringLiteral("Choose .zek File"));
        QCOMPARE(dialog.nameFilters, QStringList{QStringLiteral("Zek file (*.zek)")});
        QCOMPARE(QDir(dialog.directory).absolutePath(), QDir(folder).absolutePath());
        QVERIFY(dialog.hasParent);
        QCOMPARE(page.deckEdit()->text(), text(deck.deck));
        QVERIFY(page.lastAnswer());
    }

    void browsingJoinsTheAdditionalFiles()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        const QStringList files = {newFile(deck, "a.txt"), newFile(deck, "b.txt")};
        CAppSettings::instance()->setValue(CAppSettings::RootPath,
                                           text(deck.deck.parent_path()) + "/");
        CModalWatcher watcher;
        watcher.answerNextFileDialog(files);
        SPage page;
        page.find<QPushButton>("m_pbAdditionalFilesSelect")->click();
        QCOMPARE(watcher.fileDialogs().size(), std::size_t(1));
        QCOMPARE(watcher.fileDialogs().front().title, QStringLiteral("Choose Additional Files"));
        QCOMPARE(watcher.fileDialogs().front().fileMode, QFileDialog::ExistingFiles);
        QCOMPARE(page.additionalEdit()->text(), files.join(QLatin1Char(';')));
    }

    void cancelledBrowsingKeepsTheEdits()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        SPage page;
        page.deckEdit()->setText(text(deck.deck));
        CModalWatcher watcher;
        watcher.cancelNextFileDialog();
        page.find<QPushButton>("m_pbZekFilesSelect")->click();
        watcher.cancelNextFileDialog();
        page.find<QPushButton>("m_pbAdditionalFilesSelect")->click();
        QCOMPARE(watcher.fileDialogs().size(), std::size_t(2));
        QCOMPARE(page.deckEdit()->text(), text(deck.deck));
        QVERIFY(page.additionalEdit()->text().isEmpty());
        QCOMPARE(page.complete.count(), 1);
    }

    void pagesComeAndGo()
    {
        for (int round = 0; round < 3; ++round) {
            QWidget window;
            auto* page = new CDeckLoaderFrame(&window);
            QCOMPARE(page->parentWidget(), &window);
        }
    }
};

TARNEL_TEST_MAIN(TestDeckLoaderFrame)
#include "deck_loader_frame_test.moc"
