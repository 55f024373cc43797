#include "adapters/liggghts/engine_run.h"

#include "adapters/liggghts/adapter_error.h"
#include "adapters/liggghts/engine_files.h"
#include "adapters/liggghts/engine_process.h"
#include "adapters/liggghts/input_script.h"
#include "adapters/liggghts/numbers.h"

#include <QStandardPaths>

#include <algorithm>
#include <fstream>
#include <memory>
#include <mutex>
#include <thread>

namespace liggghts {
namespace {

/// What the engine's log says of errors, and of spheres that it found no room for.
std::string complaintsOf(const std::filesystem::path& log)
{
    std::ifstream stream(log);
    std::string complaints;
    std::string line;
    while (std::getline(stream, line)) {
        const bool counts = line.rfind("ERROR", 0) == 0 ||
                            line.find("Less insertions than requested") != std::string::npos;
        if (counts && complaints.find(line) == std::string::npos) {
            complaints += " The engine says: " + trimmed(line);
        }
    }
    return complaints;
}

bool said(const std::vector<std::string>& words, const std::string& word)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// Number of spheres that the engine put in, where it says so.
std::string insertedCount(const std::vector<std::string>& words)
{
    const std::string word = std::string(EngineWords::Inserted) + " ";
    for (const std::string& one : words) {
        if (one.rfind(word, 0) == 0) {
            return one.substr(word.size());
        }
    }
    return {};
}

/// The reason for an end before the last word.
std::string reasonOfEarlyEnd(const SEngineTask& task, const std::vector<std::string>& words)
{
    const std::string inserted = insertedCount(words);
    if (!inserted.empty() && inserted != std::to_string(task.count)) {
        return "found room for " + inserted + " of " + std::to_string(task.count) + " spheres.";
    }
    if (said(words, EngineWords::Unsettled)) {
        return "had spheres that didn't come to rest in the closed vessel.";
    }
    if (said(words, EngineWords::Moving)) {
        return "still had moving spheres at the end of the total time; a longer time behind -r, or "
               "a higher \"rest speed\", lets it end.";
    }
    return "ended before its time.";
}

std::string reasonFromFinalState(const SEngineTask& task)
{
    try {
        const std::size_t count = readDump(task.folder / EngineFiles::Final).spheres.size();
        if (count != task.count) {
            return "has " + std::to_string(count) + " of " + std::to_string(task.count) +
                   " spheres at its end.";
        }
    } catch (const CAdapterError& error) {
        return std::string("left no final state: ") + error.what();
    }
    return {};
}

/// Runs the tasks in their order, a few at once.
class CEngineQueue
{
public:
    CEngineQueue(const std::vector<SEngineTask>& tasks, QString engine, const Say& say)
        : m_tasks(tasks)
        , m_engine(std::move(engine))
        , m_say(say)
    {
    }

    void run(std::size_t atOnce)
    {
        std::vector<std::thread> threads;
        for (std::size_t started = 0; started < std::min(atOnce, m_tasks.size()); ++started) {
            threads.emplace_back([this] { work(); });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        if (!m_complaint.empty()) {
            throw CAdapterError(CAdapterError::EngineFailed, m_complaint);
        }
    }

private:
    /// An engine ends with the thread that started it, which therefore waits for it.
    void work()
    {
        while (CEngineProcess* const process = next()) {
            process->run(m_engine);
            take(process->complaint());
        }
    }

    /// Null where nothing is left to be run.
    CEngineProcess* next()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_complaint.empty() || m_processes.size() == m_tasks.size()) {
            return nullptr;
        }
        m_processes.push_back(std::make_unique<CEngineProcess>(
            m_tasks[m_processes.size()], [this](const std::string& line) { say(line); }));
        return m_processes.back().get();
    }

    /// The first complaint counts; what the others say of their early end doesn't.
    void take(const std::string& complaint)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (complaint.empty() || !m_complaint.empty()) {
            return;
        }
        m_complaint = complaint;
        for (const std::unique_ptr<CEngineProcess>& process : m_processes) {
            process->end();
        }
    }

    void say(const std::string& line)
    {
        const std::lock_guard<std::mutex> lock(m_sayMutex);
        m_say(line);
    }

    const std::vector<SEngineTask>& m_tasks;
    QString m_engine;
    const Say& m_say;
    std::mutex m_sayMutex;
    std::mutex m_mutex;
    std::vector<std::unique_ptr<CEngineProcess>> m_processes;
    std::string m_complaint;
};

} // namespace

QString findEngine()
{
    QString engine = QStandardPaths::findExecutable(QStringLiteral("liggghts"));
    if (engine.isEmpty()) {
        throw CAdapterError(CAdapterError::EngineFailed,
                            "There is no program \"liggghts\" on the search path.");
    }
    return engine;
}

void runEngines(const std::vector<SEngineTask>& tasks, unsigned atOnce, const Say& say)
{
    CEngineQueue(tasks, findEngine(), say).run(std::max(1U, atOnce));
}

std::string complaintAbout(const SEngineTask& task, bool crashed, int exitCode,
                           const std::vector<std::string>& words)
{
    std::string reason;
    if (crashed) {
        reason = "was ended or crashed.";
    } else if (!said(words, EngineWords::Done)) {
        reason = reasonOfEarlyEnd(task, words);
    } else if (exitCode != 0) {
        reason = "ended with the exit code " + std::to_string(exitCode) + ".";
    } else {
        reason = reasonFromFinalState(task);
    }
    if (reason.empty()) {
        return {};
    }
    return "The engine's run of " + task.name + " " + reason +
           complaintsOf(task.folder / EngineFiles::Log);
}

} // namespace liggghts
