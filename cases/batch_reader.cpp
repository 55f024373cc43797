#include "cases/batch_reader.h"

#include "app/constants/file_names.h"
#include "jobs/case_commands.h"
#include "jobs/command_dialect.h"
#include "platform/text_lines.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <optional>
#include <string_view>

namespace fs = std::filesystem;

namespace cases {
namespace {

bool startsWith(std::string_view text, std::string_view beginning)
{
    return text.substr(0, beginning.size()) == beginning;
}

bool endsWith(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// Takes what it is asked for off the front of a text; what isn't there gives nothing.
class Reader
{
public:
    explicit Reader(std::string_view text)
        : m_rest(text)
    {
    }

    bool word(std::string_view expected)
    {
        if (!startsWith(m_rest, expected)) {
            return false;
        }
        m_rest.remove_prefix(expected.size());
        return true;
    }

    std::optional<std::string_view> until(std::string_view end)
    {
        const std::size_t found = m_rest.find(end);
        if (found == std::string_view::npos) {
            return std::nullopt;
        }
        const std::string_view text = m_rest.substr(0, found);
        m_rest.remove_prefix(found + end.size());
        return text;
    }

    std::optional<std::string_view> quoted() { return word("\"") ? until("\"") : std::nullopt; }

    std::string rest() const { return std::string(m_rest); }

private:
    std::string_view m_rest;
};

std::optional<std::size_t> caseNumber(std::string_view digits)
{
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool whole = error == std::errc() && end == digits.data() + digits.size();
    return whole ? std::optional(number) : std::nullopt;
}

/// Takes `"Job<n>/<deck><n>.zek"` apart.
bool readDeckPath(std::string_view path, SBatchCase& batchCase)
{
    const std::size_t slash = path.find('/');
    if (slash == std::string_view::npos || !startsWith(path, FileNames::CasePrefix)) {
        return false;
    }
    const std::size_t prefix = FileNames::CasePrefix.size();
    const auto number = caseNumber(path.substr(prefix, slash - prefix));
    const std::string end = number ? std::to_string(*number) + FileNames::DeckExtension : "";
    const std::string_view file = path.substr(slash + 1);
    if (!number || !endsWith(file, end)) {
        return false;
    }
    batchCase.number = *number;
    batchCase.deck = std::string(file.substr(0, file.size() - end.size()));
    return true;
}

/// Takes the analysis off the end of a line; a line without one stays as it is. False where it
/// begins like one and goes on as something else.
bool takeAnalysis(std::string& line, SBatchCase& batchCase)
{
    const std::string& next = FileNames::CommandSeparator;
    const std::string lead = " & " + FileNames::ChangeDirectory + " \"" + batchCase.folder() +
                             "\" " + next + FileNames::CondaActivate + " " + next +
                             FileNames::Python + " ";
    const std::string tail = " " + next + FileNames::CondaDeactivate + " " + next +
                             FileNames::ChangeDirectory + " " + FileNames::ParentDirectory + " ";
    const std::size_t begin = line.rfind(lead);
    if (begin == std::string::npos) {
        return true;
    }
    std::string_view call = std::string_view(line).substr(begin + lead.size());
    if (endsWith(call, next)) {
        call.remove_suffix(next.size());
    }
    if (!endsWith(call, tail)) {
        return false;
    }
    call.remove_suffix(tail.size());

    Reader reader(call);
    const auto script = reader.quoted();
    if (!script || !reader.word(" ")) {
        return false;
    }
    std::string flag = FileNames::NoDeckFlag;
    Reader withDeck = reader;
    const std::string deck = " \"" + batchCase.stem() + FileNames::DeckExtension + "\" ";
    if (const auto text = withDeck.until(deck)) {
        flag = std::string(*text);
        reader = withDeck;
    } else if (!reader.word(" ")) {
        return false;
    }
    batchCase.postProcessing = {2, {std::string(*script), flag, reader.rest()}};
    line.erase(begin);
    return true;
}

void takeExport(std::string& options, SBatchCase& batchCase)
{
    const std::string end = " " + FileNames::ExportArgument + " \"" + batchCase.folder() + "/" +
                            batchCase.stem() + FileNames::DfgExtension + "\"";
    if (endsWith(options, end)) {
        options.erase(options.size() - end.size());
        batchCase.postProcessing = {1, {std::string(), std::string()}};
    }
}

bool readCommand(const std::string& line, SBatchCase& batchCase)
{
    Reader reader(line);
    const auto executable = reader.quoted();
    if (!executable || !reader.word(" " + FileNames::InputArgument + " ")) {
        return false;
    }
    const auto deck = reader.quoted();
    if (!deck || !readDeckPath(*deck, batchCase)) {
        return false;
    }
    batchCase.executable = std::string(*executable);
    batchCase.options = reader.rest();
    if (!takeAnalysis(batchCase.options, batchCase)) {
        return false;
    }
    if (batchCase.postProcessing.first == 0) {
        takeExport(batchCase.options, batchCase);
    }
    return true;
}

const std::string& serverStart()
{
    static const std::string start = "start " + FileNames::CommandInterpreter + " /k ";
    return start;
}

/// Takes `"Job<n>\<file>" <command>` apart.
bool readServer(std::string_view text, SBatchCase& batchCase)
{
    Reader reader(text);
    const auto path = reader.quoted();
    const std::string folder = batchCase.folder() + batchDialect().folderSeparator;
    if (!path || !startsWith(*path, folder) || !reader.word(" ")) {
        return false;
    }
    batchCase.coupling = {std::string(path->substr(folder.size())), reader.rest()};
    return true;
}

/// Whether the wizard would have written this very line for the case.
bool comesOutAlike(const SBatchCase& batchCase, const std::string& line)
{
    CommandContext context{&batchDialect(),
                           false,
                           std::string(),
                           batchCase.executable,
                           batchCase.options,
                           batchCase.deck,
                           FileNames::Python,
                           batchCase.coupling,
                           batchCase.postProcessing,
                           batchCase.number + 2};
    if (endsWith(line, FileNames::CommandSeparator)) {
        ++context.m_recordCount; // not the last case
    }
    const CaseCommands commands = composeCommands(context, batchCase.number);
    return commands.m_sSimulator + commands.m_sPython == line;
}

/// The lines of the file without their ends, of which a carriage return may stand on either side.
std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines = platform::splitAt(text, '\n');
    for (std::string& line : lines) {
        line.erase(0, std::min(line.find_first_not_of('\r'), line.size()));
        line.erase(line.find_last_not_of('\r') + 1);
    }
    return lines;
}

[[noreturn]] void refuse(std::size_t lineIndex, const std::string& reason)
{
    throw CBatchError("line " + std::to_string(lineIndex + 1) + " of the batch file " + reason);
}

} // namespace

std::string SBatchCase::folder() const
{
    return FileNames::CasePrefix + std::to_string(number);
}

std::string SBatchCase::stem() const
{
    return deck + std::to_string(number);
}

std::vector<SBatchCase> readBatch(const std::string& text)
{
    std::vector<SBatchCase> found;
    std::string server;
    const std::vector<std::string> lines = linesOf(text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string& line = lines[i];
        if (line.empty()) {
            continue;
        }
        if (server.empty() && startsWith(line, serverStart())) {
            server = line.substr(serverStart().size());
            continue;
        }
        SBatchCase batchCase;
        const bool read = readCommand(line, batchCase) &&
                          (server.empty() || readServer(server, batchCase)) &&
                          comesOutAlike(batchCase, line);
        if (!read) {
            refuse(i, "isn't understood: " + line);
        }
        server.clear();
        found.push_back(std::move(batchCase));
    }
    if (!server.empty()) {
        refuse(lines.size() - 1, "starts a coupling server and no case");
    }
    const auto byNumber = [](const SBatchCase& left, const SBatchCase& right) {
        return left.number < right.number;
    };
    std::stable_sort(found.begin(), found.end(), byNumber);
    const auto twice = std::adjacent_find(found.begin(), found.end(),
                                          [](const SBatchCase& left, const SBatchCase& right) {
                                              return left.number == right.number;
                                          });
    if (twice != found.end()) {
        throw CBatchError("the batch file has case " + std::to_string(twice->number) + " twice");
    }
    return found;
}

std::vector<SBatchCase> readBatchFile(const fs::path& caseRoot)
{
    const fs::path file = caseRoot / (FileNames::BatchFileStem + FileNames::BatchExtension);
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw CBatchError("there is no " + file.string() +
                          "; the folder was not made by \"Generate Distributed Files\"");
    }
    return readBatch({std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()});
}

CaseCommands localCommands(const SBatchCase& batchCase, const fs::path& caseRoot,
                           const std::string& python, const std::string& simulator)
{
    CommandContext context{&localDialect(),
                           true,
                           caseRoot.string() + "/",
                           simulator.empty() ? batchCase.executable : simulator,
                           batchCase.options,
                           batchCase.deck,
                           python,
                           batchCase.coupling,
                           batchCase.postProcessing,
                           batchCase.number + 2};
    if (batchCase.postProcessing.first == 1) {
        // The job's own copy may be on another machine; the case has one of its own.
        context.m_postProcessing.second.front() =
            (caseRoot / batchCase.folder() / (batchCase.stem() + FileNames::DfgExtension)).string();
    }
    return composeCommands(context, batchCase.number);
}

} // namespace cases
