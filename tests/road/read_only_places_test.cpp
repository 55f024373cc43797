#include "tests/road/odd_place.h"
#include "tests/road/window_road.h"
#include "tests/support/faulty_places.h"
#include "tests/support/job_maker.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QtTest>

#include <H5Cpp.h>

#include <filesystem>

using namespace OddPlace;
namespace fs = std::filesystem;

/// Jobs on a file system that can't be written, through the window.
class ReadOnlyPlacesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qInfo("Read-only file systems: %s", FaultyPlaces::kind()); }
    void init();

    void jobOnAReadOnlyFileSystemIsNotOpened();
    void saveLocationOnAReadOnlyFileSystemIsRefused();

private:
    QString folder(const QString& name) const { return m_root->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_root;
};

void ReadOnlyPlacesTest::init()
{
    if (!FaultyPlaces::canBeMade()) {
        QSKIP("nothing may be mounted here");
    }
    m_root = std::make_unique<QTemporaryDir>();
}

void ReadOnlyPlacesTest::jobOnAReadOnlyFileSystemIsNotOpened()
{
    const SOddPlace place = in(folder(QStringLiteral("p")));
    makeJob(place.save, JobDescription());
    const QStringList before = filesBelow(place.save);
    CWindowRoad road(place.simulator);
    road.set(QStringLiteral("m_leJobLoadLocation"), place.save);
    {
        const CReadOnlyPlace readOnly(place.save.toStdString());
        QVERIFY_EXCEPTION_THROWN(QMetaObject::invokeMethod(road.submitPage(), "loadJobSpec"),
                                 H5::FileIException);
    }
    QCOMPARE(filesBelow(place.save), before);
    QCOMPARE(road.rows(), 0);
    road.load(place.save);
    QCOMPARE(road.rows(), 3);
}

void ReadOnlyPlacesTest::saveLocationOnAReadOnlyFileSystemIsRefused()
{
    const SOddPlace place = in(folder(QStringLiteral("p")));
    CWindowRoad road(place.simulator);
    QVERIFY(road.chooseDeck(place.deck));
    road.vary(Cases);
    road.set(QStringLiteral("m_leJobSaveLocation"), place.save);
    const CReadOnlyPlace readOnly(place.save.toStdString());
    try {
        QMetaObject::invokeMethod(road.submitPage(), "generateJobSpec");
        QFAIL("nothing was raised");
    } catch (const fs::filesystem_error& error) {
        QVERIFY2(QByteArray(error.what()).contains("create_directory"), error.what());
    }
    QVERIFY(filesBelow(place.save).isEmpty());
}

TARNEL_FAULTY_PLACES_TEST_MAIN(ReadOnlyPlacesTest)
#include "read_only_places_test.moc"
