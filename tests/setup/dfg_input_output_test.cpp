#include "setup/dfg_input_output.h"

#include "deck/app_settings.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <iostream>
#include <sstream>

namespace {

const QByteArray HEADER = "!format=KEYPATHVALUE\n!format-version=1.0.0.0\n!file-version=1.0.0\n";
const std::set<std::string> IGNORED{"CREATOR", "ANALYST", "VIEWS"};

/// What was written to the standard output while it lived.
class COutputCapture
{
public:
    COutputCapture()
        : m_previous(std::cout.rdbuf(m_text.rdbuf()))
    {
    }
    ~COutputCapture() { std::cout.rdbuf(m_previous); }
    QString text() const { return QString::fromStdString(m_text.str()); }

private:
    std::ostringstream m_text;
    std::streambuf* m_previous;
};

template <class Value>
Value valueOf(const DfgValues& values, const std::string& key)
{
    return std::any_cast<Value>(values.at(key));
}

/// The text of the exception that `action` throws, which must be an `Exception`.
template <class Exception, class Action>
QString failureOf(Action action)
{
    try {
        action();
    } catch (const Exception& failure) {
        return QString::fromLatin1(failure.what());
    }
    return QStringLiteral("no failure");
}

void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
    QCOMPARE(file.write(content), qint64(content.size()));
}

void selectDeck(const QString& path)
{
    CAppSettings::instance()->setValue(CAppSettings::ZEKPath, path);
}

const QString BOTH_ADVICES = QStringLiteral("This file is not of the correct format\n"
                                            "This file is not of the correct version format\n");

} // namespace

class CDFGInputOutputTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void dataTypesAndTheirNumbers();
    void everyDataTypeIsStoredAsItsOwnType();
    void aFileOfHeaderLinesOnlyYieldsNothingAndTwoMessages();
    void theThirdLineIsReadAsABodyLine();
    void headerLinesThatPassPrintNothing();
    void aFileThatEndsEarlyDoesNotHang_data();
    void aFileThatEndsEarlyDoesNotHang();
    void theFirstOccurrenceOfAKeyWins();
    void aLaterOccurrenceIsConvertedAllTheSame();
    void whatFollowsANumberIsIgnored();
    void onlyUpperCaseTrueIsTrue();
    void ignoredSectionsAreDroppedBeforeTheirTypeIsLookedUp();
    void anUnknownDataTypeIsAFailure();
    void valuesThatAreNoNumbersAreFailures_data();
    void valuesThatAreNoNumbersAreFailures();
    void keysBeforeAFailureStay();
    void anEscapedEqualsSignBecomesABackslashAndOne();
    void aLineThatBeginsWithAnEqualsSignDoesNotMatch();
    void aLineWithoutAColonBehindItsEqualsSignIsIgnored();
    void aLineWithAzInItCountsAsBlank();
    void bothLineEndsReadAlike();
    void aLineThatBeginsWithANulIsEmpty();
    void aSecondReadAddsOnlyNewKeys();
    void aTypeNumberWithoutConversionDropsTheLine();
    void noFileBesideTheDeckIsSilent();
    void aFolderBesideTheDeckIsSilent();
    void everyDeckExtensionInThePathIsReplaced();
    void aLargeFileIsReadInSeconds();
    void aFileThatCannotBeReadHoldsTheReader();

private:
    DfgValues read() const;
    DfgValues readBody(const QByteArray& body);

    QTemporaryDir m_folder;
    QString m_file;
};

void CDFGInputOutputTest::init()
{
    CTestEnvironment::reset();
    m_file = m_folder.filePath(QStringLiteral("deck.dfg"));
    QFile::remove(m_file);
    selectDeck(m_folder.filePath(QStringLiteral("deck.zek")));
}

DfgValues CDFGInputOutputTest::read() const
{
    DfgValues values;
    const COutputCapture output;
    CDFGInputOutput().read(values, IGNORED);
    return values;
}

DfgValues CDFGInputOutputTest::readBody(const QByteArray& body)
{
    writeFile(m_file, HEADER + body);
    return read();
}

void CDFGInputOutputTest::dataTypesAndTheirNumbers()
{
    QCOMPARE(
        s_dfgDataTypes,
        (std::map<std::string, int>{
            {"BOOLEAN", 0}, {"INT", 1}, {"UNSIGNED INT", 2}, {"DOUBLE", 3}, {"QT STRING", 17}}));
}

void CDFGInputOutputTest::everyDataTypeIsStoredAsItsOwnType()
{
    const DfgValues values = readBody("A:B=BOOLEAN:TRUE\nA:I=INT:-7\nA:U=UNSIGNED INT:4000000000\n"
                                      "A:D=DOUBLE:0.05\nA:S=QT STRING: \xc3\xa9 : = \n");
    QCOMPARE(values.size(), std::size_t(5));
    QCOMPARE(valueOf<bool>(values, "A:B"), true);
    QCOMPARE(valueOf<int>(values, "A:I"), -7);
    QCOMPARE(valueOf<unsigned long>(values, "A:U"), 4000000000UL);
    QVERIFY(valueOf<double>(values, "A:D") == 0.05);
    QCOMPARE(valueOf<QString>(values, "A:S"), QString::fromUtf8(" \xc3\xa9 : = "));
}

void CDFGInputOutputTest::aFileOfHeaderLinesOnlyYieldsNothingAndTwoMessages()
{
    writeFile(m_file, HEADER);
    DfgValues values;
    const COutputCapture output;
    CDFGInputOutput().read(values, IGNORED);
    QVERIFY(values.empty());
    QCOMPARE(output.text(), BOTH_ADVICES);
}

void CDFGInputOutputTest::theThirdLineIsReadAsABodyLine()
{
    writeFile(m_file, "!format=KEYPATHVALUE\n!format-version=1.0.0.0\nA=INT:1\nB=INT:2\n");
    QCOMPARE(valueOf<int>(read(), "A"), 1);
    QCOMPARE(valueOf<int>(read(), "B"), 2);
}

void CDFGInputOutputTest::headerLinesThatPassPrintNothing()
{
    writeFile(m_file, "A!format=KEYPATHVALUE z\r\nA!format-version=1.0.0.0\n"
                      "A!file-version=1.2.3=INT:1\nB=INT:2\n");
    DfgValues values;
    const COutputCapture output;
    CDFGInputOutput().read(values, IGNORED);
    QCOMPARE(output.text(), QString());
    QCOMPARE(values.size(), std::size_t(1));
    QCOMPARE(valueOf<int>(values, "B"), 2);
}

void CDFGInputOutputTest::aFileThatEndsEarlyDoesNotHang_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("count");

    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("one line end") << QByteArray("\n") << 0;
    QTest::newRow("one line") << QByteArray("!format=KEYPATHVALUE") << 0;
    QTest::newRow("one line and its end") << QByteArray("!format=KEYPATHVALUE\n") << 0;
    QTest::newRow("two lines") << QByteArray("A=INT:1\nA=INT:1") << 0;
    QTest::newRow("two lines and their ends") << QByteArray("A=INT:1\r\nA=INT:1\r\n") << 0;
    QTest::newRow("three lines") << QByteArray("A=INT:1\nA=INT:1\nA=INT:1") << 1;
    QTest::newRow("three lines and their ends") << QByteArray("A=INT:1\nA=INT:1\nA=INT:1\n") << 1;
}

void CDFGInputOutputTest::aFileThatEndsEarlyDoesNotHang()
{
    QFETCH(QByteArray, content);
    QFETCH(int, count);

    writeFile(m_file, content);
    DfgValues values;
    const COutputCapture output;
    CDFGInputOutput().read(values, IGNORED);
    QCOMPARE(int(values.size()), count);
    QCOMPARE(output.text(), BOTH_ADVICES);
}

void CDFGInputOutputTest::theFirstOccurrenceOfAKeyWins()
{
    const DfgValues values = readBody("PROCESSOR:X=DOUBLE:1\nPROCESSOR:X=DOUBLE:2\n");
    QVERIFY(valueOf<double>(values, "PROCESSOR:X") == 1.0);
}

void CDFGInputOutputTest::aLaterOccurrenceIsConvertedAllTheSame()
{
    QCOMPARE(failureOf<std::invalid_argument>(
                 [this] { readBody("PROCESSOR:X=DOUBLE:1\nPROCESSOR:X=DOUBLE:none\n"); }),
             QStringLiteral("invalid stod argument"));
}

void CDFGInputOutputTest::whatFollowsANumberIsIgnored()
{
    const DfgValues values = readBody("A=DOUBLE:0.5abc\nB=INT: 12.9\nC=UNSIGNED INT:3 4\n");
    QVERIFY(valueOf<double>(values, "A") == 0.5);
    QCOMPARE(valueOf<int>(values, "B"), 12);
    QCOMPARE(valueOf<unsigned long>(values, "C"), 3UL);
}

void CDFGInputOutputTest::onlyUpperCaseTrueIsTrue()
{
    const DfgValues values =
        readBody("A=BOOLEAN:TRUE\nB=BOOLEAN:true\nC=BOOLEAN:TRUE \nD=BOOLEAN:1\nE=BOOLEAN:\n");
    QCOMPARE(valueOf<bool>(values, "A"), true);
    for (const char* key : {"B", "C", "D", "E"}) {
        QVERIFY2(!valueOf<bool>(values, key), key);
    }
}

void CDFGInputOutputTest::ignoredSectionsAreDroppedBeforeTheirTypeIsLookedUp()
{
    const DfgValues values = readBody("VIEWS:SOMETHING=STRANGE TYPE:1\nCREATOR=STRANGE TYPE:1\n"
                                      "PROCESSOR:VIEWS:Y=STRANGE TYPE:1\nA:ANALYST=INT:none\n"
                                      "VIEWSX:Y=INT:1\n");
    QCOMPARE(values.size(), std::size_t(1));
    QCOMPARE(valueOf<int>(values, "VIEWSX:Y"), 1);
}

void CDFGInputOutputTest::anUnknownDataTypeIsAFailure()
{
    QCOMPARE(failureOf<std::out_of_range>([this] { readBody("PROCESSOR:Y=STRANGE TYPE:1\n"); }),
             QStringLiteral("invalid map<K, T> key"));
}

void CDFGInputOutputTest::valuesThatAreNoNumbersAreFailures_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("argumentFailure");
    QTest::addColumn<QString>("rangeFailure");

    const auto invalid = [](const char* name, const char* line, const char* text) {
        QTest::newRow(name) << QByteArray(line) << QString::fromLatin1(text) << QString();
    };
    const auto outOfRange = [](const char* name, const char* line, const char* text) {
        QTest::newRow(name) << QByteArray(line) << QString() << QString::fromLatin1(text);
    };
    invalid("empty double", "PROCESSOR:X=DOUBLE:", "invalid stod argument");
    invalid("word as double", "PROCESSOR:X=DOUBLE:x1", "invalid stod argument");
    invalid("word as int", "PROCESSOR:X=INT:one", "invalid stoi argument");
    invalid("word as unsigned int", "PROCESSOR:X=UNSIGNED INT:one", "invalid stoul argument");
    outOfRange("large int", "PROCESSOR:X=INT:2147483648", "stoi argument out of range");
    outOfRange("large unsigned int", "PROCESSOR:X=UNSIGNED INT:4294967296",
               "stoul argument out of range");
    outOfRange("large double", "PROCESSOR:X=DOUBLE:1e400", "stod argument out of range");
}

void CDFGInputOutputTest::valuesThatAreNoNumbersAreFailures()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, argumentFailure);
    QFETCH(QString, rangeFailure);

    const auto reading = [this, &line] { readBody(line + '\n'); };
    if (!argumentFailure.isEmpty()) {
        QCOMPARE(failureOf<std::invalid_argument>(reading), argumentFailure);
    } else {
        QCOMPARE(failureOf<std::out_of_range>(reading), rangeFailure);
    }
}

void CDFGInputOutputTest::keysBeforeAFailureStay()
{
    writeFile(m_file, HEADER + "A=INT:1\nB=INT:none\nC=INT:3\n");
    DfgValues values;
    const COutputCapture output;
    QVERIFY_EXCEPTION_THROWN(CDFGInputOutput().read(values, IGNORED), std::invalid_argument);
    QCOMPARE(values.size(), std::size_t(1));
    QCOMPARE(valueOf<int>(values, "A"), 1);
}

void CDFGInputOutputTest::anEscapedEqualsSignBecomesABackslashAndOne()
{
    QCOMPARE(valueOf<int>(readBody("A:B\\=C=INT:1\n"), "A:B\\1C"), 1);
}

void CDFGInputOutputTest::aLineThatBeginsWithAnEqualsSignDoesNotMatch()
{
    QVERIFY(readBody("=INT:1\n").empty());
    QCOMPARE(valueOf<int>(readBody("=A=INT:1\n"), "=A"), 1);
}

void CDFGInputOutputTest::aLineWithoutAColonBehindItsEqualsSignIsIgnored()
{
    QVERIFY(readBody("A:B=INT 1\nno separators\n\n   \n").empty());
}

void CDFGInputOutputTest::aLineWithAzInItCountsAsBlank()
{
    const DfgValues values = readBody("A=QT STRING:Azimuth\nB=QT STRING:A z\nC=QT STRING:zenith\n");
    QCOMPARE(values.size(), std::size_t(1));
    QCOMPARE(valueOf<QString>(values, "C"), QStringLiteral("zenith"));
}

void CDFGInputOutputTest::bothLineEndsReadAlike()
{
    const QByteArray content = HEADER + "A=BOOLEAN:TRUE\nB=QT STRING:text\nC=BOOLEAN:TRUE";
    for (QByteArray lines : {content, QByteArray(content).replace("\n", "\r\n") + '\r'}) {
        writeFile(m_file, lines);
        const DfgValues values = read();
        QCOMPARE(values.size(), std::size_t(3));
        QCOMPARE(valueOf<bool>(values, "A"), true);
        QCOMPARE(valueOf<QString>(values, "B"), QStringLiteral("text"));
        QCOMPARE(valueOf<bool>(values, "C"), true);
    }
}

void CDFGInputOutputTest::aLineThatBeginsWithANulIsEmpty()
{
    const QByteArray nul(1, '\0');
    const DfgValues values = readBody(nul + "A=INT:1\nB" + nul + "=INT:2\n");
    QCOMPARE(values.size(), std::size_t(1));
    QCOMPARE(valueOf<int>(values, std::string("B\0", 2)), 2);
}

void CDFGInputOutputTest::aSecondReadAddsOnlyNewKeys()
{
    DfgValues values = readBody("A=INT:1\n");
    writeFile(m_file, HEADER + "A=INT:5\nB=INT:2\n");
    const COutputCapture output;
    CDFGInputOutput().read(values, IGNORED);
    QCOMPARE(values.size(), std::size_t(2));
    QCOMPARE(valueOf<int>(values, "A"), 1);
    QCOMPARE(valueOf<int>(values, "B"), 2);
}

void CDFGInputOutputTest::aTypeNumberWithoutConversionDropsTheLine()
{
    writeFile(m_file, HEADER + "A=DATE:1\nB=INT:2\n");
    const std::map<std::string, int> usual = s_dfgDataTypes;
    s_dfgDataTypes["DATE"] = 4;
    DfgValues values;
    const COutputCapture output;
    CDFGInputOutput().read(values, IGNORED);
    s_dfgDataTypes = usual;
    QCOMPARE(output.text(), BOTH_ADVICES + "Missing data type expected in dfg file\n");
    QCOMPARE(values.size(), std::size_t(1));
    QCOMPARE(valueOf<int>(values, "B"), 2);
}

void CDFGInputOutputTest::noFileBesideTheDeckIsSilent()
{
    DfgValues values{{"A", 1}};
    const COutputCapture output;
    CDFGInputOutput().read(values, IGNORED);
    selectDeck(QString());
    CDFGInputOutput().read(values, IGNORED);
    QCOMPARE(output.text(), QString());
    QCOMPARE(values.size(), std::size_t(1));
}

void CDFGInputOutputTest::aFolderBesideTheDeckIsSilent()
{
    selectDeck(m_folder.filePath(QStringLiteral("folder.zek")));
    QVERIFY(QDir().mkpath(m_folder.filePath(QStringLiteral("folder.dfg"))));
    DfgValues values;
    const COutputCapture output;
    CDFGInputOutput().read(values, IGNORED);
    QCOMPARE(output.text(), QString());
    QVERIFY(values.empty());
}

void CDFGInputOutputTest::everyDeckExtensionInThePathIsReplaced()
{
    QVERIFY(QDir().mkpath(m_folder.filePath(QStringLiteral("a.dfg.x"))));
    QVERIFY(QDir().mkpath(m_folder.filePath(QStringLiteral("a.zek.x"))));
    writeFile(m_folder.filePath(QStringLiteral("a.dfg.x/\u00e9.dfg")), HEADER + "A=INT:1\n");
    writeFile(m_folder.filePath(QStringLiteral("a.zek.x/\u00e9.dfg")), HEADER + "A=INT:2\n");
    selectDeck(m_folder.filePath(QStringLiteral("a.zek.x/\u00e9.zek")));
    QCOMPARE(valueOf<int>(read(), "A"), 1);
}

void CDFGInputOutputTest::aLargeFileIsReadInSeconds()
{
    QByteArray body;
    body.reserve(105000000);
    for (int line = 0; body.size() < 100000000; ++line) {
        body += "PROCESSOR:SECTION:KEY " + QByteArray::number(line % 1000) +
                "=QT STRING:" + QByteArray(60, 'v') + '\n';
    }
    writeFile(m_file, HEADER + body);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(read().size(), std::size_t(1000));
    qInfo("read 100 MB in %lld ms", timer.elapsed());
    QVERIFY(timer.elapsed() < 60000);
    QFile::remove(m_file);
}

void CDFGInputOutputTest::aFileThatCannotBeReadHoldsTheReader()
{
    const QString file = m_folder.filePath(QStringLiteral("held.dfg"));
    const CUnreadableFile unreadable(file);
    if (!QFileInfo(file).isFile()) {
        QSKIP("this platform has no regular file that can't be read");
    }
    QProcess reader;
    reader.start(QCoreApplication::applicationFilePath(),
                 {QStringLiteral("--read"), m_folder.filePath(QStringLiteral("held.zek"))});
    QVERIFY(reader.waitForStarted());
    QString output;
    while (output.count(QLatin1Char('\n')) < 2 && reader.waitForReadyRead(20000)) {
        output += QString::fromLatin1(Native::fromTextMode(reader.readAllStandardOutput()));
    }
    QCOMPARE(output, BOTH_ADVICES);
    QVERIFY(!reader.waitForFinished(1000));
    QCOMPARE(reader.state(), QProcess::Running);
    reader.kill();
    QVERIFY(reader.waitForFinished(20000));
}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    CTestEnvironment environment;
    const QStringList arguments = application.arguments();
    if (arguments.size() == 3 && arguments.at(1) == QStringLiteral("--read")) {
        selectDeck(arguments.at(2));
        DfgValues values;
        CDFGInputOutput().read(values, IGNORED);
        return 0;
    }
    CDFGInputOutputTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "dfg_input_output_test.moc"
