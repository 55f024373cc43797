#include "app/startup.h"
#include "tests/deck/deck_test_files.h"
#include "tests/road/wizard_journey.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTest>

namespace {

using Analysis = CWizardJourney::Analysis;

const QString Headings = QStringLiteral(
    "Job ID#,"
    "glass<>glass Restitution,glass<>glass Static Friction,glass<>glass Rolling Friction,"
    "glass<>steel Restitution,glass<>steel Static Friction,glass<>steel Rolling Friction,"
    "glass<>glass Surface Energy,"
    "glass<>glass Damping,glass<>glass Stiffness,"
    "glass Yield Strength,rubber Yield Strength,"
    "glass<>glass Constant pull-off force,glass<>glass Surface Energy,"
    "glass<>glass Contact Plasticity Ratio,glass<>glass Slope Exp,glass<>glass Tensile Exp,"
    "glass<>glass Tangential Stiff Multiplier,"
    "glass<>glass Normal Stiffness per unit area,glass<>glass Shear Stiffness per unit area,"
    "glass<>glass Critical Normal Stress,glass<>glass Critical Shear Stress,"
    "glass<>glass Bonded Disk Radius,"
    "Torque Feedback,Start Time,"
    "glass Thermal Conductivity,"
    "glass<>glass Active Sprays,"
    "glass<>steel Interfacial Surface energy,"
    "glass<>steel Characteristic Velocity,"
    "Enable Rolling Friction,"
    "glass Thermal Conductivity,"
    "wall Thermal Conductivity,wall Geometry Temperature,"
    "glass<>steel Wear Constant,"
    "glass Heat Capacity,"
    "Ganser Drag chip Spherocity,Ganser Drag sphere Spherocity,"
    "Ganser Drag Density,Ganser Drag Viscosity,Ganser Drag Scale,"
    "Ganser Drag Steady Velocity Flow X,Ganser Drag Steady Velocity Flow Y,"
    "Ganser Drag Steady Velocity Flow Z,Ganser Drag Using Steady Velocity Flow,"
    "Magnus Lift Density,Magnus Lift Viscosity,Magnus Lift Scale,"
    "Magnus Lift Steady Velocity Flow X,Magnus Lift Steady Velocity Flow Y,"
    "Magnus Lift Steady Velocity Flow Z,Magnus Lift Using Steady Velocity Flow,"
    "Simulator Options\n");

/// Case number, restitution, surface energy and options.
const QString DataLine = QStringLiteral("%1,0.75,0.25,0.02,%2,0.4,0.01,%3,0.000123457,1.23457e+06,"
                                        "2e+06,100000,-0.002,0.3,0.9,1.5,2.25,0.666667,"
                                        "1e+07,2e+07,3e+06,4e+06,0.0015,0.125,true,"
                                        "0.8,12.5,0.07,1.5,true,0.9,45,293.15,1e-12,840,"
                                        "0.6,1,1.2,2.5,1.8e-05,false,1,-2,0.5,"
                                        "0,0,0,false,0,0,0,"
                                        "1000,3,0.001,false,4,5,6,"
                                        "0,0,0,false,0,0,0,"
                                        "0,0,0,false,0,0,0,"
                                        "0,0,0,false,0,0,0,%4\n");

const QString Options =
    QStringLiteral(" -c  -r 2.500000 -w 0.125000 -g 2.500000 -t 0 -p 4 -E 0 -D 0 1 -R  --dyn 1"
                   " --dyn-interval 0.250000 --dyn-check 3 --dyn-disp 7.500000 --compress-data 1");

const QString OptionsWithCoupling =
    QStringLiteral(" -c  -r 2.500000 -w 0.125000 -g 2.500000 -t 0 -p 4 -E 0 -D 0 1 -R  --dyn 1"
                   " --dyn-interval 0.250000 --dyn-check 3 --dyn-disp 7.500000 --cs "
                   " --compress-data 1");

QString matrixWith(const QString& options)
{
    return Headings + DataLine.arg("0", "0.5", "0.05", options) +
           DataLine.arg("1", "0.5", "1.23457e+06", options) +
           DataLine.arg("2", "0.5", "0.000125", options) +
           DataLine.arg("3", "0.9", "0.05", options) +
           DataLine.arg("4", "0.9", "1.23457e+06", options) +
           DataLine.arg("5", "0.9", "0.000125", options);
}

/// Restitution and surface energy. What the scheme doesn't name is reset, the bonding's values are
/// of the wrong type, and the second force takes the columns of the absent one before it.
const QString CaseData = QStringLiteral(R"(@svn version 31638
Interactions glass<>glass 0.75 0.25 0.02
Interactions glass<>steel %1 0.4 0.01
PhysicsModels/ExternalForces/Ganser Drag @density 1.2
PhysicsModels/ExternalForces/Ganser Drag @field scale 2.5
PhysicsModels/ExternalForces/Ganser Drag @steady flow velocity 1.0 -2.0 0.5
PhysicsModels/ExternalForces/Ganser Drag @using steady flow 0.0
PhysicsModels/ExternalForces/Ganser Drag @viscosity 1.8e-05
PhysicsModels/ExternalForces/Ganser Drag/type chip
PhysicsModels/ExternalForces/Ganser Drag/type sphere
PhysicsModels/ExternalForces/Ganser Drag/value 0.6
PhysicsModels/ExternalForces/Ganser Drag/value 1.0
PhysicsModels/ExternalForces/Magnus Lift @density 0.0
PhysicsModels/ExternalForces/Magnus Lift @field scale 0.0
PhysicsModels/ExternalForces/Magnus Lift @steady flow velocity 0.0 0.0 0.0
PhysicsModels/ExternalForces/Magnus Lift @using steady flow 0.0
PhysicsModels/ExternalForces/Magnus Lift @viscosity 0.0
PhysicsModels/ExternalForces/Temperature Update/data glass 840.0
PhysicsModels/SurfaceGeometry/Archard Wear/data glass steel 1e-12
PhysicsModels/SurfaceGeometry/Heat Conduction/geometry data wall 45.0 293.15
PhysicsModels/SurfaceGeometry/Heat Conduction/particle data glass 0.9
PhysicsModels/SurfaceGeometry/Hertz-Mindlin with JKR V2/data glass steel 0.07
PhysicsModels/SurfaceGeometry/Linear Spring/data glass steel 1.5
PhysicsModels/SurfaceGeometry/Standard Rolling Friction @enable rolling friction 1
PhysicsModels/SurfaceSurface/Bonding @start time 0.0
PhysicsModels/SurfaceSurface/Bonding @torque feedback 0
PhysicsModels/SurfaceSurface/Bonding/data glass<>glass 10000000.0 20000000.0 3000000.0 4000000.0 0.0015
PhysicsModels/SurfaceSurface/Edinburgh Elasto-Plastic Adhesion/data glass glass -0.002 0.3 0.9 1.5 2.25 0.666667
PhysicsModels/SurfaceSurface/Heat Conduction/data glass 0.8
PhysicsModels/SurfaceSurface/Hertz-Mindlin with JKR/data glass glass %2
PhysicsModels/SurfaceSurface/Hysteretic Spring/interactions glass glass 0.000123457 1234570.0
PhysicsModels/SurfaceSurface/Hysteretic Spring/yields glass 2000000.0
PhysicsModels/SurfaceSurface/Hysteretic Spring/yields rubber 100000.0
PhysicsModels/SurfaceSurface/Linear Cohesion V2/data glass glass 12.5
PhysicsModels/SurfaceSurface/Type C Rolling Friction @coefficient of rolling stiffness 0.0
PhysicsModels/SurfaceSurface/Type C Rolling Friction @rolling viscous damping ratio 0.0
PhysicsModels/SurfaceSurface/Type C Rolling Friction @tangential rotation only 0
PhysicsModels/SurfaceSurface/Type C Rolling Friction @undamped force only 0
)");

/// Prints each attribute and each element of each dataset on a line of its own.
const char* const Dump = R"(
import h5py, numpy, sys
def words(value):
    if isinstance(value, (numpy.void, tuple, numpy.ndarray)):
        return ' '.join(words(v) for v in value)
    return value.decode() if isinstance(value, bytes) else repr(value.item() if hasattr(value, 'item') else value)
lines = []
def take(name, thing):
    lines.extend((name + ' @' + key + ' ' + words(value)).strip() for key, value in thing.attrs.items())
    if isinstance(thing, h5py.Dataset):
        lines.extend(name + ' ' + words(row) for row in thing[()])
with h5py.File(sys.argv[1], 'r') as f:
    top = f['CreatorData/0']
    take('', top)
    top.visititems(take)
print('\n'.join(sorted(lines)))
)";

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

QString textOf(const QString& path)
{
    return QString::fromLatin1(Native::fromTextFile(contentOf(path)));
}

QString dataOf(const QString& path)
{
    const auto printed = DeckTestFiles::runPython(QLatin1String(Dump), {path});
    return QString::fromUtf8(printed.output + printed.error);
}

/// Files and folders below `folder`, in order; a folder ends in "/".
QStringList treeOf(const QString& folder)
{
    QStringList names;
    QDirIterator entries(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString name = QDir(folder).relativeFilePath(entries.next());
        names << (entries.fileInfo().isDir() ? name + QLatin1Char('/') : name);
    }
    names.sort();
    return names;
}

/// What every job holds behind the distributed files of six cases, and what an analysis adds.
QStringList treeWith(const QStringList& inJob, const QStringList& inCase)
{
    QStringList names{"Additional File Directory.txt",
                      "JobFileLocation/",
                      "JobFileLocation/RunAllSimulations.bat",
                      "bed.ynd",
                      "bed.zek",
                      "bed_data/",
                      "bed_data/0.h5",
                      "data.bin",
                      "input_jobID-Matrix.csv",
                      "notes.txt"};
#ifdef Q_OS_UNIX
    names << "JobFileLocation/RunAllSimulations.sh";
#endif
    names << inJob;
    const QStringList always{"",         "bed%1.ynd", "bed%1.zek", "bed%1_data/", "bed%1_data/0.h5",
                             "data.bin", "notes.txt"};
    for (const char* number : {"0", "1", "2", "3", "4", "5"}) {
        for (QString name : always + inCase) {
            name.replace("%1", number);
            names << QStringLiteral("JobFileLocation/Job%1/%2").arg(number, name);
        }
    }
    names.sort();
    return names;
}

/// A line for each of the six cases, "%1" being the number; the last one with another ending.
QString sixTimes(const QString& line, const QString& lastLine)
{
    QString text;
    for (const char* number : {"0", "1", "2", "3", "4"}) {
        text += QString(line).replace("%1", number);
    }
    return text + QString(lastLine).replace("%1", "5");
}

} // namespace

/// What the wizard writes for one deck, down to the last byte.
class CByteExactTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void aJobWithoutAnalysis();
    void aJobWithExportAndCouplingServer();
    void aJobWithPythonAnalysis();
    void theCasesHoldTheirValues();
    void mistypedColumnsWarnAtWritingAndAtLoading();
    void theDecksFilesStayAsTheyWere();

private:
    static void compareCopies(const CWizardJourney& journey);
};

void CByteExactTest::initTestCase()
{
    startup::fillConstants();
}

void CByteExactTest::init()
{
    CTestEnvironment::reset();
}

void CByteExactTest::compareCopies(const CWizardJourney& journey)
{
    const QString job = journey.job();
    const QString first = journey.caseRoot() + "/Job0/";
    QCOMPARE(textOf(job + "/Additional File Directory.txt"), QString("bed\nnotes.txt\ndata.bin\n"));
    QCOMPARE(contentOf(job + "/bed.zek"), QByteArray("deck\n"));
    QCOMPARE(contentOf(job + "/bed.ynd"), QByteArray("companion\n"));
    QCOMPARE(contentOf(job + "/notes.txt"), QByteArray("notes\r\n"));
    QCOMPARE(contentOf(job + "/data.bin"), QByteArray("\0\n\r\xff", 4));
    QCOMPARE(contentOf(job + "/bed_data/0.h5"), contentOf(journey.path("deck/bed_data/0.h5")));
    QCOMPARE(contentOf(first + "bed0.zek"), QByteArray("deck\n"));
    QCOMPARE(contentOf(first + "bed0.ynd"), QByteArray("companion\n"));
    QCOMPARE(contentOf(first + "notes.txt"), QByteArray("notes\r\n"));
    QCOMPARE(contentOf(first + "data.bin"), QByteArray("\0\n\r\xff", 4));
}

void CByteExactTest::aJobWithoutAnalysis()
{
    CWizardJourney journey(Analysis::None);
    journey.go();
    QCOMPARE(journey.casesToBeGenerated(), QString("6"));
    QCOMPARE(journey.rows(), QStringList({"bed0", "bed1", "bed2", "bed3", "bed4", "bed5"}));
    QCOMPARE(textOf(journey.job() + "/input_jobID-Matrix.csv"), matrixWith(Options));
    compareCopies(journey);
    QCOMPARE(treeOf(journey.job()), treeWith({}, {}));
    const QString line = QStringLiteral("\"%2\" -i \"Job%1/bed%1.zek\"") + Options + "\n";
    QCOMPARE(textOf(journey.caseRoot() + "/RunAllSimulations.bat"),
             sixTimes(line, line).replace("%2", journey.path("a bin/orva.exe")));
}

void CByteExactTest::aJobWithExportAndCouplingServer()
{
    CWizardJourney journey(Analysis::Export);
    journey.go();
    const QString job = journey.job();
    QCOMPARE(textOf(job + "/input_jobID-Matrix.csv"), matrixWith(OptionsWithCoupling));
    compareCopies(journey);
    QCOMPARE(textOf(job + "/Coupling File Directory.txt"), QString("server.exe\n --port 1\n"));
    QCOMPARE(treeOf(job),
             treeWith({"Coupling File Directory.txt", "bed.dfg", "bed.qsv", "server.exe"},
                      {"bed%1.dfg", "bed%1.qsv", "server.exe"}));
    QCOMPARE(contentOf(job + "/bed.dfg"), contentOf(journey.path("deck/bed.dfg")));
    QCOMPARE(contentOf(journey.caseRoot() + "/Job3/bed3.dfg"), contentOf(job + "/bed.dfg"));
    QCOMPARE(contentOf(journey.caseRoot() + "/Job3/bed3.qsv"), QByteArray("queries\n"));
    QCOMPARE(contentOf(journey.caseRoot() + "/Job3/server.exe"), QByteArray("server\n"));
    const QString line = QStringLiteral("start cmd.exe /k \"Job%1\\server.exe\"  --port 1\n\r"
                                        "\"%2\" -i \"Job%1/bed%1.zek\"") +
                         OptionsWithCoupling + " -e \"Job%1/bed%1.dfg\"\n";
    QCOMPARE(textOf(journey.caseRoot() + "/RunAllSimulations.bat"),
             sixTimes(line, line).replace("%2", journey.path("a bin/orva.exe")));
}

void CByteExactTest::aJobWithPythonAnalysis()
{
    CWizardJourney journey(Analysis::Python);
    journey.go();
    const QString job = journey.job();
    QCOMPARE(textOf(job + "/input_jobID-Matrix.csv"), matrixWith(Options));
    compareCopies(journey);
    QCOMPARE(textOf(job + "/PyDetails.txt"),
             journey.path("more/analyse.py") + "\n-d\n--verbose 3\n");
    QCOMPARE(treeOf(job), treeWith({"PyDetails.txt", "analyse.py"}, {"analyse.py"}));
    QCOMPARE(contentOf(journey.caseRoot() + "/Job5/analyse.py"), QByteArray("print()\n"));
    const QString last =
        QStringLiteral("\"%2\" -i \"Job%1/bed%1.zek\"") + Options +
        " & cd \"Job%1\" & ^conda activate & ^python \"analyse.py\" -d \"bed%1.zek\" --verbose 3"
        " & ^conda deactivate & ^cd .. ";
    QCOMPARE(textOf(journey.caseRoot() + "/RunAllSimulations.bat"),
             sixTimes(last + "& ^\n", last + "\n").replace("%2", journey.path("a bin/orva.exe")));
}

void CByteExactTest::theCasesHoldTheirValues()
{
    CWizardJourney journey(Analysis::None);
    journey.go();
    const QString data = journey.caseRoot() + "/Job%1/bed%1_data/0.h5";
    QCOMPARE(dataOf(data.arg(0)), CaseData.arg("0.5", "0.05"));
    QCOMPARE(dataOf(data.arg(1)), CaseData.arg("0.5", "1234570.0"));
    QCOMPARE(dataOf(data.arg(2)), CaseData.arg("0.5", "0.000125"));
    QCOMPARE(dataOf(data.arg(3)), CaseData.arg("0.9", "0.05"));
    QCOMPARE(dataOf(data.arg(4)), CaseData.arg("0.9", "1234570.0"));
    QCOMPARE(dataOf(data.arg(5)), CaseData.arg("0.9", "0.000125"));
}

void CByteExactTest::mistypedColumnsWarnAtWritingAndAtLoading()
{
    CWizardJourney journey(Analysis::None);
    journey.go();
    // Two values of each of six cases, once when they are written and once when they are read.
    QCOMPARE(int(journey.dialogs().messages().size()), 24);
    for (const SShownMessage& message : journey.dialogs().messages()) {
        QCOMPARE(message.title, QString("Warning"));
        QCOMPARE(message.icon, QMessageBox::Warning);
        QCOMPARE(message.text,
                 QString("Internal values are mistyped when generating jobs, data is corrupted - "
                         "contact Quillon ORVA if you receive this message."));
    }
}

void CByteExactTest::theDecksFilesStayAsTheyWere()
{
    CWizardJourney journey(Analysis::Export);
    const QStringList before = journey.sources();
    journey.go();
    QCOMPARE(journey.sources(), before);
}

TARNEL_TEST_MAIN(CByteExactTest)
#include "byte_exact_test.moc"
