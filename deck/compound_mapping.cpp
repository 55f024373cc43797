#include "deck/compound_mapping.h"

#include "app/constants/deck_keys.h"

#include <cstring>
#include <exception>
#include <iostream>
#include <type_traits>

namespace CompoundMapping {
namespace {

template <class Record, class = void>
struct HasName : std::false_type
{
};

template <class Record>
struct HasName<Record, std::void_t<decltype(Record::name)>> : std::true_type
{
};

template <class Record, class = void>
struct HasPair : std::false_type
{
};

template <class Record>
struct HasPair<Record, std::void_t<decltype(Record::name1)>> : std::true_type
{
};

template <std::size_t Length>
std::string textOf(const char (&member)[Length])
{
    return std::string(member, strnlen(member, Length));
}

/// No exception, as that would be swallowed beside the transfer and the case would run with a deck
/// that isn't its own.
template <std::size_t Length>
void copyBounded(char (&member)[Length], const std::string& text)
{
    if (text.size() >= Length) {
        std::cerr << "A name of a deck is longer than " << Length - 1 << " characters: " << text
                  << std::endl;
        std::terminate();
    }
    std::memset(member, 0, Length);
    std::memcpy(member, text.data(), text.size());
}

} // namespace

template <class Record>
std::string keyOf(const Record& record)
{
    if constexpr (HasPair<Record>::value) {
        return textOf(record.name1) + DeckKeys::Separator + textOf(record.name2);
    } else if constexpr (HasName<Record>::value) {
        return textOf(record.name);
    } else {
        return textOf(record.key);
    }
}

template <class Record>
void setKey(Record& record, const std::string& key)
{
    if constexpr (HasPair<Record>::value) {
        const std::size_t separator = key.find(DeckKeys::Separator);
        const bool split = separator != std::string::npos;
        copyBounded(record.name1, key.substr(0, separator));
        copyBounded(record.name2,
                    split ? key.substr(separator + DeckKeys::Separator.size()) : std::string());
    } else if constexpr (HasName<Record>::value) {
        copyBounded(record.name, key);
    } else {
        copyBounded(record.key, key);
    }
}

#define TARNEL_INSTANTIATE(Record)                                                                 \
    template std::string keyOf(const HDF5DATATYPES::Record&);                                      \
    template void setKey(HDF5DATATYPES::Record&, const std::string&);

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

} // namespace CompoundMapping
