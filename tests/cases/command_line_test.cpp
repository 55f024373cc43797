#include "tests/cases/case_root.h"

#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

class CommandLineTest : public QObject
{
    Q_OBJECT

private slots:
    void helpOfEachCommand_data();
    void helpOfEachCommand();
    void mistakesEndWithOneSentence_data();
    void mistakesEndWithOneSentence();
};

void CommandLineTest::helpOfEachCommand_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("expected");
    QTest::newRow("status") << "status"
                            << "--json";
    QTest::newRow("run") << "run"
                         << "--only <which>";
    QTest::newRow("submit") << "submit"
                            << "--sbatch <options>";
    QTest::newRow("cancel") << "cancel"
                            << "--json";
    QTest::newRow("collate") << "collate"
                             << "--json";
    QTest::newRow("compare") << "compare"
                             << "--measured <name=value[:weight]>";
}

void CommandLineTest::helpOfEachCommand()
{
    QFETCH(QString, command);
    QFETCH(QString, expected);
    const SAnswer answer = callCases({command, "--help"});
    QCOMPARE(answer.exitCode, 0);
    QVERIFY(answer.output.startsWith("Usage: tarnel-cases " + command + " [options] "));
    QVERIFY2(answer.output.contains(expected), qPrintable(answer.output));
    QVERIFY(callCases({"--help"}).output.contains("  " + command + " "));
}

void CommandLineTest::mistakesEndWithOneSentence_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("nothing") << QStringList() << "no command is given; see tarnel-cases --help";
    QTest::newRow("command") << QStringList{"walk"}
                             << "there is no command \"walk\"; see tarnel-cases --help";
    QTest::newRow("no root") << QStringList{"run"} << "run needs CASE-ROOT, and nothing else";
    QTest::newRow("too much") << QStringList{"status", "a", "b"}
                              << "status needs CASE-ROOT, and nothing else";
    QTest::newRow("one folder") << QStringList{"compare", "a"}
                                << "compare needs JOB-FOLDER and CASE-ROOT, and nothing else";
    QTest::newRow("no folder") << QStringList{"status", "/no/such"}
                               << "there is no folder /no/such";
    QTest::newRow("option") << QStringList{"status", "/", "--colour"} << "Unknown option 'colour'.";
    QTest::newRow("no batch file") << QStringList{"status", "%ROOT%/Job0"}
                                   << "there is no %ROOT%/Job0/RunAllSimulations.bat; the folder "
                                      "was not made by \"Generate Distributed "
                                      "Files\"";
    QTest::newRow("nothing measured") << QStringList{"compare", "/", "/"}
                                      << "nothing is measured: give --measured NAME=VALUE[:WEIGHT]";
    QTest::newRow("at a time") << QStringList{"run", "%ROOT%", "-j", "0"}
                               << "\"0\" is no number of cases at a time";
    QTest::newRow("only")
        << QStringList{"run", "%ROOT%", "--only", "some"}
        << "\"some\" names no cases: use missing, failed, all or a list as 0,3,5-9";
    QTest::newRow("unknown case") << QStringList{"run", "%ROOT%", "--only", "5"}
                                  << "there is no case 5 in the batch file";
    QTest::newRow("simulator") << QStringList{"run", "%ROOT%", "--simulator", "/no/orva"}
                               << "there is no simulator /no/orva";
}

void CommandLineTest::mistakesEndWithOneSentence()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, sentence);
    const CCaseRoot root(1, "touch \"$log\"\n");
    const SAnswer answer = callCases(arguments.replaceInStrings("%ROOT%", root.path()));
    QCOMPARE(answer.exitCode, 2);
    QCOMPARE(answer.errors, "tarnel-cases: " + sentence.replace("%ROOT%", root.path()) + "\n");
    QVERIFY(answer.output.isEmpty());
    QVERIFY(root.log().isEmpty());
}

TARNEL_TEST_MAIN(CommandLineTest)
#include "command_line_test.moc"
