#pragma once

#include "cases/case_note.h"
#include "cases/cluster.h"
#include "cases/comparison.h"

#include <QJsonObject>

#include <cstddef>
#include <map>
#include <string>

/// What the commands tell: lines for people and JSON for programs.
namespace cases {

using CaseNotes = std::map<std::size_t, SCaseNote>;

/// "10 cases: 3 done, 1 failed, 1 running, 5 waiting, 0 interrupted"
std::string sumText(const CaseNotes& notes);

/// The line of one case in `status`; `task` is what the cluster says of it, or null.
std::string statusLine(std::size_t number, const SCaseNote& note, const STaskState* task);

/// All cases and their sum. `tasks` may be empty.
QJsonObject statusReport(const CaseNotes& notes, const std::map<std::size_t, STaskState>& tasks);

QJsonObject comparisonReport(const SComparison& comparison);

/// The first ranks as a table.
std::string rankingText(const SComparison& comparison, std::size_t most);

/// Writes JSON to the standard output.
void printJson(const QJsonObject& report);

/// Whether every case is done.
bool allDone(const CaseNotes& notes);

} // namespace cases
