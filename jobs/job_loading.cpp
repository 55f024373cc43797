#include "jobs/job_loading.h"

#include "app/constants/file_names.h"
#include "app/constants/messages.h"
#include "app/message_box.h"
#include "deck/app_settings.h"
#include "deck/deck_files.h"
#include "deck/deck_loading.h"
#include "deck/deck_serializer.h"
#include "deck/deck_store.h"
#include "jobs/job_file_reader.h"
#include "jobs/job_matrix.h"
#include "platform/existence.h"
#include "platform/paths.h"
#include "platform/text_lines.h"

#include <algorithm>
#include <vector>

namespace {

/// Makes the job's copies the working files; returns the deck's name.
std::string takeFiles(const std::string& job)
{
    const std::vector<std::string> lines =
        platform::readLines(job + "/" + FileNames::AdditionalFilesStem + FileNames::TextExtension);
    std::string deck = lines.empty() ? std::string() : lines.front();
    std::string additionalFiles;
    for (std::size_t index = 1; index < lines.size(); ++index) {
        additionalFiles += platform::joinAsPath(job, lines[index]) + ";";
    }
    CAppSettings* settings = CAppSettings::instance();
    settings->setValue(CAppSettings::AdditionalFilesPath, QString::fromStdString(additionalFiles));
    settings->setValue(CAppSettings::ZEKPath, QString::fromStdString(platform::joinAsPath(
                                                  job, deck + FileNames::DeckExtension)));
    return deck;
}

void takeCoupling(const std::string& job)
{
    const std::string file = job + "/" + FileNames::CouplingFileStem + FileNames::TextExtension;
    CDeckStore::Coupling coupling;
    bool isLocation = true;
    for (const std::string& line : platform::readLines(file)) {
        (isLocation ? coupling.first : coupling.second) = line;
        isLocation = !isLocation;
    }
    CDeckStore::instance()->setCoupling(coupling);
}

CDeckStore::PostProcessing postProcessingOf(const std::string& job, const std::string& deck)
{
    const std::string stem = job + "/" + deck;
    if (platform::exists(stem + FileNames::DfgExtension)) {
        return {1, {stem + FileNames::DfgExtension, stem + FileNames::QsvExtension}};
    }
    const std::string details = job + "/" + FileNames::PythonDetailsStem + FileNames::TextExtension;
    if (platform::exists(details)) {
        std::vector<std::string> arguments = platform::readLines(details);
        arguments.resize(std::min<std::size_t>(arguments.size(), 3));
        return {2, arguments};
    }
    return {0, {std::string()}};
}

/// Makes the deck the only record of the store; false where its data file is missing.
bool takeDeck()
{
    const QString path = CAppSettings::instance()->text(CAppSettings::ZEKPath);
    if (!platform::exists(DeckFiles::dataFile(path.toStdString()))) {
        MessageBox::information(Messages::Warning, Messages::JobspecNoH5);
        return false;
    }
    std::vector<CCreatorData>& records = CDeckStore::instance()->creatorData();
    records.clear();
    CCreatorData record(DeckFiles::deckName(path.toStdString()));
    CDeckSerializer serializer;
    DeckLoading::readDataFile(serializer, DeckFiles::dataFile(path.toLocal8Bit().toStdString()),
                              record);
    records.push_back(std::move(record));
    return true;
}

} // namespace

bool loadJobFolder(const std::string& job, CJobMatrix& matrix, CJobFileReader& reader,
                   const CaseListener& onCase)
{
    const std::string deck = takeFiles(job);
    takeCoupling(job);
    CDeckStore::instance()->setPostProcessing(postProcessingOf(job, deck));
    if (!takeDeck()) {
        return false;
    }
    const std::string matrixPath = job + "/" + FileNames::JobMatrixStem + FileNames::CsvExtension;
    if (!platform::exists(matrixPath)) {
        MessageBox::information(Messages::Warning, Messages::JobspecNoCsv);
        return false;
    }
    int caseNumber = 0;
    const CaseMatrix cases = reader.readJobMatrix(matrixPath);
    CDeckStore::instance()->creatorData().reserve(cases.size() + 1);
    for (const CaseRow& row : cases) {
        matrix.createCaseRecord(row, static_cast<std::size_t>(caseNumber));
        onCase(deck, caseNumber++);
    }
    return true;
}
