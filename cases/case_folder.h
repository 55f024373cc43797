#pragma once

#include "cases/batch_reader.h"

#include <filesystem>
#include <set>
#include <string>

namespace cases {

/// The folder of the companion's own files in a case root.
std::filesystem::path companionFolder(const std::filesystem::path& caseRoot);

/// What preparation put into each case folder, so that a case can be put back to that. It is read
/// off one case that never ran and kept in the case root, since nothing else tells a result from
/// an additional file.
class CPreparedFiles
{
public:
    /// Reads what an earlier run of this root kept, or looks at the cases now and keeps it. Throws
    /// std::filesystem::filesystem_error where the root can't be read or written.
    static CPreparedFiles ofRoot(const std::filesystem::path& caseRoot,
                                 const std::vector<SBatchCase>& batchCases);

    /// Removes everything that a try of the case left behind; its inputs stay as they are. Throws
    /// std::filesystem::filesystem_error.
    void putBack(const std::filesystem::path& caseRoot, const SBatchCase& batchCase) const;

private:
    explicit CPreparedFiles(std::set<std::string> names);

    std::set<std::string> m_names; ///< with the case's own stem as "*"
};

} // namespace cases
