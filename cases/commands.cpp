#include "cases/commands.h"

#include "app/constants/file_names.h"
#include "cases/batch_reader.h"
#include "cases/case_run.h"
#include "cases/cluster.h"
#include "cases/comparison.h"
#include "cases/comparison_plot.h"
#include "cases/interrupt.h"
#include "cases/report.h"
#include "jobs/command_dialect.h"
#include "platform/search_path.h"
#include "results/result_files.h"
#include "results/result_table.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QProcess>
#include <QRegularExpression>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace cases {
namespace {

constexpr int RedrawMs = 200;
constexpr std::size_t RanksShown = 10;

/// The command word of Python where a case needs it. Throws CUsageError where it or conda is
/// missing.
std::string analysisPython(const std::vector<SBatchCase>& batchCases)
{
    const bool needed =
        std::any_of(batchCases.begin(), batchCases.end(), [](const SBatchCase& batchCase) {
            return batchCase.postProcessing.first == 2;
        });
    std::string python;
    bool conda = false;
    for (const std::string& folder : needed ? platform::searchPath() : std::vector<std::string>()) {
        python = python.empty() ? platform::pythonIn(folder) : python;
        conda = conda || platform::condaIn(folder);
    }
    if (needed && (python.empty() || !conda)) {
        throw CUsageError(std::string("the cases have a Python analysis and ") +
                          (python.empty() ? "Python" : "conda") + " is not on the PATH");
    }
    return python;
}

CaseNotes notesOf(const fs::path& caseRoot, const std::vector<SBatchCase>& batchCases)
{
    CaseNotes notes;
    for (const SBatchCase& batchCase : batchCases) {
        notes[batchCase.number] = stateOfCase(caseRoot / batchCase.folder());
    }
    return notes;
}

int status(const SCall& call)
{
    const fs::path caseRoot = call.folder(0);
    const CaseNotes notes = notesOf(caseRoot, readBatchFile(caseRoot));
    const auto tasks = taskStates(caseRoot);
    if (call.isSet("json")) {
        printJson(statusReport(notes, tasks));
        return allDone(notes) ? AllDone : NotAllDone;
    }
    std::string text;
    for (const auto& [number, note] : notes) {
        const auto task = tasks.find(number);
        text += statusLine(number, note, task == tasks.end() ? nullptr : &task->second) + "\n";
    }
    std::cout << text << sumText(notes) << std::endl;
    return allDone(notes) ? AllDone : NotAllDone;
}

/// Runs the cases while the calling thread draws the bar and waits for Ctrl-C.
void supervise(CCaseRun& run, std::size_t atATime, CRunProgress& progress)
{
    CInterrupt interrupt;
    std::thread runner([&] {
        run.run(atATime);
        interrupt.wake();
    });
    for (bool running = true; running;) {
        switch (interrupt.wait(RedrawMs)) {
        case CInterrupt::Event::Signal:
            run.stop();
            break;
        case CInterrupt::Event::Wake:
            running = false;
            break;
        case CInterrupt::Event::Timeout:
            progress.draw();
            break;
        }
    }
    runner.join();
    progress.close();
}

int run(const SCall& call)
{
    const fs::path caseRoot = call.folder(0);
    const std::vector<SBatchCase> all = readBatchFile(caseRoot);
    const CCaseSelection selection = call.selection();
    const std::vector<SBatchCase> selected = selection.select(all, caseRoot);
    const SRunSetup setup{caseRoot, call.simulator(), analysisPython(selected)};
    const std::size_t atATime = call.count("j", std::max(1u, std::thread::hardware_concurrency()));

    const bool json = call.isSet("json");
    std::FILE* const stream = json ? stderr : stdout;
    CRunProgress progress(selected.size(), stream, ::isatty(::fileno(stream)) != 0);
    CCaseRun caseRun(setup, selection, selected, CPreparedFiles::ofRoot(caseRoot, all), progress);
    supervise(caseRun, atATime, progress);

    CaseNotes notes;
    for (const SBatchCase& batchCase : selected) {
        notes[batchCase.number];
    }
    for (const auto& [number, note] : caseRun.outcomes()) {
        notes[number] = note;
    }
    if (json) {
        printJson(statusReport(notes, {}));
    } else {
        std::cout << sumText(notes) << std::endl;
    }
    if (caseRun.lostNotes() != 0) {
        std::cerr << "tarnel-cases: " << caseRun.lostNotes() << " notes could not be written"
                  << std::endl;
    }
    return allDone(notes) && caseRun.lostNotes() == 0 ? AllDone : NotAllDone;
}

/// A command as one could type it.
std::string typed(const QStringList& words)
{
    static const QRegularExpression plain("^[A-Za-z0-9+,./:=@_%-]+$");
    std::string line;
    for (const QString& word : words) {
        const std::string text = word.toStdString();
        line += (line.empty() ? "" : " ") +
                (plain.match(word).hasMatch() ? text : shellDialect().quoted(text));
    }
    return line;
}

void printDryRun(const SSubmission& submission)
{
    std::cout << taskScript(submission) << std::endl;
    for (const QStringList& arguments : submissionCommands(submission, maxArraySize())) {
        std::cout << typed(QStringList("sbatch") + arguments) << std::endl;
    }
}

int submitCases(const SCall& call)
{
    const fs::path caseRoot = call.folder(0);
    const std::vector<SBatchCase> all = readBatchFile(caseRoot);
    const std::vector<SBatchCase> selected = call.selection().select(all, caseRoot);
    SSubmission submission{caseRoot,
                           {},
                           call.count("j", 0),
                           QProcess::splitCommand(call.parser->value("sbatch")),
                           call.simulator()};
    for (const SBatchCase& batchCase : selected) {
        submission.numbers.push_back(batchCase.number);
    }
    if (submission.numbers.empty()) {
        std::cout << "nothing to submit: no case is left" << std::endl;
        return AllDone;
    }
    if (call.isSet("dry-run")) {
        printDryRun(submission);
        return AllDone;
    }
    // Looked at here, while no task has changed anything.
    CPreparedFiles::ofRoot(caseRoot, all);
    QJsonArray list;
    for (const SCaseArray& array : submit(submission)) {
        list.append(array.id);
        if (!call.isSet("json")) {
            std::cout << "submitted job array " << array.id.toStdString() << ", tasks "
                      << array.tasks.toStdString() << " for the cases from " << array.first << " on"
                      << std::endl;
        }
    }
    if (call.isSet("json")) {
        printJson({{"arrays", list}, {"cases", static_cast<double>(selected.size())}});
    }
    return AllDone;
}

int cancel(const SCall& call)
{
    const std::size_t count = cancelTasks(call.folder(0));
    if (call.isSet("json")) {
        printJson({{"cancelled", static_cast<double>(count)}});
    } else {
        std::cout << count << (count == 1 ? " task" : " tasks") << " cancelled" << std::endl;
    }
    return AllDone;
}

/// Where the gathering has to stop it says so on the standard error stream, and what was gathered
/// is written, as the results page does.
void gather(const fs::path& caseRoot, ResultTable& table)
{
    const std::vector<fs::path> files = ResultFiles::csvFiles(caseRoot);
    const auto gatherAll =
        ResultFiles::hasScript(caseRoot) ? gatherScriptResults : gatherSimulatorResults;
    try {
        gatherAll(
            files, [](int) {}, table);
    } catch (const std::exception&) {
        return;
    }
}

int collate(const SCall& call)
{
    const fs::path caseRoot = call.folder(0);
    ResultTable table;
    gather(caseRoot, table);
    const std::string file =
        caseRoot.string() + FileNames::CombinedResultsStem + FileNames::CsvExtension;
    std::ofstream stream(file);
    writeResults(table, stream);
    stream.close();
    if (!stream) {
        throw CUsageError("can't write " + file);
    }
    std::vector<std::size_t> missing;
    for (const SBatchCase& batchCase : readBatchFile(caseRoot)) {
        if (table.count(static_cast<int>(batchCase.number)) == 0) {
            missing.push_back(batchCase.number);
        }
    }
    if (call.isSet("json")) {
        QJsonArray list;
        for (const std::size_t number : missing) {
            list.append(static_cast<double>(number));
        }
        printJson({{"file", QString::fromStdString(file)}, {"withoutResults", list}});
    } else {
        std::cout << "wrote " << file << std::endl;
        if (!missing.empty()) {
            std::cout << "without results: case " << listText(missing) << std::endl;
        }
    }
    return missing.empty() ? AllDone : NotAllDone;
}

int compareCases(const SCall& call)
{
    const fs::path jobFolder = call.folder(0);
    const fs::path caseRoot = call.folder(1);
    std::vector<SMeasurement> measurements;
    for (const QString& text : call.parser->values("measured")) {
        measurements.push_back(measurementFromText(text.toStdString()));
    }
    if (measurements.empty()) {
        throw CUsageError("nothing is measured: give --measured NAME=VALUE[:WEIGHT]");
    }
    const SComparison comparison =
        compare(readVariedParameters(jobFolder), readCombinedResults(caseRoot), measurements);
    const fs::path file = caseRoot / ("Comparison" + FileNames::CsvExtension);
    std::ofstream stream(file);
    writeComparison(comparison, stream);
    stream.close();
    if (!stream) {
        throw CUsageError("can't write " + file.string());
    }
    const QStringList pictures = plotComparison(comparison, caseRoot);
    if (call.isSet("json")) {
        printJson(comparisonReport(comparison));
    } else {
        std::cout << rankingText(comparison, RanksShown) << "wrote " << file.string() << "\nwrote "
                  << pictures.join("\nwrote ").toStdString() << std::endl;
        if (!comparison.withoutResults.empty()) {
            std::cout << "without results: case " << listText(comparison.withoutResults)
                      << std::endl;
        }
    }
    return comparison.withoutResults.empty() ? AllDone : NotAllDone;
}

QCommandLineOption valueOption(const QString& name, const QString& value, const QString& text)
{
    return {name, text, value};
}

} // namespace

QList<SCommand> commands()
{
    const QCommandLineOption json("json", "Report as JSON.");
    const QCommandLineOption only = valueOption(
        "only", "which", "missing (the default), failed, all or a list such as 0,3,5-9.");
    const QCommandLineOption simulator =
        valueOption("simulator", "path", "Use this simulator instead of that of the batch file.");
    const QString root = "CASE-ROOT";
    return {
        {"status", "Tells how every case is getting on.", {root}, {json}, status},
        {"run",
         "Runs cases on this machine.",
         {root},
         {valueOption("j", "n", "So many cases at a time; the default is one for each core."), only,
          simulator, json},
         run},
        {"submit",
         "Submits cases to Slurm as a job array.",
         {root},
         {valueOption("j", "n", "At most so many cases at a time."), only, simulator,
          valueOption("sbatch", "options", "Further options for sbatch."),
          QCommandLineOption("dry-run", "Show script and commands, submit nothing."), json},
         submitCases},
        {"cancel", "Cancels what was submitted to Slurm.", {root}, {json}, cancel},
        {"collate", "Writes the combined file of all results.", {root}, {json}, collate},
        {"compare",
         "Ranks the cases by their distance to measured values.",
         {"JOB-FOLDER", root},
         {valueOption("measured", "name=value[:weight]",
                      "A measured result; may be given several times."),
          json},
         compareCases},
    };
}

} // namespace cases
