#pragma once

#include <mutex>
#include <string>

/// What a case has printed, as bytes: a chunk may end within a character. Written by the thread of
/// the case, read by others.
class CCaseOutput
{
public:
    explicit CCaseOutput(std::string bytes = std::string());

    void append(const std::string& bytes);
    void assign(std::string bytes);

    std::string bytes() const;
    /// The first `length` bytes, or all of them where there are fewer.
    std::string start(std::size_t length) const;

private:
    mutable std::mutex m_mutex;
    std::string m_bytes;
};
