#include "adapters/liggghts/case_run.h"

#include "adapters/liggghts/adapter_error.h"
#include "adapters/liggghts/experiment_file.h"
#include "adapters/liggghts/input_script.h"
#include "adapters/liggghts/numbers.h"

#include <fstream>

namespace fs = std::filesystem;

namespace liggghts {
namespace {

void checkExportSettings(const fs::path& file)
{
    std::ifstream stream(file);
    std::string line;
    std::getline(stream, line);
    if (line.rfind("!format=KEYPATHVALUE", 0) != 0) {
        throw CAdapterError(CAdapterError::BadExportSettings,
                            "The export settings \"" + file.string() +
                                "\" are missing or not in the KEYPATHVALUE format.");
    }
}

[[noreturn]] void refuseToWrite(const fs::path& file)
{
    throw CAdapterError(CAdapterError::CannotWrite,
                        "The file \"" + file.string() + "\" can't be written.");
}

void writeText(const fs::path& file, const std::string& text)
{
    std::ofstream stream(file);
    stream << text;
    stream.close();
    if (!stream) {
        refuseToWrite(file);
    }
}

fs::path freshFolder(const fs::path& folder)
{
    std::error_code error;
    fs::remove_all(folder, error);
    if (!error) {
        fs::create_directories(folder, error);
    }
    if (error) {
        refuseToWrite(folder);
    }
    return folder;
}

bool isTimeStep(const fs::path& file)
{
    const std::string stem = file.stem().string();
    return file.extension() == ".h5" && stem != "0" &&
           stem.find_first_not_of("0123456789") == std::string::npos;
}

/// What the results were taken from; the input and the log stay.
void removeStates(const fs::path& folder)
{
    std::vector<fs::path> states;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == ".dump") {
            states.push_back(entry.path());
        }
    }
    for (const fs::path& file : states) {
        std::error_code ignored;
        fs::remove(file, ignored);
    }
}

} // namespace

CCaseRun::CCaseRun(SCommandLine line, Say say)
    : m_line(std::move(line))
    , m_say(std::move(say))
{
}

void CCaseRun::run()
{
    const CCreatorData deck = readDeck(m_line.deck);
    const fs::path file = findExperimentFile(m_line.deck);
    m_experiment = readExperimentFile(file);
    m_values = engineValues(deck, m_experiment);
    m_schedule = scheduleOf(m_line, m_experiment);
    m_geometry = geometryOf(m_experiment, m_schedule);
    if (m_geometry.liftTurns >= m_schedule.saveTurns) {
        throw CAdapterError(CAdapterError::BadCommandLine,
                            "The total time behind -r ends before the cylinder is lifted.");
    }
    if (!m_line.exportSettings.empty()) {
        checkExportSettings(m_line.exportSettings);
    }
    announce(file);
    if (m_line.rewind) {
        removeOldTimeSteps();
    }
    const std::vector<SEngineTask> tasks = prepareTasks();
    runEngines(tasks, m_line.processors, m_say);
    const std::vector<SRunRecord> runs = records(tasks);
    writeTimeSteps(runs.front());
    writeResults(resultsOf(m_experiment, runs));
    for (const SEngineTask& task : tasks) {
        removeStates(task.folder);
    }
}

void CCaseRun::announce(const fs::path& file) const
{
    m_say("orva-liggghts: " + std::string(nameOf(m_experiment.kind)) + " of " +
          m_experiment.particles.name + ", experiment " + file.filename().string() +
          ", time step " + numberText(m_schedule.timeStep) + " s (" +
          numberText(100.0 * m_schedule.timeStep / rayleighTime(m_experiment)) +
          " % of the Rayleigh time)");
    for (const std::string& option : m_line.withoutEffect) {
        m_say("The option " + option + " changes nothing for this engine.");
    }
    for (const std::string& model : m_experiment.leaveOut) {
        m_say("The experiment leaves out \"" + model + "\".");
    }
}

std::vector<SEngineTask> CCaseRun::prepareTasks() const
{
    freshFolder(besideDeck(m_line.deck, "_engine"));
    if (!m_experiment.isHeap()) {
        return {prepareTask("the single contact", "run", 0)};
    }
    std::vector<SEngineTask> tasks;
    for (const unsigned long seed : m_experiment.seeds) {
        const std::string number = std::to_string(seed);
        tasks.push_back(prepareTask("seed " + number, "seed" + number, seed));
    }
    return tasks;
}

SEngineTask CCaseRun::prepareTask(const std::string& name, const std::string& folder,
                                  unsigned long seed) const
{
    SEngineTask task;
    task.name = name;
    task.folder = freshFolder(besideDeck(m_line.deck, "_engine") / folder);
    task.timeStep = m_schedule.timeStep;
    task.count = m_experiment.isHeap() ? m_experiment.count : 1;
    if (m_experiment.kind == EExperiment::Collision && m_experiment.against == "particles") {
        task.count = 2;
    }
    writeText(task.folder / EngineFiles::Input,
              inputScript(m_experiment, m_values, m_schedule, m_geometry, seed));
    if (needsMesh(m_experiment)) {
        writeVesselMesh(m_experiment, m_geometry, task.folder / EngineFiles::Mesh);
    }
    return task;
}

std::vector<SRunRecord> CCaseRun::records(const std::vector<SEngineTask>& tasks) const
{
    std::vector<SRunRecord> runs;
    for (const SEngineTask& task : tasks) {
        SRunRecord run;
        run.states = readSaves(task.folder);
        run.samples = readSamples(task.folder / EngineFiles::Samples);
        run.timeStep = m_schedule.timeStep;
        if (run.states.size() < 2) {
            throw CAdapterError(CAdapterError::EngineFailed,
                                "The engine's run of " + task.name + " saved no states.");
        }
        runs.push_back(std::move(run));
    }
    return runs;
}

void CCaseRun::removeOldTimeSteps() const
{
    std::vector<fs::path> old;
    for (const auto& entry : fs::directory_iterator(dataFolderOf(m_line.deck))) {
        if (isTimeStep(entry.path())) {
            old.push_back(entry.path());
        }
    }
    for (const fs::path& file : old) {
        fs::remove(file);
    }
}

/// Of the first run, whose states stand for all.
void CCaseRun::writeTimeSteps(const SRunRecord& run) const
{
    const std::size_t first = m_line.saveInterval > 0.0 ? 1 : run.states.size() - 1;
    for (std::size_t index = first; index < run.states.size(); ++index) {
        const std::string name = std::to_string(index - first + 1) + ".h5";
        writeTimeStep(dataFolderOf(m_line.deck) / name, run.timeOf(index), run.states[index],
                      m_line.compress);
    }
}

void CCaseRun::writeResults(const SResultTable& table) const
{
    const SResultRow& last = table.rows.back();
    for (std::size_t index = 0; index < table.measures.size(); ++index) {
        m_say(table.measures[index].title + ": " + numberText(last.values[index].mean) +
              ", spread " + numberText(last.values[index].deviation));
    }
    if (!m_line.exportSettings.empty()) {
        writeExport(besideDeck(m_line.deck, ".csv"), m_line.deck.stem().string(), m_experiment,
                    table);
    }
}

} // namespace liggghts
