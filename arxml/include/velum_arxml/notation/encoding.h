#pragma once

#include <optional>
#include <string_view>
#include <velum_arxml/source/export.h>

namespace velum::arxml {

/// What BASE-TYPE-ENCODING says about the values of a type.
struct Encoding {
    enum class Values { integer, floatingPoint, boolean, nothing, other };

    Values values = Values::other;
    bool isSigned = false;          ///< Of an integer.
    bool isExact = true;            ///< False if the code says more than `values` and the sign.
    bool isInferred = false;        ///< The code is missing or none of the standard's.
    bool isFromDeclaration = false; ///< The sign follows from NATIVE-DECLARATION.
};

/// Reads a BASE-TYPE-ENCODING with the NATIVE-DECLARATION beside it.
VELUM_ARXML_EXPORT Encoding readEncoding(std::optional<std::string_view> code,
                                         std::optional<std::string_view> nativeDeclaration);

} // namespace velum::arxml
