#include "deck/app_settings.h"

#include "app/constants/application_strings.h"
#include "app/constants/settings_keys.h"

namespace {

/// Full key of a selector, empty for a selector out of range.
QString keyOf(int selector)
{
    switch (selector) {
    case CAppSettings::RootPath:
        return SettingsKeys::Group + SettingsKeys::RootPath;
    case CAppSettings::ZEKPath:
        return SettingsKeys::Group + SettingsKeys::ZEKPath;
    case CAppSettings::AdditionalFilesPath:
        return SettingsKeys::Group + SettingsKeys::AdditionalFilesPath;
    case CAppSettings::OrvaExeLocation:
        return SettingsKeys::Group + SettingsKeys::OrvaExeLocation;
    default:
        return {};
    }
}

} // namespace

CAppSettings::CAppSettings()
    : m_settings(QSettings::UserScope, ApplicationStrings::Organisation, ApplicationStrings::Name)
{
    m_settings.setFallbacksEnabled(false);
}

CAppSettings* CAppSettings::instance()
{
    static CAppSettings settings;
    return &settings;
}

QVariant CAppSettings::value(int selector) const
{
    const QString key = keyOf(selector);
    if (key.isEmpty()) {
        return QVariant{};
    }
    const QVariant fallback = QVariant(QStringLiteral(""));
    const QVariant stored = m_settings.value(key, fallback);
    return stored.isNull() || !stored.isValid() ? fallback : stored;
}

QString CAppSettings::text(int selector) const
{
    return value(selector).toString();
}

bool CAppSettings::setValue(int selector, const QString& value)
{
    const QString key = keyOf(selector);
    if (key.isEmpty()) {
        return false;
    }
    m_settings.setValue(key, value);
    // An end of the process by an exception must not lose what the user has just chosen.
    m_settings.sync();
    return true;
}

QSettings& CAppSettings::settings()
{
    return m_settings;
}

int CAppSettings::deckFormat() const
{
    return m_iDeckFormat;
}

void CAppSettings::setDeckFormat(int format)
{
    m_iDeckFormat = format;
}
