#include "deck/deck_loading.h"

#include "deck/deck_files.h"
#include "deck/deck_serializer.h"

#include <QFile>

#include <H5Cpp.h>

#include <filesystem>
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

void openAndWalk(CDeckSerializer& serializer, const std::string& path, CCreatorData& record)
{
    H5check();
    H5open();
    H5::H5File file(path, H5F_ACC_RDWR);
    serializer.walk(file, record, CDeckSerializer::Read);
    file.close();
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
