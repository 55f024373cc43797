#include "platform/write_time.h"

#include <utility>

namespace fs = std::filesystem;

namespace platform {

CWriteTime::CWriteTime(CPathArgument file)
    : m_file(std::move(file))
{
    std::error_code error;
    m_time = fs::last_write_time(m_file, error).time_since_epoch().count();
    m_bKnown = !error;
}

void CWriteTime::putBack() const
{
    if (m_bKnown) {
        std::error_code ignored;
        fs::last_write_time(m_file, fs::file_time_type(fs::file_time_type::duration(m_time)),
                            ignored);
    }
}

} // namespace platform
