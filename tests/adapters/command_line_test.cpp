#include "adapters/liggghts/command_line.h"

#include "adapters/liggghts/adapter_error.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

using namespace liggghts;

namespace {

SCommandLine parsed(const QString& line)
{
    std::vector<std::string> words;
    for (const QString& word : line.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        words.push_back(word.toStdString());
    }
    return parseCommandLine(words);
}

} // namespace

class CommandLineTest : public QObject
{
    Q_OBJECT

private slots:
    void aWholeCommandOfTheSimulatorIsTaken();
    void whatTheEngineHasNoUseForIsNamed();
    void theDeviceMayStandAlone();
    void aBadOneIsRefused_data();
    void aBadOneIsRefused();
    void filesStandBesideTheDeck();
};

void CommandLineTest::aWholeCommandOfTheSimulatorIsTaken()
{
    const SCommandLine line = parsed(" -i a/heap3.zek -c  -r 2.500000 -w 0.050000 -g 2.500000 "
                                     "-t 0.000020 -p 2 -E 0 -R  --compress-data 1 -e x.dfg");
    QCOMPARE(line.deck.string(), std::string("a/heap3.zek"));
    QCOMPARE(line.exportSettings.string(), std::string("x.dfg"));
    QCOMPARE(line.totalTime, 2.5);
    QCOMPARE(line.saveInterval, 0.05);
    QCOMPARE(line.timeStep, 2e-5);
    QCOMPARE(line.processors, 2U);
    QVERIFY(line.rewind);
    QVERIFY(line.compress);
}

void CommandLineTest::whatTheEngineHasNoUseForIsNamed()
{
    const SCommandLine line = parsed("-i a.zek -c -n 100 --dyn 1 --gpu-split X --wait");
    QCOMPARE(line.withoutEffect,
             (std::vector<std::string>{"-c", "-n", "--dyn", "--gpu-split", "--wait"}));
    QVERIFY(!line.rewind);
    QVERIFY(!line.compress);
    QCOMPARE(line.timeStep, 0.0);
}

void CommandLineTest::theDeviceMayStandAlone()
{
    QCOMPARE(parsed("-i a.zek -D -R").withoutEffect, (std::vector<std::string>{"-D"}));
    QVERIFY(parsed("-i a.zek -D 0 1 -R").rewind);
}

void CommandLineTest::aBadOneIsRefused_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("no deck") << "-r 1"
                             << "No deck was given: name a .zek file behind -i.";
    QTest::newRow("another file") << "-i a.txt"
                                  << "No deck was given: name a .zek file behind -i.";
    QTest::newRow("unknown") << "-i a.zek -q"
                             << "The option \"-q\" is not known.";
    QTest::newRow("no value") << "-i a.zek -r -w 1"
                              << "The option -r needs a value.";
    QTest::newRow("no value at the end") << "-i a.zek -r"
                                         << "The option -r needs a value.";
    QTest::newRow("no number") << "-i a.zek -r 1s"
                               << "The value \"1s\" of -r is not a number from 0.";
    QTest::newRow("below 0") << "-i a.zek -w -1"
                             << "The value \"-1\" of -w is not a number from 0.";
    QTest::newRow("no time") << "-i a.zek -r 0"
                             << "The total time behind -r must be above 0.";
    QTest::newRow("half a processor")
        << "-i a.zek -p 0.5"
        << "The value 0.5 of -p is not a whole number from 1 to 1024.";
    QTest::newRow("too many saves")
        << "-i a.zek -r 2 -w 0.0001"
        << "The save interval behind -w asks for more than 10000 time steps.";
}

void CommandLineTest::aBadOneIsRefused()
{
    QFETCH(QString, line);
    QFETCH(QString, sentence);
    try {
        parsed(line);
        QFAIL("It was taken.");
    } catch (const CAdapterError& error) {
        QCOMPARE(QString(error.what()), sentence);
        QCOMPARE(error.cause(), CAdapterError::BadCommandLine);
    }
}

void CommandLineTest::filesStandBesideTheDeck()
{
    QCOMPARE(besideDeck("a b/heap3.zek", ".csv").string(), std::string("a b/heap3.csv"));
    QCOMPARE(dataFolderOf("heap3.zek").string(), std::string("heap3_data"));
}

TARNEL_TEST_MAIN(CommandLineTest)
#include "command_line_test.moc"
