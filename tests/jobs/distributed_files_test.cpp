#include "deck/app_settings.h"
#include "platform/interpreter.h"
#include "tests/jobs/page_fixture.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

/// Distributed files as the page writes and shows them.
class DistributedFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { qputenv("PATH", m_path); }

    void barTellsOfTheOpenAndOfTheCompleteFile();
    void folderIsOpenedOnceTheFileIsComplete();
    void eachGenerationHasACaseRootOfItsOwn();
    void jobWithoutCasesMakesAnEmptyFile();
    void analysisChainsAllCasesButTheLast();
    void couplingServerStartsInFrontOfEachCase();
    void simulatorLocationWithBlanksRuns();

private:
    void generate() const;
    QByteArray batchFile(const QString& job, const char* root = "JobFileLocation") const;

    QByteArray m_path = qgetenv("PATH");
    std::unique_ptr<CPageFixture> m_fixture;
};

void DistributedFilesTest::init()
{
    m_fixture = std::make_unique<CPageFixture>();
    const QString tools = m_fixture->newFolder();
    // Tells beside itself what it was asked to open, and what the folder held by then.
    if (platform::speaksBatch()) {
        writeFile(tools + QStringLiteral("/explorer.bat"),
                  "@copy \"%*\\RunAllSimulations.bat\" \"%~dp0batch\" >NUL\r\n"
                  "@echo %*>\"%~dp0opened\"\r\n");
    } else {
        writeFile(tools + QStringLiteral("/xdg-open"),
                  "#!/bin/sh\nhere=$(dirname \"$0\")\n"
                  "cp \"$1/RunAllSimulations.bat\" \"$here/batch\"\n"
                  "printf '%s' \"$*\" > \"$here/part\"; mv \"$here/part\" \"$here/opened\"\n",
                  true);
    }
    qputenv("PATH", QDir::toNativeSeparators(tools).toLocal8Bit() +
                        QDir::listSeparator().toLatin1() + m_path);
    CAppSettings::instance()->setValue(CAppSettings::OrvaExeLocation,
                                       QStringLiteral("C:\\v\\orva"));
}

void DistributedFilesTest::generate() const
{
    m_fixture->widget<QRadioButton>("m_rbSimulationDistributed")->click();
    m_fixture->click("m_pbGenerateDistributedFiles");
}

QByteArray DistributedFilesTest::batchFile(const QString& job, const char* root) const
{
    return readFile(job + QLatin1Char('/') + QLatin1String(root) +
                    QStringLiteral("/RunAllSimulations.bat"));
}

void DistributedFilesTest::barTellsOfTheOpenAndOfTheCompleteFile()
{
    const QString job = m_fixture->loadJob(2);
    generate();
    const QString file = job + QStringLiteral("/JobFileLocation0/RunAllSimulations.bat");
    QStringList seen;
    const auto look = [&](int value) {
        const QFileInfo info(file);
        seen << QStringLiteral("%1: %2").arg(QString::number(value),
                                             info.exists() ? QString::number(info.size()) : "none");
    };
    connect(m_fixture->widget<QProgressBar>("m_distributedFileProgress"),
            &QProgressBar::valueChanged, this, look);
    generate();
    const QString size = QString::number(batchFile(job).size());
    QCOMPARE(seen, QStringList({"0: none", "50: 0", "100: " + size}));
}

void DistributedFilesTest::folderIsOpenedOnceTheFileIsComplete()
{
    const QString job = m_fixture->loadJob(2);
    const QString path = QString::fromLocal8Bit(qgetenv("PATH"));
    const QString tools = path.section(QDir::listSeparator(), 0, 0);
    generate();
    QTRY_COMPARE(QString::fromUtf8(readFile(tools + QStringLiteral("/opened"))).trimmed(),
                 QDir::toNativeSeparators(job + QStringLiteral("/JobFileLocation")));
    QVERIFY(batchFile(job).size() > 0);
    QCOMPARE(readFile(tools + QStringLiteral("/batch")), batchFile(job));
}

void DistributedFilesTest::eachGenerationHasACaseRootOfItsOwn()
{
    const QString job = m_fixture->loadJob(1);
    generate();
    generate();
    QCOMPARE(batchFile(job), QByteArray("\"C:\\v\\orva\" -i \"Job0/deck0.zek\" -c \n"));
    QCOMPARE(batchFile(job, "JobFileLocation0"), batchFile(job));
    QVERIFY(QFileInfo::exists(job + QStringLiteral("/JobFileLocation0/Job0/deck0_data/0.h5")));
}

void DistributedFilesTest::jobWithoutCasesMakesAnEmptyFile()
{
    const QString job = m_fixture->loadJob(0);
    generate();
    const QFileInfo file(job + QStringLiteral("/JobFileLocation/RunAllSimulations.bat"));
    QVERIFY(file.exists());
    QCOMPARE(file.size(), qint64(0));
}

void DistributedFilesTest::analysisChainsAllCasesButTheLast()
{
    const QString script = m_fixture->newFolder() + QStringLiteral("/s.py");
    writeFile(script, "print()");
    JobDescription description;
    description.cases = 2;
    description.pythonDetails = QStringList{script, "PYTHON_NO_DECK_FLAG", "x"};
    const QString job = m_fixture->loadJob(description);
    generate();
    const QString line =
        QStringLiteral("\"C:\\v\\orva\" -i \"Job%1/deck%1.zek\" -c  & cd \"Job%1\" & "
                       "^conda activate & ^python \"s.py\"  x & ^conda deactivate & "
                       "^cd .. ");
    QCOMPARE(QString::fromUtf8(batchFile(job)),
             line.arg(0) + QStringLiteral("& ^\n") + line.arg(1) + QStringLiteral("\n"));
}

void DistributedFilesTest::couplingServerStartsInFrontOfEachCase()
{
    JobDescription description;
    description.cases = 2;
    description.couplingFile = QStringLiteral("server.exe");
    description.couplingCommand = QStringLiteral("-p 1");
    const QString job = m_fixture->loadJob(description);
    generate();
    const QString line = QStringLiteral("start cmd.exe /k \"Job%1\\server.exe\" -p 1\n\r"
                                        "\"C:\\v\\orva\" -i \"Job%1/deck%1.zek\" -c \n");
    QCOMPARE(QString::fromUtf8(batchFile(job)), line.arg(0) + line.arg(1));
}

void DistributedFilesTest::simulatorLocationWithBlanksRuns()
{
    const QString simulator =
        m_fixture->newFolder() + QStringLiteral("/the  simulator") + Native::programSuffix();
    QVERIFY(QFile::copy(CPageFixture::simulator(), simulator));
    CAppSettings::instance()->setValue(CAppSettings::OrvaExeLocation, simulator);
    m_fixture->behave("arguments");
    const QString job = m_fixture->loadJob(2);
    generate();
    QVERIFY(batchFile(job).startsWith("\"" + simulator.toUtf8() + "\" -i \"Job0/deck0.zek\""));
    const QString root = job + QStringLiteral("/JobFileLocation/");
    QProcess interpreter;
    interpreter.setWorkingDirectory(root);
    if (platform::speaksBatch()) {
        interpreter.start("cmd.exe", {"/C", "RunAllSimulations.bat"});
    } else {
        interpreter.start(root + QStringLiteral("RunAllSimulations.sh"), QStringList());
    }
    QVERIFY(interpreter.waitForFinished());
    for (int number = 0; number < 2; ++number) {
        const QString seen =
            QString::fromUtf8(readFile(root + QStringLiteral("Job%1/arguments").arg(number)));
        QVERIFY2(seen.contains(QStringLiteral("|-i|Job%1/deck%1.zek|-c\n").arg(number)),
                 qPrintable(seen));
    }
}

TARNEL_TEST_MAIN(DistributedFilesTest)

#include "distributed_files_test.moc"
