#include "tests/samples/sample_case.h"

#include "tests/support/test_environment.h"

#include <H5Cpp.h>

#include <QApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QProcess>
#include <QtTest>

namespace {

const QByteArray ClientLine = "Awaiting Client connection...\r\n";

QStringList timeSteps(const QString& folder)
{
    QStringList names = QDir(folder + QStringLiteral("/case_data"))
                            .entryList({QStringLiteral("*.h5")}, QDir::Files);
    names.removeAll(QStringLiteral("0.h5"));
    return names;
}

struct SFileState
{
    QByteArray content;
    QDateTime changed;
    bool operator==(const SFileState& other) const
    {
        return content == other.content && changed == other.changed;
    }
};

SFileState stateOf(const QString& file)
{
    return {SampleCase::contentOf(file), QFileInfo(file).lastModified()};
}

} // namespace

class OrvaSampleTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void exportHasTheSimulatorsLayout();
    void savesATimeStepPerInterval();
    void aTimeStepHoldsWhereTheBodiesAre();
    void savesTheLastTimeWhereTheIntervalMissesIt();
    void anIntervalOfZeroSavesTheEndAlone();
    void theDecksOwnFilesStayAsTheyWere();
    void withoutExportSettingsThereIsASummaryAndNoExport();
    void theNumberOfThreadsChangesNothing();
    void aWholeCommandOfTheSimulatorIsAccepted();
    void theDeviceOptionMayStandAlone();
    void theStepLimitEndsTheRunEarly();
    void rewindRemovesEarlierTimeSteps();
    void progressAndExportComeWhileItRuns();
    void theClientIsAwaitedFirst();
    void pairsMayBeNamedInEitherOrder();
    void aDeckInAFolderWithBlanksIsRead();
    void aBadCommandLineIsOneSentence_data();
    void aBadCommandLineIsOneSentence();
    void aBadDeckIsOneSentence_data();
    void aBadDeckIsOneSentence();
    void valuesThatTearTheColumnApartAreABadDeck();
    void aMissingDeckIsOneSentence();
    void aDataFileThatIsNoHdf5IsOneSentence();
    void exportSettingsOfAnotherFormatAreRefused();
    void missingExportSettingsAreRefused();
    void anExportThatCannotBeWrittenIsOneSentence();

private:
    SProgramEnd runCase(const QStringList& further) const;
    QString file(const QString& name) const { return m_folder->filePath(name); }

    QScopedPointer<QTemporaryDir> m_folder;
};

void OrvaSampleTest::init()
{
    m_folder.reset(new QTemporaryDir);
    SampleCase::write(SampleCase::deckOf(0.5, 0.5, 0.1), m_folder->path());
}

SProgramEnd OrvaSampleTest::runCase(const QStringList& further) const
{
    return SampleCase::run(QStringLiteral(ORVA_SAMPLE),
                           QStringList{QStringLiteral("-i"), QStringLiteral("case.zek")} + further,
                           m_folder->path());
}

void OrvaSampleTest::exportHasTheSimulatorsLayout()
{
    QCOMPARE(runCase({"-r", "0.2", "-w", "0.05", "-e", "case.dfg"}).exitCode, 0);
    const QStringList lines = SampleCase::linesOf(file(QStringLiteral("case.csv")));
    QCOMPARE(lines.size(), 11);
    QCOMPARE(lines.at(0), QStringLiteral("ORVA sample: exported results"));
    QCOMPARE(lines.at(1), QStringLiteral("EXTRACTED DATA"));
    QCOMPARE(lines.at(2), QStringLiteral("Name,case"));
    QVERIFY(lines.at(3).startsWith(QLatin1String("Settling time (s),")));
    QCOMPARE(lines.at(4), QStringLiteral("TIME:,0"));
    QCOMPARE(lines.at(5),
             QStringLiteral("TIME,Run-out (m),Heap height (m),Centre of mass height (m),"
                            "Angle of repose (deg),Mean kinetic energy (J)"));
    const QStringList times{"0", "0.05", "0.1", "0.15", "0.2"};
    for (int i = 0; i < times.size(); ++i) {
        const QStringList cells = lines.at(6 + i).split(QLatin1Char(','));
        QCOMPARE(cells.size(), 6);
        QCOMPARE(cells.first(), times.at(i));
        for (const QString& cell : cells) {
            bool isNumber = false;
            cell.toDouble(&isNumber);
            QVERIFY2(isNumber, qPrintable(cell));
        }
    }
}

void OrvaSampleTest::savesATimeStepPerInterval()
{
    QCOMPARE(runCase({"-r", "0.1", "-w", "0.025"}).exitCode, 0);
    QCOMPARE(timeSteps(m_folder->path()), (QStringList{"1.h5", "2.h5", "3.h5", "4.h5"}));
}

void OrvaSampleTest::aTimeStepHoldsWhereTheBodiesAre()
{
    QCOMPARE(runCase({"-r", "0.1", "-w", "0.05", "--compress-data", "1"}).exitCode, 0);
    const H5::H5File step(file(QStringLiteral("case_data/2.h5")).toStdString(), H5F_ACC_RDONLY);
    double time = 0.0;
    step.openAttribute("time").read(H5::PredType::NATIVE_DOUBLE, &time);
    QCOMPARE(time, 0.1);
    const H5::DataSet positions = step.openDataSet("/Particles/position");
    hsize_t shape[2] = {0, 0};
    QCOMPARE(positions.getSpace().getSimpleExtentDims(shape), 2);
    QCOMPARE(shape[0], hsize_t(98));
    QCOMPARE(shape[1], hsize_t(3));
    QCOMPARE(positions.getCreatePlist().getLayout(), H5D_CHUNKED);
    std::vector<double> places(98 * 3);
    positions.read(places.data(), H5::PredType::NATIVE_DOUBLE);
    for (std::size_t i = 0; i < 98; ++i) {
        QVERIFY(places[3 * i] > 0.0 && places[3 * i] < 0.8);
        QVERIFY(places[3 * i + 1] > 0.0 && places[3 * i + 1] < 0.3);
    }
}

void OrvaSampleTest::savesTheLastTimeWhereTheIntervalMissesIt()
{
    QCOMPARE(runCase({"-r", "0.05", "-w", "0.02", "-e", "case.dfg"}).exitCode, 0);
    QCOMPARE(timeSteps(m_folder->path()).size(), 3);
    const SampleTable table = SampleCase::tableOf(file(QStringLiteral("case.csv")));
    const QVector<double> times = table.value(QStringLiteral("TIME"));
    QCOMPARE(times.size(), 4);
    QVERIFY(qAbs(times.last() - 0.05) < 1e-4);
}

void OrvaSampleTest::anIntervalOfZeroSavesTheEndAlone()
{
    QCOMPARE(runCase({"-r", "0.05", "-w", "0.000000"}).exitCode, 0);
    QCOMPARE(timeSteps(m_folder->path()), QStringList{QStringLiteral("1.h5")});
}

void OrvaSampleTest::theDecksOwnFilesStayAsTheyWere()
{
    const QStringList names{"case.zek", "case.ynd", "case.dfg", "case_data/0.h5"};
    QVector<SFileState> before;
    for (const QString& name : names) {
        before.append(stateOf(file(name)));
    }
    QTest::qWait(20);
    QCOMPARE(runCase({"-r", "0.05", "-e", "case.dfg", "-R"}).exitCode, 0);
    for (int i = 0; i < names.size(); ++i) {
        QVERIFY2(stateOf(file(names.at(i))) == before.at(i), qPrintable(names.at(i)));
    }
}

void OrvaSampleTest::withoutExportSettingsThereIsASummaryAndNoExport()
{
    QCOMPARE(runCase({"-r", "0.05", "-w", "0.05"}).exitCode, 0);
    QVERIFY(!QFile::exists(file(QStringLiteral("case.csv"))));
    const QStringList lines = SampleCase::linesOf(file(QStringLiteral("case_summary.txt")));
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines.at(0), QStringLiteral("# ORVA sample: summary of case"));
    QCOMPARE(lines.at(1), QStringLiteral("# time run_out heap_height centre_height repose_angle "
                                         "kinetic_energy"));
    QCOMPARE(lines.at(3).split(QLatin1Char(' ')).size(), 6);
}

void OrvaSampleTest::theNumberOfThreadsChangesNothing()
{
    QCOMPARE(runCase({"-r", "0.2", "-p", "1", "-e", "case.dfg"}).exitCode, 0);
    const QByteArray alone = SampleCase::contentOf(file(QStringLiteral("case.csv")));
    QCOMPARE(runCase({"-r", "0.2", "-p", "4", "-e", "case.dfg"}).exitCode, 0);
    QCOMPARE(SampleCase::contentOf(file(QStringLiteral("case.csv"))), alone);
    QVERIFY(!alone.isEmpty());
}

void OrvaSampleTest::aWholeCommandOfTheSimulatorIsAccepted()
{
    const QString options = QStringLiteral(
        " -c  -r 0.050000 -w 0.050000 -g 2.500000 -t 0.000050 -p 2 -E 1 -D 0 1 -R  "
        "--particle-properties  -n 100000.000000 --dyn 1 --dyn-interval 0.050000 --dyn-check 3 "
        "--dyn-disp 10.000000 --gpu-split Y --simExport  --cs  --auto-grid  --wait  "
        "--compress-data 1 --sp 0 --acd 1 -e \"case.dfg\"");
    const SProgramEnd end = runCase(QProcess::splitCommand(options));
    QVERIFY2(end.exitCode == 0, end.errors.constData());
    QVERIFY(end.errors.isEmpty());
    QVERIFY(QFile::exists(file(QStringLiteral("case.csv"))));
}

void OrvaSampleTest::theDeviceOptionMayStandAlone()
{
    QCOMPARE(runCase({"-D", "--dyn", "0", "-r", "0.05"}).exitCode, 0);
    QCOMPARE(runCase({"-r", "0.05", "-D"}).exitCode, 0);
}

void OrvaSampleTest::theStepLimitEndsTheRunEarly()
{
    QCOMPARE(runCase({"-r", "1", "-t", "0.00005", "-n", "1000.000000", "-e", "case.dfg"}).exitCode,
             0);
    const SampleTable table = SampleCase::tableOf(file(QStringLiteral("case.csv")));
    QCOMPARE(table.value(QStringLiteral("TIME")).last(), 0.05);
}

void OrvaSampleTest::rewindRemovesEarlierTimeSteps()
{
    QCOMPARE(runCase({"-r", "0.1", "-w", "0.02"}).exitCode, 0);
    QCOMPARE(timeSteps(m_folder->path()).size(), 5);
    QCOMPARE(runCase({"-r", "0.04", "-w", "0.02"}).exitCode, 0);
    QCOMPARE(timeSteps(m_folder->path()).size(), 5);
    QCOMPARE(runCase({"-r", "0.04", "-w", "0.02", "-R"}).exitCode, 0);
    QCOMPARE(timeSteps(m_folder->path()), (QStringList{"1.h5", "2.h5"}));
    QVERIFY(QFile::exists(file(QStringLiteral("case_data/0.h5"))));
}

void OrvaSampleTest::progressAndExportComeWhileItRuns()
{
    QProcess process;
    process.setWorkingDirectory(m_folder->path());
    process.start(QStringLiteral(ORVA_SAMPLE),
                  {"-i", "case.zek", "-r", "1000", "-w", "0.2", "--simExport", "-e", "case.dfg"});
    QByteArray output;
    while (output.count("step ") < 2 && process.waitForReadyRead(60000)) {
        output += process.readAllStandardOutput();
    }
    QVERIFY(output.count("step ") >= 2);
    QCOMPARE(process.state(), QProcess::Running);
    QVERIFY(QFile::exists(file(QStringLiteral("case.csv"))));
    QVERIFY(QFile::exists(file(QStringLiteral("case_data/1.h5"))));
    process.kill();
    process.waitForFinished();
}

void OrvaSampleTest::theClientIsAwaitedFirst()
{
    QProcess process;
    process.setWorkingDirectory(m_folder->path());
    process.start(QStringLiteral(ORVA_SAMPLE), {"-i", "case.zek", "-r", "0.05", "--cs"});
    QVERIFY(process.waitForReadyRead(30000));
    QCOMPARE(process.readAllStandardOutput(), ClientLine);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(process.waitForReadyRead(30000));
    QVERIFY(timer.elapsed() > 300);
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitCode(), 0);
}

void OrvaSampleTest::pairsMayBeNamedInEitherOrder()
{
    DeckDescription deck = SampleCase::deckOf(0.5, 0.5, 0.1);
    deck.interactions->at(0).values = {0.4, 0.3, 0.2};
    SampleCase::write(deck, m_folder->path());
    QCOMPARE(runCase({"-r", "0.1", "-e", "case.dfg"}).exitCode, 0);
    const QByteArray before = SampleCase::contentOf(file(QStringLiteral("case.csv")));
    deck.interactions->at(1).names = {pairKey("Steel", "Gravel")};
    std::swap(deck.interactions->at(0), deck.interactions->at(2));
    SampleCase::write(deck, m_folder->path());
    QCOMPARE(runCase({"-r", "0.1", "-e", "case.dfg"}).exitCode, 0);
    QCOMPARE(SampleCase::contentOf(file(QStringLiteral("case.csv"))), before);
}

void OrvaSampleTest::aDeckInAFolderWithBlanksIsRead()
{
    const QString folder = file(QStringLiteral("Job 0 of ours"));
    SampleCase::write(SampleCase::deckOf(0.5, 0.5, 0.1), folder);
    const SProgramEnd end = SampleCase::run(QStringLiteral(ORVA_SAMPLE),
                                            {"-i", folder + QStringLiteral("/case.zek"), "-r",
                                             "0.05", "-e", file(QStringLiteral("case.dfg"))},
                                            QDir::rootPath());
    QVERIFY2(end.exitCode == 0, end.errors.constData());
    QVERIFY(QFile::exists(folder + QStringLiteral("/case.csv")));
}

void OrvaSampleTest::aBadCommandLineIsOneSentence_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("named");
    const QStringList deck{"-i", "case.zek"};
    QTest::newRow("no deck") << QStringList{"-r", "1"} << QByteArray("-i");
    QTest::newRow("nothing at all") << QStringList() << QByteArray("-i");
    QTest::newRow("unknown option") << deck + QStringList{"--colour"} << QByteArray("--colour");
    QTest::newRow("stray word") << deck + QStringList{"-c", "word"} << QByteArray("word");
    QTest::newRow("missing value") << deck + QStringList{"-r"} << QByteArray("-r");
    QTest::newRow("option for value") << deck + QStringList{"-r", "-w", "1"} << QByteArray("-r");
    QTest::newRow("no number") << deck + QStringList{"-w", "often"} << QByteArray("often");
    QTest::newRow("number and more") << deck + QStringList{"-r", "1s"} << QByteArray("1s");
    QTest::newRow("below zero") << deck + QStringList{"-t", "-0.1"} << QByteArray("-t");
    QTest::newRow("no time") << deck + QStringList{"-r", "0"} << QByteArray("-r");
    QTest::newRow("not a number") << deck + QStringList{"-r", "nan"} << QByteArray("-r");
    QTest::newRow("no thread") << deck + QStringList{"-p", "0"} << QByteArray("-p");
    QTest::newRow("half a thread") << deck + QStringList{"-p", "1.5"} << QByteArray("-p");
    QTest::newRow("no such engine") << deck + QStringList{"-E", "3"} << QByteArray("-E");
    QTest::newRow("no such axis") << deck + QStringList{"--gpu-split", "W"} << QByteArray("W");
    QTest::newRow("long time step") << deck + QStringList{"-t", "0.01"} << QByteArray("-t");
    QTest::newRow("endless time") << deck + QStringList{"-r", "1e300", "-w", "0"}
                                  << QByteArray("-r");
    QTest::newRow("too many saves")
        << deck + QStringList{"-r", "1", "-w", "0.00001"} << QByteArray("-w");
}

void OrvaSampleTest::aBadCommandLineIsOneSentence()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QByteArray, named);
    const SProgramEnd end =
        SampleCase::run(QStringLiteral(ORVA_SAMPLE), arguments, m_folder->path());
    QCOMPARE(end.exitCode, 2);
    QCOMPARE(end.errors.count('\n'), 1);
    QVERIFY2(end.errors.contains(named), end.errors.constData());
    QVERIFY(timeSteps(m_folder->path()).isEmpty());
}

void OrvaSampleTest::aBadDeckIsOneSentence_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("named");
    QTest::newRow("no interactions") << 0 << QByteArray("no interactions");
    QTest::newRow("empty interactions") << 1 << QByteArray("no interactions");
    QTest::newRow("one material") << 2 << QByteArray("another material");
    QTest::newRow("no own pair") << 3 << QByteArray("with itself");
    QTest::newRow("one name") << 4 << QByteArray("\"Gravel\"");
    QTest::newRow("restitution above 1") << 5 << QByteArray("Gravel<>Gravel");
    QTest::newRow("friction below 0") << 6 << QByteArray("Gravel<>Steel");
    QTest::newRow("friction without end") << 7 << QByteArray("Gravel<>Steel");
}

void OrvaSampleTest::aBadDeckIsOneSentence()
{
    QFETCH(const int, number);
    QFETCH(const QByteArray, named);
    const DeckRow own{{pairKey("Gravel", "Gravel")}, {0.5, 0.5, 0.1}};
    const DeckRow box{{pairKey("Gravel", "Steel")}, {0.5, 0.5, 0.1}};
    const std::vector<DeckRows> decks{DeckRows(),
                                      std::vector<DeckRow>(),
                                      std::vector<DeckRow>{own},
                                      std::vector<DeckRow>{box},
                                      std::vector<DeckRow>{{{"Gravel"}, {0.5, 0.5, 0.1}}},
                                      std::vector<DeckRow>{{own.names, {1.5, 0.5, 0.1}}, box},
                                      std::vector<DeckRow>{own, {box.names, {0.5, -0.5, 0.1}}},
                                      std::vector<DeckRow>{own, {box.names, {0.5, qInf(), 0.1}}}};
    DeckDescription deck = SampleCase::deckOf(0.5, 0.5, 0.1);
    deck.interactions = decks.at(static_cast<std::size_t>(number));
    SampleCase::write(deck, m_folder->path());
    const SProgramEnd end = runCase({"-r", "0.05"});
    QCOMPARE(end.exitCode, 3);
    QCOMPARE(end.errors.count('\n'), 1);
    QVERIFY2(end.errors.contains(named), end.errors.constData());
    QVERIFY(timeSteps(m_folder->path()).isEmpty());
}

void OrvaSampleTest::valuesThatTearTheColumnApartAreABadDeck()
{
    DeckDescription deck = SampleCase::deckOf(0.5, 0.5, 0.1);
    deck.surfaceSurface.linearCohesionV2 = {{{"Gravel", "Gravel"}, {1e300}}};
    SampleCase::write(deck, m_folder->path());
    const SProgramEnd end = runCase({"-r", "0.05"});
    QCOMPARE(end.exitCode, 3);
    QVERIFY2(end.errors.contains("leave all bounds"), end.errors.constData());
}

void OrvaSampleTest::aMissingDeckIsOneSentence()
{
    const SProgramEnd end =
        SampleCase::run(QStringLiteral(ORVA_SAMPLE), {"-i", "other.zek"}, m_folder->path());
    QCOMPARE(end.exitCode, 3);
    QCOMPARE(end.errors.count('\n'), 1);
    QVERIFY(end.errors.contains("other.zek"));
}

void OrvaSampleTest::aDataFileThatIsNoHdf5IsOneSentence()
{
    QFile data(file(QStringLiteral("case_data/0.h5")));
    QVERIFY(data.open(QIODevice::WriteOnly));
    data.write("not a data file");
    data.close();
    const SProgramEnd end = runCase({});
    QCOMPARE(end.exitCode, 3);
    QCOMPARE(end.errors.count('\n'), 1);
    QVERIFY(end.errors.contains("0.h5"));
}

void OrvaSampleTest::exportSettingsOfAnotherFormatAreRefused()
{
    const SProgramEnd end = runCase({"-r", "0.05", "-e", "case.ynd"});
    QCOMPARE(end.exitCode, 4);
    QCOMPARE(end.errors.count('\n'), 1);
}

void OrvaSampleTest::missingExportSettingsAreRefused()
{
    QCOMPARE(runCase({"-r", "0.05", "-e", "missing.dfg"}).exitCode, 4);
}

void OrvaSampleTest::anExportThatCannotBeWrittenIsOneSentence()
{
    QVERIFY(QDir().mkdir(file(QStringLiteral("case.csv"))));
    const SProgramEnd end = runCase({"-r", "0.05", "-e", "case.dfg"});
    QCOMPARE(end.exitCode, 5);
    QCOMPARE(end.errors.count('\n'), 1);
    QVERIFY(end.errors.contains("case.csv"));
}

TARNEL_TEST_MAIN(OrvaSampleTest)
#include "orva_sample_test.moc"
