#include "jobs/case_commands.h"

#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "jobs/command_dialect.h"
#include "platform/interpreter.h"
#include "tests/jobs/job_fixture.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QtTest>

namespace {

QString text(const std::string& command)
{
    return QString::fromStdString(command)
        .replace("\"" + Native::drive() + "/j", "\"/j")
        .replace("'" + Native::drive() + "/j", "'/j");
}

/// An absolute path; `text` takes the drive away again.
std::string onDrive(const char* path)
{
    return Native::drive().toStdString() + path;
}

CaseCommands distributed(std::size_t number)
{
    return composeCommands(distributedContext(batchDialect()), number);
}

CaseCommands local(std::size_t number)
{
    return composeCommands(localContext(onDrive("/j/JobFileLocation"), "python3"), number);
}

/// A local context that speaks the given language, whatever the platform.
CaseCommands localIn(const CommandDialect& dialect, std::size_t number)
{
    CommandContext context = localContext(onDrive("/j/JobFileLocation"), "python");
    context.m_dialect = &dialect;
    return composeCommands(context, number);
}

void setPostProcessing(int mode, const std::vector<std::string>& arguments)
{
    CDeckStore::instance()->setPostProcessing({mode, arguments});
}

} // namespace

class CaseCommandsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void simulatorCommandOfALocalRunIsAbsolute();
    void simulatorCommandOfARelativeJobIsAbsolute();
    void simulatorCommandOfDistributedFilesIsRelative();
    void optionsStandAsTheyAreStored();
    void exportArgumentOfALocalRunIsTheJobsCopy();
    void exportArgumentOfDistributedFilesIsTheCasesCopy();
    void otherModesHaveNoExportArgument();
    void withoutCouplingFileThereIsNoCouplingCommand();
    void couplingCommandOfDistributedFilesHasABackslash();
    void couplingCommandOfALocalRunFitsThePlatform();
    void otherModesHaveNoPythonCommand();
    void distributedPythonCommandChainsToTheNextCase();
    void lastDistributedPythonCommandEndsInABlank();
    void surplusCommandChainsAgain();
    void noDeckFlagLeavesTwoBlanks();
    void deckReferenceOfALocalRunIsAbsolute();
    void localPythonCommandInTheShell();
    void scriptIsNamedWithoutItsFolder();
    void tooFewPythonArgumentsAreOutOfRange_data();
    void tooFewPythonArgumentsAreOutOfRange();
    void shellDialectQuotesWhatTheShellWouldRead();

private:
    std::unique_ptr<CJobFixture> m_fixture;
};

void CaseCommandsTest::init()
{
    m_fixture = std::make_unique<CJobFixture>();
    CAppSettings::instance()->setValue(CAppSettings::OrvaExeLocation, "C:\\v v\\orva.exe");
    CDeckStore* store = CDeckStore::instance();
    store->setSimulatorOptions(" -c  -r 1.000000");
    store->creatorData() = {CCreatorData("a"), CCreatorData("a1"), CCreatorData("a2")};
}

void CaseCommandsTest::simulatorCommandOfALocalRunIsAbsolute()
{
    QCOMPARE(text(local(1).m_sSimulator),
             QStringLiteral("\"C:\\v v\\orva.exe\" -i \"/j/JobFileLocation/Job1/a1.zek\" -c  -r "
                            "1.000000"));
}

void CaseCommandsTest::simulatorCommandOfARelativeJobIsAbsolute()
{
    setPostProcessing(1, {"j/bed.dfg", "j/bed.qsv"});
    const CaseCommands commands = composeCommands(localContext("j/JobFileLocation", "python3"), 1);
    const QString here = QDir::currentPath();
    QVERIFY2(text(commands.m_sSimulator)
                 .contains(QStringLiteral(" -i \"%1/Job1/a1.zek\"")
                               .arg(QDir::toNativeSeparators(here + "/j/JobFileLocation"))),
             commands.m_sSimulator.c_str());
    const QString settings = QDir::toNativeSeparators(here + "/j/bed.dfg");
    QVERIFY2(text(commands.m_sSimulator).endsWith(QStringLiteral(" -e \"%1\"").arg(settings)),
             commands.m_sSimulator.c_str());
}

void CaseCommandsTest::simulatorCommandOfDistributedFilesIsRelative()
{
    QCOMPARE(text(distributed(0).m_sSimulator),
             QStringLiteral("\"C:\\v v\\orva.exe\" -i \"Job0/a0.zek\" -c  -r 1.000000"));
}

void CaseCommandsTest::optionsStandAsTheyAreStored()
{
    const std::string options = " -c   -D  -R  -n \"x\" & ";
    CDeckStore::instance()->setSimulatorOptions(options);
    QVERIFY(text(distributed(0).m_sSimulator).endsWith(text(options)));
    QVERIFY(text(local(0).m_sSimulator).endsWith(text(options)));
}

void CaseCommandsTest::exportArgumentOfALocalRunIsTheJobsCopy()
{
    setPostProcessing(1, {onDrive("/j/a.dfg"), onDrive("/j/a.qsv")});
    QVERIFY(text(local(0).m_sSimulator).endsWith(" -c  -r 1.000000 -e \"/j/a.dfg\""));
}

void CaseCommandsTest::exportArgumentOfDistributedFilesIsTheCasesCopy()
{
    setPostProcessing(1, {"/j/a.dfg", "/j/a.qsv"});
    QVERIFY(text(distributed(1).m_sSimulator).endsWith(" -r 1.000000 -e \"Job1/a1.dfg\""));
}

void CaseCommandsTest::otherModesHaveNoExportArgument()
{
    setPostProcessing(2, {"s.py", "-d", "x"});
    QVERIFY(!text(local(0).m_sSimulator).contains(" -e "));
    setPostProcessing(0, {""});
    QVERIFY(!text(distributed(0).m_sSimulator).contains(" -e "));
}

void CaseCommandsTest::withoutCouplingFileThereIsNoCouplingCommand()
{
    CDeckStore::instance()->setCoupling({"", "-p 1"});
    QCOMPARE(distributed(0).m_sCoupling, std::string());
    QCOMPARE(local(0).m_sCoupling, std::string());
}

void CaseCommandsTest::couplingCommandOfDistributedFilesHasABackslash()
{
    CDeckStore::instance()->setCoupling({"server.exe", "-p 1"});
    QCOMPARE(text(distributed(1).m_sCoupling), QStringLiteral("\"Job1\\server.exe\" -p 1"));
}

void CaseCommandsTest::couplingCommandOfALocalRunFitsThePlatform()
{
    CDeckStore::instance()->setCoupling({"server", "-p 1"});
    const QString expected = platform::speaksBatch()
                                 ? QStringLiteral("\"/j/JobFileLocation/Job1\\server\" -p 1")
                                 : QStringLiteral("'/j/JobFileLocation/Job1/server' -p 1");
    QCOMPARE(text(local(1).m_sCoupling), expected);
}

void CaseCommandsTest::otherModesHaveNoPythonCommand()
{
    QCOMPARE(local(0).m_sPython, std::string());
    setPostProcessing(1, {"/j/a.dfg", "/j/a.qsv"});
    QCOMPARE(distributed(0).m_sPython, std::string());
}

void CaseCommandsTest::distributedPythonCommandChainsToTheNextCase()
{
    setPostProcessing(2, {"/src/s.py", "-d", "x"});
    QCOMPARE(text(distributed(0).m_sPython),
             QStringLiteral(" & cd \"Job0\" & ^conda activate & ^python \"s.py\" -d \"a0.zek\" x & "
                            "^conda deactivate & ^cd .. & ^"));
}

void CaseCommandsTest::lastDistributedPythonCommandEndsInABlank()
{
    setPostProcessing(2, {"/src/s.py", "-d", "x"});
    QCOMPARE(text(distributed(1).m_sPython),
             QStringLiteral(" & cd \"Job1\" & ^conda activate & ^python \"s.py\" -d \"a1.zek\" x & "
                            "^conda deactivate & ^cd .. "));
}

void CaseCommandsTest::surplusCommandChainsAgain()
{
    setPostProcessing(2, {"/src/s.py", "-d", "x"});
    QVERIFY(text(distributed(2).m_sPython).endsWith("cd .. & ^"));
}

void CaseCommandsTest::noDeckFlagLeavesTwoBlanks()
{
    setPostProcessing(2, {"/src/s.py", "PYTHON_NO_DECK_FLAG", "x"});
    QVERIFY(text(distributed(0).m_sPython).contains("python \"s.py\"  x & ^conda"));
    QVERIFY(text(localIn(batchDialect(), 0).m_sPython).contains("python \"s.py\"  x & ^conda"));
}

void CaseCommandsTest::deckReferenceOfALocalRunIsAbsolute()
{
    setPostProcessing(2, {"/src/s.py", "-d", "x"});
    QCOMPARE(
        text(localIn(batchDialect(), 0).m_sPython),
        QStringLiteral(" cd \"/j/JobFileLocation/Job0\" & ^conda activate & ^python \"s.py\" "
                       "-d \"/j/JobFileLocation/Job0/a0.zek\" x & ^conda deactivate & ^cd .. "));
}

void CaseCommandsTest::localPythonCommandInTheShell()
{
    setPostProcessing(2, {"/src/it's.py", "-d", "x"});
    CommandContext context = localContext(onDrive("/j/JobFileLocation"), "python3");
    context.m_dialect = &shellDialect();
    QCOMPARE(text(composeCommands(context, 0).m_sPython),
             QStringLiteral(" eval \"$(conda shell.posix hook </dev/null)\" ; "
                            "cd '/j/JobFileLocation/Job0' ; conda activate </dev/null ; "
                            "python3 'it'\\''s.py' -d '/j/JobFileLocation/Job0/a0.zek' x ; "
                            "conda deactivate </dev/null ; cd .. "));
}

void CaseCommandsTest::scriptIsNamedWithoutItsFolder()
{
    setPostProcessing(2, {"/some where/deep/s.py", "-d", "x"});
    QVERIFY(text(distributed(0).m_sPython).contains("python \"s.py\" -d"));
}

void CaseCommandsTest::tooFewPythonArgumentsAreOutOfRange_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("none") << 0;
    QTest::newRow("one") << 1;
    QTest::newRow("two") << 2;
}

void CaseCommandsTest::tooFewPythonArgumentsAreOutOfRange()
{
    QFETCH(int, count);
    setPostProcessing(2, std::vector<std::string>(static_cast<std::size_t>(count), "s.py"));
    try {
        distributed(0);
        QFAIL("nothing was thrown");
    } catch (const std::out_of_range& error) {
        QCOMPARE(error.what(), "invalid vector subscript");
    }
}

void CaseCommandsTest::shellDialectQuotesWhatTheShellWouldRead()
{
    CDeckStore::instance()->setSimulatorOptions(" -c  -r 1.000000 -D 0;1 -n $HOME --x \"a b\" ");
    QCOMPARE(text(composeCommands(distributedContext(shellDialect()), 0).m_sSimulator),
             QStringLiteral("'C:\\v v\\orva.exe' -i 'Job0/a0.zek' -c -r 1.000000 -D '0;1' -n "
                            "'$HOME' --x 'a b'"));
}

TARNEL_TEST_MAIN(CaseCommandsTest)
#include "case_commands_test.moc"
