#include "cases/batch_reader.h"

#include "app/constants/file_names.h"
#include "jobs/batch_file.h"
#include "jobs/case_commands.h"
#include "jobs/command_dialect.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

using namespace cases;

namespace {

const std::string Options = " -c  -r 1.000000 -w 0.100000";

CommandContext batchContext(std::size_t cases)
{
    return {&batchDialect(), false,    "", "C:\\my tools\\orva.exe", Options, "heap", "python", {},
            {0, {""}},       cases + 1};
}

/// What the wizard writes for these cases.
std::string batchText(const CommandContext& context)
{
    std::vector<CaseCommands> commands;
    for (std::size_t number = 0; number < context.m_recordCount; ++number) {
        commands.push_back(composeCommands(context, number));
    }
    return batchFileText(commands);
}

/// The sentence with which a text is refused; empty where it isn't.
QString refusal(const std::string& text)
{
    try {
        readBatch(text);
    } catch (const CBatchError& error) {
        return error.what();
    }
    return QString();
}

const std::string Plain = "\"orva\" -i \"Job0/heap0.zek\"" + Options;

} // namespace

class BatchReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void readsTheSimulatorWithItsOptions();
    void readsTheExport();
    void readsTheAnalysisWithAndWithoutADeck_data();
    void readsTheAnalysisWithAndWithoutADeck();
    void readsTheCouplingServer();
    void readsServerAndAnalysisTogether();
    void sortsCasesByNumber();
    void emptyTextHasNoCases();
    void keepsWhatALinesEndFromWindowsSurrounds();
    void refusesALineThatIsNotUnderstood_data();
    void refusesALineThatIsNotUnderstood();
    void refusesACaseThatComesTwice();
    void refusesAServerWithoutACase();
    void refusesAFolderWithoutABatchFile();
    void localCommandsHaveAbsolutePaths();
    void localExportUsesTheCasesOwnSettings();
    void localAnalysisRunsInTheCaseFolder();
    void simulatorOfTheLineCanBeReplaced();
};

void BatchReaderTest::readsTheSimulatorWithItsOptions()
{
    const std::vector<SBatchCase> cases = readBatch(batchText(batchContext(3)));
    QCOMPARE(cases.size(), std::size_t(3));
    for (std::size_t number = 0; number < 3; ++number) {
        QCOMPARE(cases[number].number, number);
        QCOMPARE(cases[number].executable, std::string("C:\\my tools\\orva.exe"));
        QCOMPARE(cases[number].options, Options);
        QCOMPARE(cases[number].deck, std::string("heap"));
        QCOMPARE(cases[number].postProcessing.first, 0);
        QVERIFY(cases[number].coupling.first.empty());
    }
    QCOMPARE(cases[2].folder(), std::string("Job2"));
    QCOMPARE(cases[2].stem(), std::string("heap2"));
}

void BatchReaderTest::readsTheExport()
{
    CommandContext context = batchContext(2);
    context.m_postProcessing = {1, {"a.dfg", "a.qsv"}};
    const std::vector<SBatchCase> cases = readBatch(batchText(context));
    QCOMPARE(cases.size(), std::size_t(2));
    QCOMPARE(cases[1].postProcessing.first, 1);
    QCOMPARE(cases[1].options, Options);
}

void BatchReaderTest::readsTheAnalysisWithAndWithoutADeck_data()
{
    QTest::addColumn<QString>("flag");
    QTest::addColumn<QString>("argument");
    QTest::newRow("deck") << "-d"
                          << "--rest 0.01";
    QTest::newRow("deck, no argument") << "-d"
                                       << "";
    QTest::newRow("deck, no flag") << ""
                                   << "x";
    QTest::newRow("no deck") << "PYTHON_NO_DECK_FLAG"
                             << "all of it";
    QTest::newRow("nothing") << "PYTHON_NO_DECK_FLAG"
                             << "";
    QTest::newRow("argument with a chain in it") << "-d"
                                                 << "a & ^b \"c\"";
}

void BatchReaderTest::readsTheAnalysisWithAndWithoutADeck()
{
    QFETCH(QString, flag);
    QFETCH(QString, argument);
    CommandContext context = batchContext(3);
    context.m_postProcessing = {
        2, {"/far/away/script of mine.py", flag.toStdString(), argument.toStdString()}};
    const std::vector<SBatchCase> cases = readBatch(batchText(context));
    QCOMPARE(cases.size(), std::size_t(3));
    for (const SBatchCase& batchCase : cases) {
        const std::vector<std::string> expected{"script of mine.py", flag.toStdString(),
                                                argument.toStdString()};
        QCOMPARE(batchCase.postProcessing.first, 2);
        QCOMPARE(batchCase.postProcessing.second, expected);
        QCOMPARE(batchCase.options, Options);
    }
}

void BatchReaderTest::readsTheCouplingServer()
{
    CommandContext context = batchContext(2);
    context.m_coupling = {"server one.exe", "--port 99"};
    const std::vector<SBatchCase> cases = readBatch(batchText(context));
    QCOMPARE(cases.size(), std::size_t(2));
    QCOMPARE(cases[1].coupling.first, std::string("server one.exe"));
    QCOMPARE(cases[1].coupling.second, std::string("--port 99"));
}

void BatchReaderTest::readsServerAndAnalysisTogether()
{
    CommandContext context = batchContext(2);
    context.m_coupling = {"server.exe", ""};
    context.m_postProcessing = {2, {"s.py", "-d", ""}};
    const std::vector<SBatchCase> cases = readBatch(batchText(context));
    QCOMPARE(cases.size(), std::size_t(2));
    QCOMPARE(cases[0].coupling.first, std::string("server.exe"));
    QCOMPARE(cases[0].postProcessing.second[0], std::string("s.py"));
}

void BatchReaderTest::sortsCasesByNumber()
{
    const std::string second = "\"orva\" -i \"Job10/heap10.zek\"" + Options;
    const std::vector<SBatchCase> cases = readBatch(second + "\n" + Plain + "\n");
    QCOMPARE(cases.size(), std::size_t(2));
    QCOMPARE(cases[0].number, std::size_t(0));
    QCOMPARE(cases[1].number, std::size_t(10));
}

void BatchReaderTest::emptyTextHasNoCases()
{
    QVERIFY(readBatch("").empty());
}

void BatchReaderTest::keepsWhatALinesEndFromWindowsSurrounds()
{
    CommandContext context = batchContext(2);
    context.m_coupling = {"server.exe", "x"};
    const QByteArray text = QByteArray::fromStdString(batchText(context)).replace("\n", "\r\n");
    const std::vector<SBatchCase> cases = readBatch(text.toStdString());
    QCOMPARE(cases.size(), std::size_t(2));
    QCOMPARE(cases[1].coupling.second, std::string("x"));
    QCOMPARE(cases[1].options, Options);
}

void BatchReaderTest::refusesALineThatIsNotUnderstood_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("something else") << "echo hello";
    QTest::newRow("no quotes") << "orva -i \"Job1/heap1.zek\" -c ";
    QTest::newRow("open quote") << "\"orva -i Job1";
    QTest::newRow("no deck") << "\"orva\" -i -c ";
    QTest::newRow("other folder") << "\"orva\" -i \"Case1/heap1.zek\" -c ";
    QTest::newRow("deck of another case") << "\"orva\" -i \"Job1/heap2.zek\" -c ";
    QTest::newRow("padded number") << "\"orva\" -i \"Job01/heap01.zek\" -c ";
    QTest::newRow("no number") << "\"orva\" -i \"Job/heap.zek\" -c ";
    QTest::newRow("negative") << "\"orva\" -i \"Job-1/heap-1.zek\" -c ";
    QTest::newRow("huge") << "\"orva\" -i \"Job99999999999999999999/h99999999999999999999.zek\" ";
    QTest::newRow("analysis cut off")
        << "\"orva\" -i \"Job1/heap1.zek\" -c  & cd \"Job1\" & ^conda activate & ^python \"s.py\" ";
    QTest::newRow("analysis in another folder")
        << "\"orva\" -i \"Job1/heap1.zek\" -c  & cd \"Job1\" & ^conda activate & ^python s.py -d "
           "\"heap1.zek\"  & ^conda deactivate & ^cd .. ";
    QTest::newRow("server of another case")
        << "start cmd.exe /k \"Job2\\server.exe\" x\n\r\"orva\" -i \"Job1/heap1.zek\" -c ";
    QTest::newRow("server without quotes")
        << "start cmd.exe /k server.exe\n\r\"orva\" -i \"Job1/heap1.zek\" -c ";
}

void BatchReaderTest::refusesALineThatIsNotUnderstood()
{
    QFETCH(QString, line);
    const QString sentence = refusal(Plain + "\n" + line.toStdString() + "\n");
    const int lineNumber = line.startsWith("start") ? 3 : 2;
    const QString beginning = QString("line %1 of the batch file isn't understood: ");
    QVERIFY2(sentence.startsWith(beginning.arg(lineNumber)), qPrintable(sentence));
    QVERIFY2(sentence.endsWith(line.section('\r', -1)), qPrintable(sentence));
}

void BatchReaderTest::refusesACaseThatComesTwice()
{
    QCOMPARE(refusal(Plain + "\n" + Plain + "\n"), QString("the batch file has case 0 twice"));
}

void BatchReaderTest::refusesAServerWithoutACase()
{
    QCOMPARE(refusal(Plain + "\nstart cmd.exe /k \"Job1\\server.exe\" x\n\r"),
             QString("line 3 of the batch file starts a coupling server and no case"));
}

void BatchReaderTest::refusesAFolderWithoutABatchFile()
{
    QTemporaryDir folder;
    QVERIFY_EXCEPTION_THROWN(readBatchFile(folder.path().toStdString()), CBatchError);
}

void BatchReaderTest::localCommandsHaveAbsolutePaths()
{
    CommandContext context = batchContext(1);
    context.m_coupling = {"server", "--port 1"};
    const SBatchCase batchCase = readBatch(batchText(context)).front();
    const CaseCommands commands = localCommands(batchCase, "/a b/root", "python3", "");
    QCOMPARE(commands.m_sSimulator,
             "\"C:\\my tools\\orva.exe\" -i \"/a b/root/Job0/heap0.zek\"" + Options);
    QCOMPARE(commands.m_sCoupling, std::string("'/a b/root/Job0/server' --port 1"));
    QVERIFY(commands.m_sPython.empty());
}

void BatchReaderTest::localExportUsesTheCasesOwnSettings()
{
    CommandContext context = batchContext(1);
    context.m_postProcessing = {1, {"/gone/a.dfg", "/gone/a.qsv"}};
    const SBatchCase batchCase = readBatch(batchText(context)).front();
    QCOMPARE(localCommands(batchCase, "/root", "", "").m_sSimulator,
             "\"C:\\my tools\\orva.exe\" -i \"/root/Job0/heap0.zek\"" + Options +
                 " -e \"/root/Job0/heap0.dfg\"");
}

void BatchReaderTest::localAnalysisRunsInTheCaseFolder()
{
    CommandContext context = batchContext(1);
    context.m_postProcessing = {2, {"s.py", "-d", "--all"}};
    const SBatchCase batchCase = readBatch(batchText(context)).front();
    QCOMPARE(localCommands(batchCase, "/root", "python3", "").m_sPython,
             std::string(" eval \"$(conda shell.posix hook </dev/null)\" ; cd '/root/Job0' ; "
                         "conda activate </dev/null ; python3 's.py' -d '/root/Job0/heap0.zek' "
                         "--all ; conda deactivate </dev/null ; cd .. "));
}

void BatchReaderTest::simulatorOfTheLineCanBeReplaced()
{
    const SBatchCase batchCase = readBatch(batchText(batchContext(1))).front();
    QCOMPARE(localCommands(batchCase, "/root", "", "/opt/orva").m_sSimulator,
             "\"/opt/orva\" -i \"/root/Job0/heap0.zek\"" + Options);
}

TARNEL_TEST_MAIN(BatchReaderTest)
#include "batch_reader_test.moc"
