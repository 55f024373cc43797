#include "deck/deck_store.h"
#include "jobs/job_file_reader.h"
#include "jobs/job_loading.h"
#include "jobs/job_matrix.h"
#include "samples/deck_maker.h"
#include "tests/fuzz/scratch_folder.h"
#include "tests/fuzz/targets.h"

#include <H5Cpp.h>

#include <array>
#include <filesystem>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

constexpr std::string_view DIVIDER = "%%\n";

/// A record with a few values of several kinds, so that the fields of a row are consumed.
const CCreatorData& deckRecord()
{
    static const CCreatorData record = []() {
        CCreatorData deck("hopper");
        deck.m_interactions = {{"glass<>steel", {0.1, 0.2, 0.3}}};
        deck.m_surfaceSurface.m_hertzMindlinJkr = {{"glass<>glass", 1.0}};
        deck.m_surfaceSurface.m_bondingTorqueFeedback = {"Active", true};
        deck.m_surfaceGeometry.m_standardRollingFriction = {"Active", true};
        return deck;
    }();
    return record;
}

/// A job whose deck is "hopper", with no list in it.
const fs::path& jobFolder()
{
    static const fs::path folder = []() {
        const fs::path job = ScratchFolder::path() / "JobSpec";
        fs::create_directory(job);
        writeDeck(plainDeck(14), job, "hopper");
        ScratchFolder::write("JobSpec/input_jobID-Matrix.csv", "Job #,Options\n0,0.5,-c -p 2\n");
        return job;
    }();
    return folder;
}

/// Lays the lists that are there, removes those that are not.
void layLists(std::string_view bytes)
{
    jobFolder();
    bool more = true;
    for (const char* name :
         {"Additional File Directory.txt", "Coupling File Directory.txt", "PyDetails.txt"}) {
        const fs::path file = fs::path("JobSpec") / name;
        if (!more) {
            fs::remove(ScratchFolder::path() / file);
            continue;
        }
        const std::size_t end = bytes.find(DIVIDER);
        more = end != std::string_view::npos;
        ScratchFolder::write(file, bytes.substr(0, end));
        bytes.remove_prefix(more ? end + DIVIDER.size() : bytes.size());
    }
}

} // namespace

void FuzzTargets::jobMatrix(std::string_view bytes)
{
    const fs::path file = ScratchFolder::write("matrix.csv", bytes);
    std::vector<CCreatorData>& records = CDeckStore::instance()->creatorData();
    records = {deckRecord()};
    CJobMatrix matrix;
    std::size_t caseNumber = 0;
    for (const CaseRow& row : CJobFileReader().readJobMatrix(file.string())) {
        matrix.createCaseRecord(row, caseNumber++);
    }
    records.clear();
}

void FuzzTargets::jobLists(std::string_view bytes)
{
    layLists(bytes);
    CJobMatrix matrix;
    CJobFileReader reader;
    try {
        loadJobFolder(jobFolder().string(), matrix, reader, [](const std::string&, int) {});
    } catch (const fs::filesystem_error&) {
        // The existence of a file that can't be asked for.
    } catch (const H5::FileIException&) {
        // Something else lies where the deck's data should.
    }
    CDeckStore::instance()->creatorData().clear();
}
