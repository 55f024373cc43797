#pragma once

#include <QString>

/// Who the program is, and a few general texts.
namespace ApplicationStrings {

extern QString Organisation;
extern QString Name;
extern QString InformationTitle;
extern QString InvalidPath;
extern QString NoExecutable;
extern QString AboutTitle;
extern QString Version;
extern QString BuildType;

/// Rich text with the arguments %1 name, %2 version, %3 build type, %4 revision, %5 repository
/// location, %6 year.
extern QString AboutTemplate;
extern QString Unfinished;

void initialise();

/// `AboutTemplate` with its six arguments filled in.
QString aboutText();

} // namespace ApplicationStrings
