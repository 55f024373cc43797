#include "cases/cluster.h"

#include "cases/report.h"
#include "tests/cases/case_root.h"
#include "tests/results/result_tree.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

using namespace cases;

namespace {

SSubmission submissionOf(const std::vector<std::size_t>& numbers, std::size_t atATime)
{
    return {"/data/my root", numbers, atATime, {"--time=10"}, ""};
}

QStringList arraysOf(const std::vector<QStringList>& commands)
{
    QStringList arrays;
    for (const QStringList& command : commands) {
        arrays << command.filter("--array=").first().mid(8) + " from " + command.last();
    }
    return arrays;
}

} // namespace

/// What of the cluster needs none.
class ClusterTest : public QObject
{
    Q_OBJECT

private slots:
    void oneArrayWhereItFits();
    void blocksOfTheArraySize();
    void limitHoldsOverAllBlocks();
    void scriptKeepsBlanksAndQuotes();
    void statusLineShowsTheTask();
    void withoutSlurmSubmitSaysSo();
    void withoutSlurmStatusWorks();
};

void ClusterTest::oneArrayWhereItFits()
{
    const auto commands = submissionCommands(submissionOf({0, 1, 2, 7}, 0), 1001);
    QCOMPARE(arraysOf(commands), QStringList({"0-2,7 from 0"}));
    QCOMPARE(commands[0],
             QStringList({"--parsable", "--job-name=my root",
                          "--output=/data/my root/tarnel-cases/task_%A_%a.txt", "--array=0-2,7",
                          "--time=10", "/data/my root/tarnel-cases/task.sh", "0"}));
}

void ClusterTest::blocksOfTheArraySize()
{
    const auto commands = submissionCommands(submissionOf({3, 4, 5, 9, 10, 23}, 0), 5);
    QCOMPARE(arraysOf(commands),
             QStringList({"3-4 from 0", "0,4 from 5", "0 from 10", "3 from 20"}));
    QVERIFY(commands[1].filter("--dependency").isEmpty());
}

void ClusterTest::limitHoldsOverAllBlocks()
{
    const auto commands = submissionCommands(submissionOf({1, 6}, 4), 5);
    QCOMPARE(arraysOf(commands), QStringList({"1%4 from 0", "1%4 from 5"}));
    QVERIFY(commands[0].filter("--dependency").isEmpty());
    QCOMPARE(commands[1].filter("--dependency"), QStringList({"--dependency=afterany:%PREVIOUS%"}));
}

void ClusterTest::scriptKeepsBlanksAndQuotes()
{
    SSubmission submission = submissionOf({0}, 0);
    submission.caseRoot = "/it's a root";
    submission.simulator = "/my orva";
    const QString script = QString::fromStdString(taskScript(submission));
    QVERIFY(script.startsWith("#!/bin/sh\n"));
    QVERIFY2(script.endsWith(" run '/it'\\''s a root' -j 1 --only \"$((SLURM_ARRAY_TASK_ID + "
                             "$1))\" --simulator '/my orva'\n"),
             qPrintable(script));
}

void ClusterTest::statusLineShowsTheTask()
{
    const STaskState waiting{"7_3", "PENDING", "", "Priority"};
    const STaskState running{"7_3", "RUNNING", "node1", "None"};
    QCOMPARE(statusLine(3, SCaseNote(), &waiting),
             std::string("case 3: waiting (Slurm 7_3: PENDING, Priority)"));
    QCOMPARE(statusLine(3, SCaseNote(), &running),
             std::string("case 3: waiting (Slurm 7_3: RUNNING, on node1)"));
    QCOMPARE(statusLine(3, SCaseNote(), nullptr), std::string("case 3: waiting"));
}

void ClusterTest::withoutSlurmSubmitSaysSo()
{
    const CCaseRoot root(1, "true\n");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PATH", "/nowhere");
    const SAnswer answer = callCases({"submit", root.path()}, environment);
    QCOMPARE(answer.exitCode, 2);
    QCOMPARE(answer.errors, QString("tarnel-cases: there is no Slurm on this machine: scontrol "
                                    "can't be started\n"));
}

void ClusterTest::withoutSlurmStatusWorks()
{
    const CCaseRoot root(1, "true\n");
    putFile(root.path(), "tarnel-cases/arrays.json",
            "[{\"id\":\"12\",\"first\":0,\"tasks\":\"0\"}]");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PATH", "/nowhere");
    const SAnswer answer = callCases({"status", root.path()}, environment);
    QCOMPARE(answer.exitCode, 1);
    QVERIFY(answer.output.startsWith("case 0: waiting\n"));
}

TARNEL_TEST_MAIN(ClusterTest)
#include "cluster_test.moc"
