#include "platform/text_lines.h"

#include "tests/support/job_maker.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>

#include <fstream>

class TextLinesTest : public QObject
{
    Q_OBJECT

private slots:
    void oneReturnBeforeALineFeedIsDropped_data();
    void oneReturnBeforeALineFeedIsDropped();
    void textEndsWhereTextModeEndsIt_data();
    void textEndsWhereTextModeEndsIt();
    void missingFileHasNoLines();
    void partsKeepEmptyOnes_data();
    void partsKeepEmptyOnes();
};

namespace {

QStringList asList(const std::vector<std::string>& texts)
{
    QStringList list;
    for (const std::string& text : texts) {
        list << QString::fromStdString(text);
    }
    return list;
}

QStringList takenLines(const QByteArray& content)
{
    std::vector<std::string> taken;
    std::string_view rest(content.constData(), static_cast<std::size_t>(content.size()));
    for (std::string_view line; platform::takeLine(rest, line);) {
        taken.emplace_back(line);
    }
    return asList(taken);
}

/// What the library's own text mode reads.
QStringList textModeLines(const QString& path)
{
    std::ifstream stream(path.toStdString());
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return asList(lines);
}

} // namespace

void TextLinesTest::oneReturnBeforeALineFeedIsDropped_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("empty") << QByteArray() << QStringList();
    QTest::newRow("LF") << QByteArray("a\nb\n") << QStringList({"a", "b"});
    QTest::newRow("CR LF") << QByteArray("a\r\nb\r\n") << QStringList({"a", "b"});
    QTest::newRow("two CR") << QByteArray("a\r\r\n") << QStringList({"a\r"});
    QTest::newRow("CR within") << QByteArray("a\rb\n") << QStringList({"a\rb"});
    QTest::newRow("no last LF") << QByteArray("a\nb") << QStringList({"a", "b"});
    QTest::newRow("CR at the end") << QByteArray("a\r") << QStringList({"a\r"});
    QTest::newRow("empty lines") << QByteArray("\n\r\na") << QStringList({"", "", "a"});
}

void TextLinesTest::oneReturnBeforeALineFeedIsDropped()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, lines);
    const QTemporaryDir folder;
    writeFile(folder.filePath("text"), content);
    QCOMPARE(asList(platform::readLines(folder.filePath("text").toStdString())), lines);
    QCOMPARE(takenLines(content), lines);
}

void TextLinesTest::textEndsWhereTextModeEndsIt_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no Ctrl-Z") << QByteArray("a\nb\n");
    QTest::newRow("within a line") << QByteArray("a\nb\x1a,c\nd\n");
    QTest::newRow("a line of its own") << QByteArray("a\n\n\x1a\nb\n");
    QTest::newRow("at the end") << QByteArray("a\nb\n\x1a");
    QTest::newRow("alone") << QByteArray("\x1a");
}

void TextLinesTest::textEndsWhereTextModeEndsIt()
{
    QFETCH(QByteArray, content);
    const QTemporaryDir folder;
    const QString path = folder.filePath("text");
    writeFile(path, content);
    QCOMPARE(asList(platform::readLines(path.toStdString())), textModeLines(path));
    QCOMPARE(takenLines(content), textModeLines(path));
}

void TextLinesTest::missingFileHasNoLines()
{
    const QTemporaryDir folder;
    QVERIFY(platform::readLines(folder.filePath("missing").toStdString()).empty());
}

void TextLinesTest::partsKeepEmptyOnes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("parts");
    QTest::newRow("empty") << "" << QStringList({""});
    QTest::newRow("one") << "a b" << QStringList({"a b"});
    QTest::newRow("empty parts") << ";a;;b;" << QStringList({"", "a", "", "b", ""});
}

void TextLinesTest::partsKeepEmptyOnes()
{
    QFETCH(QString, text);
    QFETCH(QStringList, parts);
    QCOMPARE(asList(platform::splitAt(text.toStdString(), ';')), parts);
}

TARNEL_TEST_MAIN(TextLinesTest)
#include "text_lines_test.moc"
