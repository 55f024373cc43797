#pragma once

#include <string>

/// How a command interpreter wants the commands of a case written.
struct CommandDialect
{
    std::string (*quoted)(const std::string& path);     ///< a path as one word
    std::string (*options)(const std::string& options); ///< the simulator's options as words
    char folderSeparator;                               ///< before the coupling server's name
    std::string separator;                              ///< between the commands of an analysis
    std::string chain;                                  ///< between simulation and analysis
    std::string continuation; ///< behind every case but the last that has an analysis
    std::string preparation;  ///< what makes "conda activate" work
    std::string condaInput;   ///< redirection that keeps conda off the interpreter's input
};

/// Windows batch language.
const CommandDialect& batchDialect();

/// POSIX shell.
const CommandDialect& shellDialect();

/// The language of this platform's own interpreter.
const CommandDialect& localDialect();
