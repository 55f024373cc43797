#include "app/constants/file_names.h"
#include "app/constants/progress_strings.h"
#include "cases/commands.h"

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QLocale>

#include <clocale>
#include <cstring>
#include <memory>

namespace {

/// Only drawing needs letters and pictures; the rest starts without them.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv)
{
    if (argc > 1 && std::strcmp(argv[1], "compare") == 0) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
            qputenv("XDG_RUNTIME_DIR", QDir::tempPath().toLocal8Bit()); // or Qt grumbles
        }
        return std::make_unique<QGuiApplication>(argc, argv);
    }
    return std::make_unique<QCoreApplication>(argc, argv);
}

} // namespace

int main(int argc, char** argv)
{
    const std::unique_ptr<QCoreApplication> application = makeApplication(argc, argv);
    // Numbers in files are written with a point, whatever the user's language.
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(QLocale::c());
    FileNames::initialise();
    ProgressStrings::initialise();
    return cases::runCommand(QCoreApplication::arguments());
}
