#include "jobs/case_folder_writer.h"

#include "app/checked.h"
#include "app/constants/file_names.h"
#include "deck/app_settings.h"
#include "deck/deck_files.h"
#include "deck/deck_serializer.h"
#include "platform/file_operations.h"
#include "platform/paths.h"

#include <QStringList>

#include <H5Cpp.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

std::string setting(CAppSettings::Selector selector)
{
    return CAppSettings::instance()->text(selector).toStdString();
}

std::string deckName()
{
    const std::vector<CCreatorData>& records = CDeckStore::instance()->creatorData();
    return records.empty() ? std::string() : records.front().m_sName;
}

std::vector<std::string> additionalFiles()
{
    std::vector<std::string> files;
    const QString paths = CAppSettings::instance()->text(CAppSettings::AdditionalFilesPath);
    for (const QString& path : paths.split(';', Qt::SkipEmptyParts)) {
        files.push_back(path.toStdString());
    }
    return files;
}

void copyUnderItsName(const std::string& file, const std::string& folder)
{
    const std::string name = platform::textOf(platform::pathOf(file).filename());
    platform::copyFileUpdating(file, folder + "/" + name);
}

} // namespace

CCaseFolderWriter::CCaseFolderWriter(std::string caseRoot)
    : m_caseRoot(std::move(caseRoot))
    , m_deck(deckName())
    , m_deckPath(setting(CAppSettings::ZEKPath))
    , m_additionalFiles(additionalFiles())
    , m_coupling(CDeckStore::instance()->coupling())
    , m_postProcessing(CDeckStore::instance()->postProcessing())
{
}

void CCaseFolderWriter::write(std::size_t number, CCreatorData& record) const
{
    const std::string folder = m_caseRoot + "/" + FileNames::CasePrefix + std::to_string(number);
    const std::string stem = folder + "/" + m_deck + std::to_string(number);
    platform::createDirectory(folder);
    copyDeck(stem);
    copyAdditionalFiles(folder);
    copyPostProcessing(folder, stem);
    copyCoupling(folder);
    writeData(stem, record);
}

void CCaseFolderWriter::copyDeck(const std::string& stem) const
{
    const std::string withoutExtension =
        m_deckPath.substr(0, m_deckPath.size() - FileNames::DeckExtension.size());
    platform::copyFileUpdating(m_deckPath, stem + FileNames::DeckExtension);
    platform::copyFileUpdating(withoutExtension + FileNames::CompanionExtension,
                               stem + FileNames::CompanionExtension);
}

void CCaseFolderWriter::copyAdditionalFiles(const std::string& folder) const
{
    for (const std::string& file : m_additionalFiles) {
        copyUnderItsName(file, folder);
    }
}

void CCaseFolderWriter::copyPostProcessing(const std::string& folder, const std::string& stem) const
{
    const auto& [mode, arguments] = m_postProcessing;
    if (mode == 1) {
        platform::copyFileUpdating(checked::element(arguments, 0), stem + FileNames::DfgExtension);
        platform::copyFileUpdating(checked::element(arguments, 1), stem + FileNames::QsvExtension);
    } else if (mode == 2) {
        copyUnderItsName(checked::element(arguments, 0), folder);
    }
}

void CCaseFolderWriter::copyCoupling(const std::string& folder) const
{
    const std::string& location = m_coupling.first;
    if (!location.empty()) {
        const fs::path job = platform::pathOf(m_deckPath).parent_path();
        copyUnderItsName(platform::textOf(job) + "/" + location, folder);
    }
}

void CCaseFolderWriter::writeData(const std::string& stem, CCreatorData& record) const
{
    const std::string folder = stem + FileNames::DataFolderSuffix;
    const std::string dataFile = folder + "/" + FileNames::DataFileName;
    platform::createDirectory(folder);
    platform::copyFileUpdating(DeckFiles::dataFile(m_deckPath), dataFile);

    H5::H5File file(QString::fromStdString(dataFile).toLocal8Bit().toStdString(), H5F_ACC_RDWR);
    CDeckSerializer().walk(file, record, CDeckSerializer::Write);
    file.close();
}
