#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace velum::arxml {

/// Stands for the name of an element; equal names have equal ids within one `Names`.
using NameId = std::uint32_t;

/// The element names that the reader and the importers ask for, in the order of `Names`'s table.
namespace element {
enum Known : NameId {
    arPackage,
    arPackages,
    autosar,
    baseIsThisPackage,
    baseTypeEncoding,
    baseTypeRef,
    baseTypeSize,
    category,
    elements,
    implementationDataType,
    implementationDataTypeRef,
    isDefault,
    isGlobal,
    nativeDeclaration,
    packageRef,
    referenceBase,
    referenceBases,
    shortLabel,
    shortName,
    subElements,
    swBaseType,
    swDataDefProps,
    swDataDefPropsConditional,
    swDataDefPropsVariants,
    countOfKnown
};
} // namespace element

/// The element names met so far, each kept once.
class Names {
public:
    Names();
    Names(const Names&) = delete;
    Names& operator=(const Names&) = delete;

    /// The id of a name; a name not met before gets the next one.
    NameId intern(std::string_view name);

    /// Valid as long as this object.
    std::string_view text(NameId id) const { return texts_[id]; }

private:
    std::deque<std::string> texts_; // a deque, since the keys below point into it
    std::unordered_map<std::string_view, NameId> ids_;
};

} // namespace velum::arxml
