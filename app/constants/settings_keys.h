#pragma once

#include <QString>

/// Parts of the settings' keys; a full key is `Group` followed by one of the others.
namespace SettingsKeys {

extern QString Group;
extern QString RootPath;
extern QString ZEKPath;
extern QString AdditionalFilesPath;
extern QString OrvaExeLocation;

void initialise();

} // namespace SettingsKeys
