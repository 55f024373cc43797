#pragma once

#include <QString>

/// Titles and texts of the program's dialogs.
namespace Messages {

extern QString Warning;
extern QString DeckIncompatible;
extern QString MaterialToken;
extern QString EnterDirectory;
extern QString DirectoryMissing;
extern QString JobspecNoH5;
extern QString JobspecNoCsv;
extern QString EnterNumeric;
extern QString BondCreationTime;
extern QString MistypedValues;
extern QString PythonNotOnPath;
extern QString CondaNotOnPath;

/// Printed on the standard output, hence not a QString.
extern const char* UnknownException;

/// Needs the separator of DeckKeys.
void initialise();

} // namespace Messages
