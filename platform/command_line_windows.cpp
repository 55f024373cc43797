#include "platform/command_line.h"

#include <windows.h>

#include <shellapi.h>

namespace platform {
namespace {

char* narrowed(const wchar_t* text)
{
    const int length = ::WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr);
    auto* narrow = new char[static_cast<unsigned int>(length)];
    ::WideCharToMultiByte(CP_ACP, 0, text, -1, narrow, length, nullptr, nullptr);
    return narrow;
}

} // namespace

CNarrowCommandLine::CNarrowCommandLine()
{
    wchar_t** wide = ::CommandLineToArgvW(::GetCommandLineW(), &m_count);
    if (wide == nullptr) {
        return;
    }
    m_arguments = new char*[static_cast<unsigned int>(m_count) + 1];
    for (int index = 0; index < m_count; ++index) {
        m_arguments[index] = narrowed(wide[index]);
    }
    m_arguments[m_count] = nullptr;
    ::LocalFree(wide);
}

CNarrowCommandLine::~CNarrowCommandLine()
{
    if (m_arguments == nullptr) {
        return;
    }
    for (char** argument = m_arguments; *argument != nullptr; ++argument) {
        delete[] * argument;
    }
    delete[] m_arguments;
}

} // namespace platform
