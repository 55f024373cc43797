#include "app/constants/deck_keys.h"
#include "deck/app_settings.h"
#include "deck/deck_loading.h"
#include "deck/deck_serializer.h"
#include "tests/fuzz/scratch_folder.h"
#include "tests/fuzz/targets.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace {

void readDeck(const std::string& path)
{
    CDeckSerializer serializer;
    CCreatorData record;
    try {
        DeckLoading::readDataFile(serializer, path, record);
    } catch (const H5::FileIException&) {
    } catch (const H5::GroupIException&) {
    } catch (const std::out_of_range&) {
        // A force that names more shapes than it has values.
    }
}

/// A file that stays open stays locked; no leak detector sees that.
void requireNothingOpen()
{
    // Types aside: those of the class interface live as long as the program.
    const ssize_t open = H5Fget_obj_count(H5F_OBJ_ALL, H5F_OBJ_FILE | H5F_OBJ_DATASET |
                                                           H5F_OBJ_GROUP | H5F_OBJ_ATTR);
    if (open != 0) {
        std::cerr << open << " objects of the deck stay open" << std::endl;
        std::abort();
    }
}

/// A deck is only read, however damaged it is.
void requireUnchanged(const std::string& path, std::string_view bytes)
{
    std::ifstream stream(path, std::ios::binary);
    const std::string now{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (now != bytes) {
        std::cerr << "the deck was changed" << std::endl;
        std::abort();
    }
}

} // namespace

void FuzzTargets::deck(std::string_view bytes)
{
    // A deck read before would change which names this one is asked for.
    DeckKeys::initialise();
    CAppSettings::instance()->setDeckFormat(14);
    const std::string path = ScratchFolder::write("0.h5", bytes).string();
    readDeck(path);
    requireNothingOpen();
    requireUnchanged(path, bytes);
}
