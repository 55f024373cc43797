#include "app/constants/icons.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QMovie>
#include <QResource>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>

class CIconsTest : public QObject
{
    Q_OBJECT

private slots:
    void theSetHoldsExactlyTheTwentyOneFiles();
    void stillImagesArePngsOfTheirSize_data();
    void stillImagesArePngsOfTheirSize();
    void animationsPlaySmoothlyForEver_data();
    void animationsPlaySmoothlyForEver();
    void theFramesOfAnAnimationDiffer();
    void theAnimationOfARunningCaseIsTheLargeOne();
    void theWindowIconIsStoredCompressed();
    void theWindowIconOffersFourSizes();
    void everyIconHasBothSizes_data();
    void everyIconHasBothSizes();
    void theSmallSimulatorIconIsScaledFromTheLargeOne();
    void theSimulatorIconLivesOnItsLargeImageAlone();
    void aMissingImageIsNoMessage();
};

namespace {

const QStringList stillStems = {QStringLiteral("Open_File"),     QStringLiteral("Creator"),
                                QStringLiteral("Analyst"),       QStringLiteral("Simulator"),
                                QStringLiteral("Checkmark"),     QStringLiteral("Results"),
                                QStringLiteral("PreSim"),        QStringLiteral("PostSimSuccess"),
                                QStringLiteral("PostSimFailure")};

QStringList allNames()
{
    QStringList names = {QStringLiteral("MainWindowIcon")};
    for (const QString& stem : stillStems + QStringList{QStringLiteral("PeriSim")}) {
        names << stem + QStringLiteral("_16") << stem + QStringLiteral("_32");
    }
    names.sort();
    return names;
}

QString pathOf(const QString& name)
{
    return QStringLiteral(":/Tarnel/") + name;
}

int s_messages = 0;

void countMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/,
                  const QString& /*message*/)
{
    ++s_messages;
}

QImage argb(const QPixmap& pixmap)
{
    return pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
}

} // namespace

void CIconsTest::theSetHoldsExactlyTheTwentyOneFiles()
{
    QStringList names = QDir(QStringLiteral(":/Tarnel")).entryList(QDir::Files);
    names.sort();
    QCOMPARE(names.size(), 21);
    QCOMPARE(names, allNames());
}

void CIconsTest::stillImagesArePngsOfTheirSize_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("side");
    for (const QString& stem : stillStems) {
        for (const int side : {16, 32}) {
            const QString name = QStringLiteral("%1_%2").arg(stem).arg(side);
            QTest::newRow(qPrintable(name)) << name << side;
        }
    }
}

void CIconsTest::stillImagesArePngsOfTheirSize()
{
    QFETCH(QString, name);
    QFETCH(int, side);
    QImageReader reader(pathOf(name));
    QCOMPARE(reader.format(), QByteArray("png"));
    const QImage image = reader.read();
    QCOMPARE(image.size(), QSize(side, side));
    QVERIFY(image.hasAlphaChannel());
    QCOMPARE(qAlpha(image.pixel(0, side - 1)), 0);
}

void CIconsTest::animationsPlaySmoothlyForEver_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("side");
    QTest::newRow("16 pixels") << "PeriSim_16" << 16;
    QTest::newRow("32 pixels") << "PeriSim_32" << 32;
}

void CIconsTest::animationsPlaySmoothlyForEver()
{
    QFETCH(QString, name);
    QFETCH(int, side);
    QMovie movie(pathOf(name));
    QVERIFY(movie.isValid());
    QCOMPARE(QImageReader(pathOf(name)).format(), QByteArray("gif"));
    QVERIFY(movie.frameCount() >= 12);
    QCOMPARE(movie.loopCount(), -1);
    QSignalSpy frames(&movie, &QMovie::frameChanged);
    movie.start();
    QCOMPARE(movie.currentPixmap().size(), QSize(side, side));
    QVERIFY(movie.nextFrameDelay() <= 100);
    QTRY_VERIFY(frames.count() > movie.frameCount());
}

void CIconsTest::theFramesOfAnAnimationDiffer()
{
    QMovie movie(Icons::PeriSimPath);
    QVERIFY(movie.jumpToFrame(0));
    const QImage first = movie.currentImage();
    QVERIFY(movie.jumpToFrame(1));
    QVERIFY(first != movie.currentImage());
    QCOMPARE(qAlpha(movie.currentImage().pixel(0, 0)), 0);
}

void CIconsTest::theAnimationOfARunningCaseIsTheLargeOne()
{
    QCOMPARE(Icons::PeriSimPath, QStringLiteral(":/Tarnel/PeriSim_32"));
}

void CIconsTest::theWindowIconIsStoredCompressed()
{
    const QResource resource(pathOf(QStringLiteral("MainWindowIcon")));
    QVERIFY(resource.isValid());
    QCOMPARE(resource.compressionAlgorithm(), QResource::ZlibCompression);
    QVERIFY(resource.size() < resource.uncompressedSize());
}

void CIconsTest::theWindowIconOffersFourSizes()
{
    QList<int> sides;
    for (const QSize& size : Icons::MainWindow.availableSizes(QIcon::Normal, QIcon::Off)) {
        QCOMPARE(size.width(), size.height());
        if (!sides.contains(size.width())) {
            sides << size.width();
        }
    }
    std::sort(sides.begin(), sides.end());
    QCOMPARE(sides, QList<int>({16, 32, 48, 256}));
    for (const int side : qAsConst(sides)) {
        QCOMPARE(Icons::MainWindow.pixmap(side, side).size(), QSize(side, side));
    }
}

void CIconsTest::everyIconHasBothSizes_data()
{
    QTest::addColumn<QIcon>("icon");
    QTest::newRow("OpenFile") << Icons::OpenFile;
    QTest::newRow("Creator") << Icons::Creator;
    QTest::newRow("Analyst") << Icons::Analyst;
    QTest::newRow("Checkmark") << Icons::Checkmark;
    QTest::newRow("Results") << Icons::Results;
    QTest::newRow("PreSim") << Icons::PreSim;
    QTest::newRow("PostSimSuccess") << Icons::PostSimSuccess;
    QTest::newRow("PostSimFailure") << Icons::PostSimFailure;
}

void CIconsTest::everyIconHasBothSizes()
{
    QFETCH(QIcon, icon);
    QCOMPARE(icon.availableSizes(QIcon::Normal, QIcon::Off),
             QList<QSize>({QSize(16, 16), QSize(32, 32)}));
    const QString stem = QString::fromLatin1(QTest::currentDataTag());
    const QString name =
        stem == QLatin1String("OpenFile") ? QStringLiteral("Open_File") : QString(stem);
    for (const int side : {16, 32}) {
        const QPixmap drawn(pathOf(QStringLiteral("%1_%2").arg(name).arg(side)));
        QCOMPARE(argb(icon.pixmap(side, side)), argb(drawn));
    }
}

void CIconsTest::theSmallSimulatorIconIsScaledFromTheLargeOne()
{
    const QImage shown = argb(Icons::Simulator.pixmap(16, 16));
    const QImage drawnSmall = argb(QPixmap(pathOf(QStringLiteral("Simulator_16"))));
    const QPixmap large(pathOf(QStringLiteral("Simulator_32")));
    const QImage scaled = argb(large.scaled(16, 16, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    QCOMPARE(shown, scaled);
    QVERIFY(shown != drawnSmall);
}

void CIconsTest::theSimulatorIconLivesOnItsLargeImageAlone()
{
    QVERIFY(!QFile::exists(pathOf(QStringLiteral("Simulator_6"))));
    QCOMPARE(argb(Icons::Simulator.pixmap(32, 32)),
             argb(QPixmap(pathOf(QStringLiteral("Simulator_32")))));
}

void CIconsTest::aMissingImageIsNoMessage()
{
    const QtMessageHandler before = qInstallMessageHandler(&countMessage);
    Icons::initialise();
    const bool drawn = !Icons::Simulator.pixmap(16, 16).isNull();
    qInstallMessageHandler(before);
    QVERIFY(drawn);
    QCOMPARE(s_messages, 0);
}

TARNEL_TEST_MAIN(CIconsTest)

#include "icons_test.moc"
