#include "adapters/liggghts/adapter_error.h"
#include "adapters/liggghts/engine_run.h"
#include "tests/adapters/adapter_case.h"
#include "tests/support/processes.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QProcess>
#include <QtTest>

#include <csignal>
#include <memory>

// Engines that end in ways in which an exit code of 0 says nothing; each is a script of that name
// at the head of the search path.

namespace {

const char* const FinalState = "ITEM: TIMESTEP\n900\nITEM: NUMBER OF ATOMS\n2\n"
                               "ITEM: BOX BOUNDS ff ff ff\n0 1\n0 1\n0 1\n"
                               "ITEM: ATOMS id type radius x y z vx vy vz \n"
                               "2 1 0.0025 0 0 0.0075 0 0 0 \n1 1 0.0025 0 0 0.0025 0 0 0 \n";

/// Script lines that leave two states and a final one of two spheres.
QByteArray leavesStates(const QByteArray& final = FinalState)
{
    QByteArray script;
    for (const char* file : {"save.0.dump", "save.100.dump"}) {
        script += "cat >" + QByteArray(file) + " <<'END'\n" + FinalState + "END\n";
    }
    return script + "cat >final.dump <<'END'\n" + final + "END\n";
}

} // namespace

class EngineFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aRunThatReachedItsEndIsGood();
    void anEarlyEndIsTold_data();
    void anEarlyEndIsTold();
    void withoutAnEngineThereIsOneSentence();
    void aPlayWhoseCasesHaveNoResultFails();
    void anEngineThatIsNoProgramIsOneSentence();
    void progressComesWhileItRuns();
    void theFirstFailureEndsTheOtherRuns();
    void theEngineEndsWithTheAdapter_data();
    void theEngineEndsWithTheAdapter();

private:
    void putEngine(const QByteArray& script);
    SProgramEnd runCase() const
    {
        return AdapterCase::run(m_folder->path(), {"-r", "1", "-w", "0.05", "-e", "case.dfg"});
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_path;
};

void EngineFaultsTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = qgetenv("PATH");
    AdapterCase::write(
        SampleCase::deckOf(0.5, 0.5, 0.1),
        AdapterCase::experiment("angle of repose", {"count = 2", "seeds = 10007, 15485863"}),
        m_folder->path());
}

void EngineFaultsTest::cleanup()
{
    qputenv("PATH", m_path);
}

void EngineFaultsTest::putEngine(const QByteArray& script)
{
    QVERIFY(QDir(m_folder->path()).mkpath("bin"));
    QFile file(m_folder->filePath("bin/liggghts"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n" + script);
    file.close();
    QVERIFY(file.setPermissions(file.permissions() | QFile::ExeOwner));
    qputenv("PATH", m_folder->filePath("bin").toLocal8Bit() + ':' + m_path);
}

void EngineFaultsTest::aRunThatReachedItsEndIsGood()
{
    putEngine(leavesStates() + "echo '@ rested'\necho '@ done'\n");
    const SProgramEnd end = runCase();
    QVERIFY2(end.exitCode == 0, end.errors.constData());
    QCOMPARE(AdapterCase::results(m_folder->path()).value("Heap height (m)"), 0.01);
}

void EngineFaultsTest::anEarlyEndIsTold_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QByteArray>("sentence");
    const QByteArray run = "The engine's run of seed 10007 ";
    QTest::newRow("silence") << QByteArray("exit 0\n") << run + "ended before its time.";
    QTest::newRow("states but no last word") << leavesStates() + "echo '@ rested'\n"
                                             << run + "ended before its time.";
    QTest::newRow("too few spheres put in")
        << QByteArray("echo '@ inserted 1'\n") << run + "found room for 1 of 2 spheres.";
    QTest::newRow("never settled")
        << QByteArray("echo '@ inserted 2'\necho '@ unsettled'\n")
        << run + "had spheres that didn't come to rest in the closed vessel.";
    QTest::newRow("still moving")
        << leavesStates() + "echo '@ moving'\n"
        << run + "still had moving spheres at the end of the total time; a longer time behind -r, "
                 "or a higher \"rest speed\", lets it end.";
    QTest::newRow("a sphere is gone at the end")
        << leavesStates(QByteArray(FinalState).replace("ATOMS\n2", "ATOMS\n1")) + "echo '@ done'\n"
        << run + "has 1 of 2 spheres at its end.";
    QTest::newRow("a code") << leavesStates() + "echo '@ done'\nexit 4\n"
                            << run + "ended with the exit code 4.";
    QTest::newRow("a crash") << leavesStates() + "echo '@ done'\nkill -SEGV $$\n"
                             << run + "was ended or crashed.";
    QTest::newRow("an error in the log")
        << QByteArray("echo 'ERROR: Lost atoms: original 2 current 1' >log.liggghts\n")
        << run + "ended before its time. The engine says: ERROR: Lost atoms: original 2 current 1";
    const QByteArray cut = "left no final state: The engine's \"";
    QTest::newRow("no final state") << QByteArray("echo '@ done'\n") << run + cut;
    QTest::newRow("a final state that is cut off")
        << leavesStates(QByteArray(FinalState).replace("ATOMS\n2", "ATOMS\n3")) + "echo '@ done'\n"
        << run + cut;
    QTest::newRow("a place that is no number")
        << leavesStates(QByteArray(FinalState).replace("0 0 0.0075", "0 0 nan")) + "echo '@ done'\n"
        << run + cut;
}

void EngineFaultsTest::anEarlyEndIsTold()
{
    QFETCH(QByteArray, script);
    QFETCH(QByteArray, sentence);
    putEngine(script);
    const SProgramEnd end = runCase();
    QCOMPARE(end.exitCode, int(liggghts::CAdapterError::EngineFailed));
    QVERIFY2(end.errors.startsWith(sentence), end.errors.constData());
    QCOMPARE(end.errors.count('\n'), 1);
    QVERIFY(!QFile::exists(m_folder->filePath("case.csv")));
}

void EngineFaultsTest::withoutAnEngineThereIsOneSentence()
{
    qputenv("PATH", m_folder->path().toLocal8Bit());
    const SProgramEnd end = runCase();
    QCOMPARE(end.exitCode, int(liggghts::CAdapterError::EngineFailed));
    QCOMPARE(end.errors, QByteArray("There is no program \"liggghts\" on the search path.\n"));
}

void EngineFaultsTest::anEngineThatIsNoProgramIsOneSentence()
{
    putEngine("exit 0\n");
    QFile file(m_folder->filePath("bin/liggghts"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#!/no/such/shell\n");
    file.close();
    const SProgramEnd end = runCase();
    QCOMPARE(end.exitCode, int(liggghts::CAdapterError::EngineFailed));
    QVERIFY2(end.errors.startsWith("The engine can't be started: "), end.errors.constData());
}

void EngineFaultsTest::progressComesWhileItRuns()
{
    putEngine("echo '     250        2    4e-08'\nsleep 600\n");
    QProcess adapter;
    adapter.setWorkingDirectory(m_folder->path());
    adapter.start(AdapterCase::program(), {"-i", "case.zek", "-t", "2e-5"});
    QByteArray output;
    while (!output.contains("mean kinetic energy") && adapter.waitForReadyRead(20000)) {
        output += adapter.readAllStandardOutput();
    }
    QVERIFY2(output.contains("seed 10007: filling, time 0.005 s, 2 spheres, mean kinetic energy "
                             "2e-08 J\n"),
             output.constData());
    adapter.kill();
    adapter.waitForFinished();
}

void EngineFaultsTest::theFirstFailureEndsTheOtherRuns()
{
    putEngine("case $PWD in\n*10007) until [ -s ../seed15485863/pid ]; do sleep 0.05; done; exit "
              "3;;\n*) echo $$ >pid; exec sleep 600;;\nesac\n");
    QElapsedTimer timer;
    timer.start();
    const SProgramEnd end =
        AdapterCase::run(m_folder->path(), {"-r", "1", "-w", "0.05", "-p", "2"});
    QCOMPARE(end.exitCode, int(liggghts::CAdapterError::EngineFailed));
    QVERIFY(timer.elapsed() < 60000);
    const QByteArray other =
        SampleCase::contentOf(m_folder->filePath("case_engine/seed15485863/pid")).trimmed();
    QVERIFY(!other.isEmpty());
    QVERIFY(!isAlive(other));
}

void EngineFaultsTest::theEngineEndsWithTheAdapter_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("asked") << SIGTERM;
    QTest::newRow("killed") << SIGKILL;
}

void EngineFaultsTest::theEngineEndsWithTheAdapter()
{
    QFETCH(int, signal);
    putEngine("echo $$ >pid\nexec sleep 600\n");
    QProcess adapter;
    adapter.setWorkingDirectory(m_folder->path());
    adapter.start(AdapterCase::program(), {"-i", "case.zek"});
    const QString file = m_folder->filePath("case_engine/seed10007/pid");
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(file).size() > 1, 20000);
    const QByteArray engine = SampleCase::contentOf(file).trimmed();
    QVERIFY(isAlive(engine));
    ::kill(static_cast<pid_t>(adapter.processId()), signal);
    QVERIFY(adapter.waitForFinished(20000));
    QTRY_VERIFY_WITH_TIMEOUT(!isAlive(engine), 20000);
}

void EngineFaultsTest::aPlayWhoseCasesHaveNoResultFails()
{
    const SProgramEnd end = SampleCase::run(
        PLAY_SAMPLE,
        {"--sample", ENGINE_SAMPLE, "--engine", "/bin/false", "--work", m_folder->path()},
        m_folder->path());
    QCOMPARE(end.exitCode, 1);
    QVERIFY2(end.errors.contains("Not every case has a result."), end.errors.constData());
}

TARNEL_TEST_MAIN(EngineFaultsTest)
#include "engine_faults_test.moc"
