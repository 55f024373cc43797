#pragma once

#include <any>
#include <map>
#include <set>
#include <string>

/// Settings by key path; each value is a bool, int, unsigned long, double or QString.
using DfgValues = std::map<std::string, std::any>;

/// Data type words of a .dfg file and their numbers.
extern std::map<std::string, int> s_dfgDataTypes;

/// Reads the key-path-value file that lies beside the deck.
class CDFGInputOutput
{
public:
    /// Adds the settings of the deck's .dfg file to `values`, where the first occurrence of a key
    /// stays; a missing file adds nothing. Lines with a component out of `ignoredComponents` are
    /// dropped. Advice on the header lines goes to the standard output.
    ///
    /// Throws std::out_of_range "invalid map<K, T> key" for an unknown data type word, and what
    /// checked::stoi, stoul and stod throw for values that are no such number. A file that can't
    /// be read although it is there is waited for without end.
    void read(DfgValues& values, const std::set<std::string>& ignoredComponents) const;
};
