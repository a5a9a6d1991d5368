#pragma once

#include "making/compu_method_importer.h"
#include "making/constraints.h"
#include "making/type_maker.h"
#include "making/unit_importer.h"
#include "making/value_builder.h"
#include "planning/base_types.h"
#include "planning/type_planner.h"

namespace velum::arxml {

/// Sets what all primitive types have.
class PrimitiveBuilder {
public:
    PrimitiveBuilder(ImportContext const& context,
                     References& references,
                     TypeMaker& maker,
                     UnitImporter& units,
                     CompuMethodImporter& methodObjects,
                     Constraints& constraints,
                     Objects& objects)
        : context_(context),
          references_(references),
          maker_(maker),
          units_(units),
          methodObjects_(methodObjects),
          constraints_(constraints),
          objects_(objects) {}

    /// Makes the SwBaseType objects.
    void buildBaseTypes(Catalogue const& catalogue);

    /// Empty if there is none.
    types::SwBaseType baseType(Element reference);

    /// The primitive type of a plan that exists only as a part of something, with what `properties`
    /// says of it.
    types::PrimitiveType makePart(TypePlan const& plan, Element properties);

    /// Sets what the references in `properties` lead to, and the limits of the constraint.
    void setProperties(types::PrimitiveType const& type,
                       TypePlan const& plan,
                       Element properties,
                       bool isApplication);

private:
    ImportContext context_;
    References& references_;
    TypeMaker& maker_;
    UnitImporter& units_;
    CompuMethodImporter& methodObjects_;
    Constraints& constraints_;
    Objects& objects_;
    ObjectsOf<types::SwBaseType> baseTypeObjects_;
};

} // namespace velum::arxml
