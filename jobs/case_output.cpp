#include "jobs/case_output.h"

#include <utility>

CCaseOutput::CCaseOutput(std::string bytes)
    : m_bytes(std::move(bytes))
{
}

void CCaseOutput::append(const std::string& bytes)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_bytes += bytes;
}

void CCaseOutput::assign(std::string bytes)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_bytes = std::move(bytes);
}

std::string CCaseOutput::bytes() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_bytes;
}

std::string CCaseOutput::start(std::size_t length) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_bytes.substr(0, length);
}
