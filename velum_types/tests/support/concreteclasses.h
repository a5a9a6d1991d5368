#pragma once

#include "velum_types/types.h"

/// The metaclasses that have objects, but the factory: `Do(Class)` for each.
#define VELUM_CONCRETE_CLASSES(Do)                                                                 \
    Do(FloatingPoint) Do(Complex) Do(Dimension) Do(LiteralReal) Do(FixedPoint) Do(Integer)         \
        Do(Unit) Do(Matrix) Do(EnumerationLiteral) Do(Enumeration) Do(Boolean)                     \
            Do(MatrixValueSpecification) Do(Cell) Do(Structure) Do(StructureValueSpecification)    \
                Do(Slot) Do(EnumerationLiteralReference) Do(ConstantSpecification)                 \
                    Do(ConstantReference) Do(StructElement) Do(CompuMethod) Do(DataConstr)         \
                        Do(SwBaseType) Do(LookupTableType) Do(SharedAxisType) Do(SwRecordLayout)   \
                            Do(Axis) Do(VoidPointer) Do(ApplicationValueSpecification)             \
                                Do(LookupTableSpecification)
