#include "cases/report.h"

#include "cases/run_progress.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <array>
#include <cstdio>

namespace cases {
namespace {

constexpr std::array<CaseState, 5> StatesOfSum{CaseState::Done, CaseState::Failed,
                                               CaseState::Running, CaseState::Waiting,
                                               CaseState::Interrupted};

std::size_t countOf(const CaseNotes& notes, CaseState state)
{
    return static_cast<std::size_t>(
        std::count_if(notes.begin(), notes.end(),
                      [state](const auto& entry) { return entry.second.state == state; }));
}

QJsonObject toJson(const STaskState& task)
{
    return {{"job", task.job}, {"state", task.state}, {"node", task.node}, {"reason", task.reason}};
}

QJsonArray toJson(const std::vector<std::string>& texts)
{
    QJsonArray array;
    for (const std::string& text : texts) {
        array.append(QString::fromStdString(text));
    }
    return array;
}

QJsonArray toJson(const std::vector<double>& numbers)
{
    QJsonArray array;
    for (const double number : numbers) {
        array.append(number);
    }
    return array;
}

/// Cells in columns of even width, two blanks between them.
std::string asTable(const std::vector<std::vector<std::string>>& rows)
{
    std::vector<std::size_t> widths(rows.front().size());
    for (const std::vector<std::string>& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    std::string text;
    for (const std::vector<std::string>& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            const bool last = i + 1 == row.size();
            text += row[i] + (last ? "\n" : std::string(widths[i] - row[i].size() + 2, ' '));
        }
    }
    return text;
}

} // namespace

std::string sumText(const CaseNotes& notes)
{
    std::string text = std::to_string(notes.size()) + (notes.size() == 1 ? " case:" : " cases:");
    for (const CaseState state : StatesOfSum) {
        text += (state == StatesOfSum.front() ? " " : ", ") +
                std::to_string(countOf(notes, state)) + " " + nameOf(state).toStdString();
    }
    return text;
}

std::string statusLine(std::size_t number, const SCaseNote& note, const STaskState* task)
{
    std::string line = "case " + std::to_string(number) + ": " + sentenceOf(note);
    if (task != nullptr) {
        line += " (Slurm " + task->job.toStdString() + ": " + task->state.toStdString();
        const QString where = task->node.isEmpty() ? task->reason : "on " + task->node;
        line += where.isEmpty() ? ")" : ", " + where.toStdString() + ")";
    }
    return line;
}

QJsonObject statusReport(const CaseNotes& notes, const std::map<std::size_t, STaskState>& tasks)
{
    QJsonArray list;
    for (const auto& [number, note] : notes) {
        QJsonObject entry = toJson(note);
        entry["case"] = static_cast<double>(number);
        const auto task = tasks.find(number);
        if (task != tasks.end()) {
            entry["slurm"] = toJson(task->second);
        }
        list.append(entry);
    }
    QJsonObject sum;
    for (const CaseState state : StatesOfSum) {
        sum[nameOf(state)] = static_cast<double>(countOf(notes, state));
    }
    return {{"cases", list}, {"sum", sum}};
}

QJsonObject comparisonReport(const SComparison& comparison)
{
    QJsonArray ranked;
    for (const SRankedCase& entry : comparison.ranked) {
        ranked.append(QJsonObject{{"case", static_cast<double>(entry.number)},
                                  {"parameters", toJson(entry.parameters)},
                                  {"results", toJson(entry.results)},
                                  {"distance", entry.distance},
                                  {"rank", static_cast<double>(entry.rank)}});
    }
    QJsonArray measured;
    for (const SMeasurement& measurement : comparison.measurements) {
        measured.append(QJsonObject{{"name", QString::fromStdString(measurement.name)},
                                    {"value", measurement.value},
                                    {"weight", measurement.weight}});
    }
    QJsonArray missing;
    for (const std::size_t number : comparison.withoutResults) {
        missing.append(static_cast<double>(number));
    }
    return {{"parameters", toJson(comparison.parameterNames)},
            {"measured", measured},
            {"ranking", ranked},
            {"withoutResults", missing}};
}

std::string rankingText(const SComparison& comparison, std::size_t most)
{
    std::vector<std::vector<std::string>> rows{{"rank", "case", "distance"}};
    std::vector<std::string>& heading = rows.front();
    heading.insert(heading.end(), comparison.parameterNames.begin(),
                   comparison.parameterNames.end());
    for (const SMeasurement& measurement : comparison.measurements) {
        heading.push_back(measurement.name);
    }
    for (std::size_t i = 0; i < std::min(most, comparison.ranked.size()); ++i) {
        const SRankedCase& entry = comparison.ranked[i];
        std::vector<std::string> row{std::to_string(entry.rank), std::to_string(entry.number),
                                     QString::number(entry.distance, 'g', 4).toStdString()};
        row.insert(row.end(), entry.parameters.begin(), entry.parameters.end());
        for (const double value : entry.results) {
            row.push_back(numberText(value));
        }
        rows.push_back(std::move(row));
    }
    return asTable(rows);
}

void printJson(const QJsonObject& report)
{
    const QByteArray text = QJsonDocument(report).toJson();
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout);
    std::fflush(stdout);
}

bool allDone(const CaseNotes& notes)
{
    return countOf(notes, CaseState::Done) == notes.size();
}

} // namespace cases
