#include "tests/samples/sample_case.h"

#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QtTest>

class CouplingSampleTest : public QObject
{
    Q_OBJECT

private slots:
    void endsByItselfAfterItsTime();
    void endsWhenToldToStop();
    void runsFromACopyElsewhere();
};

void CouplingSampleTest::endsByItselfAfterItsTime()
{
    QElapsedTimer timer;
    timer.start();
    const SProgramEnd end =
        SampleCase::run(QStringLiteral(COUPLING_SAMPLE), {"0.3"}, QDir::tempPath());
    QCOMPARE(end.exitCode, 0);
    QVERIFY(timer.elapsed() >= 300);
    QVERIFY(end.output.startsWith("Coupling sample: waiting"));
    QVERIFY(end.output.contains("waited long enough"));
}

void CouplingSampleTest::endsWhenToldToStop()
{
    if (!Native::canAskToEnd()) {
        QSKIP("a program without a window can't be asked to end there");
    }
    QProcess server;
    server.start(QStringLiteral(COUPLING_SAMPLE), {"60"});
    QVERIFY(server.waitForReadyRead(10000));
    server.terminate();
    QVERIFY(server.waitForFinished(10000));
    QCOMPARE(server.exitStatus(), QProcess::NormalExit);
    QCOMPARE(server.exitCode(), 0);
    QVERIFY(server.readAllStandardOutput().contains("told to stop"));
}

void CouplingSampleTest::runsFromACopyElsewhere()
{
    QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("server copy") + Native::programSuffix());
    QVERIFY(QFile::copy(QStringLiteral(COUPLING_SAMPLE), copy));
    QCOMPARE(SampleCase::run(copy, {"0"}, folder.path()).exitCode, 0);
}

TARNEL_TEST_MAIN(CouplingSampleTest)
#include "coupling_sample_test.moc"
