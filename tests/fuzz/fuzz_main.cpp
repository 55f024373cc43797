#include "app/constants/deck_keys.h"
#include "app/constants/file_names.h"
#include "app/constants/messages.h"
#include "app/constants/progress_strings.h"
#include "app/constants/settings_keys.h"
#include "tests/fuzz/scratch_folder.h"
#include "tests/fuzz/targets.h"

#include <QCoreApplication>
#include <QLocale>
#include <QSettings>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static const QCoreApplication application(*argc, *argv);
    QLocale::setDefault(QLocale::c());
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       QString::fromStdString(ScratchFolder::path().string()));
    SettingsKeys::initialise();
    DeckKeys::initialise();
    Messages::initialise();
    FileNames::initialise();
    ProgressStrings::initialise();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzTargets::FUZZ_TARGET({reinterpret_cast<const char*>(data), size});
    return 0;
}
