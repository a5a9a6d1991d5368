#pragma once

#include "making/primitive_builder.h"

namespace velum::arxml {

/// Fills lookup tables and shared axes, which the type importer has made.
class TableBuilder {
public:
    /// `made` are the objects of all types.
    TableBuilder(ImportContext const& context,
                 References& references,
                 TypePlanner& planner,
                 PrimitiveBuilder& primitives,
                 Objects& objects,
                 ObjectsOf<foundation::ValueType> const& made)
        : context_(context),
          references_(references),
          planner_(planner),
          primitives_(primitives),
          objects_(objects),
          made_(made) {}

    /// Makes the SwRecordLayout objects, by name only: the model has no place for what they hold.
    void buildLayouts(Catalogue const& catalogue);

    void fillTable(types::LookupTableType const& table, Element type);
    void fillSharedAxis(types::SharedAxisType const& shared, Element type);

    /// The anonymous primitive type of what `properties` refers to; empty if it refers to nothing
    /// that a primitive type has.
    types::PrimitiveType makePart(Element properties);

private:
    template <class Handle>
    void setCommon(Handle const& object, Element properties);
    types::Axis makeAxis(Element element);
    void fillIndividual(types::Axis const& axis, Element individual);
    void fillGrouped(types::Axis const& axis, Element grouped);
    void setPoints(types::Axis const& axis, Element individual);
    types::PrimitiveType primitiveAt(Element reference);
    void compareCategory(types::LookupTableType const& table, Element category) const;

    ImportContext context_;
    References& references_;
    TypePlanner& planner_;
    PrimitiveBuilder& primitives_;
    Objects& objects_;
    ObjectsOf<foundation::ValueType> const& made_; // of types
    ObjectsOf<types::SwRecordLayout> layouts_;
};

} // namespace velum::arxml
