#include "jobs/batch_file.h"

#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "jobs/case_commands.h"
#include "jobs/command_dialect.h"
#include "platform/interpreter.h"
#include "tests/jobs/job_fixture.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QProcess>
#include <QtTest>

namespace fs = std::filesystem;

namespace {

void setExecutable(const std::string& path)
{
    CAppSettings::instance()->setValue(CAppSettings::OrvaExeLocation, QString::fromStdString(path));
}

void makeExecutable(const std::string& path)
{
    fs::permissions(path, fs::perms::owner_exec, fs::perm_options::add);
}

std::vector<CaseCommands> batchCommands()
{
    const CommandContext context = distributedContext(batchDialect());
    std::vector<CaseCommands> commands;
    for (std::size_t number = 0; number < context.m_recordCount; ++number) {
        commands.push_back(composeCommands(context, number));
    }
    return commands;
}

} // namespace

class BatchFileTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void withoutAnalysisEveryLineStandsAlone();
    void pythonCasesFormASingleChain();
    void couplingStartsInAnInterpreterOfItsOwn();
    void simulatorLocationWithBlanksIsQuoted();
    void jobWithoutCasesMakesAnEmptyFile();
    void noCommandsMakeAnEmptyFile();
    void unwritableFileIsPassedOver();

    void shellScriptStandsBesideTheBatchFile();
    void shellScriptRunsTheCasesInOrderWhereverItStands();
    void shellScriptRunsTheAnalysisInTheCaseFolder();
    void shellScriptEndsTheCouplingServerWithItsCase();

private:
    /// A case root with folders for two cases, to run its script from elsewhere.
    std::string caseRoot() const;
    std::string stubSimulator() const;
    QString runScript(const std::string& root, const std::string& path = {}) const;

    std::unique_ptr<CJobFixture> m_fixture;
};

void BatchFileTest::init()
{
    m_fixture = std::make_unique<CJobFixture>();
    setExecutable("C:\\v\\orva.exe");
    CDeckStore* store = CDeckStore::instance();
    store->setSimulatorOptions(" -c  -r 1.000000");
    store->creatorData() = {CCreatorData("a"), CCreatorData("a1"), CCreatorData("a2")};
}

std::string BatchFileTest::caseRoot() const
{
    m_fixture->folder("case root/Job0");
    m_fixture->folder("case root/Job1");
    return m_fixture->path("case root");
}

std::string BatchFileTest::stubSimulator() const
{
    m_fixture->folder("bin dir");
    const std::string path = m_fixture->writeFile(
        "bin dir/orva", "#!/bin/sh\necho \"simulated $* in $(basename \"$PWD\")\"\nexit 3\n");
    makeExecutable(path);
    return path;
}

QString BatchFileTest::runScript(const std::string& root, const std::string& path) const
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!path.empty()) {
        environment.insert("PATH", QString::fromStdString(path) + ":" + environment.value("PATH"));
    }
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory("/");
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QString::fromStdString(root + "/RunAllSimulations.sh"), QStringList());
    process.waitForFinished(30000);
    return QString::fromUtf8(process.readAll());
}

void BatchFileTest::withoutAnalysisEveryLineStandsAlone()
{
    QCOMPARE(QString::fromStdString(batchFileText(batchCommands())),
             QStringLiteral("\"C:\\v\\orva.exe\" -i \"Job0/a0.zek\" -c  -r 1.000000\n"
                            "\"C:\\v\\orva.exe\" -i \"Job1/a1.zek\" -c  -r 1.000000\n"));
}

void BatchFileTest::pythonCasesFormASingleChain()
{
    CDeckStore::instance()->setPostProcessing({2, {"/src/s.py", "-d", "x"}});
    QCOMPARE(QString::fromStdString(batchFileText(batchCommands())),
             QStringLiteral(
                 "\"C:\\v\\orva.exe\" -i \"Job0/a0.zek\" -c  -r 1.000000 & cd \"Job0\" & ^conda "
                 "activate & ^python \"s.py\" -d \"a0.zek\" x & ^conda deactivate & ^cd .. & ^\n"
                 "\"C:\\v\\orva.exe\" -i \"Job1/a1.zek\" -c  -r 1.000000 & cd \"Job1\" & ^conda "
                 "activate & ^python \"s.py\" -d \"a1.zek\" x & ^conda deactivate & ^cd .. \n"));
}

void BatchFileTest::couplingStartsInAnInterpreterOfItsOwn()
{
    CDeckStore::instance()->setCoupling({"server.exe", "-p 1"});
    QCOMPARE(QString::fromStdString(batchFileText(batchCommands())),
             QStringLiteral("start cmd.exe /k \"Job0\\server.exe\" -p 1\n\r"
                            "\"C:\\v\\orva.exe\" -i \"Job0/a0.zek\" -c  -r 1.000000\n"
                            "start cmd.exe /k \"Job1\\server.exe\" -p 1\n\r"
                            "\"C:\\v\\orva.exe\" -i \"Job1/a1.zek\" -c  -r 1.000000\n"));
}

void BatchFileTest::simulatorLocationWithBlanksIsQuoted()
{
    setExecutable("C:\\Program Files\\v 1\\orva.exe");
    CDeckStore::instance()->creatorData().pop_back();
    QCOMPARE(
        batchFileText(batchCommands()),
        std::string("\"C:\\Program Files\\v 1\\orva.exe\" -i \"Job0/a0.zek\" -c  -r 1.000000\n"));
}

void BatchFileTest::jobWithoutCasesMakesAnEmptyFile()
{
    CDeckStore::instance()->creatorData().resize(1);
    const std::string root = caseRoot();
    CBatchFiles(root).write(batchCommands());
    QVERIFY(fs::exists(root + "/RunAllSimulations.bat"));
    QCOMPARE(contentOf(root + "/RunAllSimulations.bat"), std::string());
}

void BatchFileTest::noCommandsMakeAnEmptyFile()
{
    QCOMPARE(batchFileText({}), std::string());
}

void BatchFileTest::unwritableFileIsPassedOver()
{
    const std::string missing = m_fixture->path("missing");
    CBatchFiles(missing).write(batchCommands());
    QVERIFY(!fs::exists(missing));
}

void BatchFileTest::shellScriptStandsBesideTheBatchFile()
{
    const std::string root = caseRoot();
    CBatchFiles(root).write(batchCommands());
    QCOMPARE(contentOf(root + "/RunAllSimulations.bat"), batchFileText(batchCommands()));
    const std::string script = root + "/RunAllSimulations.sh";
    QCOMPARE(fs::exists(script), !platform::speaksBatch());
    if (fs::exists(script)) {
        QCOMPARE(contentOf(script), shellScriptText(distributedContext(shellDialect())));
        QVERIFY((fs::status(script).permissions() & fs::perms::owner_exec) != fs::perms::none);
    }
}

void BatchFileTest::shellScriptRunsTheCasesInOrderWhereverItStands()
{
    if (platform::speaksBatch()) {
        QSKIP("the script is for the shell of other systems");
    }
    setExecutable(stubSimulator());
    CDeckStore::instance()->setPostProcessing({1, {"/j/a.dfg", "/j/a.qsv"}});
    const std::string root = caseRoot();
    CBatchFiles(root).write(batchCommands());
    const std::string moved = m_fixture->path("it's moved");
    fs::rename(root, moved);
    QCOMPARE(runScript(moved),
             QStringLiteral("simulated -i Job0/a0.zek -c -r 1.000000 -e Job0/a0.dfg in it's moved\n"
                            "simulated -i Job1/a1.zek -c -r 1.000000 -e Job1/a1.dfg in it's "
                            "moved\n"));
}

void BatchFileTest::shellScriptRunsTheAnalysisInTheCaseFolder()
{
    if (platform::speaksBatch()) {
        QSKIP("the script is for the shell of other systems");
    }
    setExecutable(stubSimulator());
    const std::string bin = m_fixture->path("bin dir");
    makeExecutable(m_fixture->writeFile("bin dir/conda",
                                        "#!/bin/sh\necho \"conda() { echo \\\"conda \\$* in "
                                        "\\$(basename \\\"\\$PWD\\\")\\\"; }\"\n"));
    makeExecutable(m_fixture->writeFile("bin dir/python",
                                        "#!/bin/sh\necho \"python $* in $(basename \"$PWD\")\"\n"));
    CDeckStore::instance()->setPostProcessing({2, {"/src/s.py", "-d", "x y"}});
    const std::string root = caseRoot();
    CBatchFiles(root).write(batchCommands());
    const QString expected =
        QStringLiteral("simulated -i Job%1/a%1.zek -c -r 1.000000 in case root\n"
                       "conda activate in Job%1\n"
                       "python s.py -d a%1.zek x y in Job%1\n"
                       "conda deactivate in Job%1\n");
    QCOMPARE(runScript(root, bin), expected.arg(0) + expected.arg(1));
}

void BatchFileTest::shellScriptEndsTheCouplingServerWithItsCase()
{
    if (platform::speaksBatch()) {
        QSKIP("the script is for the shell of other systems");
    }
    // Both give up after a while, so that nothing is left behind if the script fails.
    const std::string simulator = m_fixture->writeFile(
        "orva", "#!/bin/sh\nfor round in $(seq 100); do\n"
                "if test -e ready; then rm ready; echo simulated; exit; fi\nsleep 0.05\ndone\n");
    const std::string server = "#!/bin/sh\necho \"serving $0 $*\"\ntrap 'echo ended; exit' TERM\n"
                               ": > ready\nfor round in $(seq 200); do sleep 0.05; done\n";
    makeExecutable(simulator);
    setExecutable(simulator);
    CDeckStore::instance()->setCoupling({"server", "-p 1"});
    const std::string root = caseRoot();
    makeExecutable(m_fixture->writeFile("case root/Job0/server", server));
    makeExecutable(m_fixture->writeFile("case root/Job1/server", server));
    CBatchFiles(root).write(batchCommands());
    const QStringList lines = runScript(root).split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.filter("serving").join(';'),
             QStringLiteral("serving Job0/server -p 1;serving Job1/server -p 1"));
    QCOMPARE(lines.count("simulated"), 2);
    QCOMPARE(lines.count("ended"), 2);
}

TARNEL_TEST_MAIN(BatchFileTest)
#include "batch_file_test.moc"
