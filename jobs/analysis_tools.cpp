#include "jobs/analysis_tools.h"

#include "app/constants/messages.h"
#include "app/message_box.h"
#include "platform/search_path.h"

#include <filesystem>

namespace {

struct Tools
{
    std::string python;
    bool conda = false;

    bool complete() const { return !python.empty() && conda; }
};

void lookInto(const std::string& folder, Tools& tools)
{
    if (tools.python.empty()) {
        tools.python = platform::pythonIn(folder);
    }
    tools.conda = tools.conda || platform::condaIn(folder);
}

Tools toolsOnSearchPath()
{
    Tools tools;
    for (const std::string& folder : platform::searchPath()) {
        try {
            lookInto(folder, tools);
        } catch (const std::filesystem::filesystem_error& error) {
            MessageBox::warning(Messages::Warning, QString::fromUtf8(error.what()));
        }
        if (tools.complete()) {
            break;
        }
    }
    return tools;
}

} // namespace

std::optional<std::string> findAnalysisTools()
{
    const Tools tools = toolsOnSearchPath();
    if (tools.complete()) {
        return tools.python;
    }
    MessageBox::warning(Messages::Warning, tools.python.empty() ? Messages::PythonNotOnPath
                                                                : Messages::CondaNotOnPath);
    return std::nullopt;
}
