#include "deck/deck_loading.h"

#include "deck/deck_files.h"
#include "deck/deck_serializer.h"

#include <QFile>

#include <H5Cpp.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace fs = std::filesystem;

namespace DeckLoading {
namespace {

/// The modification time of a file at the time of construction.
class CModificationTime
{
public:
    explicit CModificationTime(fs::path path)
        : m_path(std::move(path))
        , m_time(fs::last_write_time(m_path, m_error))
    {
    }

    void putBack()
    {
        if (!m_error) {
            std::error_code ignored;
            fs::last_write_time(m_path, m_time, ignored);
        }
    }

private:
    fs::path m_path;
    std::error_code m_error;
    fs::file_time_type m_time;
};

/// Whether something stands in the file behind the library's data. The library cuts it off when it
/// closes a file that it may write to.
bool hasMoreBehindItsData(const std::string& path)
{
    const H5::H5File file(path, H5F_ACC_RDONLY);
    haddr_t end = 0;
    std::error_code error;
    return H5Fget_eoa(file.getId(), &end) < 0 || end != fs::file_size(path, error);
}

/// Whether the file names a driver of its own, which no deck does. The library would write what it
/// takes for the driver's block when it closes a file that it may write to, wherever that lies.
bool namesADriver(const std::string& path)
{
    constexpr int versionAt = 8;
    constexpr int sizeOfAddressesAt = 13;
    std::ifstream stream(path, std::ios::binary);
    std::array<char, 60> block = {};
    stream.read(block.data(), block.size());
    const int version = block[versionAt];
    if (version > 1 || block[sizeOfAddressesAt] != 8) {
        return false;
    }
    const auto* const address = block.begin() + (version == 0 ? 48 : 52);
    return std::any_of(address, address + 8, [](char byte) { return byte != '\xff'; });
}

void openAndWalk(CDeckSerializer& serializer, const std::string& path, CCreatorData& record)
{
    H5check();
    H5open();
    if (!hasMoreBehindItsData(path) && !namesADriver(path)) {
        // A deck that can't be written to is refused. Nothing but the destructor closes a file
        // here: after a close that failed the library doesn't survive another.
        const H5::H5File writable(path, H5F_ACC_RDWR);
    }
    // Read without the right to write: the library marks what it repaired while it decoded a
    // damaged object as changed, and would write it back.
    H5::H5File file(path, H5F_ACC_RDONLY);
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
    CModificationTime time(path);
    try {
        openAndWalk(serializer, path, record);
    } catch (...) {
        // Without a handler the process would end before any destructor ran.
        time.putBack();
        throw;
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
