#include "cases/case_note.h"

#include "platform/file_lock.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <algorithm>
#include <array>
#include <iterator>

namespace fs = std::filesystem;

namespace cases {
namespace {

const std::array<QString, 5>& stateNames()
{
    static const std::array<QString, 5> names{QStringLiteral("waiting"), QStringLiteral("running"),
                                              QStringLiteral("done"), QStringLiteral("failed"),
                                              QStringLiteral("interrupted")};
    return names;
}

std::optional<CaseState> stateNamed(const QString& name)
{
    const auto& names = stateNames();
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end()) {
        return std::nullopt;
    }
    return static_cast<CaseState>(std::distance(names.begin(), found));
}

QString textOf(const QDateTime& time)
{
    return time.isValid() ? time.toUTC().toString(Qt::ISODateWithMs) : QString();
}

QDateTime timeOf(const QJsonValue& value)
{
    return QDateTime::fromString(value.toString(), Qt::ISODateWithMs);
}

SCaseNote fromJson(const QJsonObject& json, CaseState state)
{
    SCaseNote note;
    note.state = state;
    note.start = timeOf(json.value("start"));
    note.end = timeOf(json.value("end"));
    note.exitCode = json.value("exitCode").toInt();
    note.signal = json.value("signal").toInt();
    note.reason = json.value("reason").toString();
    note.host = json.value("host").toString();
    note.process = static_cast<qint64>(json.value("process").toDouble());
    note.command = json.value("command").toString();
    return note;
}

QString asQString(const fs::path& path)
{
    return QString::fromStdString(path.string());
}

} // namespace

QString nameOf(CaseState state)
{
    return stateNames()[static_cast<std::size_t>(state)];
}

QJsonObject toJson(const SCaseNote& note)
{
    QJsonObject json{{"state", nameOf(note.state)}};
    if (note.state == CaseState::Waiting) {
        return json;
    }
    json["start"] = textOf(note.start);
    if (note.end.isValid()) {
        json["end"] = textOf(note.end);
        json["exitCode"] = note.exitCode;
        json["signal"] = note.signal;
    }
    if (!note.reason.isEmpty()) {
        json["reason"] = note.reason;
    }
    json["host"] = note.host;
    json["process"] = static_cast<double>(note.process);
    json["command"] = note.command;
    return json;
}

fs::path noteFile(const fs::path& caseFolder)
{
    return caseFolder / "case.json";
}

fs::path lockFile(const fs::path& caseFolder)
{
    return caseFolder / "case.lock";
}

std::optional<SCaseNote> readNote(const fs::path& caseFolder)
{
    QFile file(asQString(noteFile(caseFolder)));
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QJsonObject json = QJsonDocument::fromJson(file.readAll()).object();
    const auto state = stateNamed(json.value("state").toString());
    return state ? std::optional(fromJson(json, *state)) : std::nullopt;
}

bool writeNote(const fs::path& caseFolder, const SCaseNote& note)
{
    // Written beside, brought to the disk and renamed.
    QSaveFile file(asQString(noteFile(caseFolder)));
    return file.open(QIODevice::WriteOnly) &&
           file.write(QJsonDocument(toJson(note)).toJson(QJsonDocument::Compact) + '\n') > 0 &&
           file.commit();
}

SCaseNote stateOfCase(const fs::path& caseFolder)
{
    SCaseNote note = readNote(caseFolder).value_or(SCaseNote());
    if (platform::CFileLock::isTaken(lockFile(caseFolder))) {
        // Between taking the case and its note the last note is of an earlier try.
        note.state = CaseState::Running;
        return note;
    }
    if (note.state == CaseState::Running) {
        note.state = CaseState::Interrupted;
        note.reason = "the run that held it is gone";
    }
    return note;
}

} // namespace cases
