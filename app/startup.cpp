#include "app/startup.h"

#include "app/constants/application_strings.h"
#include "app/constants/deck_keys.h"
#include "app/constants/file_names.h"
#include "app/constants/icons.h"
#include "app/constants/messages.h"
#include "app/constants/progress_strings.h"
#include "app/constants/settings_keys.h"
#include "app/main_window.h"
#include "parameters/parameter_catalogue.h"
#include "parameters/parameter_limits.h"
#include "setup/simulator_options.h"

#include <QApplication>
#include <QLocale>

#include <clocale>
#include <memory>

namespace startup {

void fillConstants()
{
    Icons::initialise();
    SettingsKeys::initialise();
    DeckKeys::initialise();
    Messages::initialise();
    FileNames::initialise();
    ParameterCatalogue::initialise();
    SimulatorOptions::initialise();
    ProgressStrings::initialise();
    ApplicationStrings::initialise();
    initialiseParameterLimits();
}

void keepNumbersNeutral()
{
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(QLocale::c());
}

int run(int argc, char** argv)
{
    QApplication application(argc, argv);
    keepNumbersNeutral();
    fillConstants();
    const auto window = std::make_unique<CMainWindow>();
    window->show();
    return QApplication::exec();
}

} // namespace startup
