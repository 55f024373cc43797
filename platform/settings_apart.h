#pragma once

#include <QString>

/// While it lives, settings of the user's scope are not the user's own: they lie in a folder, on
/// Windows in a part of the registry that is this process's and goes with the object. Comes before
/// the first QSettings.
class CSettingsApart
{
public:
    explicit CSettingsApart(const QString& folder);
    // NOLINTNEXTLINE(performance-trivially-destructible): on Windows it has something to give back.
    ~CSettingsApart();

    CSettingsApart(const CSettingsApart&) = delete;
    CSettingsApart& operator=(const CSettingsApart&) = delete;
};
