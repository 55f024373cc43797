#include "app/startup.h"

#include "app/constants/application_strings.h"
#include "app/constants/deck_keys.h"
#include "app/constants/file_names.h"
#include "app/constants/icons.h"
#include "app/constants/messages.h"
#include "app/constants/progress_strings.h"
#include "app/constants/settings_keys.h"
#include "parameters/parameter_catalogue.h"
#include "parameters/parameter_limits.h"
#include "setup/simulator_options.h"

#include <QLocale>

#include <clocale>

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

} // namespace startup
