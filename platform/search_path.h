#pragma once

#include <string>
#include <vector>

/// Looking for the programs of an analysis in the folders of "PATH".
namespace platform {

/// The parts of "PATH" in order, empty ones included; one empty part where it isn't set.
std::vector<std::string> searchPath();

/// The command word of the Python interpreter that lies in `folder`, empty where there is none.
/// Throws std::filesystem::filesystem_error "exists" for a folder that can't be asked.
std::string pythonIn(const std::string& folder);

/// Whether conda lies in `folder`. Throws as `pythonIn`.
bool condaIn(const std::string& folder);

} // namespace platform
