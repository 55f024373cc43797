#pragma once

#include "platform/settings_apart.h"

#include <QString>
#include <QTemporaryDir>

/// A world of its own for a test program: settings in a temporary folder, the constants filled, the
/// numeric locale of the program. Make one before anything else, after the application object.
class CTestEnvironment
{
public:
    CTestEnvironment();

    /// A new empty folder below the temporary one, with its path.
    QString newFolder(const QString& name = QStringLiteral("folder"));

    /// Forgets settings, deck, parameters and format, as if the program had just started.
    static void reset();

private:
    QTemporaryDir m_root;
    CSettingsApart m_settings;
    int m_folderCount = 0;
};

/// Runs a test class under a QApplication with the environment in place.
#define TARNEL_TEST_MAIN(TestClass)                                                                \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        QApplication application(argc, argv);                                                      \
        CTestEnvironment environment;                                                              \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
