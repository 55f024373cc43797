#include "app/constants/application_strings.h"
#include "app/constants/deck_keys.h"
#include "app/constants/file_names.h"
#include "app/constants/messages.h"
#include "app/constants/progress_strings.h"
#include "app/constants/settings_keys.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

Q_DECLARE_METATYPE(const char**)
Q_DECLARE_METATYPE(std::string*)
Q_DECLARE_METATYPE(QString*)

class CConstantsTest : public QObject
{
    Q_OBJECT

private slots:
    void textsStandAsTabledWithoutATranslator();
    void theTokenMessageShowsTheSeparatorInQuotes();
    void settingsKeys();
    void groupKeys();
    void deckKeys_data();
    void deckKeys();
    void anUnlistedRevisionMapsToFormatZero();
    void everyListedRevisionHasItsFormat();
    void theAboutTextHasItsSixArguments();
    void theAboutTemplateNamesEachArgumentOnce();
    void theAboutTextEndsWithRightsAndLinks();
    void theDescriptionInTheAboutTextIsTheBuildType();
    void namesOfFilesAndCommands_data();
    void namesOfFilesAndCommands();
    void textsOfTheFileDialogs_data();
    void textsOfTheFileDialogs();
    void progressStrings();
};

void CConstantsTest::textsStandAsTabledWithoutATranslator()
{
    QCOMPARE(Messages::Warning, QStringLiteral("Warning"));
    QCOMPARE(Messages::DeckIncompatible, QStringLiteral("Deck Incompatible"));
    QCOMPARE(Messages::EnterDirectory, QStringLiteral("Please enter a directory"));
    QCOMPARE(Messages::DirectoryMissing, QStringLiteral("The directory entered does not exist"));
    QCOMPARE(Messages::JobspecNoH5, QStringLiteral("Jobspec does not contain valid h5 file"));
    QCOMPARE(Messages::JobspecNoCsv, QStringLiteral("Jobspec does not contain valid csv file"));
    QCOMPARE(Messages::EnterNumeric, QStringLiteral("Please enter numeric characters"));
    QCOMPARE(Messages::BondCreationTime,
             QStringLiteral("BondCreationTime Particle Custom Property is currently unsupported"));
    QCOMPARE(Messages::MistypedValues,
             QStringLiteral("Internal values are mistyped when generating jobs, data is corrupted "
                            "- contact Quillon ORVA if you receive this message."));
    QCOMPARE(Messages::PythonNotOnPath,
             QStringLiteral("To perform Python analysis, the python executable's directory is "
                            "required to be on the PATH environment variable"));
    QCOMPARE(Messages::CondaNotOnPath,
             QStringLiteral("To perform Python analysis, the Anaconda 'conda' executable's "
                            "directory is required to be on the PATH environment variable"));
    QCOMPARE(Messages::UnknownException, "Unknown Exception");
    QCOMPARE(ApplicationStrings::Organisation, QStringLiteral("Harnwick Labs"));
    QCOMPARE(ApplicationStrings::Name, QStringLiteral("Tarnel"));
    QCOMPARE(ApplicationStrings::InformationTitle, QStringLiteral("Information"));
    QCOMPARE(ApplicationStrings::InvalidPath,
             QStringLiteral("Invalid path. Please enter a valid path"));
    QCOMPARE(ApplicationStrings::NoExecutable,
             QStringLiteral("No ORVA executable found, please browse for one in the associated "
                            "text box"));
    QCOMPARE(ApplicationStrings::AboutTitle, QStringLiteral("About Tarnel"));
    QCOMPARE(ApplicationStrings::Version, QStringLiteral("1.0"));
    QCOMPARE(ApplicationStrings::BuildType, QStringLiteral("Release"));
    QCOMPARE(ApplicationStrings::Unfinished, QStringLiteral("Not finished..."));
}

void CConstantsTest::theTokenMessageShowsTheSeparatorInQuotes()
{
    QCOMPARE(Messages::MaterialToken, QStringLiteral("Material name contains \"<>\", remove this "
                                                     "token before attempting to calibrate"));
    QVERIFY(Messages::MaterialToken.contains(
        QLatin1Char('"') + QString::fromStdString(DeckKeys::Separator) + QLatin1Char('"')));
}

void CConstantsTest::settingsKeys()
{
    QCOMPARE(SettingsKeys::Group, QStringLiteral("/Saving/"));
    QCOMPARE(SettingsKeys::RootPath, QStringLiteral("RootPath"));
    QCOMPARE(SettingsKeys::ZEKPath, QStringLiteral("ZEKPath"));
    QCOMPARE(SettingsKeys::AdditionalFilesPath, QStringLiteral("AdditionalFilesPath"));
    QCOMPARE(SettingsKeys::OrvaExeLocation, QStringLiteral("OrvaExeLocation"));
}

void CConstantsTest::groupKeys()
{
    QCOMPARE(DeckKeys::CreatorData, std::string("/CreatorData/0/"));
    QCOMPARE(DeckKeys::PhysicsModels, std::string("PhysicsModels/"));
    QCOMPARE(DeckKeys::SurfaceSurface, std::string("SurfaceSurface/"));
    QCOMPARE(DeckKeys::SurfaceGeometry, std::string("SurfaceGeometry/"));
    QCOMPARE(DeckKeys::ExternalForces, std::string("ExternalForces/"));
    QCOMPARE(DeckKeys::Separator, std::string("<>"));
}

void CConstantsTest::deckKeys_data()
{
    QTest::addColumn<const char**>("key");
    QTest::newRow("data") << &DeckKeys::Data;
    QTest::newRow("Active") << &DeckKeys::Active;
    QTest::newRow("Interactions") << &DeckKeys::Interactions;
    QTest::newRow("Hertz-Mindlin with JKR/data") << &DeckKeys::HertzMindlinWithJKRData;
    QTest::newRow("Hertz-Mindlin with JKR V2/data") << &DeckKeys::HertzMindlinWithJKRV2Data;
    QTest::newRow("Linear Spring") << &DeckKeys::LinearSpring;
    QTest::newRow("Hysteretic Spring/interactions") << &DeckKeys::HystereticSpringInteractions;
    QTest::newRow("Hysteretic Spring/yields") << &DeckKeys::HystereticSpringYields;
    QTest::newRow("Edinburgh Elasto-Plastic Adhesion/data")
        << &DeckKeys::EdinburghElastoPlasticAdhesionData;
    QTest::newRow("Bonding/data") << &DeckKeys::BondingData;
    QTest::newRow("Bonding") << &DeckKeys::Bonding;
    QTest::newRow("Bonding V2/data") << &DeckKeys::BondingV2Data;
    QTest::newRow("Bonding V2") << &DeckKeys::BondingV2;
    QTest::newRow("Heat Conduction/data") << &DeckKeys::HeatConductionData;
    QTest::newRow("Heat Conduction/particle data") << &DeckKeys::HeatConductionParticleData;
    QTest::newRow("Heat Conduction/geometry data") << &DeckKeys::HeatConductionGeometryData;
    QTest::newRow("Linear Cohesion V2/data") << &DeckKeys::LinearCohesionV2Data;
    QTest::newRow("Spray Coating/data") << &DeckKeys::SprayCoatingData;
    QTest::newRow("Standard Rolling Friction") << &DeckKeys::StandardRollingFriction;
    QTest::newRow("Type C Rolling Friction") << &DeckKeys::TypeCRollingFriction;
    QTest::newRow("Archard Wear") << &DeckKeys::ArchardWear;
    QTest::newRow("Archard Wear/data") << &DeckKeys::ArchardWearData;
    QTest::newRow("Oka Wear") << &DeckKeys::OkaWear;
    QTest::newRow("Oka Wear/data") << &DeckKeys::OkaWearData;
    QTest::newRow("Temperature Update/data") << &DeckKeys::TemperatureUpdateData;
    QTest::newRow("Temperature Update/particle data") << &DeckKeys::TemperatureUpdateParticleData;
    QTest::newRow("Ganser Drag") << &DeckKeys::GanserDrag;
    QTest::newRow("Haider and Levenspiel Drag") << &DeckKeys::HaiderAndLevenspielDrag;
    QTest::newRow("Magnus Lift") << &DeckKeys::MagnusLift;
    QTest::newRow("Morsi and Alexander Drag") << &DeckKeys::MorsiAndAlexanderDrag;
    QTest::newRow("Saffman Lift") << &DeckKeys::SaffmanLift;
    QTest::newRow("Schiller and Naumann Drag") << &DeckKeys::SchillerAndNaumannDrag;
    QTest::newRow("bonding time mode") << &DeckKeys::BondingTimeMode;
    QTest::newRow("start time") << &DeckKeys::StartTime;
    QTest::newRow("torque feedback") << &DeckKeys::TorqueFeedback;
    QTest::newRow("enable rolling friction") << &DeckKeys::EnableRollingFriction;
    QTest::newRow("deformation") << &DeckKeys::Deformation;
    QTest::newRow("oka deformation") << &DeckKeys::OkaDeformation;
    QTest::newRow("svn version") << &DeckKeys::SvnVersion;
    QTest::newRow("file version") << &DeckKeys::FileVersion;
    QTest::newRow("name") << &DeckKeys::Name;
    QTest::newRow("name1") << &DeckKeys::Name1;
    QTest::newRow("name2") << &DeckKeys::Name2;
    QTest::newRow("key") << &DeckKeys::Key;
    QTest::newRow("type") << &DeckKeys::Type;
    QTest::newRow("value") << &DeckKeys::Value;
    QTest::newRow("bondDiskScale") << &DeckKeys::BondDiskScale;
    QTest::newRow("bondRadius") << &DeckKeys::BondRadius;
    QTest::newRow("coefficient of rolling stiffness") << &DeckKeys::CoefficientOfRollingStiffness;
    QTest::newRow("constPullOffForce") << &DeckKeys::ConstPullOffForce;
    QTest::newRow("contactPlasticityRatio") << &DeckKeys::ContactPlasticityRatio;
    QTest::newRow("damping") << &DeckKeys::Damping;
    QTest::newRow("density") << &DeckKeys::Density;
    QTest::newRow("field scale") << &DeckKeys::FieldScale;
    QTest::newRow("normalRange") << &DeckKeys::NormalRange;
    QTest::newRow("normalStiffness") << &DeckKeys::NormalStiffness;
    QTest::newRow("normalStrength") << &DeckKeys::NormalStrength;
    QTest::newRow("restitution") << &DeckKeys::Restitution;
    QTest::newRow("rollingFriction") << &DeckKeys::RollingFriction;
    QTest::newRow("rolling viscous damping ratio") << &DeckKeys::RollingViscousDampingRatio;
    QTest::newRow("scalingFactor") << &DeckKeys::ScalingFactor;
    QTest::newRow("shearStiffness") << &DeckKeys::ShearStiffness;
    QTest::newRow("shearStrength") << &DeckKeys::ShearStrength;
    QTest::newRow("slopeExponential") << &DeckKeys::SlopeExponential;
    QTest::newRow("staticFriction") << &DeckKeys::StaticFriction;
    QTest::newRow("steady flow velocity") << &DeckKeys::SteadyFlowVelocity;
    QTest::newRow("stiffness") << &DeckKeys::Stiffness;
    QTest::newRow("surfaceEnergy") << &DeckKeys::SurfaceEnergy;
    QTest::newRow("tangRange") << &DeckKeys::TangRange;
    QTest::newRow("tangential rotation only") << &DeckKeys::TangentialRotationOnly;
    QTest::newRow("tangStiffness") << &DeckKeys::TangStiffness;
    QTest::newRow("tangentStiffMultiplier") << &DeckKeys::TangentStiffMultiplier;
    QTest::newRow("tensileExponential") << &DeckKeys::TensileExponential;
    QTest::newRow("undamped force only") << &DeckKeys::UndampedForceOnly;
    QTest::newRow("using steady flow") << &DeckKeys::UsingSteadyFlow;
    QTest::newRow("wearConstant") << &DeckKeys::WearConstant;
    QTest::newRow("vickersHardness") << &DeckKeys::VickersHardness;
    QTest::newRow("viscosity") << &DeckKeys::Viscosity;
}

void CConstantsTest::deckKeys()
{
    QFETCH(const char**, key);
    QCOMPARE(*key, QTest::currentDataTag());
}

void CConstantsTest::anUnlistedRevisionMapsToFormatZero()
{
    QCOMPARE(DeckKeys::FormatForRevision[30000U], 0);
    DeckKeys::initialise();
}

void CConstantsTest::everyListedRevisionHasItsFormat()
{
    const std::vector<unsigned int> revisions = {27785, 27923, 28116, 28414, 28993,
                                                 31638, 31856, 32371, 32856, 33718,
                                                 34860, 36588, 37575, 38329, 40000};
    QCOMPARE(DeckKeys::FormatForRevision.size(), revisions.size());
    for (std::size_t format = 0; format < revisions.size(); ++format) {
        QCOMPARE(DeckKeys::FormatForRevision.at(revisions[format]), int(format));
    }
}

void CConstantsTest::theAboutTextHasItsSixArguments()
{
    const QString lineStart = QLatin1Char('\n') + QString(36, QLatin1Char(' '));
    const QString begin = QStringLiteral("<p> Tarnel ") + lineStart +
                          QStringLiteral("<br>Version: 1.0 ") + lineStart +
                          QStringLiteral("<br>Description: Release </p>") + lineStart +
                          QStringLiteral("<p>Revision: 40948 (");
    const QString text = ApplicationStrings::aboutText();
    QVERIFY2(text.startsWith(begin), qPrintable(text));
    const QRegularExpression rest(
        QStringLiteral("^[^()]+\\) </p>\n +<p>[^<]*\\b2022(?![/0-9]).*</p>$"),
        QRegularExpression::DotMatchesEverythingOption);
    QVERIFY2(rest.match(text.mid(begin.size())).hasMatch(), qPrintable(text));
    QVERIFY(!text.contains(QLatin1Char('%')));
}

void CConstantsTest::theAboutTemplateNamesEachArgumentOnce()
{
    for (int argument = 1; argument <= 6; ++argument) {
        QCOMPARE(ApplicationStrings::AboutTemplate.count(QStringLiteral("%%1").arg(argument)), 1);
    }
    QCOMPARE(ApplicationStrings::AboutTemplate.count(QLatin1Char('%')), 6);
}

void CConstantsTest::theAboutTextEndsWithRightsAndLinks()
{
    const QStringList paragraphs = ApplicationStrings::AboutTemplate.split(QStringLiteral("<p>"));
    QCOMPARE(paragraphs.size(), 5);
    QVERIFY(paragraphs[3].contains(QStringLiteral("%6")));
    QVERIFY(paragraphs[3].contains(QStringLiteral("rights")));
    QVERIFY(paragraphs[4].contains(QStringLiteral("<a href=\"https://")));
    QVERIFY(paragraphs[4].endsWith(QStringLiteral("</p>")));
}

void CConstantsTest::theDescriptionInTheAboutTextIsTheBuildType()
{
    ApplicationStrings::BuildType = QStringLiteral("Beta");
    ApplicationStrings::Version = QStringLiteral("9.5");
    const QString text = ApplicationStrings::aboutText();
    ApplicationStrings::initialise();
    QVERIFY2(text.contains(QStringLiteral("<br>Version: 9.5 \n")), qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("<br>Description: Beta </p>\n")), qPrintable(text));
}

void CConstantsTest::namesOfFilesAndCommands_data()
{
    QTest::addColumn<std::string*>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("DeckExtension") << &FileNames::DeckExtension << ".zek";
    QTest::newRow("CompanionExtension") << &FileNames::CompanionExtension << ".ynd";
    QTest::newRow("DfgExtension") << &FileNames::DfgExtension << ".dfg";
    QTest::newRow("QsvExtension") << &FileNames::QsvExtension << ".qsv";
    QTest::newRow("PythonExtension") << &FileNames::PythonExtension << ".py";
    QTest::newRow("ExecutableExtension") << &FileNames::ExecutableExtension << ".exe";
    QTest::newRow("CsvExtension") << &FileNames::CsvExtension << ".csv";
    QTest::newRow("TextExtension") << &FileNames::TextExtension << ".txt";
    QTest::newRow("BatchExtension") << &FileNames::BatchExtension << ".bat";
    QTest::newRow("DataFolderSuffix") << &FileNames::DataFolderSuffix << "_data";
    QTest::newRow("DataFileName") << &FileNames::DataFileName << "0.h5";
    QTest::newRow("DataFileSuffix") << &FileNames::DataFileSuffix << "_data/0.h5";
    QTest::newRow("CasePrefix") << &FileNames::CasePrefix << "Job";
    QTest::newRow("JobFolderStem") << &FileNames::JobFolderStem << "JobSpec";
    QTest::newRow("CaseRootStem") << &FileNames::CaseRootStem << "JobFileLocation";
    QTest::newRow("JobMatrixStem") << &FileNames::JobMatrixStem << "input_jobID-Matrix";
    QTest::newRow("AdditionalFilesStem")
        << &FileNames::AdditionalFilesStem << "Additional File Directory";
    QTest::newRow("CouplingFileStem") << &FileNames::CouplingFileStem << "Coupling File Directory";
    QTest::newRow("PythonDetailsStem") << &FileNames::PythonDetailsStem << "PyDetails";
    QTest::newRow("CaseNumberHeading") << &FileNames::CaseNumberHeading << "ID#";
    QTest::newRow("BatchFileStem") << &FileNames::BatchFileStem << "RunAllSimulations";
    QTest::newRow("ToDeleteSuffix") << &FileNames::ToDeleteSuffix << "_to_delete";
    QTest::newRow("CommandInterpreter") << &FileNames::CommandInterpreter << "cmd.exe";
    QTest::newRow("RunAndExit") << &FileNames::RunAndExit << "/C";
    QTest::newRow("Python") << &FileNames::Python << "python";
    QTest::newRow("CondaActivate") << &FileNames::CondaActivate << "conda activate";
    QTest::newRow("CondaDeactivate") << &FileNames::CondaDeactivate << "conda deactivate";
    QTest::newRow("PythonOnPath") << &FileNames::PythonOnPath << "\\python.exe";
    QTest::newRow("CondaExecutableOnPath") << &FileNames::CondaExecutableOnPath << "\\conda.exe";
    QTest::newRow("CondaBatchOnPath") << &FileNames::CondaBatchOnPath << "\\conda.bat";
    QTest::newRow("NoDeckFlag") << &FileNames::NoDeckFlag << "PYTHON_NO_DECK_FLAG";
    QTest::newRow("CommandSeparator") << &FileNames::CommandSeparator << "& ^";
    QTest::newRow("ChangeDirectory") << &FileNames::ChangeDirectory << "cd";
    QTest::newRow("ParentDirectory") << &FileNames::ParentDirectory << "..";
    QTest::newRow("AwaitingClient")
        << &FileNames::AwaitingClient << "Awaiting Client connection...\r\n";
    QTest::newRow("RunningAnalysis") << &FileNames::RunningAnalysis << "Running Python analysis\n";
    QTest::newRow("CombinedResultsStem") << &FileNames::CombinedResultsStem << "/CollatedResults";
    QTest::newRow("InputArgument") << &FileNames::InputArgument << "-i";
    QTest::newRow("ExportArgument") << &FileNames::ExportArgument << "-e";
    QTest::newRow("FieldSeparator") << &FileNames::FieldSeparator << ",";
}

void CConstantsTest::namesOfFilesAndCommands()
{
    QFETCH(std::string*, name);
    QFETCH(QString, text);
    QCOMPARE(QString::fromStdString(*name), text);
}

void CConstantsTest::textsOfTheFileDialogs_data()
{
    QTest::addColumn<QString*>("constant");
    QTest::addColumn<QString>("text");
    QTest::newRow("BrowseForFolder") << &FileNames::BrowseForFolder << "Browse for folder";
    QTest::newRow("ChooseDeck") << &FileNames::ChooseDeck << "Choose .zek File";
    QTest::newRow("ChooseExecutable") << &FileNames::ChooseExecutable << "Choose .exe File";
    QTest::newRow("ChooseDfg") << &FileNames::ChooseDfg << "Choose .dfg File";
    QTest::newRow("ChooseQsv") << &FileNames::ChooseQsv << "Choose .qsv File";
    QTest::newRow("ChoosePython") << &FileNames::ChoosePython << "Choose .py File";
    QTest::newRow("ChooseAdditionalFiles")
        << &FileNames::ChooseAdditionalFiles << "Choose Additional Files";
    QTest::newRow("DeckFilter") << &FileNames::DeckFilter << "Zek file (*.zek)";
    QTest::newRow("ExecutableFilter") << &FileNames::ExecutableFilter << "Executable file (*.exe)";
    QTest::newRow("DfgFilter") << &FileNames::DfgFilter << "Dfg file (*.dfg)";
    QTest::newRow("QsvFilter") << &FileNames::QsvFilter << "Qsv file (*.qsv)";
    QTest::newRow("PythonFilter") << &FileNames::PythonFilter << "Python file (*.py)";
}

void CConstantsTest::textsOfTheFileDialogs()
{
    QFETCH(QString*, constant);
    QFETCH(QString, text);
    QCOMPARE(*constant, text);
}

void CConstantsTest::progressStrings()
{
    QCOMPARE(ProgressStrings::GatheringData, QStringLiteral("Gathering Data"));
    QCOMPARE(ProgressStrings::CloseProgressBar, QStringLiteral("Close Progress Bar"));
    QCOMPARE(ProgressStrings::WritingData, QStringLiteral("Writing Data"));
    QCOMPARE(ProgressStrings::ClosingFile, QStringLiteral("Closing File"));
    QCOMPARE(ProgressStrings::TimeRow, QStringLiteral("TIME:"));
    QCOMPARE(ProgressStrings::TimeHeading, QStringLiteral("TIME"));
    QCOMPARE(ProgressStrings::ExtractedData, QStringLiteral("EXTRACTED DATA"));
    QCOMPARE(ProgressStrings::OperationComplete, QStringLiteral("Operation Complete"));
}

TARNEL_TEST_MAIN(CConstantsTest)
#include "constants_test.moc"
