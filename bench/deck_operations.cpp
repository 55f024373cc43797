#include "bench/measured.h"
#include "bench/operations.h"
#include "bench/workload.h"
#include "deck/compound_types.h"
#include "deck/deck_loading.h"
#include "deck/deck_serializer.h"
#include "deck/deck_store.h"
#include "parameters/parameter_editor_frame.h"

#include <QCoreApplication>

#include <H5Cpp.h>

using namespace HDF5DATATYPES;

namespace {

CCreatorData loaded(const QString& deck)
{
    CDeckSerializer serializer;
    return DeckLoading::loadDeck(serializer, deck);
}

template <class Record, class Type>
void readRecords(const H5::Group& group, const char* path)
{
    const H5::DataSet dataset = group.openDataSet(path);
    std::vector<Record> records(std::size_t(dataset.getSpace().getSimpleExtentNpoints()));
    dataset.read(records.data(), Type());
}

} // namespace

void Operations::makeTableDeck(const QStringList& arguments)
{
    Workload::writeTableDeck(arguments[0].toStdString(), arguments[1].toInt());
}

void Operations::readDeck(const QStringList& arguments)
{
    measured([&] { loaded(arguments[0]); });
}

/// The least that has to be done: one call for each dataset, into records as they lie in the file.
void Operations::readPlainly(const QStringList& arguments)
{
    measured([&] {
        const H5::H5File file(arguments[0].toStdString(), H5F_ACC_RDONLY);
        const H5::Group creator = file.openGroup("CreatorData/0");
        const H5::Group pairs = creator.openGroup("PhysicsModels/SurfaceSurface");
        const H5::Group walls = creator.openGroup("PhysicsModels/SurfaceGeometry");
        readRecords<SInteraction, SInteractionType>(creator, "Interactions");
        readRecords<SAdvCmpd, SAdvCmpdType>(pairs, "Hertz-Mindlin with JKR/data");
        readRecords<SAdvCmpd, SAdvCmpdType>(pairs, "Linear Spring/data");
        readRecords<SHystereticCmpdInter, SHystereticCmpdInterType>(
            pairs, "Hysteretic Spring/interactions");
        readRecords<SEcmCmpd, SEcmCmpdType>(pairs, "Edinburgh Elasto-Plastic Adhesion/data");
        readRecords<SAdvCmpd, SAdvCmpdType>(walls, "Hertz-Mindlin with JKR/data");
    });
}

void Operations::enterParameters(const QStringList& arguments)
{
    CDeckStore::instance()->creatorData() = {loaded(arguments[0])};
    CParameterEditorFrame page;
    page.show();
    QCoreApplication::processEvents();
    measured([&] {
        page.onPageEntered();
        QCoreApplication::processEvents();
    });
}
