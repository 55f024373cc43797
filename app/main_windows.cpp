#include "platform/command_line.h"

#include <windows.h>

int main(int argc, char** argv);

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*commandLine*/,
                   int /*show*/)
{
    const platform::CNarrowCommandLine commandLine;
    return commandLine.isValid() ? main(commandLine.count(), commandLine.arguments()) : -1;
}
