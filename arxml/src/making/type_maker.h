#pragma once

#include "making/compu_method_importer.h"
#include "making/made_objects.h"
#include "planning/type_planner.h"

#include <string_view>

namespace velum::arxml {

/// By what an object is known: the element that names it, or only a name.
struct Identity {
    Element named;
    std::string_view name;

    template <class Handle>
    Handle make(Objects& objects) const {
        return named ? objects.makeOf<Handle>(named) : objects.make<Handle>(name);
    }
};

/// Makes the objects of types, each of the class that its plan says, with what follows from its
/// base type and method. What else they have is set when all of them are there.
class TypeMaker {
public:
    TypeMaker(ImportContext const& context,
              CompuMethods const& methods,
              CompuMethodImporter& methodObjects,
              Objects& objects)
        : context_(context), methods_(methods), methodObjects_(methodObjects), objects_(objects) {}

    foundation::ValueType make(TypePlan const& plan, Identity const& identity);

private:
    friend struct TypeTable;

    template <class Handle>
    foundation::ValueType makePlain(TypePlan const& plan, Identity const& identity);
    foundation::ValueType makeInteger(TypePlan const& plan, Identity const& identity);
    foundation::ValueType makeFixedPoint(TypePlan const& plan, Identity const& identity);
    foundation::ValueType makeFloatingPoint(TypePlan const& plan, Identity const& identity);
    foundation::ValueType makeEnumeration(TypePlan const& plan, Identity const& identity);

    ImportContext context_;
    CompuMethods const& methods_;
    CompuMethodImporter& methodObjects_;
    Objects& objects_;
};

template <class Handle>
foundation::ValueType TypeMaker::makePlain(TypePlan const& /*plan*/, Identity const& identity) {
    return foundation::ValueType(identity.make<Handle>(objects_));
}

} // namespace velum::arxml
