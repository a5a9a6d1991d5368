#pragma once

#include "making/type_importer.h"
#include "making/type_maker.h"

namespace velum::arxml {

/// What is done with each kind of type: how its object is made, and how it is filled.
struct TypeTable {
    struct Row {
        TypeKind kind;
        foundation::ValueType (TypeMaker::*make)(TypePlan const& plan, Identity const& identity);
        void (TypeImporter::*fill)(foundation::ValueType const& object,
                                   Element type,
                                   TypePlan const& plan);
    };

    /// Of every kind but `TypeKind::none`, of which no object is made.
    static Row const& row(TypeKind kind);
};

} // namespace velum::arxml
