#include "tests/jobs/analysis_run_rules.h"

#include "tests/support/native.h"

#include <QFileInfo>
#include <QPushButton>
#include <QTest>

JobDescription CAnalysisRunRules::pythonJob(CPageFixture& fixture, int cases)
{
    const QString script = fixture.newFolder() + QStringLiteral("/the script.py");
    writeFile(script, "# a script");
    JobDescription description;
    description.cases = cases;
    description.pythonDetails =
        QStringList{script, QStringLiteral("--deck"), QStringLiteral("x y")};
    return description;
}

QByteArray CAnalysisRunRules::ofCase(const QString& job, int caseNumber, const char* name)
{
    return Native::fromTextMode(caseFile(job, "JobFileLocation", caseNumber, name));
}

void CAnalysisRunRules::analysesACancelledCase()
{
    CPageFixture fixture;
    fixture.behave("started;hang");
    setPath(toolFolder(fixture, true, true));
    const QString job = fixture.loadJob(pythonJob(fixture, 1));
    fixture.when([&] { return !ofCase(job, 0, "started").isEmpty(); },
                 [&] { fixture.click("m_pbCancelSimulating"); });
    QVERIFY(fixture.run());
    QTRY_VERIFY(!ofCase(job, 0, "analysis.txt").isEmpty());
    QVERIFY(fixture.hasFailed(0));
}

void CAnalysisRunRules::refusesToRunWithoutPython()
{
    CPageFixture fixture;
    const QString job = fixture.loadJob(pythonJob(fixture, 1));
    qputenv("PATH", toolFolder(fixture, false, true).toLocal8Bit());
    QVERIFY(fixture.run());
    QCOMPARE(fixture.modals().texts(),
             QStringList(QStringLiteral(
                 "To perform Python analysis, the python executable's directory is required to be "
                 "on the PATH environment variable")));
    const SShownMessage& message = fixture.modals().messages().front();
    QCOMPARE(message.title, QStringLiteral("Warning"));
    QCOMPARE(message.icon, QMessageBox::Warning);
    QVERIFY(!message.hasParent);
    QVERIFY(!QFileInfo::exists(job + QStringLiteral("/JobFileLocation")));
}

void CAnalysisRunRules::refusesToRunWithoutConda()
{
    CPageFixture fixture;
    const QString job = fixture.loadJob(pythonJob(fixture, 1));
    qputenv("PATH", toolFolder(fixture, true, false).toLocal8Bit());
    QVERIFY(fixture.run());
    QCOMPARE(fixture.modals().texts(),
             QStringList(QStringLiteral(
                 "To perform Python analysis, the Anaconda 'conda' executable's directory is "
                 "required to be on the PATH environment variable")));
    QVERIFY(fixture.isWaiting(0));
    QVERIFY(fixture.widget<QPushButton>("m_pbStartSimulating")->isVisible());
    QVERIFY(!QFileInfo::exists(job + QStringLiteral("/JobFileLocation")));
}

void CAnalysisRunRules::refusesToRunWithoutBothNamingPythonAlone()
{
    CPageFixture fixture;
    fixture.loadJob(pythonJob(fixture, 1));
    qputenv("PATH", fixture.newFolder().toLocal8Bit());
    QVERIFY(fixture.run());
    QCOMPARE(fixture.modals().texts().size(), 1);
    QVERIFY(fixture.modals().texts().front().contains(QStringLiteral("the python executable's")));
}

void CAnalysisRunRules::looksForNoToolsWithNoConcurrentSimulations()
{
    CPageFixture fixture;
    fixture.loadJob(pythonJob(fixture, 1));
    qputenv("PATH", fixture.newFolder().toLocal8Bit());
    QVERIFY(fixture.run(0));
    QCOMPARE(fixture.modals().texts(), QStringList());
    QVERIFY(fixture.isWaiting(0));
}
