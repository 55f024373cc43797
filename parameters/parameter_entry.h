#pragma once

#include "parameters/case_value.h"

#include <memory>
#include <string>
#include <vector>

struct ParameterLimit;

/// A model, or a group of a model, that the deck uses: what of it may vary, and with which values.
/// Made by the property tree, edited by the value table, read by job generation; shared by pointer,
/// and identity is the pointer.
struct CParameterEntry
{
    /// A material, a material pair or another name within the entry.
    struct CParameterKeys
    {
        /// One number of a key.
        struct CParameterFields
        {
            const ParameterLimit* m_limit; ///< row of ParameterLimits; never null, not owned
            int m_index;                   ///< position among all fields made since start
            std::string m_name;            ///< parameter label
            /// Element 0 is the deck's value; every further element is a variance.
            std::vector<CaseValue> m_values;
        };

        std::string m_name;
        std::vector<std::shared_ptr<CParameterFields>> m_fields; ///< in label order
    };

    std::string m_name;                                  ///< label, also the text of the tree item
    std::vector<std::shared_ptr<CParameterKeys>> m_keys; ///< in the order of the deck's container
};

using CParameterKeys = CParameterEntry::CParameterKeys;
using CParameterFields = CParameterKeys::CParameterFields;
