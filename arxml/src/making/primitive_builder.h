#pragma once

#include "making/compu_method_importer.h"
#include "making/constraints.h"
#include "making/objects.h"
#include "making/unit_importer.h"
#include "making/value_builder.h"
#include "planning/base_types.h"
#include "planning/type_planner.h"

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

/// Makes primitive types and sets what all of them have.
class PrimitiveBuilder {
public:
    PrimitiveBuilder(ImportContext const& context,
                     References& references,
                     CompuMethods const& methods,
                     UnitImporter& units,
                     CompuMethodImporter& methodObjects,
                     Constraints& constraints,
                     Objects& objects)
        : context_(context),
          references_(references),
          methods_(methods),
          units_(units),
          methodObjects_(methodObjects),
          constraints_(constraints),
          objects_(objects) {}

    /// Makes the SwBaseType objects.
    void buildBaseTypes(Catalogue const& catalogue);

    /// Empty if there is none.
    types::SwBaseType baseType(Element reference);

    /// An object of the plan's metaclass, which must be one of primitive types, with what follows
    /// from its base type and method.
    types::PrimitiveType make(TypePlan const& plan, Identity const& identity);

    /// Sets what the references in `properties` lead to, and the limits of the constraint.
    void setProperties(types::PrimitiveType const& type,
                       TypePlan const& plan,
                       Element properties,
                       bool isApplication);

private:
    types::PrimitiveType makeFixedPoint(TypePlan const& plan, Identity const& identity);
    types::PrimitiveType makeFloatingPoint(TypePlan const& plan, Identity const& identity);
    types::PrimitiveType makeEnumeration(TypePlan const& plan, Identity const& identity);

    ImportContext context_;
    References& references_;
    CompuMethods const& methods_;
    UnitImporter& units_;
    CompuMethodImporter& methodObjects_;
    Constraints& constraints_;
    Objects& objects_;
    ObjectsOf<types::SwBaseType> baseTypeObjects_;
};

} // namespace velum::arxml
