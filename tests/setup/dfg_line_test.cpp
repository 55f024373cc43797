#include "setup/dfg_line.h"

#include <QElapsedTimer>
#include <QTest>

#include <array>
#include <random>
#include <regex>
#include <string>

namespace {

constexpr int RANDOM_LINES = 400000;

/// The patterns that the matching by hand stands for.
struct SPatterns
{
    std::regex format{R"(\A!format=KEYPATHVALUE\s*\z)"};
    std::regex formatVersion{R"(\A!format-version=([0-9]+\.[0-9]+\.[0-9]+\.[0-9]+))"};
    std::regex fileVersion{R"(\A!file-version=([0-9]+\.[0-9]+\.[0-9]+))"};
    std::regex blank{R"(\A\s*\z)"};
    std::regex data{R"((.*?[^\\]=)(.*?:)(.*))"};
    std::regex escape{R"(\\([=]))"};
};

const std::string NO_MATCH = "no match";

std::string joined(const std::string& keyPath, const std::string& type, const std::string& value)
{
    return '[' + keyPath + "][" + type + "][" + value + ']';
}

std::string fieldsByHand(const std::string& line)
{
    const auto fields = DfgLine::fields(line);
    return fields ? joined(std::string(fields->keyPath), std::string(fields->dataType),
                           std::string(fields->value))
                  : NO_MATCH;
}

std::string fieldsByPattern(const SPatterns& patterns, const std::string& line)
{
    std::smatch match;
    if (!std::regex_search(line, match, patterns.data)) {
        return NO_MATCH;
    }
    std::string keyPath = match[1].str();
    std::string type = match[2].str();
    keyPath.pop_back();
    type.pop_back();
    return joined(keyPath, type, match[3].str());
}

/// A line of up to ten pieces, most of which mean something to one of the patterns.
std::string randomLine(std::mt19937& random)
{
    static const std::array<std::string, 30> PIECES{"=",
                                                    "=",
                                                    ":",
                                                    ":",
                                                    "\\",
                                                    "\\",
                                                    "\r",
                                                    "\r",
                                                    "A",
                                                    "z",
                                                    " ",
                                                    "\t",
                                                    "\v",
                                                    "\f",
                                                    std::string(1, '\0'),
                                                    "\xff",
                                                    "\xc3\xa9",
                                                    "0",
                                                    "12",
                                                    ".",
                                                    "1.2.3",
                                                    "A!format=KEYPATHVALUE",
                                                    "A!format-version=",
                                                    "A!file-version=",
                                                    "A!file-version=1.2.",
                                                    "!format=",
                                                    "INT",
                                                    "B",
                                                    "\\=",
                                                    "1"};
    std::uniform_int_distribution<std::size_t> length(0, 10);
    std::uniform_int_distribution<std::size_t> piece(0, PIECES.size() - 1);
    std::string line;
    for (std::size_t left = length(random); left > 0; --left) {
        line += PIECES[piece(random)];
    }
    return line;
}

QByteArray shown(const std::string& line)
{
    return "line in hex: " + QByteArray::fromStdString(line).toHex(' ');
}

} // namespace

class CDfgLineTest : public QObject
{
    Q_OBJECT

private slots:
    void fieldsOfALine_data();
    void fieldsOfALine();
    void headerPatternsAskForTheLettersAAndZ();
    void aLineWithAAndZIsBlank();
    void anEscapedEqualsSignBecomesABackslashAndOne();
    void agreesWithTheRegularExpressions();
    void matchesLongLinesInNoTime();
};

void CDfgLineTest::fieldsOfALine_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("fields");

    QTest::newRow("plain") << QByteArray("P:G:TAU=DOUBLE:0.05")
                           << QByteArray("[P:G:TAU][DOUBLE][0.05]");
    QTest::newRow("value with both separators")
        << QByteArray("A=QT STRING:b:c=d") << QByteArray("[A][QT STRING][b:c=d]");
    QTest::newRow("empty value") << QByteArray("A=INT:") << QByteArray("[A][INT][]");
    QTest::newRow("empty type") << QByteArray("A=:1") << QByteArray("[A][][1]");
    QTest::newRow("nothing before the first equals sign")
        << QByteArray("=INT:1") << QByteArray("no match");
    QTest::newRow("second equals sign where the first has nothing before it")
        << QByteArray("=B=INT:1") << QByteArray("[=B][INT][1]");
    QTest::newRow("two equals signs at the start")
        << QByteArray("==INT:1") << QByteArray("[=][INT][1]");
    QTest::newRow("escaped equals sign")
        << QByteArray("A:B\\=C=INT:1") << QByteArray("[A:B\\=C][INT][1]");
    QTest::newRow("only an escaped equals sign")
        << QByteArray("A:B\\=INT:1") << QByteArray("no match");
    QTest::newRow("no colon behind the equals sign")
        << QByteArray("A:B=INT") << QByteArray("no match");
    QTest::newRow("carriage return within the value")
        << QByteArray("A=INT:1\r2") << QByteArray("[A][INT][1]");
    QTest::newRow("carriage return within the key")
        << QByteArray("A\rB=INT:1") << QByteArray("[B][INT][1]");
    QTest::newRow("carriage return before the equals sign")
        << QByteArray("A\r=INT:1") << QByteArray("[A\r][INT][1]");
    QTest::newRow("colon only behind a carriage return")
        << QByteArray("A=INT\rB=INT:1") << QByteArray("[B][INT][1]");
    QTest::newRow("empty") << QByteArray() << QByteArray("no match");
}

void CDfgLineTest::fieldsOfALine()
{
    QFETCH(QByteArray, line);
    QFETCH(QByteArray, fields);

    QCOMPARE(QByteArray::fromStdString(fieldsByHand(line.toStdString())), fields);
}

void CDfgLineTest::headerPatternsAskForTheLettersAAndZ()
{
    QVERIFY(!DfgLine::isFormat("!format=KEYPATHVALUE"));
    QVERIFY(DfgLine::isFormat("A!format=KEYPATHVALUE \tz"));
    QVERIFY(!DfgLine::isFormat("A!format=KEYPATHVALUE z "));
    QVERIFY(!DfgLine::hasFormatVersion("!format-version=1.2.3.4"));
    QVERIFY(DfgLine::hasFormatVersion("A!format-version=1.20.3.4 and more"));
    QVERIFY(!DfgLine::hasFormatVersion("A!format-version=1.2.3"));
    QVERIFY(!DfgLine::hasFileVersion("!file-version=1.2.3"));
    QVERIFY(DfgLine::hasFileVersion("A!file-version=1.A!file-version=1.2.3.4"));
}

void CDfgLineTest::aLineWithAAndZIsBlank()
{
    QVERIFY(DfgLine::isBlank("PROCESSOR:X=QT STRING:Azimuth"));
    QVERIFY(DfgLine::isBlank("A \t\v z"));
    QVERIFY(!DfgLine::isBlank(""));
    QVERIFY(!DfgLine::isBlank("   "));
    QVERIFY(!DfgLine::isBlank("A-z"));
}

void CDfgLineTest::anEscapedEqualsSignBecomesABackslashAndOne()
{
    QCOMPARE(DfgLine::withEscapesReplaced("A:B\\=C"), std::string("A:B\\1C"));
    QCOMPARE(DfgLine::withEscapesReplaced("\\\\=\\="), std::string("\\\\1\\1"));
    QCOMPARE(DfgLine::withEscapesReplaced("A=B"), std::string("A=B"));
}

void CDfgLineTest::agreesWithTheRegularExpressions()
{
    const SPatterns patterns;
    std::mt19937 random(20220316);
    int matches = 0;
    for (int i = 0; i < RANDOM_LINES; ++i) {
        const std::string line = randomLine(random);
        const std::string expected = fieldsByPattern(patterns, line);
        matches += expected != NO_MATCH ? 1 : 0;
        QVERIFY2(fieldsByHand(line) == expected, shown(line));
        QVERIFY2(DfgLine::isFormat(line) == std::regex_match(line, patterns.format), shown(line));
        QVERIFY2(DfgLine::hasFormatVersion(line) == std::regex_search(line, patterns.formatVersion),
                 shown(line));
        QVERIFY2(DfgLine::hasFileVersion(line) == std::regex_search(line, patterns.fileVersion),
                 shown(line));
        QVERIFY2(DfgLine::isBlank(line) == std::regex_search(line, patterns.blank), shown(line));
        QVERIFY2(DfgLine::withEscapesReplaced(line) ==
                     std::regex_replace(line, patterns.escape, "\\1"),
                 shown(line));
    }
    QVERIFY2(matches > RANDOM_LINES / 20, "the random lines hardly ever match");
}

void CDfgLineTest::matchesLongLinesInNoTime()
{
    const std::string longValue = "A=QT STRING:" + std::string(10000000, 'x');
    const std::string colonless(10000000, '=');
    std::string returns;
    for (int i = 0; i < 3000000; ++i) {
        returns += "=\rA";
    }

    QElapsedTimer timer;
    timer.start();
    QCOMPARE(DfgLine::fields(longValue)->value.size(), std::size_t(10000000));
    QVERIFY(!DfgLine::fields(colonless));
    QVERIFY(!DfgLine::fields(returns));
    QVERIFY(!DfgLine::isBlank(std::string(10000000, 'A')));
    QVERIFY2(timer.elapsed() < 20000, "the time grows faster than the line");
}

QTEST_APPLESS_MAIN(CDfgLineTest)

#include "dfg_line_test.moc"
