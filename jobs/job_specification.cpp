#include "jobs/job_specification.h"

#include "app/checked.h"
#include "app/constants/file_names.h"
#include "deck/app_settings.h"
#include "deck/deck_files.h"
#include "deck/deck_store.h"
#include "jobs/free_name.h"
#include "jobs/job_matrix.h"
#include "platform/existence.h"
#include "platform/file_operations.h"
#include "platform/paths.h"

#include <QStringList>

#include <filesystem>
#include <fstream>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::string bareName(const std::string& path)
{
    return platform::textOf(platform::pathOf(path).filename());
}

/// Copies what a job needs into its folder.
class CJobFolderWriter
{
public:
    explicit CJobFolderWriter(std::string folder)
        : m_folder(std::move(folder))
        , m_deck(CDeckStore::instance()->creatorData().front().m_sName)
        , m_deckPath(CAppSettings::instance()->text(CAppSettings::ZEKPath).toStdString())
    {
    }

    void copyAll() const
    {
        platform::copyFileUpdating(m_deckPath, inJob(m_deck + FileNames::DeckExtension));
        copyAdditionalFiles();
        copyCoupling();
        copyDataFile();
        copyCompanion();
        copyPostProcessing();
    }

private:
    std::string inJob(const std::string& name) const { return m_folder + "/" + name; }

    /// Every line is on disk before the next copy can fail.
    std::ofstream openList(const std::string& stem) const
    {
        std::ofstream stream(inJob(stem + FileNames::TextExtension));
        stream << std::unitbuf;
        return stream;
    }

    void copyAdditionalFiles() const
    {
        std::ofstream list = openList(FileNames::AdditionalFilesStem);
        list << m_deck << "\n";
        std::vector<std::string> names;
        const QString paths = CAppSettings::instance()->text(CAppSettings::AdditionalFilesPath);
        for (const QString& part : paths.split(';')) {
            const std::string path = part.toStdString();
            if (platform::exists(path)) {
                platform::copyNewFile(path, inJob(bareName(path)));
                names.push_back(bareName(path));
            }
        }
        for (const std::string& name : names) {
            list << name << "\n";
        }
    }

    void copyCoupling() const
    {
        const auto& [location, command] = CDeckStore::instance()->coupling();
        if (location.empty()) {
            return;
        }
        platform::copyNewFile(location, inJob(bareName(location)));
        std::ofstream list = openList(FileNames::CouplingFileStem);
        list << bareName(location) << "\n" << command << "\n";
    }

    void copyDataFile() const
    {
        const std::string folder = inJob(m_deck + FileNames::DataFolderSuffix);
        platform::createDirectory(folder);
        platform::copyIntoFolder(DeckFiles::dataFile(m_deckPath), folder);
    }

    void copyCompanion() const
    {
        const fs::path deck = platform::pathOf(m_deckPath);
        const std::string name = platform::textOf(deck.stem()) + FileNames::CompanionExtension;
        platform::copyFileUpdating(deck.parent_path() / platform::pathOf(name),
                                   inJob(m_deck + FileNames::CompanionExtension));
    }

    void copyPostProcessing() const
    {
        const auto& [mode, arguments] = CDeckStore::instance()->postProcessing();
        if (mode == 1) {
            platform::copyFileUpdating(checked::element(arguments, 0),
                                       inJob(m_deck + FileNames::DfgExtension));
            platform::copyFileUpdating(checked::element(arguments, 1),
                                       inJob(m_deck + FileNames::QsvExtension));
        } else if (mode == 2) {
            copyScript(arguments);
        }
    }

    void copyScript(const std::vector<std::string>& arguments) const
    {
        const std::string& script = checked::element(arguments, 0);
        platform::copyFileUpdating(script, inJob(bareName(script)));
        std::ofstream details = openList(FileNames::PythonDetailsStem);
        for (std::size_t index = 0; index < 3; ++index) {
            details << checked::element(arguments, index) << "\n";
        }
    }

    const std::string m_folder;
    const std::string m_deck;
    const std::string m_deckPath;
};

} // namespace

std::optional<std::string> generateJobFolder(CJobMatrix& matrix, const std::string& saveLocation)
{
    if (!platform::exists(saveLocation)) {
        return std::nullopt;
    }
    const std::string job = firstFreeName(saveLocation + "/" + FileNames::JobFolderStem);
    platform::createDirectory(job);
    if (!matrix.writeJobMatrix(job)) {
        return std::nullopt;
    }
    CJobFolderWriter(job).copyAll();
    return job;
}
