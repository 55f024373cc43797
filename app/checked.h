#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <variant>

/// Look-ups and conversions whose failures carry the same text with every standard library: the
/// texts end up on the standard error stream and are part of the program's behaviour.
namespace checked {

/// The mapped value of `key`. Throws std::out_of_range "invalid map<K, T> key".
template <class Map, class Key>
auto& at(Map& map, const Key& key)
{
    const auto found = map.find(key);
    if (found == map.end()) {
        throw std::out_of_range("invalid map<K, T> key");
    }
    return found->second;
}

/// Element `index` of a vector. Throws std::out_of_range "invalid vector subscript".
template <class Vector>
auto& element(Vector& vector, std::size_t index)
{
    if (index >= vector.size()) {
        throw std::out_of_range("invalid vector subscript");
    }
    return vector[index];
}

/// The alternative T of a variant. Throws std::bad_variant_access "bad variant access".
template <class T, class Variant>
const T& get(const Variant& variant)
{
    const T* value = std::get_if<T>(&variant);
    if (value == nullptr) {
        throw std::bad_variant_access();
    }
    return *value;
}

/// Number at the start of `text`, base 10; what follows it is ignored. Throws
/// std::invalid_argument "invalid stoi argument" or std::out_of_range "stoi argument out of range".
int stoi(const std::string& text);

/// As `stoi`, for 32 bits without sign: a negative number wraps around.
unsigned long stoul(const std::string& text);

/// As `stoi`, for a floating-point number; depends on LC_NUMERIC being "C".
double stod(const std::string& text);

} // namespace checked
