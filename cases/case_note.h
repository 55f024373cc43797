#pragma once

#include <QDateTime>
#include <QString>

#include <filesystem>
#include <optional>

class QJsonObject;

namespace cases {

enum class CaseState { Waiting, Running, Done, Failed, Interrupted };

/// "waiting", "running", "done", "failed", "interrupted".
QString nameOf(CaseState state);

/// What a run notes of a case, in `Job<n>/case.json`.
struct SCaseNote
{
    CaseState state = CaseState::Waiting;
    QDateTime start;    ///< UTC
    QDateTime end;      ///< UTC; invalid while the case runs
    int exitCode = 0;   ///< of what failed, else 0
    int signal = 0;     ///< that ended the simulator, else 0
    QString reason;     ///< one sentence about a case that isn't done
    QString host;       ///< where it ran
    qint64 process = 0; ///< of the simulator
    QString command;    ///< of the simulator
};

QJsonObject toJson(const SCaseNote& note);

std::filesystem::path noteFile(const std::filesystem::path& caseFolder);
std::filesystem::path lockFile(const std::filesystem::path& caseFolder);

/// Nothing where there is no note, or none that can be read: then the case has to run.
std::optional<SCaseNote> readNote(const std::filesystem::path& caseFolder);

/// Writes the note whole or not at all, also where the power fails. False where it can't be
/// written.
bool writeNote(const std::filesystem::path& caseFolder, const SCaseNote& note);

/// The note, and what the lock says of it: a case that is noted as running and that nobody holds
/// was interrupted; one that somebody holds is running whatever its last note.
SCaseNote stateOfCase(const std::filesystem::path& caseFolder);

} // namespace cases
