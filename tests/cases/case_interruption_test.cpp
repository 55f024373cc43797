#include "tests/cases/case_root.h"

#include "tests/results/result_tree.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QRandomGenerator>
#include <QtTest>

#include <csignal>
#include <memory>

namespace {

constexpr int Kills = 50;
constexpr int ManyCases = 100;

std::unique_ptr<QProcess> startRun(const CCaseRoot& root, const QStringList& options = {})
{
    auto run = std::make_unique<QProcess>();
    run->start(TARNEL_CASES, QStringList{"run", root.path()} + options);
    return run;
}

bool isAlive(qint64 process)
{
    QFile stat(QString("/proc/%1/stat").arg(process));
    // A zombie that nobody has collected yet is as good as gone.
    return process > 0 && stat.open(QIODevice::ReadOnly) && !stat.readAll().contains(") Z ");
}

/// Process ids that the simulators logged.
bool anyAlive(const QStringList& processes)
{
    return std::any_of(processes.begin(), processes.end(),
                       [](const QString& process) { return isAlive(process.toLongLong()); });
}

/// Logs its own process and one that it starts, in its group or in a session of its own, and hangs.
const QByteArray HangsWithAChild = "echo $$ >>\"$log\"\nsleep 600 &\necho $! >>\"$log\"\nwait\n";
const QByteArray HangsWithADeserter =
    "echo $$ >>\"$log\"\nsetsid sh -c 'echo $$ >>\"$0\"; exec sleep 600' \"$log\" &\nwait\n";

} // namespace

class CaseInterruptionTest : public QObject
{
    Q_OBJECT

private slots:
    void signalEndsTheCasesWithAllTheirProcesses_data();
    void signalEndsTheCasesWithAllTheirProcesses();
    void secondRunGoesOnBehindAnInterruptedOne();
    void killedRunTakesItsSimulatorsWithIt();
    void killedRunIsShownAsInterrupted();
    void nextRunEndsWhatAKilledOneLeftBehind();
    void twoRunsShareTheCases();
    void runWaitsForTheCasesOfAnotherOne_data();
    void runWaitsForTheCasesOfAnotherOne();
    void killedAtRandomMomentsNothingIsLostOrDoneTwice();
};

void CaseInterruptionTest::signalEndsTheCasesWithAllTheirProcesses_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("script");
    QTest::newRow("Ctrl-C") << SIGINT << HangsWithAChild;
    QTest::newRow("terminate") << SIGTERM << HangsWithAChild;
    QTest::newRow("session of its own") << SIGINT << HangsWithADeserter;
}

void CaseInterruptionTest::signalEndsTheCasesWithAllTheirProcesses()
{
    QFETCH(int, number);
    QFETCH(QByteArray, script);
    const CCaseRoot root(4, script);
    const auto run = startRun(root, {"-j", "2"});
    QTRY_COMPARE(root.log().size(), 4); // two cases with two processes each
    QTRY_COMPARE(root.state(1), QString("running"));
    QVERIFY(anyAlive(root.log()));
    ::kill(static_cast<pid_t>(run->processId()), number);
    QVERIFY(run->waitForFinished());
    QCOMPARE(run->exitCode(), 1);
    QTRY_VERIFY(!anyAlive(root.log()));
    QCOMPARE(root.log().size(), 4);
    QCOMPARE(root.state(0), QString("interrupted"));
    QCOMPARE(root.note(1)["reason"].toString(), QString("the run was stopped"));
    QCOMPARE(root.state(2), QString());
}

void CaseInterruptionTest::secondRunGoesOnBehindAnInterruptedOne()
{
    CCaseRoot root(3, "echo $case >>\"$log\"\n[ $case = 0 ] || exec sleep 600\n");
    const auto run = startRun(root, {"-j", "1"});
    QTRY_COMPARE(root.log(), QStringList({"0", "1"}));
    ::kill(static_cast<pid_t>(run->processId()), SIGINT);
    QVERIFY(run->waitForFinished());
    root.setSimulator("echo $case >>\"$log\"\n");
    QCOMPARE(callCases({"run", root.path(), "-j", "1"}).exitCode, 0);
    QCOMPARE(root.log(), QStringList({"0", "1", "1", "2"}));
}

void CaseInterruptionTest::killedRunTakesItsSimulatorsWithIt()
{
    const CCaseRoot root(2, "echo $$ >>\"$log\"\nexec sleep 600\n");
    const auto run = startRun(root, {"-j", "2"});
    QTRY_COMPARE(root.log().size(), 2);
    run->kill();
    QVERIFY(run->waitForFinished());
    QTRY_VERIFY(!anyAlive(root.log()));
}

void CaseInterruptionTest::killedRunIsShownAsInterrupted()
{
    const CCaseRoot root(1, "exec sleep 600\n");
    const auto run = startRun(root);
    QTRY_COMPARE(root.state(0), QString("running"));
    run->kill();
    QVERIFY(run->waitForFinished());
    const SAnswer answer = callCases({"status", root.path()});
    QVERIFY2(answer.output.startsWith("case 0: interrupted: the run that held it is gone\n"),
             qPrintable(answer.output));
}

void CaseInterruptionTest::nextRunEndsWhatAKilledOneLeftBehind()
{
    CCaseRoot root(1, HangsWithADeserter);
    const auto run = startRun(root);
    QTRY_COMPARE(root.log().size(), 2);
    run->kill();
    QVERIFY(run->waitForFinished());
    QVERIFY(isAlive(root.log().last().toLongLong()) || isAlive(root.log().first().toLongLong()));
    const QStringList processes = root.log();
    root.setSimulator("true\n");
    QCOMPARE(callCases({"run", root.path()}).exitCode, 0);
    QTRY_VERIFY(!anyAlive(processes));
}

void CaseInterruptionTest::twoRunsShareTheCases()
{
    const CCaseRoot root(40, "sleep 0.02\necho $case >>\"$log\"\n");
    const auto first = startRun(root, {"-j", "2"});
    const auto second = startRun(root, {"-j", "2"});
    QVERIFY(first->waitForFinished());
    QVERIFY(second->waitForFinished());
    QCOMPARE(first->exitCode(), 0);
    QCOMPARE(second->exitCode(), 0);
    QStringList numbers = root.log();
    QCOMPARE(numbers.size(), 40);
    QCOMPARE(numbers.removeDuplicates(), 0);
}

void CaseInterruptionTest::runWaitsForTheCasesOfAnotherOne_data()
{
    QTest::addColumn<int>("exitCode");
    QTest::newRow("done") << 0;
    QTest::newRow("failed") << 1;
}

/// What the other run makes of a case counts here as well, so that it isn't tried twice.
void CaseInterruptionTest::runWaitsForTheCasesOfAnotherOne()
{
    QFETCH(int, exitCode);
    const CCaseRoot root(1, "echo $case >>\"$log\"\nsleep 1\nexit " + QByteArray::number(exitCode) +
                                "\n");
    const auto first = startRun(root);
    QTRY_COMPARE(root.log().size(), 1);
    const SAnswer second = callCases({"run", root.path()});
    QVERIFY(first->state() == QProcess::NotRunning || first->waitForFinished());
    QCOMPARE(second.exitCode, exitCode);
    QVERIFY2(second.output.startsWith(exitCode == 0 ? "case 0: done " : "case 0: failed: "),
             qPrintable(second.output));
    QCOMPARE(root.log().size(), 1);
}

void CaseInterruptionTest::killedAtRandomMomentsNothingIsLostOrDoneTwice()
{
    const CCaseRoot root(ManyCases, "echo begin $case >>\"$log\"\nsleep 0.05\n"
                                    "echo end $case >>\"$log\"\n");
    QRandomGenerator random(20261121);
    int kills = 0;
    QSet<QString> noted;
    for (bool allDone = false; !allDone;) {
        const auto run = startRun(root, {"-j", "2"});
        const int begun = root.log().size();
        if (kills < Kills && !run->waitForFinished(random.bounded(10, 100))) {
            run->kill();
            ++kills;
        }
        QVERIFY(run->state() == QProcess::NotRunning || run->waitForFinished());
        // What was noted as done before this run may not have been begun again by it.
        for (const QString& line : root.log().mid(begun)) {
            QVERIFY2(!line.startsWith("begin ") || !noted.contains(line.mid(6)), qPrintable(line));
        }
        allDone = true;
        for (int number = 0; number < ManyCases; ++number) {
            const bool hasNote = root.hasInCase(number, "case.json");
            QVERIFY2(!hasNote || !root.note(number).isEmpty(), "a note is half-written");
            if (root.state(number) == "done") {
                noted.insert(QString::number(number));
            } else {
                allDone = false;
            }
        }
    }
    QCOMPARE(kills, Kills);
    for (int number = 0; number < ManyCases; ++number) {
        QVERIFY(root.log().contains(QString("end %1").arg(number)));
    }
}

TARNEL_TEST_MAIN(CaseInterruptionTest)
#include "case_interruption_test.moc"
