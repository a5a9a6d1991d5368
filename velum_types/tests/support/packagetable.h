#pragma once

namespace VelumTest {

/// In the place of a number of properties.
constexpr int DataType = -1;

/// A type of the package, at its index.
struct PackageEntry {
    char const* name;
    int properties; ///< how many the class itself declares

    constexpr bool isClass() const { return name != nullptr && properties != DataType; }
};

/// The types of the package Zorvane.metamodel.types: all that a test knows of it beforehand.
constexpr PackageEntry PackageTable[] = {
    {nullptr, 0},
    {"FloatingPoint", 1},
    {"Complex", 2},
    {"Dimension", 6},
    {"LiteralReal", 1},
    {"FixedPoint", 6},
    {"Integer", 2},
    {"Real", 4},
    {"DataSize", DataType},
    {"Unit", 10},
    {"Time", DataType},
    {"FloatingPointKind", DataType},
    {"Matrix", 4},
    {"EnumerationLiteral", 6},
    {"Enumeration", 5},
    {"DataSizeUnitKind", DataType},
    {"TimeUnitKind", DataType},
    {"Factory", 0},
    {"Boolean", 4},
    {"MatrixValueSpecification", 2},
    {"Cell", 1},
    {"Structure", 2},
    {"ValueElement", 2},
    {"StructureValueSpecification", 1},
    {"Slot", 1},
    {"EnumerationLiteralReference", 2},
    {"ConstantSpecification", 2},
    {"ConstantReference", 1},
    {"CompositeSpecification", 1},
    {"PrimitiveType", 7},
    {"StructElement", 3},
    {"CompuMethod", 6},
    {"DataConstr", 2},
    {"CompuMethodCategory", DataType},
    {"SwBaseType", 1},
    {"LookupTableType", 7},
    {"SharedAxisType", 5},
    {"SwRecordLayout", 2},
    {"Axis", 4},
    {"VoidPointer", 3},
    {"ApplicationValueSpecification", 2},
    {"LookupTableSpecification", 1},
};

} // namespace VelumTest
