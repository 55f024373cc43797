#include "cases/cluster.h"

#include "cases/case_folder.h"
#include "cases/case_selection.h"
#include "cases/external_tool.h"
#include "jobs/command_dialect.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <fstream>

namespace fs = std::filesystem;

namespace cases {
namespace {

const QString PreviousArray = QStringLiteral("%PREVIOUS%");

QString asQString(const fs::path& path)
{
    return QString::fromStdString(path.string());
}

fs::path scriptFile(const fs::path& caseRoot)
{
    return companionFolder(caseRoot) / "task.sh";
}

fs::path arraysFile(const fs::path& caseRoot)
{
    return companionFolder(caseRoot) / "arrays.json";
}

/// The numbers in blocks in which all have the same quotient.
std::map<std::size_t, std::vector<std::size_t>> blocksOf(const std::vector<std::size_t>& numbers,
                                                         std::size_t arraySize)
{
    std::map<std::size_t, std::vector<std::size_t>> blocks;
    for (const std::size_t number : numbers) {
        blocks[number / arraySize * arraySize].push_back(number % arraySize);
    }
    return blocks;
}

QString arrayList(const std::vector<std::size_t>& tasks, std::size_t atATime)
{
    QString list = QString::fromStdString(listText(tasks));
    return atATime == 0 ? list : QString("%1%%2").arg(list).arg(atATime);
}

void writeScript(const SSubmission& submission)
{
    fs::create_directory(companionFolder(submission.caseRoot));
    std::ofstream stream(scriptFile(submission.caseRoot), std::ios::binary);
    stream << taskScript(submission);
    if (!stream.flush()) {
        throw CClusterError("can't write " + scriptFile(submission.caseRoot).string());
    }
}

void keepArrays(const fs::path& caseRoot, const std::vector<SCaseArray>& arrays)
{
    QJsonArray list;
    for (const SCaseArray& array : arrays) {
        list.append(QJsonObject{
            {"id", array.id}, {"first", static_cast<double>(array.first)}, {"tasks", array.tasks}});
    }
    QSaveFile file(asQString(arraysFile(caseRoot)));
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(list).toJson()) < 0 ||
        !file.commit()) {
        throw CClusterError("can't write " + arraysFile(caseRoot).string());
    }
}

/// The id of the array that sbatch made of a block.
QString submitBlock(QStringList arguments, const QString& previous)
{
    arguments.replaceInStrings(PreviousArray, previous);
    const SToolAnswer answer = callTool("sbatch", arguments);
    if (!answer.started) {
        throw CClusterError("there is no Slurm on this machine: sbatch can't be started");
    }
    QString id = answer.output.trimmed().section(';', 0, 0);
    if (!answer.good() || id.isEmpty()) {
        throw CClusterError("sbatch refused the job: " + answer.complaint().toStdString());
    }
    return id;
}

STaskState taskOf(const QStringList& fields)
{
    return {fields[0] + "_" + fields[1], fields[2], fields[3], fields[4]};
}

QStringList idsOf(const std::vector<SCaseArray>& arrays)
{
    QStringList ids;
    for (const SCaseArray& array : arrays) {
        ids.append(array.id);
    }
    return ids;
}

} // namespace

std::size_t maxArraySize()
{
    const SToolAnswer answer = callTool("scontrol", {"show", "config"});
    if (!answer.started) {
        throw CClusterError("there is no Slurm on this machine: scontrol can't be started");
    }
    for (const QString& line : answer.output.split('\n')) {
        if (line.startsWith("MaxArraySize")) {
            const std::size_t size = line.section('=', 1).trimmed().toULong();
            if (size > 0) {
                return size;
            }
        }
    }
    throw CClusterError("Slurm doesn't tell its MaxArraySize: " + answer.complaint().toStdString());
}

std::string taskScript(const SSubmission& submission)
{
    const auto quoted = shellDialect().quoted;
    std::string call = quoted(QCoreApplication::applicationFilePath().toStdString()) + " run " +
                       quoted(submission.caseRoot.string()) +
                       " -j 1 --only \"$((SLURM_ARRAY_TASK_ID + $1))\"";
    if (!submission.simulator.empty()) {
        call += " --simulator " + quoted(submission.simulator);
    }
    return "#!/bin/sh\n"
           "# One task of a job array runs one case; the argument is the case of task 0.\n"
           "exec " +
           call + "\n";
}

std::vector<QStringList> submissionCommands(const SSubmission& submission, std::size_t arraySize)
{
    std::vector<QStringList> commands;
    for (const auto& [first, tasks] : blocksOf(submission.numbers, arraySize)) {
        QStringList arguments{
            "--parsable", "--job-name=" + asQString(submission.caseRoot.filename()),
            "--output=" + asQString(companionFolder(submission.caseRoot) / "task_%A_%a.txt"),
            "--array=" + arrayList(tasks, submission.atATime)};
        if (!commands.empty() && submission.atATime != 0) {
            arguments << "--dependency=afterany:" + PreviousArray;
        }
        arguments << submission.options << asQString(scriptFile(submission.caseRoot))
                  << QString::number(first);
        commands.push_back(arguments);
    }
    return commands;
}

std::vector<SCaseArray> submit(const SSubmission& submission)
{
    const std::size_t arraySize = maxArraySize();
    const std::vector<QStringList> commands = submissionCommands(submission, arraySize);
    writeScript(submission);
    std::vector<SCaseArray> all = submittedArrays(submission.caseRoot);
    std::vector<SCaseArray> fresh;
    QString previous;
    for (const QStringList& command : commands) {
        previous = submitBlock(command, previous);
        const QString list = command.filter("--array=").first().section('=', 1);
        fresh.push_back({previous, command.last().toULong(), list});
        all.push_back(fresh.back());
        // Kept at once: what was submitted has to be found again whatever comes next.
        keepArrays(submission.caseRoot, all);
    }
    return fresh;
}

std::vector<SCaseArray> submittedArrays(const fs::path& caseRoot)
{
    std::vector<SCaseArray> arrays;
    QFile file(asQString(arraysFile(caseRoot)));
    if (!file.open(QIODevice::ReadOnly)) {
        return arrays;
    }
    const QJsonArray list = QJsonDocument::fromJson(file.readAll()).array();
    for (const auto value : list) {
        const QJsonObject object = value.toObject();
        arrays.push_back({object.value("id").toString(),
                          static_cast<std::size_t>(object.value("first").toDouble()),
                          object.value("tasks").toString()});
    }
    return arrays;
}

std::map<std::size_t, STaskState> taskStates(const fs::path& caseRoot)
{
    std::map<std::size_t, STaskState> states;
    const std::vector<SCaseArray> arrays = submittedArrays(caseRoot);
    if (arrays.empty()) {
        return states;
    }
    // Arrays that have ended are unknown to the queue, which is no news.
    const SToolAnswer answer =
        callTool("squeue", {"-h", "-r", "-o", "%F|%K|%T|%N|%r", "-j", idsOf(arrays).join(',')});
    for (const QString& line : answer.output.split('\n')) {
        const QStringList fields = line.split('|');
        for (const SCaseArray& array : arrays) {
            if (fields.size() >= 5 && fields[0] == array.id) {
                states[array.first + fields[1].toULong()] = taskOf(fields);
            }
        }
    }
    return states;
}

std::size_t cancelTasks(const fs::path& caseRoot)
{
    const std::size_t count = taskStates(caseRoot).size();
    if (count == 0) {
        return 0;
    }
    const SToolAnswer answer = callTool("scancel", idsOf(submittedArrays(caseRoot)));
    if (!answer.good()) {
        throw CClusterError("scancel failed: " + answer.complaint().toStdString());
    }
    return count;
}

} // namespace cases
