#include "app/constants/settings_keys.h"

#include <QCoreApplication>

namespace SettingsKeys {
namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("SettingsKeys", text);
}

} // namespace

QString Group;
QString RootPath;
QString ZEKPath;
QString AdditionalFilesPath;
QString OrvaExeLocation;

void initialise()
{
    Group = translated("/Saving/");
    RootPath = translated("RootPath");
    ZEKPath = translated("ZEKPath");
    AdditionalFilesPath = translated("AdditionalFilesPath");
    OrvaExeLocation = translated("OrvaExeLocation");
}

} // namespace SettingsKeys
