#include "app/startup.h"
#include "platform/command_line.h"

#include <windows.h>

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*commandLine*/,
                   int /*show*/)
{
    const platform::CNarrowCommandLine commandLine;
    return commandLine.isValid() ? startup::run(commandLine.count(), commandLine.arguments()) : -1;
}
