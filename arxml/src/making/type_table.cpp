#include "making/type_table.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace velum::arxml {

TypeTable::Row const& TypeTable::row(TypeKind kind) {
    using Maker = TypeMaker;
    using Importer = TypeImporter;
    static constexpr std::array rows = {
        Row{TypeKind::integer, &Maker::makeInteger, &Importer::fillPrimitive},
        Row{TypeKind::fixedPoint, &Maker::makeFixedPoint, &Importer::fillPrimitive},
        Row{TypeKind::floatingPoint, &Maker::makeFloatingPoint, &Importer::fillPrimitive},
        Row{TypeKind::boolean, &Maker::makePlain<types::Boolean>, &Importer::fillPrimitive},
        Row{TypeKind::enumeration, &Maker::makeEnumeration, &Importer::fillPrimitive},
        Row{TypeKind::matrix, &Maker::makePlain<types::Matrix>, &Importer::fillMatrix},
        Row{TypeKind::structure, &Maker::makePlain<types::Structure>, &Importer::fillStructure},
        Row{TypeKind::voidPointer, &Maker::makePlain<types::VoidPointer>, &Importer::fillPointer},
        Row{TypeKind::lookupTable, &Maker::makePlain<types::LookupTableType>, &Importer::fillTable},
        Row{TypeKind::sharedAxis,
            &Maker::makePlain<types::SharedAxisType>,
            &Importer::fillSharedAxis},
    };
    const auto* const found = std::find_if(
        rows.begin(), rows.end(), [kind](Row const& candidate) { return candidate.kind == kind; });
    if (found == rows.end()) {
        throw std::logic_error("No object is made of a type of this kind.");
    }
    return *found;
}

} // namespace velum::arxml
