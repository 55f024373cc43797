#include "app/constants/file_names.h"
#include "app/constants/progress_strings.h"
#include "cases/command_line.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QLocale>

#include <clocale>
#include <cstring>
#include <memory>

namespace {

/// Only drawing needs letters and pictures; the rest starts without them.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv)
{
    if (argc < 2 || std::strcmp(argv[1], "compare") != 0) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // On a cluster's node there often is no session, of which Qt would complain.
    const QtMessageHandler former =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    auto application = std::make_unique<QGuiApplication>(argc, argv);
    qInstallMessageHandler(former);
    return application;
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
