#include "platform/settings_apart.h"

#include <QSettings>

CSettingsApart::CSettingsApart(const QString& folder)
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder);
}

CSettingsApart::~CSettingsApart() = default;
