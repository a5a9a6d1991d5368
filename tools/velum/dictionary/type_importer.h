#pragma once

#include "dictionary/primitive_builder.h"
#include "dictionary/table_builder.h"
#include "dictionary/value_builder.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace velum::dictionary {

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
          tables_(context, references, planner, primitives, objects, [this](arxml::Element type) {
              return made_.find(type);
          }) {}
    TypeImporter(const TypeImporter&) = delete;
    TypeImporter& operator=(const TypeImporter&) = delete;

    /// All types are made first and filled then, since they refer to each other.
    void build(const Catalogue& catalogue);

private:
    foundation::ValueType make(const TypePlan& plan, const Identity& identity);
    void fill(const foundation::ValueType& object, arxml::Element type, const TypePlan& plan);
    void
    fillPrimitive(const types::PrimitiveType& object, arxml::Element type, const TypePlan& plan);
    void
    setReference(const types::PrimitiveType& object, arxml::Element type, const TypePlan& plan);
    void fillMatrix(const types::Matrix& matrix, arxml::Element type, const TypePlan& plan);
    void fillArray(const types::Matrix& matrix, arxml::Element type);
    arxml::Element addDimensions(const types::Matrix& matrix, arxml::Element type);
    void fillApplicationArray(const types::Matrix& matrix, arxml::Element type);
    void fillValueBlock(const types::Matrix& matrix, arxml::Element type);
    void fillStructure(const types::Structure& structure, arxml::Element type);
    void copyMembers(const types::Structure& alias, const types::Structure& origin);
    void addMember(const types::Structure& structure, arxml::Element member);
    void setMemberType(const types::StructElement& object, arxml::Element member);
    foundation::ValueType makeInline(arxml::Element member);
    void fillPointer(const types::VoidPointer& pointer, arxml::Element type);
    foundation::ValueType typeAt(arxml::Element reference);

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

} // namespace velum::dictionary
