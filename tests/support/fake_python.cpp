// Stands for Python in tests on Windows, where no script can: writes its arguments and folder into
// the file analysis.txt there, and the id of what has started it into interpreter.pid.

#include <windows.h>

#include <tlhelp32.h>

#include <cstdio>
#include <string>

namespace {

DWORD parentId()
{
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    const HANDLE processes = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    bool found = ::Process32FirstW(processes, &entry) != 0;
    while (found && entry.th32ProcessID != ::GetCurrentProcessId()) {
        found = ::Process32NextW(processes, &entry) != 0;
    }
    ::CloseHandle(processes);
    return found ? entry.th32ParentProcessID : 0;
}

std::string folder()
{
    char path[MAX_PATH] = {};
    ::GetCurrentDirectoryA(sizeof path, path);
    return path;
}

void write(const char* file, const std::string& text)
{
    std::FILE* stream = std::fopen("part.txt", "w");
    std::fputs(text.c_str(), stream);
    std::fclose(stream);
    std::rename("part.txt", file);
}

} // namespace

int main(int argc, char** argv)
{
    std::string words;
    for (int index = 1; index < argc; ++index) {
        words += std::string(index == 1 ? "" : " ") + argv[index];
    }
    write("interpreter.pid", std::to_string(parentId()));
    write("analysis.txt", words + "\n" + folder() + "\n");
}
