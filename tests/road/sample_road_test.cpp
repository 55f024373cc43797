#include "platform/interpreter.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <set>

namespace {

constexpr int PatienceMs = 300000;
constexpr int Cases = 6;

struct SPlay
{
    int exitCode = -1;
    QString output;
    QString errors;
};

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList linesOf(const QString& path)
{
    return QString::fromUtf8(Native::fromTextFile(contentOf(path))).split(QLatin1Char('\n'));
}

SPlay finished(QProcess& process)
{
    SPlay play;
    if (process.waitForFinished(PatienceMs) && process.exitStatus() == QProcess::NormalExit) {
        play.exitCode = process.exitCode();
    }
    play.output = QString::fromUtf8(process.readAllStandardOutput());
    play.errors = QString::fromUtf8(process.readAllStandardError());
    return play;
}

} // namespace

/// Whole calibrations on the sample, through the window, in a process of their own.
class CSampleRoadTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void exportedResultsDifferWithTheParameters();
    void withoutAnalysisTheCombinedFileIsEmpty();
    void aPythonScriptsResultsAreCollated();
    void distributedFilesRunWhereTheyWereMoved();
    void numbersStayNeutralUnderAnotherLocale();
    void theProgramItselfStartsAndEnds();

private:
    SPlay play(const QString& road, const QStringList& environment = {});
    QString caseRoot() const { return m_work + QStringLiteral("/JobSpec/JobFileLocation"); }

    CTestEnvironment m_environment;
    QString m_work;
};

void CSampleRoadTest::init()
{
    m_work = m_environment.newFolder(QStringLiteral("a work folder"));
}

SPlay CSampleRoadTest::play(const QString& road, const QStringList& environment)
{
    QProcess process;
    process.setWorkingDirectory(m_work);
    QStringList variables = QProcess::systemEnvironment() + environment;
    process.setEnvironment(variables);
    process.start(QStringLiteral(PLAY_SAMPLE), {"--sample", QDir(SAMPLE_FOLDER).absolutePath(),
                                                "--work", m_work, "--road", road});
    return finished(process);
}

void CSampleRoadTest::exportedResultsDifferWithTheParameters()
{
    const SPlay played = play(QStringLiteral("export"));
    QVERIFY2(played.exitCode == 0, qPrintable(played.errors));
    QVERIFY(played.output.contains(QStringLiteral("CollatedResults.csv")));
    QVERIFY(played.output.contains(QStringLiteral("are unchanged")));
    std::set<QString> runOuts;
    for (const QString& line : linesOf(caseRoot() + QStringLiteral("/CollatedResults.csv"))) {
        if (line.contains(QStringLiteral("un-out"))) {
            runOuts.insert(line.section(QLatin1Char(','), 1));
        }
    }
    QCOMPARE(int(runOuts.size()), Cases);
}

void CSampleRoadTest::withoutAnalysisTheCombinedFileIsEmpty()
{
    const SPlay played = play(QStringLiteral("none"));
    QVERIFY2(played.exitCode == 0, qPrintable(played.errors));
    QVERIFY(QFile::exists(caseRoot() + QStringLiteral("/CollatedResults.csv")));
    QCOMPARE(contentOf(caseRoot() + QStringLiteral("/CollatedResults.csv")), QByteArray());
    for (int number = 0; number < Cases; ++number) {
        const QString data = QStringLiteral("%1/Job%2/column%2_data/1.h5");
        QVERIFY(QFile::exists(data.arg(caseRoot()).arg(number)));
    }
}

void CSampleRoadTest::aPythonScriptsResultsAreCollated()
{
    const SPlay played = play(QStringLiteral("python"));
    QVERIFY2(played.exitCode == 0, qPrintable(played.errors));
    const QStringList lines = linesOf(caseRoot() + QStringLiteral("/CollatedResults.csv"));
    QCOMPARE(lines.value(0), QStringLiteral("-1,ID#,"));
    QCOMPARE(lines.value(1), QString());
    QCOMPARE(lines.value(2), QStringLiteral("0,run_out,heap_height,repose_angle,settling_time,"));
    QCOMPARE(lines.filter(QRegularExpression(QStringLiteral("^[0-5],[0-9.]+,"))).size(), Cases);
}

void CSampleRoadTest::distributedFilesRunWhereTheyWereMoved()
{
    const SPlay played = play(QStringLiteral("distributed"));
    QVERIFY2(played.exitCode == 0, qPrintable(played.errors));
    const QString moved = m_environment.newFolder(QStringLiteral("moved to")) + "/cases";
    QVERIFY(QDir().rename(caseRoot(), moved));
    QProcess interpreter;
    if (platform::speaksBatch()) {
        interpreter.setWorkingDirectory(moved);
        interpreter.start(QStringLiteral("cmd.exe"), {"/C", "RunAllSimulations.bat"});
    } else {
        interpreter.start(QStringLiteral("sh"), {moved + QStringLiteral("/RunAllSimulations.sh")});
    }
    const SPlay ran = finished(interpreter);
    QVERIFY2(ran.exitCode == 0, qPrintable(ran.errors));
    for (int number = 0; number < Cases; ++number) {
        const QString results = QStringLiteral("%1/Job%2/column%2.csv").arg(moved).arg(number);
        QVERIFY2(contentOf(results).contains("EXTRACTED DATA"), qPrintable(results));
    }
}

void CSampleRoadTest::numbersStayNeutralUnderAnotherLocale()
{
    if (platform::speaksBatch()) {
        QSKIP("no variable sets the locale there");
    }
    const QString locales = m_environment.newFolder(QStringLiteral("locales"));
    QProcess maker;
    maker.start(QStringLiteral("localedef"),
                {"-i", "de_DE", "-f", "UTF-8", locales + QStringLiteral("/de_DE.UTF-8")});
    QCOMPARE(finished(maker).exitCode, 0);
    const SPlay played = play(QStringLiteral("distributed"),
                              {QStringLiteral("LOCPATH=") + locales, "LC_ALL=de_DE.UTF-8"});
    QVERIFY2(played.exitCode == 0, qPrintable(played.errors));
    const QStringList rows = linesOf(m_work + QStringLiteral("/JobSpec/input_jobID-Matrix.csv"));
    QVERIFY2(rows.value(1).startsWith(QStringLiteral("0,0.5,0.5,0.1,")), qPrintable(rows.value(1)));
    QVERIFY2(rows.value(1).contains(QStringLiteral(" -r 1.000000 -w 0.050000 ")),
             qPrintable(rows.value(1)));
}

void CSampleRoadTest::theProgramItselfStartsAndEnds()
{
    QProcess process;
    process.start(QStringLiteral(TARNEL), QStringList());
    QVERIFY(process.waitForStarted());
    QVERIFY2(!process.waitForFinished(1500), process.readAllStandardError().constData());
    // Without a display it has no window of the system's that could be asked.
    if (Native::canAskToEnd()) {
        process.terminate();
    } else {
        process.kill();
    }
    QVERIFY(process.waitForFinished());
    const QByteArray hint = "This plugin does not support propagateSizeHints()\n";
    QByteArray errors = Native::fromTextMode(process.readAllStandardError());
    QCOMPARE(errors.replace(hint, ""), QByteArray());
}

TARNEL_TEST_MAIN(CSampleRoadTest)
#include "sample_road_test.moc"
