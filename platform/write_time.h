#pragma once

#include "platform/path_argument.h"

#include <cstdint>

namespace platform {

/// When a file was written last, at the time of construction, as exactly as the system knows it.
class CWriteTime
{
public:
    explicit CWriteTime(CPathArgument file);

    /// Gives the file that time again; nothing where it wasn't known.
    void putBack() const;

private:
    CPathArgument m_file;
    bool m_bKnown = false;
    std::int64_t m_time = 0; ///< in the system's own ticks
};

} // namespace platform
