#include "tests/cases/case_root.h"

#include "platform/file_lock.h"
#include "tests/results/result_tree.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QJsonArray>
#include <QtTest>

#include <sys/resource.h>

namespace {

const QByteArray EndsWell = "echo \"$case\" >>\"$log\"\n";

QProcessEnvironment environmentWithConda()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PATH", QString(STAND_INS) + ":" + environment.value("PATH"));
    return environment;
}

/// The end of a batch line of a job with a Python analysis.
QString analysisEnd(const QString& argument)
{
    return " & cd \"Job%1\" & ^conda activate & ^python \"s.py\" -d \"heap%1.zek\" " + argument +
           " & ^conda deactivate & ^cd .. & ^";
}

void giveScript(const CCaseRoot& root, int cases, const QByteArray& script)
{
    for (int number = 0; number < cases; ++number) {
        putFile(root.caseFolder(number), "s.py", script);
    }
}

long childrenPeakKib()
{
    struct rusage usage = {};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    return usage.ru_maxrss;
}

} // namespace

class CaseRunTest : public QObject
{
    Q_OBJECT

private slots:
    void runsAllCasesInTheOrderOfTheirNumbers();
    void keepsNoMoreCasesRunningThanAsked();
    void notesWhatEachCaseDid();
    void keepsTheOutputOfBothChannels();
    void runsInTheCaseRootWithAnAbsoluteDeck();
    void failedCaseIsNotedAndTheOthersGoOn();
    void caseEndedByASignalIsNoted();
    void simulatorThatDoesNotStartIsNoted();
    void doneCasesAreNotRunAgain();
    void onlyFailedRunsWhatFailed();
    void listRunsWhatIsNamed();
    void triedCaseIsPutBackBeforeItRunsAgain();
    void inputsStayUntouchedByATry();
    void unreadableNoteMeansThatTheCaseHasToRun();
    void anotherSimulatorCanBeGiven();
    void missingCaseFolderFailsThatCaseAlone();
    void progressHasALineForEachCase();
    void progressIsABarOnATerminal();
    void reportIsJsonWhenAsked();
    void outputDoesNotFillTheMemory();

    void analysisRunsBehindTheSimulation();
    void failedAnalysisFailsTheCase();
    void analysisWithoutCondaIsRefusedBeforeAnyCase();
    void couplingServerRunsBesideTheCaseAndEndsWithIt();

    void statusOfAFreshRootIsWaiting();
    void statusShowsARunningCase();
    void statusOfAThousandCasesIsQuick();
};

void CaseRunTest::runsAllCasesInTheOrderOfTheirNumbers()
{
    const CCaseRoot root(12, EndsWell);
    const SAnswer answer = callCases({"run", root.path(), "-j", "1"});
    QCOMPARE(answer.exitCode, 0);
    QStringList expected;
    for (int number = 0; number < 12; ++number) {
        expected << QString::number(number);
    }
    QCOMPARE(root.log(), expected);
    QVERIFY(answer.output.endsWith(
        "12 cases: 12 done, 0 failed, 0 running, 0 waiting, 0 interrupted\n"));
}

void CaseRunTest::keepsNoMoreCasesRunningThanAsked()
{
    // Each case writes how many are at it, itself included.
    const CCaseRoot root(9,
                         "mkdir -p \"$log.d/$case\"\nsleep 0.1\nls \"$log.d\" | wc -l >>\"$log\"\n"
                         "rmdir \"$log.d/$case\"\n");
    QCOMPARE(callCases({"run", root.path(), "-j", "3"}).exitCode, 0);
    int most = 0;
    for (const QString& count : root.log()) {
        most = std::max(most, count.toInt());
    }
    QCOMPARE(root.log().size(), 9);
    QVERIFY2(most >= 2 && most <= 3, qPrintable(QString::number(most)));
}

void CaseRunTest::notesWhatEachCaseDid()
{
    const CCaseRoot root(1, EndsWell);
    const QDateTime before = QDateTime::currentDateTimeUtc().addMSecs(-5);
    QCOMPARE(callCases({"run", root.path()}).exitCode, 0);
    const QJsonObject note = root.note(0);
    QCOMPARE(note["state"].toString(), QString("done"));
    QCOMPARE(note["exitCode"].toInt(-1), 0);
    QCOMPARE(note["host"].toString(), QSysInfo::machineHostName());
    QVERIFY(note["process"].toInt() > 0);
    QCOMPARE(note["command"].toString(), QString("\"%1\" -i \"%2/Job0/heap0.zek\" -c  -r 1.000000")
                                             .arg(root.simulator(), root.path()));
    const auto start = QDateTime::fromString(note["start"].toString(), Qt::ISODateWithMs);
    const auto end = QDateTime::fromString(note["end"].toString(), Qt::ISODateWithMs);
    QVERIFY(before <= start && start <= end && end <= QDateTime::currentDateTimeUtc().addMSecs(5));
}

void CaseRunTest::keepsTheOutputOfBothChannels()
{
    const CCaseRoot root(1, "echo out\necho err >&2\nprintf 'no line end'\n");
    QCOMPARE(callCases({"run", root.path()}).exitCode, 0);
    QCOMPARE(root.contentInCase(0, "output.txt"), QByteArray("out\nerr\nno line end"));
}

void CaseRunTest::runsInTheCaseRootWithAnAbsoluteDeck()
{
    const CCaseRoot root(1, "pwd >>\"$log\"\necho \"$1 $deck $3 $4 $5\" >>\"$log\"\n");
    QCOMPARE(callCases({"run", root.path()}).exitCode, 0);
    QCOMPARE(root.log(),
             QStringList({root.path(), "-i " + root.path() + "/Job0/heap0.zek -c -r 1.000000"}));
}

void CaseRunTest::failedCaseIsNotedAndTheOthersGoOn()
{
    const CCaseRoot root(3, EndsWell + "[ \"$case\" != 1 ] || exit 3\n");
    const SAnswer answer = callCases({"run", root.path(), "-j", "1"});
    QCOMPARE(answer.exitCode, 1);
    QCOMPARE(root.log(), QStringList({"0", "1", "2"}));
    QCOMPARE(root.state(1), QString("failed"));
    QCOMPARE(root.note(1)["exitCode"].toInt(), 3);
    QCOMPARE(root.note(1)["reason"].toString(), QString("the simulator ended with exit code 3"));
    QCOMPARE(root.state(2), QString("done"));
}

void CaseRunTest::caseEndedByASignalIsNoted()
{
    const CCaseRoot root(1, "kill -SEGV $$\n");
    QCOMPARE(callCases({"run", root.path()}).exitCode, 1);
    QCOMPARE(root.note(0)["signal"].toInt(), 11);
    QCOMPARE(root.note(0)["reason"].toString(), QString("the simulator was ended by signal 11"));
}

void CaseRunTest::simulatorThatDoesNotStartIsNoted()
{
    const CCaseRoot root(1, EndsWell);
    QFile(root.simulator()).setPermissions(QFile::ReadOwner);
    QCOMPARE(callCases({"run", root.path()}).exitCode, 1);
    QCOMPARE(root.state(0), QString("failed"));
    QVERIFY(root.note(0)["reason"].toString().startsWith("the simulator didn't start: "));
}

void CaseRunTest::doneCasesAreNotRunAgain()
{
    const CCaseRoot root(4, EndsWell + "[ \"$case\" != 2 ] || exit 1\n");
    QCOMPARE(callCases({"run", root.path(), "-j", "1"}).exitCode, 1);
    QCOMPARE(callCases({"run", root.path(), "-j", "1"}).exitCode, 1);
    QCOMPARE(root.log(), QStringList({"0", "1", "2", "3", "2"}));
}

void CaseRunTest::onlyFailedRunsWhatFailed()
{
    CCaseRoot root(3, EndsWell + "[ \"$case\" != 1 ] || exit 1\n");
    QCOMPARE(callCases({"run", root.path(), "--only", "0,1"}).exitCode, 1);
    root.setSimulator(EndsWell);
    const SAnswer answer = callCases({"run", root.path(), "--only", "failed"});
    QCOMPARE(answer.exitCode, 0);
    QVERIFY(
        answer.output.endsWith("1 case: 1 done, 0 failed, 0 running, 0 waiting, 0 interrupted\n"));
    QCOMPARE(root.state(1), QString("done"));
    QCOMPARE(root.state(2), QString());
}

void CaseRunTest::listRunsWhatIsNamed()
{
    const CCaseRoot root(5, EndsWell);
    QCOMPARE(callCases({"run", root.path(), "-j", "1", "--only", "4,1-2"}).exitCode, 0);
    QCOMPARE(root.log(), QStringList({"1", "2", "4"}));
    QCOMPARE(callCases({"run", root.path(), "--only", "2"}).exitCode, 0);
    QCOMPARE(root.log().size(), 4); // named, so run again
}

void CaseRunTest::triedCaseIsPutBackBeforeItRunsAgain()
{
    // The first try leaves files and time steps behind; the second would see them.
    CCaseRoot root(2, "touch \"$folder/heap${case}_data/1.h5\" \"$folder/result.csv\"\n"
                      "mkdir \"$folder/sub\"\ntouch \"$folder/sub/x\"\nexit 1\n");
    QCOMPARE(callCases({"run", root.path()}).exitCode, 1);
    QVERIFY(root.hasInCase(1, "heap1_data/1.h5"));
    root.setSimulator("ls \"$folder\" \"$folder/heap${case}_data\" >\"$log\"\n");
    QCOMPARE(callCases({"run", root.path(), "--only", "1"}).exitCode, 0);
    QCOMPARE(root.log(), QStringList({root.caseFolder(1) + ":", "case.json", "case.lock",
                                      "extra file.txt", "heap1.ynd", "heap1.zek", "heap1_data",
                                      "output.txt", root.caseFolder(1) + "/heap1_data:", "0.h5"}));
}

void CaseRunTest::inputsStayUntouchedByATry()
{
    const CCaseRoot root(1, "exit 1\n");
    const QStringList inputs{"heap0.zek", "heap0.ynd", "heap0_data/0.h5", "extra file.txt"};
    QList<QDateTime> times;
    for (const QString& name : inputs) {
        times << QFileInfo(root.inCase(0, name)).lastModified();
    }
    callCases({"run", root.path()});
    callCases({"run", root.path()});
    for (int i = 0; i < inputs.size(); ++i) {
        QCOMPARE(QFileInfo(root.inCase(0, inputs[i])).lastModified(), times[i]);
    }
    QCOMPARE(root.contentInCase(0, "heap0_data/0.h5"), QByteArray("data 0"));
    QCOMPARE(root.contentInCase(0, "extra file.txt"), QByteArray("additional"));
}

void CaseRunTest::unreadableNoteMeansThatTheCaseHasToRun()
{
    const CCaseRoot root(1, EndsWell);
    putFile(root.caseFolder(0), "case.json", "{\"state\":\"do");
    QCOMPARE(callCases({"run", root.path()}).exitCode, 0);
    QCOMPARE(root.log(), QStringList({"0"}));
}

void CaseRunTest::anotherSimulatorCanBeGiven()
{
    const CCaseRoot root(1, "exit 1\n");
    CCaseRoot other(0, "echo other >>\"$log\"\n");
    QCOMPARE(callCases({"run", root.path(), "--simulator", other.simulator()}).exitCode, 0);
    QCOMPARE(other.log(), QStringList({"other"}));
}

void CaseRunTest::missingCaseFolderFailsThatCaseAlone()
{
    const CCaseRoot root(3, EndsWell);
    QVERIFY(QDir(root.caseFolder(1)).removeRecursively());
    const SAnswer answer = callCases({"run", root.path(), "-j", "1"});
    QCOMPARE(answer.exitCode, 1);
    QCOMPARE(root.log(), QStringList({"0", "2"}));
    QVERIFY2(answer.output.contains("case 1: failed: "), qPrintable(answer.output));
}

void CaseRunTest::progressHasALineForEachCase()
{
    const CCaseRoot root(3, EndsWell + "[ \"$case\" != 1 ] || exit 7\n");
    const QStringList lines =
        callCases({"run", root.path(), "-j", "1"}).output.split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 4);
    QVERIFY2(lines[0].startsWith("case 0: done in 0:00:0"), qPrintable(lines[0]));
    QVERIFY2(lines[0].contains("(1/3 done, 0 failed, 0 running, 0:00:0"), qPrintable(lines[0]));
    QVERIFY2(lines[1].startsWith("case 1: failed: the simulator ended with exit code 7 (1/3 done, "
                                 "1 failed, "),
             qPrintable(lines[1]));
    QVERIFY2(lines[2].contains("(2/3 done, 1 failed, 0 running, 0:00:00 left)"),
             qPrintable(lines[2]));
}

void CaseRunTest::progressIsABarOnATerminal()
{
    const CCaseRoot root(4, "[ \"$case\" != 1 ] || exit 7\nsleep 0.3\n");
    QProcess terminal; // of its own, which keeps what is written to it
    const QString call = QString("'%1' run '%2' -j 2").arg(TARNEL_CASES, root.path());
    terminal.start("script", {"--quiet", "--return", "--command", call, "/dev/null"});
    QVERIFY(terminal.waitForFinished());
    QCOMPARE(terminal.exitCode(), 1);
    const QByteArray shown = terminal.readAllStandardOutput();
    QVERIFY2(shown.contains("] 0/4 done, 1 failed, "), shown.constData());
    QVERIFY(shown.contains("case 1: failed: the simulator ended with exit code 7\r\n"));
    QVERIFY(!shown.contains("case 0: done"));
    QVERIFY(shown.contains("[##############################] 3/4 done, 1 failed, 0 running, "
                           "0:00:00 left\r\n4 cases: 3 done, 1 failed"));
}

void CaseRunTest::reportIsJsonWhenAsked()
{
    const CCaseRoot root(2, EndsWell + "[ \"$case\" != 1 ] || exit 7\n");
    const QJsonObject report = jsonOf(callCases({"run", root.path(), "--json"}));
    QCOMPARE(report["sum"].toObject()["done"].toInt(-1), 1);
    QCOMPARE(report["sum"].toObject()["failed"].toInt(-1), 1);
    const QJsonObject second = report["cases"].toArray()[1].toObject();
    QCOMPARE(second["case"].toInt(-1), 1);
    QCOMPARE(second["exitCode"].toInt(-1), 7);
    const QJsonObject status = jsonOf(callCases({"status", root.path(), "--json"}));
    QCOMPARE(status["cases"].toArray()[0].toObject()["state"].toString(), QString("done"));
    QCOMPARE(status["sum"], report["sum"]);
}

void CaseRunTest::outputDoesNotFillTheMemory()
{
    const CCaseRoot little(1, EndsWell);
    QCOMPARE(callCases({"run", little.path()}).exitCode, 0);
    const long before = childrenPeakKib();
    const CCaseRoot much(1, "head -c 100000000 /dev/zero\n");
    QCOMPARE(callCases({"run", much.path()}).exitCode, 0);
    QCOMPARE(QFileInfo(much.inCase(0, "output.txt")).size(), qint64(100000000));
    QVERIFY2(childrenPeakKib() - before < 20000, qPrintable(QString::number(childrenPeakKib())));
}

void CaseRunTest::analysisRunsBehindTheSimulation()
{
    const CCaseRoot root(2, "echo simulated\n", analysisEnd("--all"));
    giveScript(root, 2, "import sys, os\nprint('analysed', os.getcwd(), *sys.argv[1:])\n");
    const SAnswer answer = callCases({"run", root.path()}, environmentWithConda());
    QCOMPARE(answer.exitCode, 0);
    QCOMPARE(root.contentInCase(1, "output.txt"),
             "simulated\nanalysed " + root.caseFolder(1).toUtf8() + " -d " +
                 root.inCase(1, "heap1.zek").toUtf8() + " --all\n");
}

void CaseRunTest::failedAnalysisFailsTheCase()
{
    const CCaseRoot root(1, EndsWell, analysisEnd(""));
    giveScript(root, 1, "raise SystemExit(5)\n");
    QCOMPARE(callCases({"run", root.path()}, environmentWithConda()).exitCode, 1);
    QCOMPARE(root.note(0)["reason"].toString(), QString("the analysis ended with exit code 5"));
    giveScript(root, 1, "pass\n");
    QCOMPARE(callCases({"run", root.path()}, environmentWithConda()).exitCode, 0);
    QCOMPARE(root.state(0), QString("done"));
}

void CaseRunTest::analysisWithoutCondaIsRefusedBeforeAnyCase()
{
    const CCaseRoot root(1, EndsWell, analysisEnd(""));
    giveScript(root, 1, "pass\n");
    QTemporaryDir tools;
    QVERIFY(QFile::link(QStandardPaths::findExecutable("python3"), tools.filePath("python3")));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PATH", tools.path());
    const SAnswer answer = callCases({"run", root.path()}, environment);
    QCOMPARE(answer.exitCode, 2);
    QCOMPARE(
        answer.errors,
        QString("tarnel-cases: the cases have a Python analysis and conda is not on the PATH\n"));
    QVERIFY(root.log().isEmpty());
}

void CaseRunTest::couplingServerRunsBesideTheCaseAndEndsWithIt()
{
    const CCaseRoot root(1, "i=0\nwhile [ ! -e \"$folder/served\" ] && [ $i -lt 100 ]; do\n"
                            "    sleep 0.1; i=$((i + 1))\ndone\n[ -e \"$folder/served\" ]\n");
    putFile(root.caseFolder(0), "server.sh",
            "#!/bin/sh\ntouch \"$(dirname \"$0\")/served\"\necho serving $1\nexec sleep 600\n");
    QFile(root.inCase(0, "server.sh")).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    const QByteArray line = contentOf(root.path() + "/RunAllSimulations.bat");
    putFile(root.path(), "RunAllSimulations.bat",
            "start cmd.exe /k \"Job0\\server.sh\" --port=7\n\r" + line);
    QElapsedTimer clock;
    clock.start();
    const SAnswer answer = callCases({"run", root.path()});
    QVERIFY2(answer.exitCode == 0, qPrintable(answer.output + answer.errors));
    QVERIFY(clock.elapsed() < 60000);
    QVERIFY(root.contentInCase(0, "coupling.txt").startsWith("serving --port=7\n"));
}

void CaseRunTest::statusOfAFreshRootIsWaiting()
{
    const CCaseRoot root(2, EndsWell);
    const SAnswer answer = callCases({"status", root.path()});
    QCOMPARE(answer.exitCode, 1);
    QCOMPARE(answer.output,
             QString("case 0: waiting\ncase 1: waiting\n"
                     "2 cases: 0 done, 0 failed, 0 running, 2 waiting, 0 interrupted\n"));
    QVERIFY(!root.hasInCase(0, "case.lock")); // looking changes nothing
}

void CaseRunTest::statusShowsARunningCase()
{
    const CCaseRoot root(1, "touch \"$log\"\nwhile [ -e \"$log\" ]; do sleep 0.05; done\n");
    QProcess run;
    run.start(TARNEL_CASES, {"run", root.path()});
    QTRY_COMPARE(root.state(0), QString("running"));
    const SAnswer answer = callCases({"status", root.path()});
    QVERIFY2(
        answer.output.startsWith("case 0: running on " + QSysInfo::machineHostName() + " since "),
        qPrintable(answer.output));
    const QString log = QFileInfo(root.simulator()).path() + "/log";
    QTRY_VERIFY(QFile::exists(log));
    QVERIFY(QFile::remove(log));
    QVERIFY(run.waitForFinished());
    QCOMPARE(run.exitCode(), 0);
    QVERIFY(callCases({"status", root.path()}).output.startsWith("case 0: done in 0:00:0"));
}

void CaseRunTest::statusOfAThousandCasesIsQuick()
{
    QTemporaryDir folder;
    QByteArray batch;
    for (int number = 0; number < 1000; ++number) {
        const QByteArray n = QByteArray::number(number);
        putFile(
            folder.path(), "Job" + n + "/case.json",
            "{\"state\":\"done\",\"start\":\"2026-01-01T00:00:00.000Z\","
            "\"end\":\"2026-01-01T00:00:01.000Z\",\"host\":\"h\",\"process\":1,\"command\":\"c\"}");
        batch += "\"orva\" -i \"Job" + n + "/heap" + n + ".zek\" -c  -r 1.000000\n";
    }
    putFile(folder.path(), "RunAllSimulations.bat", batch);
    QElapsedTimer clock;
    clock.start();
    const SAnswer answer = callCases({"status", folder.path()});
    // A twentieth of a second is what it may take on an idle machine.
    QVERIFY2(clock.elapsed() < 2000, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(answer.exitCode, 0);
    QVERIFY(answer.output.endsWith(
        "1000 cases: 1000 done, 0 failed, 0 running, 0 waiting, 0 interrupted\n"));
}

TARNEL_TEST_MAIN(CaseRunTest)
#include "case_run_test.moc"
