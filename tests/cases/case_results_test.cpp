#include "tests/cases/case_root.h"

#include "results/results_analysis_frame.h"
#include "samples/player/modal_watcher.h"
#include "tests/results/result_tree.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QJsonArray>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace {

/// Writes the CSV of the simulator's layout that a case of the sample would.
const QByteArray Exports =
    "printf 'EXTRACTED DATA\\nName,heap%s\\nTIME:,0\\nTIME,Angle,Height\\n0,1,2\\n1,%s.5,3\\n' "
    "$case $((20 + case)) >\"$folder/out.csv\"\n";

QByteArray matrix(int cases)
{
    QByteArray text = "Job ID#,A Friction,Simulator Options\n";
    for (int number = 0; number < cases; ++number) {
        text += QString("%1,0.%1, -c \n").arg(number).toUtf8();
    }
    return text;
}

} // namespace

class CaseResultsTest : public QObject
{
    Q_OBJECT

private slots:
    void collateWritesWhatTheResultsPageWrites_data();
    void collateWritesWhatTheResultsPageWrites();
    void collateNamesCasesWithoutResults();
    void collateAgainGivesTheSame();
    void collateThatCannotWriteSaysSo();
    void compareRanksWritesAndDraws();
    void compareReportsAsJson();
    void compareTellsWhichResultsThereAre();
    void compareBeforeCollateNamesTheMissingFile();
};

void CaseResultsTest::collateWritesWhatTheResultsPageWrites_data()
{
    QTest::addColumn<bool>("script");
    QTest::newRow("simulator's layout") << false;
    QTest::newRow("script's layout") << true;
}

void CaseResultsTest::collateWritesWhatTheResultsPageWrites()
{
    QFETCH(bool, script);
    const CCaseRoot root(12, Exports);
    if (script) {
        putFile(root.caseFolder(3), "s.py", "pass\n");
    }
    QCOMPARE(callCases({"run", root.path()}).exitCode, 0);
    const QString file = root.path() + "/CollatedResults.csv";
    QCOMPARE(callCases({"collate", root.path()}).exitCode, 0);
    const QByteArray ours = contentOf(file);
    QVERIFY(QFile::remove(file));

    CResultsAnalysisFrame page;
    page.findChild<QLineEdit*>("m_leDistributedFilePath")->setText(root.path());
    CModalWatcher watcher;
    QTest::mousePress(page.findChild<QPushButton*>("m_pbGenerateMasterResults"), Qt::LeftButton);
    QCOMPARE(contentOf(file), ours);
    QVERIFY(ours.contains(script ? "11,1,31.5,3,\n" : "11,Angle,1,31.5,\n"));
}

void CaseResultsTest::collateNamesCasesWithoutResults()
{
    const CCaseRoot root(4, "[ $case = 1 ] || [ $case = 2 ] || " + Exports);
    QCOMPARE(callCases({"run", root.path()}).exitCode, 0);
    const SAnswer answer = callCases({"collate", root.path()});
    QCOMPARE(answer.exitCode, 1);
    QVERIFY2(answer.output.endsWith("without results: case 1-2\n"), qPrintable(answer.output));
    const QJsonObject report = jsonOf(callCases({"collate", root.path(), "--json"}));
    QCOMPARE(report["withoutResults"].toArray(), QJsonArray({1, 2}));
    QCOMPARE(report["file"].toString(), root.path() + "/CollatedResults.csv");
}

void CaseResultsTest::collateAgainGivesTheSame()
{
    const CCaseRoot root(3, Exports);
    QCOMPARE(callCases({"run", root.path()}).exitCode, 0);
    QCOMPARE(callCases({"collate", root.path()}).exitCode, 0);
    const QByteArray first = contentOf(root.path() + "/CollatedResults.csv");
    QCOMPARE(callCases({"collate", root.path()}).exitCode, 0);
    QCOMPARE(contentOf(root.path() + "/CollatedResults.csv"), first);
}

void CaseResultsTest::collateThatCannotWriteSaysSo()
{
    const CCaseRoot root(1, Exports);
    QVERIFY(QDir(root.path()).mkdir("CollatedResults.csv"));
    const SAnswer answer = callCases({"collate", root.path()});
    QCOMPARE(answer.exitCode, 2);
    QVERIFY(answer.errors.startsWith("tarnel-cases: can't write "));
}

void CaseResultsTest::compareRanksWritesAndDraws()
{
    const CCaseRoot root(5, Exports);
    QTemporaryDir job;
    putFile(job.path(), "input_jobID-Matrix.csv", matrix(5));
    QCOMPARE(callCases({"run", root.path()}).exitCode, 0);
    QCOMPARE(callCases({"collate", root.path()}).exitCode, 0);
    const SAnswer answer =
        callCases({"compare", job.path(), root.path(), "--measured", "Angle=23.5"});
    QVERIFY2(answer.exitCode == 0, qPrintable(answer.errors));
    QCOMPARE(
        answer.output.section('\n', 0, 1),
        QString("rank  case  distance  A Friction  Angle\n1     3     0         0.3         23.5"));
    QVERIFY(contentOf(root.path() + "/Comparison.csv")
                .startsWith("case,A Friction,Angle,distance,rank\n3,0.3,23.5,0,1\n"));
    QVERIFY(QFileInfo(root.path() + "/Comparison_Angle.png").size() > 1000);
    QVERIFY(QFileInfo(root.path() + "/Comparison_Angle.svg").size() > 1000);
    // None of the new files gets into the way of the next collation.
    QCOMPARE(callCases({"collate", root.path()}).exitCode, 0);
}

void CaseResultsTest::compareReportsAsJson()
{
    const CCaseRoot root(2, "[ $case = 1 ] || " + Exports);
    QTemporaryDir job;
    putFile(job.path(), "input_jobID-Matrix.csv", matrix(2));
    QCOMPARE(callCases({"run", root.path()}).exitCode, 0);
    QCOMPARE(callCases({"collate", root.path()}).exitCode, 1);
    const SAnswer answer =
        callCases({"compare", job.path(), root.path(), "--measured", "Angle=41:2", "--json"});
    QCOMPARE(answer.exitCode, 1); // case 1 has no results
    const QJsonObject report = jsonOf(answer);
    QCOMPARE(report["withoutResults"].toArray(), QJsonArray({1}));
    const QJsonObject best = report["ranking"].toArray()[0].toObject();
    QCOMPARE(best["case"].toInt(-1), 0);
    QCOMPARE(best["distance"].toDouble(), 0.5);
    QCOMPARE(report["measured"].toArray()[0].toObject()["weight"].toDouble(), 2.0);
}

void CaseResultsTest::compareTellsWhichResultsThereAre()
{
    const CCaseRoot root(1, Exports);
    QTemporaryDir job;
    putFile(job.path(), "input_jobID-Matrix.csv", matrix(1));
    QCOMPARE(callCases({"run", root.path()}).exitCode, 0);
    QCOMPARE(callCases({"collate", root.path()}).exitCode, 0);
    const SAnswer answer = callCases({"compare", job.path(), root.path(), "--measured", "Mass=1"});
    QCOMPARE(answer.exitCode, 2);
    QCOMPARE(answer.errors,
             QString("tarnel-cases: there is no result \"Mass\"; there are: Angle, Height\n"));
}

void CaseResultsTest::compareBeforeCollateNamesTheMissingFile()
{
    const CCaseRoot root(1, Exports);
    QTemporaryDir job;
    putFile(job.path(), "input_jobID-Matrix.csv", matrix(1));
    const SAnswer answer = callCases({"compare", job.path(), root.path(), "--measured", "Mass=1"});
    QCOMPARE(answer.exitCode, 2);
    QCOMPARE(answer.errors, "tarnel-cases: there is no " + root.path() + "/CollatedResults.csv\n");
}

TARNEL_TEST_MAIN(CaseResultsTest)
#include "case_results_test.moc"
