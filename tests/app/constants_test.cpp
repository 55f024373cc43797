#include "app/constants/application_strings.h"
#include "app/constants/deck_keys.h"
#include "app/constants/file_names.h"
#include "app/constants/messages.h"
#include "app/constants/progress_strings.h"
#include "app/constants/settings_keys.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTest>

class CConstantsTest : public QObject
{
    Q_OBJECT

private slots:
    void textsStandAsTabledWithoutATranslator();
    void theTokenMessageShowsTheSeparatorInQuotes();
    void settingsKeys();
    void deckKeys();
    void anUnlistedRevisionMapsToFormatZero();
    void everyListedRevisionHasItsFormat();
    void theAboutTextHasItsSixArguments();
    void fileNames();
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

void CConstantsTest::deckKeys()
{
    QCOMPARE(DeckKeys::CreatorData, std::string("/CreatorData/0/"));
    QCOMPARE(DeckKeys::PhysicsModels, std::string("PhysicsModels/"));
    QCOMPARE(DeckKeys::TemperatureUpdateData, "Temperature Update/data");
    QCOMPARE(DeckKeys::HeatConductionData, "Heat Conduction/data");
    QCOMPARE(DeckKeys::EdinburghElastoPlasticAdhesionData,
             "Edinburgh Elasto-Plastic Adhesion/data");
    QCOMPARE(DeckKeys::SvnVersion, "svn version");
    QCOMPARE(DeckKeys::TangentStiffMultiplier, "tangentStiffMultiplier");
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
    QVERIFY(text.contains(QStringLiteral("2022")));
    QVERIFY(!text.contains(QLatin1Char('%')));
}

void CConstantsTest::fileNames()
{
    QCOMPARE(FileNames::DataFileSuffix, std::string("_data/0.h5"));
    QCOMPARE(FileNames::AwaitingClient, std::string("Awaiting Client connection...\r\n"));
    QCOMPARE(FileNames::RunningAnalysis, std::string("Running Python analysis\n"));
    QCOMPARE(FileNames::PythonOnPath, std::string("\\python.exe"));
    QCOMPARE(FileNames::CommandSeparator, std::string("& ^"));
    QCOMPARE(FileNames::CombinedResultsStem, std::string("/CollatedResults"));
    QCOMPARE(FileNames::ChooseDeck, QStringLiteral("Choose .zek File"));
    QCOMPARE(FileNames::DeckFilter, QStringLiteral("Zek file (*.zek)"));
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
