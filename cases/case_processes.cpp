#include "cases/case_processes.h"

#include "app/constants/file_names.h"
#include "cases/case_note.h"
#include "platform/file_lock.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <unistd.h>

namespace fs = std::filesystem;

namespace cases {
namespace {

/// Value of the variable in a process's environment; empty where it isn't set or can't be read.
std::string caseOf(const fs::path& processFolder)
{
    std::ifstream stream(processFolder / "environ", std::ios::binary);
    const std::string environment{std::istreambuf_iterator<char>(stream),
                                  std::istreambuf_iterator<char>()};
    const std::string name = std::string(CaseVariable) + "=";
    for (std::size_t begin = 0; begin < environment.size();) {
        const std::size_t end = std::min(environment.find('\0', begin), environment.size());
        if (environment.compare(begin, name.size(), name) == 0) {
            return environment.substr(begin + name.size(), end - begin - name.size());
        }
        begin = end + 1;
    }
    return {};
}

void endProcesses(const std::function<bool(const std::string& caseFolder)>& isMeant)
{
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc", ignored)) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos) {
            continue;
        }
        const std::string caseFolder = caseOf(entry.path());
        const auto process = static_cast<pid_t>(std::strtol(name.c_str(), nullptr, 10));
        if (!caseFolder.empty() && process != ::getpid() && isMeant(caseFolder)) {
            ::kill(process, SIGKILL);
        }
    }
}

} // namespace

const char* const CaseVariable = "TARNEL_CASE";

void endProcessesOf(const fs::path& caseFolder)
{
    endProcesses([&](const std::string& found) { return found == caseFolder.string(); });
}

void endLeftovers(const fs::path& caseRoot)
{
    const std::string prefix = caseRoot.string() + "/" + FileNames::CasePrefix;
    endProcesses([&](const std::string& found) {
        return found.compare(0, prefix.size(), prefix) == 0 &&
               !platform::CFileLock::isTaken(lockFile(found));
    });
}

} // namespace cases
