#include "jobs/case_commands.h"

#include "app/checked.h"
#include "app/constants/file_names.h"
#include "deck/app_settings.h"
#include "jobs/command_dialect.h"
#include "platform/paths.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace {

CommandContext contextOfStore(const CommandDialect& dialect)
{
    const CDeckStore* store = CDeckStore::instance();
    const std::vector<CCreatorData>& records = store->creatorData();
    CommandContext context;
    context.m_dialect = &dialect;
    context.m_bLocal = false;
    context.m_sExecutable =
        CAppSettings::instance()->text(CAppSettings::OrvaExeLocation).toStdString();
    context.m_sOptions = store->simulatorOptions();
    context.m_sDeck = records.empty() ? std::string() : records.front().m_sName;
    context.m_sPython = FileNames::Python;
    context.m_coupling = store->coupling();
    context.m_postProcessing = store->postProcessing();
    context.m_recordCount = records.size();
    return context;
}

/// A job may have been named by a relative path, yet a simulator runs in its case root.
std::string absolutePath(const std::string& path)
{
    return path.empty() ? path : platform::textOf(fs::absolute(platform::pathOf(path)));
}

/// Composes the commands of one case.
class Composer
{
public:
    Composer(const CommandContext& context, std::size_t number)
        : m_context(context)
        , m_dialect(*context.m_dialect)
        , m_number(number)
        , m_deck(context.m_sDeck + std::to_string(number))
        , m_folder(FileNames::CasePrefix + std::to_string(number))
    {
    }

    std::string simulator() const
    {
        std::string command = simulatorWord(m_context.m_sExecutable) + " " +
                              FileNames::InputArgument + " " +
                              simulatorWord(inFolder(m_deck + FileNames::DeckExtension));
        command +=
            m_context.m_bLocal ? m_context.m_sOptions : m_dialect.options(m_context.m_sOptions);
        if (m_context.m_postProcessing.first == 1) {
            command += " " + FileNames::ExportArgument + " " + simulatorWord(dfgPath());
        }
        return command;
    }

    std::string coupling() const
    {
        const auto& [location, command] = m_context.m_coupling;
        if (location.empty()) {
            return {};
        }
        return m_dialect.quoted(caseFolder() + m_dialect.folderSeparator + location) + " " +
               command;
    }

    std::string python() const
    {
        if (m_context.m_postProcessing.first != 2) {
            return {};
        }
        const std::string& next = m_dialect.separator;
        return lead() + FileNames::ChangeDirectory + " " + m_dialect.quoted(caseFolder()) + next +
               FileNames::CondaActivate + m_dialect.condaInput + next + scriptCall() + next +
               FileNames::CondaDeactivate + m_dialect.condaInput + next +
               FileNames::ChangeDirectory + " " + FileNames::ParentDirectory + " " + tail();
    }

private:
    /// No interpreter reads the simulator's command of a local run: double quotes hold everywhere.
    std::string simulatorWord(const std::string& path) const
    {
        return m_context.m_bLocal ? "\"" + path + "\"" : m_dialect.quoted(path);
    }

    std::string caseFolder() const { return m_context.m_sPrefix + m_folder; }
    std::string inFolder(const std::string& name) const { return caseFolder() + "/" + name; }

    std::string dfgPath() const
    {
        return m_context.m_bLocal ? absolutePath(argument(0))
                                  : inFolder(m_deck + FileNames::DfgExtension);
    }

    const std::string& argument(std::size_t index) const
    {
        return checked::element(m_context.m_postProcessing.second, index);
    }

    std::string scriptCall() const
    {
        const std::string script = platform::textOf(platform::pathOf(argument(0)).filename());
        return m_context.m_sPython + " " + m_dialect.quoted(script) + " " + deckReference() + " " +
               argument(2);
    }

    std::string deckReference() const
    {
        if (argument(1) == FileNames::NoDeckFlag) {
            return {};
        }
        const std::string deck = m_deck + FileNames::DeckExtension;
        return argument(1) + " " + m_dialect.quoted(m_context.m_bLocal ? inFolder(deck) : deck);
    }

    std::string lead() const
    {
        if (!m_context.m_bLocal) {
            return m_dialect.chain;
        }
        const std::string& preparation = m_dialect.preparation;
        return preparation.empty() ? " " : " " + preparation + m_dialect.separator;
    }

    std::string tail() const
    {
        const bool last = m_number + 2 == m_context.m_recordCount;
        return m_context.m_bLocal || last ? std::string() : m_dialect.continuation;
    }

    const CommandContext& m_context;
    const CommandDialect& m_dialect;
    const std::size_t m_number;
    const std::string m_deck;
    const std::string m_folder;
};

} // namespace

CommandContext localContext(const std::string& caseRoot, const std::string& pythonWord)
{
    CommandContext context = contextOfStore(localDialect());
    context.m_bLocal = true;
    context.m_sPrefix = absolutePath(caseRoot) + "/";
    context.m_sPython = pythonWord;
    return context;
}

CommandContext distributedContext(const CommandDialect& dialect)
{
    return contextOfStore(dialect);
}

CaseCommands composeCommands(const CommandContext& context, std::size_t caseNumber)
{
    const Composer composer(context, caseNumber);
    return {composer.simulator(), composer.coupling(), composer.python()};
}
