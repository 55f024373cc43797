#include "app/startup.h"

#include "app/constants/application_strings.h"
#include "app/constants/deck_keys.h"
#include "app/constants/file_names.h"
#include "app/constants/icons.h"
#include "app/constants/messages.h"
#include "app/constants/progress_strings.h"
#include "app/constants/settings_keys.h"
#include "parameters/parameter_catalogue.h"
#include "parameters/parameter_limits.h"
#include "setup/simulator_options.h"

#include "tests/support/native.h"

#include <QApplication>
#include <QLocale>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>

#include <clocale>

namespace {

/// One text as it passed the translation look-up, and what was filled at that moment.
struct SLookUp
{
    QString context;
    QString text;
    bool iconsBuilt = false;
    bool deckKeysFilled = false;
    bool limitsBuilt = false;
};

/// Translates nothing and notes everything.
class CRecordingTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char* context, const char* text, const char* /*comment*/,
                      int /*count*/) const override
    {
        // Qt looks texts of its own up, too, under the names of its classes.
        if (*context != 'Q') {
            lookUps.push_back({QLatin1String(context), QString::fromUtf8(text),
                               !Icons::PreSim.isNull(), !DeckKeys::Separator.empty(),
                               !ParameterLimits.empty()});
        }
        return QString();
    }

    std::vector<SLookUp> of(const QString& context) const
    {
        std::vector<SLookUp> found;
        for (const SLookUp& lookUp : lookUps) {
            if (lookUp.context == context) {
                found.push_back(lookUp);
            }
        }
        return found;
    }

    mutable std::vector<SLookUp> lookUps;
};

/// The modules of which something is filled.
QStringList filledModules()
{
    const std::vector<std::pair<const char*, bool>> modules = {
        {"Icons", !Icons::OpenFile.isNull() || !Icons::PeriSimPath.isEmpty()},
        {"SettingsKeys", !SettingsKeys::Group.isEmpty()},
        {"DeckKeys", !DeckKeys::Separator.empty() || DeckKeys::SvnVersion != nullptr},
        {"formats", !DeckKeys::FormatForRevision.empty()},
        {"Messages", !Messages::Warning.isEmpty() || Messages::UnknownException != nullptr},
        {"FileNames", !FileNames::DeckExtension.empty() || !FileNames::ChooseDeck.isEmpty()},
        {"ParameterCatalogue", !ParameterCatalogue::Restitution.empty()},
        {"SimulatorOptions", !SimulatorOptions::LeadingFlag.empty()},
        {"ProgressStrings", !ProgressStrings::GatheringData.isEmpty()},
        {"ApplicationStrings", !ApplicationStrings::Name.isEmpty()},
        {"ParameterLimits", !ParameterLimits.empty()},
    };
    QStringList filled;
    for (const auto& [name, isFilled] : modules) {
        if (isFilled) {
            filled << QLatin1String(name);
        }
    }
    return filled;
}

} // namespace

class CStartupTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyConstantIsEmptyBeforeTheFill();
    void theModulesAreFilledInTheirOrder();
    void theIconsAreBuiltBeforeAnyText();
    void theDeckKeysAreFilledBetweenSettingsKeysAndMessages();
    void theParameterTablesAreBuiltBehindAllTexts();
    void theMessagesAreLookedUpInTheirOrder();
    void noTextIsLookedUpTwice();
    void everyModuleIsFilled();
    void numbersAreNeutralAfterwards();

private:
    CRecordingTranslator m_translator;
    QStringList m_filledTooEarly;
};

void CStartupTest::initTestCase()
{
    m_filledTooEarly = filledModules();
    QCoreApplication::installTranslator(&m_translator);
    startup::fillConstants();
    QCoreApplication::removeTranslator(&m_translator);
}

void CStartupTest::everyConstantIsEmptyBeforeTheFill()
{
    QCOMPARE(m_filledTooEarly, QStringList());
}

void CStartupTest::theModulesAreFilledInTheirOrder()
{
    QStringList contexts;
    for (const SLookUp& lookUp : m_translator.lookUps) {
        if (contexts.isEmpty() || contexts.last() != lookUp.context) {
            contexts << lookUp.context;
        }
    }
    QCOMPARE(contexts, QStringList({"SettingsKeys", "Messages", "Filesystem", "GUI Parameters",
                                    "SimulatorOptions", "Results", "ApplicationStrings"}));
}

void CStartupTest::theIconsAreBuiltBeforeAnyText()
{
    QVERIFY(m_translator.lookUps.front().iconsBuilt);
}

void CStartupTest::theDeckKeysAreFilledBetweenSettingsKeysAndMessages()
{
    QVERIFY(!m_translator.of("SettingsKeys").back().deckKeysFilled);
    QVERIFY(m_translator.of("Messages").front().deckKeysFilled);
}

void CStartupTest::theParameterTablesAreBuiltBehindAllTexts()
{
    QVERIFY(!m_translator.lookUps.back().limitsBuilt);
    QCOMPARE(ParameterLimits.size(), std::size_t(41));
    QVERIFY(ParameterLimits.count(std::string()) == 0);
}

void CStartupTest::theMessagesAreLookedUpInTheirOrder()
{
    QStringList texts;
    for (const SLookUp& lookUp : m_translator.of("Messages")) {
        texts << lookUp.text;
    }
    QCOMPARE(texts,
             QStringList({Messages::Warning, Messages::DeckIncompatible, Messages::MaterialToken,
                          Messages::EnterDirectory, Messages::DirectoryMissing,
                          Messages::JobspecNoH5, Messages::JobspecNoCsv, Messages::EnterNumeric,
                          Messages::BondCreationTime, Messages::MistypedValues,
                          Messages::PythonNotOnPath, Messages::CondaNotOnPath}));
}

void CStartupTest::noTextIsLookedUpTwice()
{
    for (const char* context : {"SettingsKeys", "Messages", "Results", "ApplicationStrings"}) {
        QStringList texts;
        for (const SLookUp& lookUp : m_translator.of(context)) {
            texts << lookUp.text;
        }
        QCOMPARE(texts.removeDuplicates(), 0);
    }
}

void CStartupTest::everyModuleIsFilled()
{
    QVERIFY(!Icons::OpenFile.isNull() && !Icons::PeriSimPath.isEmpty());
    QCOMPARE(SettingsKeys::Group, QStringLiteral("/Saving/"));
    QCOMPARE(DeckKeys::Separator, std::string("<>"));
    QVERIFY(Messages::MaterialToken.contains(QStringLiteral("\"<>\"")));
    QCOMPARE(FileNames::DeckExtension, std::string(".zek"));
    QCOMPARE(ParameterCatalogue::Restitution, std::string("Restitution"));
    QVERIFY(!SimulatorOptions::LeadingFlag.empty());
    QCOMPARE(ProgressStrings::GatheringData, QStringLiteral("Gathering Data"));
    QCOMPARE(ApplicationStrings::AboutTitle, QStringLiteral("About Tarnel"));
}

void CStartupTest::numbersAreNeutralAfterwards()
{
    const QTemporaryDir locales;
    QVERIFY(Native::useGermanNumbers(locales.path()));
    QLocale::setDefault(QLocale(QLocale::German));
    QCOMPARE(std::stod("0.5"), 0.0);
    startup::keepNumbersNeutral();
    QCOMPARE(std::stod("0.5"), 0.5);
    QCOMPARE(QLocale(), QLocale::c());
}

// Not the environment of the other tests: that one fills the constants beforehand.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    CStartupTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "startup_test.moc"
