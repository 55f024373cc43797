#pragma once

/// Windows only: elsewhere a process gets its arguments in the narrow encoding anyway.
namespace platform {

/// The arguments of the process in the system's ANSI code page, followed by a null pointer.
class CNarrowCommandLine
{
public:
    CNarrowCommandLine();
    ~CNarrowCommandLine();

    CNarrowCommandLine(const CNarrowCommandLine&) = delete;
    CNarrowCommandLine& operator=(const CNarrowCommandLine&) = delete;

    /// False where the system couldn't split the command line.
    bool isValid() const { return m_arguments != nullptr; }

    int count() const { return m_count; }
    char** arguments() const { return m_arguments; }

private:
    int m_count = 0;
    char** m_arguments = nullptr;
};

} // namespace platform
