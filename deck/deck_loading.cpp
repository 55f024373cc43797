#include "deck/deck_loading.h"

#include "deck/deck_files.h"
#include "deck/deck_serializer.h"
#include "platform/paths.h"
#include "platform/rethrow.h"
#include "platform/write_access.h"
#include "platform/write_time.h"

#include <QFile>

#include <H5Cpp.h>

namespace DeckLoading {
namespace {

/// A deck that can't be written to is refused, but it is read without the right to write: of a
/// damaged one, or of one with bytes behind its data, the library would change something when it
/// closes it.
void openAndWalk(CDeckSerializer& serializer, const std::string& path, CCreatorData& record)
{
    H5check();
    H5open();
    // Where it can't be written, the library is asked to and says itself what is wrong.
    const unsigned int access = platform::canBeWritten(path) ? H5F_ACC_RDONLY : H5F_ACC_RDWR;
    // The destructor alone closes it: after a close that failed the library survives no other.
    H5::H5File file(path, access);
    serializer.walk(file, record, CDeckSerializer::Read);
}

CCreatorData badData()
{
    H5::Exception::printErrorStack(stderr);
    return CCreatorData("bad data");
}

} // namespace

void readDataFile(CDeckSerializer& serializer, const std::string& path, CCreatorData& record)
{
    platform::CWriteTime time(platform::pathOf(path));
    try {
        openAndWalk(serializer, path, record);
    } catch (...) {
        // Without a handler the process would end before any destructor ran.
        time.putBack();
        platform::rethrow();
    }
    time.putBack();
}

CCreatorData loadDeck(CDeckSerializer& serializer, const QString& path)
{
    QFile deck(path);
    deck.open(QIODevice::ReadOnly);
    try {
        CCreatorData record(DeckFiles::deckName(path.toStdString()));
        const std::string dataFile = DeckFiles::dataFile(path.toLocal8Bit().toStdString());
        readDataFile(serializer, dataFile, record);
        return record;
    } catch (const H5::FileIException&) {
        return badData();
    } catch (const H5::DataSetIException&) {
        return badData();
    } catch (const H5::DataSpaceIException&) {
        return badData();
    } catch (const H5::DataTypeIException&) {
        return badData();
    }
}

} // namespace DeckLoading
