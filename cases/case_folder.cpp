#include "cases/case_folder.h"

#include "app/constants/file_names.h"
#include "cases/case_note.h"
#include "platform/file_operations.h"
#include "platform/text_lines.h"

#include <QByteArray>
#include <QSaveFile>
#include <QString>

#include <cerrno>
#include <system_error>

namespace fs = std::filesystem;

namespace cases {
namespace {

/// Stands for the stem, which no file name can hold on the platform that made the batch file.
constexpr char StemMark = '*';

/// The name with the case's own stem taken out, so that it is the same for all cases.
std::string generalName(const std::string& name, const SBatchCase& batchCase)
{
    const std::string stem = batchCase.stem();
    const bool ownName =
        name.compare(0, stem.size(), stem) == 0 &&
        (name.size() == stem.size() || name[stem.size()] == '.' || name[stem.size()] == '_');
    return ownName ? StemMark + name.substr(stem.size()) : name;
}

/// What stands in every case by its commands, whatever the folder looks like.
std::set<std::string> commandedNames(const SBatchCase& batchCase)
{
    const std::string stem(1, StemMark);
    std::set<std::string> names{stem + FileNames::DeckExtension,
                                stem + FileNames::CompanionExtension,
                                stem + FileNames::DataFolderSuffix};
    if (batchCase.postProcessing.first == 1) {
        names.insert({stem + FileNames::DfgExtension, stem + FileNames::QsvExtension});
    } else if (batchCase.postProcessing.first == 2) {
        names.insert(batchCase.postProcessing.second.front());
    }
    if (!batchCase.coupling.first.empty()) {
        names.insert(batchCase.coupling.first);
    }
    return names;
}

std::set<std::string> namesIn(const fs::path& caseRoot, const SBatchCase& batchCase)
{
    std::set<std::string> names = commandedNames(batchCase);
    for (const fs::directory_entry& entry : fs::directory_iterator(caseRoot / batchCase.folder())) {
        names.insert(generalName(entry.path().filename().string(), batchCase));
    }
    return names;
}

bool neverRan(const fs::path& caseRoot, const SBatchCase& batchCase)
{
    const fs::path folder = caseRoot / batchCase.folder();
    return fs::is_directory(folder) && !fs::exists(lockFile(folder));
}

std::set<std::string> preparedNames(const fs::path& caseRoot,
                                    const std::vector<SBatchCase>& batchCases)
{
    for (const SBatchCase& batchCase : batchCases) {
        if (neverRan(caseRoot, batchCase)) {
            return namesIn(caseRoot, batchCase);
        }
    }
    return batchCases.empty() ? std::set<std::string>() : commandedNames(batchCases.front());
}

fs::path listFile(const fs::path& caseRoot)
{
    return companionFolder(caseRoot) / "prepared.txt";
}

void keep(const fs::path& caseRoot, const std::set<std::string>& names)
{
    std::string text;
    for (const std::string& name : names) {
        text += name + "\n";
    }
    fs::create_directory(companionFolder(caseRoot));
    QSaveFile file(QString::fromStdString(listFile(caseRoot).string()));
    if (!file.open(QIODevice::WriteOnly) || file.write(QByteArray::fromStdString(text)) < 0 ||
        !file.commit()) {
        throw fs::filesystem_error("write", listFile(caseRoot),
                                   std::make_error_code(std::errc::io_error));
    }
}

} // namespace

fs::path companionFolder(const fs::path& caseRoot)
{
    return caseRoot / "tarnel-cases";
}

CPreparedFiles::CPreparedFiles(std::set<std::string> names)
    : m_names(std::move(names))
{
}

CPreparedFiles CPreparedFiles::ofRoot(const fs::path& caseRoot,
                                      const std::vector<SBatchCase>& batchCases)
{
    const std::vector<std::string> lines = platform::readLines(listFile(caseRoot).string());
    std::set<std::string> names(lines.begin(), lines.end());
    if (names.empty()) {
        names = preparedNames(caseRoot, batchCases);
        keep(caseRoot, names);
    }
    return CPreparedFiles(std::move(names));
}

void CPreparedFiles::putBack(const fs::path& caseRoot, const SBatchCase& batchCase) const
{
    const fs::path folder = caseRoot / batchCase.folder();
    std::vector<fs::path> left;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        const bool ours = entry.path() == lockFile(folder) || entry.path() == noteFile(folder);
        if (!ours && m_names.count(generalName(name, batchCase)) == 0) {
            left.push_back(entry.path());
        }
    }
    const fs::path data = folder / (batchCase.stem() + FileNames::DataFolderSuffix);
    if (fs::is_directory(data)) {
        for (const fs::directory_entry& entry : fs::directory_iterator(data)) {
            if (entry.path().filename() != FileNames::DataFileName) {
                left.push_back(entry.path());
            }
        }
    }
    for (const fs::path& path : left) {
        platform::removeTree(path);
    }
}

} // namespace cases
