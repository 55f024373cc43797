#include "deck/app_settings.h"
#include "setup/dfg_input_output.h"
#include "tests/fuzz/scratch_folder.h"
#include "tests/fuzz/targets.h"

#include <QString>

#include <stdexcept>

namespace {

void useDeckBeside(const std::filesystem::path& file)
{
    const std::filesystem::path deck = std::filesystem::path(file).replace_extension(".zek");
    CAppSettings::instance()->setValue(CAppSettings::ZEKPath,
                                       QString::fromStdString(deck.string()));
}

} // namespace

void FuzzTargets::dfg(std::string_view bytes)
{
    const std::filesystem::path file = ScratchFolder::write("column.dfg", bytes);
    static const bool once = (useDeckBeside(file), true);
    static_cast<void>(once);
    DfgValues values;
    try {
        CDFGInputOutput().read(values, {"Ignored"});
    } catch (const std::out_of_range&) {
        // An unknown data type word, or a number too large.
    } catch (const std::invalid_argument&) {
        // No number.
    }
}
