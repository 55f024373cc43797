#include "deck/deck_serializer.h"

#include "app/checked.h"
#include "app/constants/deck_keys.h"
#include "deck/guarded_transfer.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <stdexcept>

namespace {

static_assert(sizeof(hbool_t) == 1, "flags are moved through one byte");

/// HDF5 trusts the file's own type: it would read past a value that is shorter than its type.
void requireWholeValue(const H5::Attribute& attribute)
{
    if (attribute.getDataType().getSize() > attribute.getStorageSize()) {
        throw std::runtime_error("\"" + attribute.getName() + "\" is shorter than its type");
    }
}

void moveAttribute(const H5::Attribute& attribute, const H5::DataType& type, void* value,
                   unsigned int mode)
{
    GuardedTransfer::requireSingle(attribute);
    requireWholeValue(attribute);
    if (mode == CDeckSerializer::Read) {
        // A read that fails halfway must not leave its first bytes behind.
        std::vector<char> bytes(type.getSize());
        attribute.read(type, bytes.data());
        std::memcpy(value, bytes.data(), bytes.size());
    } else if (mode == CDeckSerializer::Write) {
        attribute.write(type, value);
    }
}

bool transfer(H5::Group& parent, const char* subgroup, const char* attribute,
              const H5::DataType& type, void* value, unsigned int mode)
{
    if (!GuardedTransfer::linkExists(parent, subgroup)) {
        return false;
    }
    return GuardedTransfer::run([&]() {
        const H5::Group group = parent.openGroup(subgroup);
        moveAttribute(group.openAttribute(attribute), type, value, mode);
    });
}

void requireDoubles(const H5::DataSet& dataset)
{
    GuardedTransfer::requireClass(dataset, H5T_FLOAT);
    if (dataset.getFloatType().getSize() != sizeof(double)) {
        throw std::runtime_error(dataset.getObjName() + " has floats of another size");
    }
}

void requireVariableTexts(const H5::DataSet& dataset)
{
    GuardedTransfer::requireClass(dataset, H5T_STRING);
    if (!dataset.getStrType().isVariableStr()) {
        throw std::runtime_error(dataset.getObjName() + " has texts of a fixed length");
    }
}

void requireCount(const H5::DataSet& dataset, std::size_t count)
{
    if (GuardedTransfer::elementCount(dataset) != count) {
        throw std::runtime_error(dataset.getObjName() + " has another number of elements");
    }
}

/// Many elements of a small file may share one long text, of which a read makes a copy for each.
void requireModestTexts(const H5::DataSet& dataset)
{
    constexpr std::size_t mostTexts = 4096;
    constexpr hsize_t mostBytes = 1U << 24U;
    const std::size_t count = GuardedTransfer::elementCount(dataset);
    if (count == 0) {
        return;
    }
    if (count > mostTexts ||
        dataset.getVlenBufSize(dataset.getStrType(), dataset.getSpace()) > mostBytes) {
        throw std::runtime_error(dataset.getObjName() + " has too many texts");
    }
}

/// The texts that HDF5 allocated for a read, given back at the end.
class CReadTexts
{
public:
    explicit CReadTexts(const H5::DataSet& dataset)
        : m_type(dataset.getStrType())
        , m_space(dataset.getSpace())
        , m_texts(GuardedTransfer::elementCount(dataset), nullptr)
    {
        if (!m_texts.empty()) {
            dataset.read(m_texts.data(), m_type, H5::DataSpace::ALL, H5::DataSpace::ALL);
        }
    }

    ~CReadTexts()
    {
        if (!m_texts.empty()) {
            H5Dvlen_reclaim(m_type.getId(), m_space.getId(), H5P_DEFAULT, m_texts.data());
        }
    }

    CReadTexts(const CReadTexts&) = delete;
    CReadTexts& operator=(const CReadTexts&) = delete;

    const std::vector<char*>& texts() const { return m_texts; }

private:
    H5::StrType m_type;
    H5::DataSpace m_space;
    std::vector<char*> m_texts;
};

void readTexts(const H5::DataSet& dataset, std::vector<std::string>& target)
{
    requireModestTexts(dataset);
    const CReadTexts read(dataset);
    for (const char* text : read.texts()) {
        target.emplace_back(text == nullptr ? "" : text);
    }
}

void writeTexts(const H5::DataSet& dataset, const std::vector<std::string>& texts)
{
    requireCount(dataset, texts.size());
    std::vector<const char*> pointers;
    pointers.reserve(texts.size());
    for (const std::string& text : texts) {
        pointers.push_back(text.c_str());
    }
    if (!pointers.empty()) {
        const H5::StrType type(H5::PredType::C_S1, H5T_VARIABLE);
        dataset.write(pointers.data(), type, H5::DataSpace::ALL, H5::DataSpace::ALL);
    }
}

/// The values of those types that the map knows, in the order of the types.
void takeKnown(const SingleMap& factors, const std::vector<std::string>& types,
               std::vector<double>& values)
{
    for (std::size_t shape = 0; shape < std::min(types.size(), values.size()); ++shape) {
        const auto known = factors.find(types[shape]);
        if (known != factors.end()) {
            values[shape] = known->second;
        }
    }
}

} // namespace

void CDeckSerializer::transferAttribute(H5::Group& parent, const char* subgroup,
                                        const char* attribute, const H5::DataType& type,
                                        void* value, unsigned int mode)
{
    transfer(parent, subgroup, attribute, type, value, mode);
}

void CDeckSerializer::transferFlag(H5::Group& parent, const char* subgroup, const char* attribute,
                                   bool* value, unsigned int mode)
{
    // A bool that holds another byte than 0 or 1 is undefined.
    unsigned char byte = *value ? 1 : 0;
    transferAttribute(parent, subgroup, attribute, H5::PredType::NATIVE_HBOOL, &byte, mode);
    *value = byte != 0;
}

template <>
void CDeckSerializer::transferTaggedAttribute(H5::Group& parent, const char* subgroup,
                                              const char* attribute, const H5::PredType& type,
                                              CTaggedValue<double>* value, unsigned int mode)
{
    if (transfer(parent, subgroup, attribute, type, &value->second, mode) && mode == Read) {
        value->first = DeckKeys::Active;
    }
}

template <>
void CDeckSerializer::transferTaggedAttribute(H5::Group& parent, const char* subgroup,
                                              const char* attribute, const H5::PredType& type,
                                              CTaggedValue<bool>* value, unsigned int mode)
{
    unsigned char byte = value->second ? 1 : 0;
    if (transfer(parent, subgroup, attribute, type, &byte, mode) && mode == Read) {
        *value = {DeckKeys::Active, byte != 0};
    }
}

void CDeckSerializer::transferDoubles(H5::Group& group, const char* name, std::any target,
                                      unsigned int mode)
{
    if (!GuardedTransfer::linkExists(group, name)) {
        return;
    }
    auto& numbers = std::any_cast<std::reference_wrapper<std::vector<double>>>(target).get();
    GuardedTransfer::run([&]() {
        const H5::DataSet dataset = group.openDataSet(name);
        requireDoubles(dataset);
        const H5::FloatType type = dataset.getFloatType();
        if (mode == Read) {
            std::vector<double> read(GuardedTransfer::elementCount(dataset));
            if (!read.empty()) {
                dataset.read(read.data(), type, H5::DataSpace::ALL, H5::DataSpace::ALL);
            }
            numbers = read;
        } else if (mode == Write) {
            requireCount(dataset, numbers.size());
            if (!numbers.empty()) {
                dataset.write(numbers.data(), type, H5::DataSpace::ALL, H5::DataSpace::ALL);
            }
        }
    });
}

void CDeckSerializer::transferStrings(H5::Group& group, const char* name,
                                      std::vector<std::string>& target, unsigned int mode)
{
    if (!GuardedTransfer::linkExists(group, name)) {
        return;
    }
    GuardedTransfer::run([&]() {
        const H5::DataSet dataset = group.openDataSet(name);
        requireVariableTexts(dataset);
        if (mode == Read) {
            readTexts(dataset, target);
        } else if (mode == Write) {
            writeTexts(dataset, target);
        }
    });
}

void CDeckSerializer::transferShapeFactors(SingleMap& factors, unsigned int mode, H5::Group& group)
{
    if (mode == Write) {
        writeShapeFactors(factors, group);
        return;
    }
    std::vector<std::string> types;
    std::vector<double> values;
    transferStrings(group, DeckKeys::Type, types, mode);
    transferDoubles(group, DeckKeys::Value, std::ref(values), mode);
    for (std::size_t shape = 0; shape < types.size(); ++shape) {
        factors.emplace(types[shape], checked::element(values, shape));
    }
}

void CDeckSerializer::writeShapeFactors(const SingleMap& factors, H5::Group& group)
{
    std::vector<std::string> types;
    std::vector<double> values;
    for (const auto& [type, value] : factors) {
        types.push_back(type);
        values.push_back(value);
    }
    if (GuardedTransfer::linkExists(group, DeckKeys::Type)) {
        std::vector<std::string> fileTypes;
        std::vector<double> fileValues;
        transferStrings(group, DeckKeys::Type, fileTypes, Read);
        transferDoubles(group, DeckKeys::Value, std::ref(fileValues), Read);
        if (fileTypes.size() != factors.size()) {
            GuardedTransfer::reportOtherCount(DeckKeys::Type, fileTypes.size(), factors.size());
        }
        if (fileTypes.empty() || factors.empty()) {
            return;
        }
        if (fileTypes.size() != factors.size() || fileValues.size() != factors.size()) {
            takeKnown(factors, fileTypes, fileValues);
            types = fileTypes;
            values = fileValues;
        }
    }
    transferStrings(group, DeckKeys::Type, types, Write);
    transferDoubles(group, DeckKeys::Value, std::ref(values), Write);
}
