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
    TypeImporter(const ImportContext& context,
                 References& references,
                 TypePlanner& planner,
                 const TypeMaps& maps,
                 PrimitiveBuilder& primitives,
                 ValueBuilder& values,
                 Objects& objects)
        : context_(context),
          references_(references),
          planner_(planner),
          maps_(maps),
          primitives_(primitives),
          values_(values),
          objects_(objects),
          tables_(context, references, planner, primitives, objects, [this](Element type) {
              return made_.find(type);
          }) {}
    TypeImporter(const TypeImporter&) = delete;
    TypeImporter& operator=(const TypeImporter&) = delete;

    /// All types are made first and filled then, since they refer to each other.
    void build(const Catalogue& catalogue);

private:
    foundation::ValueType make(const TypePlan& plan, const Identity& identity);
    void fill(const foundation::ValueType& object, Element type, const TypePlan& plan);
    void fillPrimitive(const types::PrimitiveType& object, Element type, const TypePlan& plan);
    void setReference(const types::PrimitiveType& object, Element type, const TypePlan& plan);
    void fillMatrix(const types::Matrix& matrix, Element type, const TypePlan& plan);
    void fillArray(const types::Matrix& matrix, Element type);
    Element addDimensions(const types::Matrix& matrix, Element type);
    void fillApplicationArray(const types::Matrix& matrix, Element type);
    void fillValueBlock(const types::Matrix& matrix, Element type);
    void fillStructure(const types::Structure& structure, Element type);
    void copyMembers(const types::Structure& alias, const types::Structure& origin);
    void addMember(const types::Structure& structure, Element member);
    void setMemberType(const types::StructElement& object, Element member);
    foundation::ValueType makeInline(Element member);
    void fillPointer(const types::VoidPointer& pointer, Element type);
    foundation::ValueType typeAt(Element reference);

    ImportContext context_;
    References& references_;
    TypePlanner& planner_;
    const TypeMaps& maps_;
    PrimitiveBuilder& primitives_;
    ValueBuilder& values_;
    Objects& objects_;
    ObjectsOf<foundation::ValueType> made_;
    TableBuilder tables_;
    std::vector<std::pair<types::Structure, types::Structure>> structureAliases_; // and origins
    std::size_t copied_ = 0;
};

} // namespace velum::arxml
