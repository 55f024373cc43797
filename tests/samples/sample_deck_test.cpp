#include "tests/samples/sample_case.h"

#include "tests/support/test_environment.h"

#include <H5Cpp.h>

#include <QApplication>
#include <QRegularExpression>
#include <QtTest>

namespace {

QSet<QString> relativeFiles(const QString& folder)
{
    QSet<QString> files;
    QDirIterator walk(folder, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        files.insert(QDir(folder).relativeFilePath(walk.next()));
    }
    return files;
}

// Key to data type of the settings' data lines.
QMap<QString, QString> settingTypes(const QString& file)
{
    const QRegularExpression line(QStringLiteral("^(.+?)=([A-Z ]+):(.*)$"));
    QMap<QString, QString> types;
    for (const QString& text : SampleCase::linesOf(file)) {
        const QRegularExpressionMatch match = line.match(text);
        if (match.hasMatch()) {
            types.insert(match.captured(1), match.captured(2));
        }
    }
    return types;
}

} // namespace

class SampleDeckTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void writesADeckWithAllThatBelongsToIt();
    void writesOverAnEarlierSample();
    void settingsHoldTheFifteenSolverKeysWithTheirTypes();
    void settingsStartWithTheFormatLine();
    void deckHasFormatRevisionAndTwoMaterials();
    void deckHasNoModelThatTheParameterPageCannotOpen();
    void theSampleRunsInTheStandInWithItsOwnSettings();
    void withoutAFolderItSaysHowToCallIt();
    void aFolderThatCannotBeMadeIsOneSentence();

private:
    QScopedPointer<QTemporaryDir> m_folder;
};

void SampleDeckTest::init()
{
    m_folder.reset(new QTemporaryDir);
    const SProgramEnd end =
        SampleCase::run(QStringLiteral(SAMPLE_DECK), {m_folder->path()}, m_folder->path());
    QVERIFY2(end.exitCode == 0, end.errors.constData());
}

void SampleDeckTest::writesADeckWithAllThatBelongsToIt()
{
    const QSet<QString> expected{
        QStringLiteral("column.zek"),       QStringLiteral("column.ynd"),
        QStringLiteral("column.dfg"),       QStringLiteral("column.qsv"),
        QStringLiteral("box.txt"),          QStringLiteral("analyse.py"),
        QStringLiteral("join_results.py"),  QStringLiteral("stand_ins/conda"),
        QStringLiteral("column_data/0.h5"), QStringLiteral("stand_ins/conda.bat")};
    QCOMPARE(relativeFiles(m_folder->path()), expected);
}

void SampleDeckTest::writesOverAnEarlierSample()
{
    QFile settings(m_folder->filePath(QStringLiteral("column.dfg")));
    const QByteArray before = SampleCase::contentOf(settings.fileName());
    QVERIFY(settings.open(QIODevice::WriteOnly));
    settings.close();
    const SProgramEnd end =
        SampleCase::run(QStringLiteral(SAMPLE_DECK), {m_folder->path()}, m_folder->path());
    QCOMPARE(end.exitCode, 0);
    QCOMPARE(SampleCase::contentOf(settings.fileName()), before);
}

void SampleDeckTest::settingsHoldTheFifteenSolverKeysWithTheirTypes()
{
    const QMap<QString, QString> expected{
        {"PROCESSOR:GENERAL:AUTO GRIDCELL", "BOOLEAN"},
        {"PROCESSOR:GENERAL:AUTO TIMESTEP", "BOOLEAN"},
        {"PROCESSOR:GENERAL:DYNAMIC DOMAIN", "BOOLEAN"},
        {"PROCESSOR:GENERAL:ENGINE_INDEX", "INT"},
        {"PROCESSOR:GENERAL:FIXED TIMESTEP", "DOUBLE"},
        {"PROCESSOR:GENERAL:NUM THREADS", "INT"},
        {"PROCESSOR:GENERAL:PSI", "INT"},
        {"PROCESSOR:GENERAL:RADIUS_COEFFICIENT", "DOUBLE"},
        {"PROCESSOR:GENERAL:TAU", "DOUBLE"},
        {"PROCESSOR:GPU PARAMETERS:GPU DOMAIN SPLIT DIMENSION", "INT"},
        {"PROCESSOR:WRITE:INTERVAL", "DOUBLE"},
        {"PROCESSOR:WRITE:TOTAL", "DOUBLE"},
        {"PROCESSOR:WRITE:COMPRESS DATA", "BOOLEAN"},
        {"PROCESSOR:GPU PARAMETERS:GPU_CONTACT DETECTION SINGLE PRECISION", "BOOLEAN"},
        {"PROCESSOR:GPU PARAMETERS:GPU CONTACT DETECTION LEGACY MODE", "BOOLEAN"}};
    QMap<QString, QString> types = settingTypes(m_folder->filePath(QStringLiteral("column.dfg")));
    for (const QString& key : types.keys()) {
        if (!key.startsWith(QLatin1String("PROCESSOR:"))) {
            types.remove(key);
        }
    }
    QCOMPARE(types, expected);
}

void SampleDeckTest::settingsStartWithTheFormatLine()
{
    const QStringList lines = SampleCase::linesOf(m_folder->filePath(QStringLiteral("column.dfg")));
    QCOMPARE(lines.value(0), QStringLiteral("!format=KEYPATHVALUE"));
    QCOMPARE(lines.value(1), QStringLiteral("!format-version=1.0.0.0"));
    QCOMPARE(lines.value(2), QStringLiteral("!file-version=1.0.0"));
}

void SampleDeckTest::deckHasFormatRevisionAndTwoMaterials()
{
    const H5::H5File file(m_folder->filePath(QStringLiteral("column_data/0.h5")).toStdString(),
                          H5F_ACC_RDONLY);
    unsigned int revision = 0;
    file.openGroup("/CreatorData/0")
        .openAttribute("svn version")
        .read(H5::PredType::NATIVE_UINT, &revision);
    QCOMPARE(revision, 38329U);

    const H5::DataSet interactions = file.openDataSet("/CreatorData/0/Interactions");
    H5::CompType keyOnly(std::size_t{512});
    keyOnly.insertMember("key", 0, H5::StrType(H5::PredType::C_S1, 512));
    std::vector<char> keys(512 * 3);
    QCOMPARE(interactions.getSpace().getSimpleExtentNpoints(), hssize_t(3));
    interactions.read(keys.data(), keyOnly);
    const QSet<QByteArray> found{keys.data(), keys.data() + 512, keys.data() + 1024};
    QCOMPARE(found, (QSet<QByteArray>{"Gravel<>Gravel", "Gravel<>Steel", "Steel<>Steel"}));
}

void SampleDeckTest::deckHasNoModelThatTheParameterPageCannotOpen()
{
    const H5::H5File file(m_folder->filePath(QStringLiteral("column_data/0.h5")).toStdString(),
                          H5F_ACC_RDONLY);
    for (const char* name : {"SurfaceSurface", "SurfaceGeometry"}) {
        const H5::Group models =
            file.openGroup(std::string("/CreatorData/0/PhysicsModels/") + name);
        QVERIFY(models.nameExists("Hertz-Mindlin with JKR"));
        for (const char* closed :
             {"Spray Coating", "Oka Wear", "Archard Wear", "Bonding", "Bonding V2"}) {
            QVERIFY2(!models.nameExists(closed), closed);
        }
    }
}

void SampleDeckTest::theSampleRunsInTheStandInWithItsOwnSettings()
{
    const SProgramEnd end =
        SampleCase::run(QStringLiteral(ORVA_SAMPLE),
                        {"-i", "column.zek", "-r", "0.05", "-e", "column.dfg"}, m_folder->path());
    QVERIFY2(end.exitCode == 0, end.errors.constData());
    QVERIFY(end.output.contains("Gravel in a box of Steel"));
    QVERIFY(QFile::exists(m_folder->filePath(QStringLiteral("column.csv"))));
}

void SampleDeckTest::withoutAFolderItSaysHowToCallIt()
{
    const SProgramEnd end = SampleCase::run(QStringLiteral(SAMPLE_DECK), {}, m_folder->path());
    QCOMPARE(end.exitCode, 2);
    QCOMPARE(end.errors.count('\n'), 1);
}

void SampleDeckTest::aFolderThatCannotBeMadeIsOneSentence()
{
    const QString blocked = m_folder->filePath(QStringLiteral("column.zek/sample"));
    const SProgramEnd end =
        SampleCase::run(QStringLiteral(SAMPLE_DECK), {blocked}, m_folder->path());
    QCOMPARE(end.exitCode, 1);
    QCOMPARE(end.errors.count('\n'), 1);
}

TARNEL_TEST_MAIN(SampleDeckTest)
#include "sample_deck_test.moc"
