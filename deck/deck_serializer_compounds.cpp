#include "deck/deck_serializer.h"

#include "app/constants/deck_keys.h"
#include "app/constants/messages.h"
#include "app/message_box.h"
#include "deck/compound_mapping.h"
#include "deck/guarded_transfer.h"

#include <functional>
#include <memory>
#include <stdexcept>
#include <utility>

using namespace HDF5DATATYPES;

namespace {

template <class Record>
using MapOf = typename CompoundMapping::Mapping<Record>::Map;

/// HDF5 trusts the file's own type: it would read past an element for a member that lies outside.
void requireSoundType(const H5::DataSet& dataset, const H5::CompType& fileType)
{
    const std::size_t size = fileType.getSize();
    for (unsigned int index = 0; index < static_cast<unsigned int>(fileType.getNmembers());
         ++index) {
        const std::size_t offset = fileType.getMemberOffset(index);
        if (offset > size || fileType.getMemberDataType(index).getSize() > size - offset) {
            throw std::runtime_error(dataset.getObjName() + " has members outside its elements");
        }
    }
}

/// HDF5 would leave a member that the file lacks as it is: a number that nobody wrote.
void requireMembers(const H5::DataSet& dataset, const H5::CompType& type)
{
    GuardedTransfer::requireClass(dataset, H5T_COMPOUND);
    const H5::CompType fileType = dataset.getCompType();
    requireSoundType(dataset, fileType);
    for (unsigned int index = 0; index < static_cast<unsigned int>(type.getNmembers()); ++index) {
        const std::string member = type.getMemberName(index);
        if (H5Tget_member_index(fileType.getId(), member.c_str()) < 0) {
            throw std::runtime_error(dataset.getObjName() + " lacks \"" + member + "\"");
        }
    }
}

/// All records of a dataset in one piece of memory.
template <class Record>
struct SRecords
{
    std::size_t count;
    std::unique_ptr<Record[]> first;

    Record* begin() const { return first.get(); }
    Record* end() const { return first.get() + count; }
};

/// One transfer for all of them: what can't be read to its end is known before any of it is used.
template <class Record>
SRecords<Record> readRecords(const H5::DataSet& dataset, const H5::CompType& type)
{
    const std::size_t count = GuardedTransfer::elementCount(dataset);
    // Not filled beforehand: the read writes every byte of a table that may be large.
    SRecords<Record> records{count, std::unique_ptr<Record[]>(new Record[count])};
    if (count > 0) {
        dataset.read(records.begin(), type, H5::DataSpace::ALL, H5::DataSpace::ALL);
    }
    return records;
}

bool holdsTwoSeparators(const std::string& key)
{
    const std::size_t first = key.find(DeckKeys::Separator);
    return first != std::string::npos &&
           key.find(DeckKeys::Separator, first + DeckKeys::Separator.size()) != std::string::npos;
}

template <class Record>
void readMap(const H5::DataSet& dataset, const H5::CompType& type, MapOf<Record>& map)
{
    const SRecords<Record> records = readRecords<Record>(dataset, type);
    for (Record& record : records) {
        std::string key = CompoundMapping::keyOf(record);
        if (CompoundMapping::Mapping<Record>::warnsOfSeparator && holdsTwoSeparators(key)) {
            MessageBox::warning(Messages::DeckIncompatible, Messages::MaterialToken);
        }
        // Cheap where the file's order is that of the keys; the first of equal keys stays.
        map.emplace_hint(map.end(), std::move(key), CompoundMapping::numbers(record));
    }
}

template <class Record>
std::vector<Record> recordsOf(const MapOf<Record>& map)
{
    std::vector<Record> records(map.size());
    auto record = records.begin();
    for (const auto& [key, value] : map) {
        CompoundMapping::setKey(*record, key);
        CompoundMapping::numbers(*record) = value;
        ++record;
    }
    return records;
}

/// The file's records, those that the map knows with the map's values.
template <class Record>
std::vector<Record> mergedRecords(const H5::DataSet& dataset, const H5::CompType& type,
                                  const MapOf<Record>& map)
{
    const SRecords<Record> records = readRecords<Record>(dataset, type);
    for (Record& record : records) {
        const auto known = map.find(CompoundMapping::keyOf(record));
        if (known != map.end()) {
            CompoundMapping::numbers(record) = known->second;
        }
    }
    return std::vector<Record>(records.begin(), records.end());
}

template <class Record>
void writeMap(const H5::DataSet& dataset, const H5::CompType& type, const MapOf<Record>& map,
              const char* name)
{
    const std::size_t count = GuardedTransfer::elementCount(dataset);
    if (count != map.size()) {
        GuardedTransfer::reportOtherCount(name, count, map.size());
    }
    if (count == 0 || map.empty()) {
        return;
    }
    const std::vector<Record> records =
        count == map.size() ? recordsOf<Record>(map) : mergedRecords<Record>(dataset, type, map);
    dataset.write(records.data(), type, H5::DataSpace::ALL, H5::DataSpace::ALL);
}

} // namespace

template <class Record>
void CDeckSerializer::transferCompound(H5::Group& group, const char* name, std::any target,
                                       unsigned int mode)
{
    if (!GuardedTransfer::linkExists(group, name)) {
        return;
    }
    auto& map = std::any_cast<std::reference_wrapper<MapOf<Record>>>(target).get();
    GuardedTransfer::run([&]() {
        const typename CompoundMapping::Mapping<Record>::Type type;
        H5::DataSet dataset = group.openDataSet(name);
        requireMembers(dataset, type);
        if (mode == Read) {
            readMap<Record>(dataset, type, map);
        } else if (mode == Write) {
            writeMap<Record>(dataset, type, map, name);
        }
    });
}

#define TARNEL_INSTANTIATE(Record)                                                                 \
    template void CDeckSerializer::transferCompound<Record>(H5::Group&, const char*, std::any,     \
                                                            unsigned int);

TARNEL_INSTANTIATE(SBasicCmpd)
TARNEL_INSTANTIATE(SAdvCmpd)
TARNEL_INSTANTIATE(SInteraction)
TARNEL_INSTANTIATE(SHystereticCmpdInter)
TARNEL_INSTANTIATE(SOkaWearParamCmpd)
TARNEL_INSTANTIATE(SEcmCmpd)
TARNEL_INSTANTIATE(SBondParamCmpd)
TARNEL_INSTANTIATE(SBondV2ParamCmpd)
TARNEL_INSTANTIATE(SCharDoubleDouble)

#undef TARNEL_INSTANTIATE
