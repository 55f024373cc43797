#include "deck/deck_serializer.h"

#include "app/constants/deck_keys.h"
#include "app/constants/messages.h"
#include "app/message_box.h"
#include "deck/compound_mapping.h"
#include "deck/guarded_transfer.h"

#include <algorithm>
#include <functional>
#include <stdexcept>

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

/// So many records are read at once that they stay in the processor's cache, and never a part of a
/// chunk: each would be unpacked again for every part.
hsize_t recordsAtOnce(const H5::DataSet& dataset, hsize_t count)
{
    constexpr hsize_t least = 512;
    hsize_t chunk = 1;
    const H5::DSetCreatPropList properties = dataset.getCreatePlist();
    if (properties.getLayout() == H5D_CHUNKED) {
        properties.getChunk(1, &chunk);
    }
    chunk = std::clamp<hsize_t>(chunk, 1, count);
    return std::min(count, (least + chunk - 1) / chunk * chunk);
}

/// Hands each record over, in the order of the file.
template <class Record>
void readRecords(const H5::DataSet& dataset, const H5::CompType& type,
                 const std::function<void(Record&)>& take)
{
    const hsize_t count = GuardedTransfer::elementCount(dataset);
    if (count == 0) {
        return;
    }
    std::vector<Record> records(recordsAtOnce(dataset, count));
    const H5::DataSpace inFile = dataset.getSpace();
    for (hsize_t begin = 0; begin < count; begin += records.size()) {
        const hsize_t size = std::min<hsize_t>(records.size(), count - begin);
        inFile.selectHyperslab(H5S_SELECT_SET, &size, &begin);
        dataset.read(records.data(), type, H5::DataSpace(1, &size), inFile);
        std::for_each(records.begin(), records.begin() + size, take);
    }
}

bool holdsTwoSeparators(const std::string& key)
{
    const std::size_t first = key.find(DeckKeys::Separator);
    return first != std::string::npos &&
           key.find(DeckKeys::Separator, first + DeckKeys::Separator.size()) != std::string::npos;
}

/// All records or none. Of records with one key the first counts.
template <class Record>
void readMap(const H5::DataSet& dataset, const H5::CompType& type, MapOf<Record>& map)
{
    MapOf<Record> read;
    readRecords<Record>(dataset, type, [&read](Record& record) {
        std::string key = CompoundMapping::keyOf(record);
        if (CompoundMapping::Mapping<Record>::warnsOfSeparator && holdsTwoSeparators(key)) {
            MessageBox::warning(Messages::DeckIncompatible, Messages::MaterialToken);
        }
        read.emplace_hint(read.end(), std::move(key), CompoundMapping::numbers(record));
    });
    map.merge(read);
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
    std::vector<Record> records;
    records.reserve(GuardedTransfer::elementCount(dataset));
    readRecords<Record>(dataset, type, [&](Record& record) {
        const auto known = map.find(CompoundMapping::keyOf(record));
        if (known != map.end()) {
            CompoundMapping::numbers(record) = known->second;
        }
        records.push_back(record);
    });
    return records;
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
