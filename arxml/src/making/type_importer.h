#pragma once

#include "making/primitive_builder.h"
#include "making/table_builder.h"
#include "making/value_builder.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace velum::arxml {

/// Makes the objects of implementation and application types.
class TypeImporter {
public:
    TypeImporter(ImportContext const& context,
                 References& references,
                 TypePlanner& planner,
                 TypeMaps const& maps,
                 TypeMaker& maker,
                 PrimitiveBuilder& primitives,
                 ValueBuilder& values,
                 Objects& objects)
        : context_(context),
          references_(references),
          planner_(planner),
          maps_(maps),
          maker_(maker),
          primitives_(primitives),
          values_(values),
          objects_(objects),
          tables_(context, references, planner, primitives, objects, made_) {}
    TypeImporter(TypeImporter const&) = delete;
    TypeImporter& operator=(TypeImporter const&) = delete;

    /// All types are made first and filled then, since they refer to each other.
    void build(Catalogue const& catalogue);

private:
    friend struct TypeTable;

    void fill(foundation::ValueType const& object, Element type, TypePlan const& plan);
    void fillPrimitive(foundation::ValueType const& object, Element type, TypePlan const& plan);
    void fillMatrix(foundation::ValueType const& object, Element type, TypePlan const& plan);
    void fillStructure(foundation::ValueType const& object, Element type, TypePlan const& plan);
    void fillPointer(foundation::ValueType const& object, Element type, TypePlan const& plan);
    void fillTable(foundation::ValueType const& object, Element type, TypePlan const& plan);
    void fillSharedAxis(foundation::ValueType const& object, Element type, TypePlan const& plan);
    void setReference(types::PrimitiveType const& object, Element type, TypePlan const& plan);
    void fillArray(types::Matrix const& matrix, Element type);
    Element addDimensions(types::Matrix const& matrix, Element type);
    void fillApplicationArray(types::Matrix const& matrix, Element type);
    void fillValueBlock(types::Matrix const& matrix, Element type);
    void addMembers(types::Structure const& structure, Element type);
    void copyMembers(types::Structure const& alias, types::Structure const& origin);
    void addMember(types::Structure const& structure, Element member);
    void setMemberType(types::StructElement const& object, Element member);
    foundation::ValueType makeInline(Element member);
    foundation::ValueType typeAt(Element reference);

    ImportContext context_;
    References& references_;
    TypePlanner& planner_;
    TypeMaps const& maps_;
    TypeMaker& maker_;
    PrimitiveBuilder& primitives_;
    ValueBuilder& values_;
    Objects& objects_;
    ObjectsOf<foundation::ValueType> made_;
    TableBuilder tables_;
    std::vector<std::pair<types::Structure, types::Structure>> structureAliases_; // and origins
    std::size_t copied_ = 0;
};

} // namespace velum::arxml
