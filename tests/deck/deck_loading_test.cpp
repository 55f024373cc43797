#include "deck/deck_loading.h"

#include "deck/app_settings.h"
#include "deck/deck_serializer.h"
#include "platform/interpreter.h"
#include "tests/deck/deck_test_files.h"
#include "tests/deck/expected_record.h"
#include "tests/deck/silent_library.h"
#include "tests/deck/stream_capture.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QTextCodec>
#include <QtTest>

namespace fs = std::filesystem;
using DeckTestFiles::newDeck;

namespace {

QString text(const fs::path& path)
{
    return QString::fromStdString(path.generic_string());
}

CCreatorData load(const DeckPaths& deck)
{
    CDeckSerializer serializer;
    return DeckLoading::loadDeck(serializer, text(deck.deck));
}

void unlinkIn(const DeckPaths& deck, const std::string& path)
{
    H5::H5File(deck.dataFile.string(), H5F_ACC_RDWR).unlink(path);
}

} // namespace

class TestDeckLoading : public QObject
{
    Q_OBJECT

private slots:
    void init() { CTestEnvironment::reset(); }

    void deckIsReadUnderItsName()
    {
        const DeckDescription description = fullDeck(14);
        QVERIFY(load(newDeck(description)) == expectedRecord(description, 14, "hopper"));
    }

    void filesOfADeckAreUnchangedByByteAndTime()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        const fs::path files[] = {deck.deck, deck.companion, deck.dataFile};
        QList<QByteArray> bytes;
        std::vector<fs::file_time_type> times;
        for (const fs::path& file : files) {
            bytes << DeckTestFiles::bytesOf(file);
            times.push_back(DeckTestFiles::makeOld(file));
        }
        QVERIFY(!load(deck).m_interactions.empty());
        for (std::size_t file = 0; file < times.size(); ++file) {
            QCOMPARE(DeckTestFiles::bytesOf(files[file]), bytes.at(static_cast<int>(file)));
            QVERIFY(fs::last_write_time(files[file]) == times[file]);
        }
    }

    void dataFileOfTheNewestLayoutIsUnchanged()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        const QString script = QStringLiteral(R"(
import h5py, os, sys
with h5py.File(sys.argv[1], 'r') as old, h5py.File(sys.argv[1] + '.new', 'w', libver='latest') as new:
    old.copy('CreatorData', new)
os.replace(sys.argv[1] + '.new', sys.argv[1])
)");
        const auto end = DeckTestFiles::runPython(script, {text(deck.dataFile)});
        QVERIFY2(end.exitCode == 0, end.error.constData());
        const QByteArray bytes = DeckTestFiles::bytesOf(deck.dataFile);
        const fs::file_time_type time = DeckTestFiles::makeOld(deck.dataFile);
        QVERIFY(load(deck) == expectedRecord(fullDeck(14), 14, "hopper"));
        QCOMPARE(DeckTestFiles::bytesOf(deck.dataFile), bytes);
        QVERIFY(fs::last_write_time(deck.dataFile) == time);
    }

    /// The library cuts such a file when it closes it after it was open for writing.
    void bytesBehindTheDataStay()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        const QByteArray whole = DeckTestFiles::bytesOf(deck.dataFile) + QByteArray(100, 'x');
        QFile file(text(deck.dataFile));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(whole), qint64(whole.size()));
        file.close();
        const auto time = DeckTestFiles::makeOld(deck.dataFile);
        QVERIFY(load(deck) == expectedRecord(fullDeck(14), 14, "hopper"));
        QVERIFY(DeckTestFiles::bytesOf(deck.dataFile) == whole);
        QVERIFY(fs::last_write_time(deck.dataFile) == time);
    }

    void missingDataFileIsBadDataWithTheErrorStack()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        fs::remove(deck.dataFile);
        CStreamCapture error(CStreamCapture::Error);
        const CCreatorData record = load(deck);
        const QByteArray printed = error.text();
        QVERIFY(record == CCreatorData("bad data"));
        QVERIFY2(printed.contains("HDF5-DIAG"), printed.constData());
        QVERIFY(!fs::exists(deck.dataFile));
    }

    void theErrorStackOfBadDataIsTheProgramsOwn()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        fs::remove(deck.dataFile);
        const CSilentLibrary silence;
        CStreamCapture error(CStreamCapture::Error);
        QVERIFY(load(deck) == CCreatorData("bad data"));
        QCOMPARE(error.text().count("HDF5-DIAG"), 1);
    }

    void corruptDataFileIsBadDataAndKeepsItsTime()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        QFile file(text(deck.dataFile));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("no HDF5 at all");
        file.close();
        const fs::file_time_type time = DeckTestFiles::makeOld(deck.dataFile);
        QVERIFY(load(deck) == CCreatorData("bad data"));
        QVERIFY(fs::last_write_time(deck.dataFile) == time);
        QCOMPARE(DeckTestFiles::bytesOf(deck.dataFile), QByteArray("no HDF5 at all"));
    }

    void cutDataFileIsBadData()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        fs::resize_file(deck.dataFile, 4000);
        QVERIFY(load(deck) == CCreatorData("bad data"));
    }

    void dataFileIsOpenedForWriting()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        {
            const CHeldFile held(text(deck.dataFile), CHeldFile::Reader);
            QVERIFY(held.isHeld());
            QVERIFY(load(deck) == CCreatorData("bad data"));
        }
        QVERIFY(!load(deck).m_interactions.empty());
    }

    void missingFirstGroupIsBadData()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        unlinkIn(deck, "/CreatorData/0");
        QVERIFY(load(deck) == CCreatorData("bad data"));
    }

    void extensionTwiceNamesTheFileByTheFirst()
    {
        const DeckPaths deck = newDeck(fullDeck(14), "run");
        const fs::path twice = deck.deck.parent_path() / "run.zek.old.zek";
        fs::copy(deck.deck, twice);
        fs::copy(deck.dataFile, deck.dataFile.parent_path() / "0.h5.old.zek");
        fs::remove(deck.dataFile);
        CDeckSerializer serializer;
        const CCreatorData record = DeckLoading::loadDeck(serializer, text(twice));
        QVERIFY(record == expectedRecord(fullDeck(14), 14, "run.old"));
    }

    void deckFileItselfIsNotNeeded()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        fs::remove(deck.deck);
        QCOMPARE(load(deck).m_sName, std::string("hopper"));
    }

    void pathOutsideAsciiIsRead()
    {
        const QString deck = DeckTestFiles::renamed(newDeck(plainDeck(14)), "M\u00fchle");
        QTextCodec* const codec = QTextCodec::codecForLocale();
        if (!platform::speaksBatch()) {
            QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
        }
        CDeckSerializer serializer;
        const std::string name = DeckLoading::loadDeck(serializer, deck).m_sName;
        // The library takes paths as UTF-8, the program gives them in the system's code page.
        const bool sameBytes = deck.toLocal8Bit() == deck.toUtf8();
        QTextCodec::setCodecForLocale(codec);
        QCOMPARE(name, std::string(sameBytes ? "M\xc3\xbchle" : "bad data"));
        QVERIFY(sameBytes || platform::speaksBatch());
    }

    void timeIsPutBackWhereAnExceptionPasses_data()
    {
        QTest::addColumn<QString>("group");
        QTest::newRow("physics models") << "/CreatorData/0/PhysicsModels";
        QTest::newRow("surface") << "/CreatorData/0/PhysicsModels/SurfaceSurface";
        QTest::newRow("geometry") << "/CreatorData/0/PhysicsModels/SurfaceGeometry";
        QTest::newRow("forces") << "/CreatorData/0/PhysicsModels/ExternalForces";
    }
    void timeIsPutBackWhereAnExceptionPasses()
    {
        QFETCH(QString, group);
        const DeckPaths deck = newDeck(fullDeck(14));
        unlinkIn(deck, group.toStdString());
        const QByteArray bytes = DeckTestFiles::bytesOf(deck.dataFile);
        const fs::file_time_type time = DeckTestFiles::makeOld(deck.dataFile);
        QVERIFY_EXCEPTION_THROWN(load(deck), H5::GroupIException);
        QVERIFY(fs::last_write_time(deck.dataFile) == time);
        QCOMPARE(DeckTestFiles::bytesOf(deck.dataFile), bytes);
    }

    void missingGroupEndsTheProcess_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("deck") << "load";
        QTest::newRow("data file alone") << "data";
        QTest::newRow("page") << "page";
    }
    void missingGroupEndsTheProcess()
    {
        QFETCH(QString, command);
        const DeckPaths deck = newDeck(fullDeck(14));
        unlinkIn(deck, "/CreatorData/0/PhysicsModels");
        const fs::file_time_type time = DeckTestFiles::makeOld(deck.dataFile);
        const fs::path& file = command == QLatin1String("data") ? deck.dataFile : deck.deck;
        const auto end = DeckTestFiles::runProbe({command, text(file)});
        QVERIFY2(end.aborted, end.error.constData());
        QCOMPARE(end.output, QByteArray());
        QVERIFY2(end.error.contains("H5::GroupIException"), end.error.constData());
        QVERIFY(fs::last_write_time(deck.dataFile) == time);
    }

    void fewerShapeValuesEndTheProcess()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        unlinkIn(deck, "/CreatorData/0/PhysicsModels/ExternalForces/Ganser Drag/value");
        const fs::file_time_type time = DeckTestFiles::makeOld(deck.dataFile);
        const auto end = DeckTestFiles::runProbe({"page", text(deck.deck)});
        QVERIFY(end.aborted);
        QVERIFY2(end.error.contains("invalid vector subscript"), end.error.constData());
        QVERIFY(fs::last_write_time(deck.dataFile) == time);
    }

    void missingDataFileAloneEndsTheProcess()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        fs::remove(deck.dataFile);
        const auto end = DeckTestFiles::runProbe({"data", text(deck.dataFile)});
        QVERIFY(end.aborted);
        QVERIFY2(end.error.contains("H5::FileIException"), end.error.constData());
    }

    void goodDeckEndsNothing()
    {
        const auto end = DeckTestFiles::runProbe({"page", text(newDeck(fullDeck(14)).deck)});
        QVERIFY2(!end.aborted && end.exitCode == 0, end.error.constData());
        QCOMPARE(end.output, QByteArray("typed\n"));
    }
};

TARNEL_TEST_MAIN(TestDeckLoading)
#include "deck_loading_test.moc"
