#pragma once

#include <QSettings>
#include <QString>
#include <QVariant>

/// The user's stored paths and the format index of the last deck that was read. Process-wide, made
/// on first use, which must come after ApplicationStrings and SettingsKeys are filled.
class CAppSettings
{
public:
    /// Selectors of the stored values.
    enum Selector {
        RootPath = 0,            ///< the deck's folder with a trailing "/"
        ZEKPath = 1,             ///< the deck's path
        AdditionalFilesPath = 2, ///< paths joined by ";"
        OrvaExeLocation = 3      ///< the simulator's executable
    };

    static CAppSettings* instance();

    /// The stored value, an empty string where nothing valid is stored, and a null QVariant for a
    /// selector out of range.
    QVariant value(int selector) const;

    /// `value` as a text.
    QString text(int selector) const;

    /// Writes to the store at once; false, with nothing written, for a selector out of range.
    bool setValue(int selector, const QString& value);

    QSettings& settings();

    /// Index of the format table; a deck without a version keeps that of the deck before it.
    int deckFormat() const;
    void setDeckFormat(int format);

    CAppSettings(const CAppSettings&) = delete;
    CAppSettings& operator=(const CAppSettings&) = delete;

private:
    CAppSettings();

    QSettings m_settings;
    int m_iDeckFormat = 0;
};
