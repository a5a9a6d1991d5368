#pragma once

#include "html/lookup.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>
#include <velum_arxml/reading/sources.h>

namespace velum::html {

/// Which constants fill which lookup tables: the model doesn't say, the files do where a prototype
/// with the type of a table begins with a constant.
class Constants {
public:
    Constants() = default;
    Constants(QOB::Model const& model, arxml::Sources const& sources);

    /// The table that a constant fills, the first one if there are several; empty if none is known.
    types::LookupTableType tableOf(types::ConstantSpecification const& constant) const;
    /// The constants that fill a table, in the order of the files.
    std::vector<types::ConstantSpecification> of(types::LookupTableType const& table) const;

private:
    std::unordered_map<void const*, types::LookupTableType> tables_;
    std::unordered_map<void const*, std::vector<types::ConstantSpecification>> constants_;
};

/// The values of a table that a constant holds, its own or by way of other constants; empty if it
/// holds something else.
types::LookupTableSpecification tableIn(types::ConstantSpecification const& constant);

} // namespace velum::html
