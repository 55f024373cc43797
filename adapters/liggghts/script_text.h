#pragma once

#include "adapters/liggghts/numbers.h"

#include <sstream>
#include <string>

namespace liggghts {

/// Lines of an engine input; numbers get nine digits and words are parted by blanks.
class CScriptText
{
public:
    template <typename... Words>
    CScriptText& line(const Words&... words)
    {
        std::string blank;
        ((m_text << blank << word(words), blank = " "), ...);
        m_text << '\n';
        return *this;
    }

    std::string text() const { return m_text.str(); }

private:
    static std::string word(const std::string& text) { return text; }
    static std::string word(double number) { return numberText(number); }
    static std::string word(unsigned long number) { return std::to_string(number); }
    static std::string word(int number) { return std::to_string(number); }

    std::ostringstream m_text;
};

} // namespace liggghts
