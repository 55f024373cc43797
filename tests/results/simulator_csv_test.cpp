#include "results/simulator_csv.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

class CSimulatorCsvTest : public QObject
{
    Q_OBJECT

private slots:
    void turnsTheTable();
    void aTextWithoutTheExtractMarkHasNoRows();
    void theExtractMarkMustBeTheWholeFirstCell();
    void aRepeatedExtractMarkIsConsumed();
    void aTimeRowAfterTheTableReturnsToRowMode();
    void aSecondTimeHeadingAppendsToTheSameColumns();
    void aShortTableLineLeavesLaterColumnsShorter();
    void cellsBeyondTheColumnsAreDroppedAndCounted();
    void emptyLinesAreSkipped();
    void emptyCellsAreKept();
    void linesFromWindowsReadAlike();
    void aTableWithoutHeadingStaysRows();
};

namespace {

/// The rows of the CSV, cells between bars, one line per row.
QByteArray rowsOf(const char* text)
{
    QByteArray shown;
    for (const ResultRow& row : readSimulatorCsv(text).rows) {
        for (const std::string_view cell : row) {
            shown += QByteArray(cell.data(), static_cast<int>(cell.size())) + '|';
        }
        shown += '\n';
    }
    return shown;
}

} // namespace

void CSimulatorCsvTest::turnsTheTable()
{
    QCOMPARE(rowsOf("exported results\nEXTRACTED DATA\nName,Mass\nTIME:,0\nTIME,a,b\n0,1,2\n"
                    "1,3,4\n"),
             QByteArray("Name|Mass|\nTIME:|0|\nTIME|0|1|\na|1|3|\nb|2|4|\n"));
}

void CSimulatorCsvTest::aTextWithoutTheExtractMarkHasNoRows()
{
    QCOMPARE(rowsOf("Name,Mass\nTIME:,0\nTIME,a\n0,1\n"), QByteArray());
    QCOMPARE(rowsOf(""), QByteArray());
}

void CSimulatorCsvTest::theExtractMarkMustBeTheWholeFirstCell()
{
    QCOMPARE(rowsOf("x,EXTRACTED DATA\nEXTRACTED DATA \nextracted data\na\n"), QByteArray());
    QCOMPARE(rowsOf("EXTRACTED DATA,and more\na\n"), QByteArray("a|\n"));
}

void CSimulatorCsvTest::aRepeatedExtractMarkIsConsumed()
{
    QCOMPARE(rowsOf("EXTRACTED DATA\nTIME,a\n0,1\nEXTRACTED DATA\n1,2\n"),
             QByteArray("TIME|0|1|\na|1|2|\n"));
}

void CSimulatorCsvTest::aTimeRowAfterTheTableReturnsToRowMode()
{
    QCOMPARE(rowsOf("EXTRACTED DATA\nTIME,a\n0,1\nTIME:,5\nlast,row\n"),
             QByteArray("TIME:|5|\nlast|row|\nTIME|0|\na|1|\n"));
}

void CSimulatorCsvTest::aSecondTimeHeadingAppendsToTheSameColumns()
{
    QCOMPARE(rowsOf("EXTRACTED DATA\nTIME,a\n0,1\nTIME:,5\nTIME,b\n2,3\n"),
             QByteArray("TIME:|5|\nTIME|0|TIME|2|\na|1|b|3|\n"));
    QCOMPARE(rowsOf("EXTRACTED DATA\nTIME,a\n0,1\nTIME,b,c\n2,3,4\n"),
             QByteArray("TIME|0|TIME|2|\na|1|b|3|\n"));
}

void CSimulatorCsvTest::aShortTableLineLeavesLaterColumnsShorter()
{
    QCOMPARE(rowsOf("EXTRACTED DATA\nTIME,a,b\n0\n1,2,3\n"), QByteArray("TIME|0|1|\na|2|\nb|3|\n"));
}

void CSimulatorCsvTest::cellsBeyondTheColumnsAreDroppedAndCounted()
{
    const char* text = "EXTRACTED DATA\nTIME,a\n0,1,extra,more\n1,2,x\n";
    QCOMPARE(rowsOf(text), QByteArray("TIME|0|1|\na|1|2|\n"));
    QCOMPARE(readSimulatorCsv(text).droppedCells, std::size_t(3));
}

void CSimulatorCsvTest::emptyLinesAreSkipped()
{
    QCOMPARE(rowsOf("EXTRACTED DATA\n\nName\n\nTIME,a\n\n0,1\n\n"),
             QByteArray("Name|\nTIME|0|\na|1|\n"));
}

void CSimulatorCsvTest::emptyCellsAreKept()
{
    QCOMPARE(rowsOf("EXTRACTED DATA\n,x,\nTIME,a,\n,,\n"), QByteArray("|x||\nTIME||\na||\n||\n"));
}

void CSimulatorCsvTest::linesFromWindowsReadAlike()
{
    QCOMPARE(rowsOf("EXTRACTED DATA\r\nName\r\n\r\nTIME,a\r\n0,1\r\n"),
             QByteArray("Name|\nTIME|0|\na|1|\n"));
}

void CSimulatorCsvTest::aTableWithoutHeadingStaysRows()
{
    QCOMPARE(rowsOf("EXTRACTED DATA\n0,1\nTIMES,2"), QByteArray("0|1|\nTIMES|2|\n"));
}

TARNEL_TEST_MAIN(CSimulatorCsvTest)
#include "simulator_csv_test.moc"
