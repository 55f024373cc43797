#include "tests/support/test_environment.h"

#include "app/constants/application_strings.h"
#include "app/constants/deck_keys.h"
#include "app/constants/file_names.h"
#include "app/constants/icons.h"
#include "app/constants/messages.h"
#include "app/constants/progress_strings.h"
#include "app/constants/settings_keys.h"
#include "deck/app_settings.h"
#include "deck/deck_store.h"

#include <QDir>
#include <QLocale>

#include <clocale>

CTestEnvironment::CTestEnvironment()
    : m_settings(m_root.path())
{
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(QLocale::c());
    Icons::initialise();
    SettingsKeys::initialise();
    DeckKeys::initialise();
    Messages::initialise();
    FileNames::initialise();
    ProgressStrings::initialise();
    ApplicationStrings::initialise();
}

QString CTestEnvironment::newFolder(const QString& name)
{
    const QString path =
        QDir(m_root.path()).filePath(QStringLiteral("%1%2").arg(name).arg(m_folderCount++));
    QDir().mkpath(path);
    return path;
}

void CTestEnvironment::reset()
{
    CAppSettings* settings = CAppSettings::instance();
    settings->settings().clear();
    settings->setDeckFormat(0);
    DeckKeys::initialise();
    *CDeckStore::instance() = CDeckStore();
}
