#include "support/classblock.h"
#include "velum_types/types.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

// Every class of it is named below: NOLINTNEXTLINE(google-build-using-namespace)
using namespace Zorvane::metamodel::types::NSInterface;
namespace foundation = Zorvane::metamodel::foundation;
namespace types = Zorvane::metamodel::types;
using VelumTest::expectBlock;
using VelumTest::slotOf;

namespace {

// A class adds its operations behind its base's, ended by its pair.

TEST(VirtualOrder, Scalars) {
    {
        using Intf = PrimitiveTypeIntf;
        expectBlock<Intf, foundation::NSInterface::ValueTypeIntf>(
            {VELUM_ONE(getGroundValue),
             VELUM_REFERENCE(CompuMethod),
             VELUM_REFERENCE(Unit),
             VELUM_REFERENCE(DataConstr),
             VELUM_REFERENCE(SwBaseType),
             VELUM_VALUE_READ_BY(IsApplication, isApplication),
             VELUM_REFERENCE(Reference)});
    }
    {
        using Intf = RealIntf;
        expectBlock<Intf, PrimitiveTypeIntf>({VELUM_VALUE(MinValue),
                                              VELUM_VALUE(MaxValue),
                                              VELUM_VALUE_READ_BY(IsMinOpen, isMinOpen),
                                              VELUM_VALUE_READ_BY(IsMaxOpen, isMaxOpen)});
    }
    {
        using Intf = IntegerIntf;
        expectBlock<Intf, RealIntf>(
            {VELUM_REFERENCE(Length), VELUM_VALUE_READ_BY(IsSigned, isSigned)});
    }
    {
        using Intf = FixedPointIntf;
        expectBlock<Intf, RealIntf>({VELUM_ONE(getSlope),
                                     VELUM_REFERENCE(Length),
                                     VELUM_VALUE_READ_BY(IsSigned, isSigned),
                                     VELUM_REFERENCE(FractionLength),
                                     VELUM_VALUE(Bias),
                                     VELUM_VALUE(FractionalSlope)});
    }
    {
        using Intf = FloatingPointIntf;
        expectBlock<Intf, RealIntf>({VELUM_REFERENCE(Kind)});
    }
    {
        using Intf = BooleanIntf;
        expectBlock<Intf, RealIntf>({VELUM_VALUE(Zorvane_metamodel_types_Boolean_MinValue),
                                     VELUM_VALUE(Zorvane_metamodel_types_Boolean_MaxValue),
                                     VELUM_VALUE(Zorvane_metamodel_types_Boolean_IsMinOpen),
                                     VELUM_VALUE(Zorvane_metamodel_types_Boolean_IsMaxOpen)});
    }
    {
        using Intf = EnumerationIntf;
        expectBlock<Intf, RealIntf>({VELUM_ONE(getZorvane_metamodel_types_Enumeration_GroundValue),
                                     VELUM_MANY(OwnedLiterals),
                                     VELUM_VALUE(DefaultValue),
                                     VELUM_REFERENCE(Length),
                                     VELUM_VALUE_READ_BY(IsSigned, isSigned)});
    }
    {
        using Intf = EnumerationLiteralIntf;
        expectBlock<Intf, foundation::NSInterface::NamedElementIntf>(
            {VELUM_ONE(setDefaultValue),
             VELUM_REFERENCE(Enumeration),
             VELUM_VALUE(Value),
             VELUM_VALUE(HasValidValue),
             VELUM_VALUE_READ_BY(IsSecure, isSecure),
             VELUM_VALUE(Pvalue),
             VELUM_VALUE(PisUserDefined)});
    }
}

TEST(VirtualOrder, Composites) {
    {
        using Intf = StructureIntf;
        expectBlock<Intf, foundation::NSInterface::ValueTypeIntf>(
            {VELUM_MANY(Elementses), VELUM_VALUE_READ_BY(IsApplication, isApplication)});
    }
    {
        using Intf = StructElementIntf;
        expectBlock<Intf, foundation::NSInterface::TypedElementIntf>(
            {VELUM_REFERENCE(Structure),
             VELUM_REFERENCE(Zorvane_metamodel_types_StructElement_Type),
             VELUM_REFERENCE(InlineType)});
    }
    {
        using Intf = MatrixIntf;
        expectBlock<Intf, foundation::NSInterface::ValueTypeIntf>(
            {VELUM_MANY(Dimensionses),
             VELUM_REFERENCE(BaseType),
             VELUM_VALUE_READ_BY(IsApplication, isApplication),
             VELUM_MANY(SymbolicDimensionses)});
    }
    {
        using Intf = ComplexIntf;
        expectBlock<Intf, foundation::NSInterface::ValueTypeIntf>(
            {VELUM_REFERENCE(BaseType), VELUM_VALUE_READ_BY(IsApplication, isApplication)});
    }
    {
        using Intf = VoidPointerIntf;
        expectBlock<Intf, foundation::NSInterface::ValueTypeIntf>(
            {VELUM_VALUE_READ_BY(IsApplication, isApplication),
             VELUM_REFERENCE(SwBaseType),
             VELUM_VALUE(SwImplPolicy)});
    }
    {
        using Intf = LookupTableTypeIntf;
        expectBlock<Intf, foundation::NSInterface::ValueTypeIntf>(
            {VELUM_ONE(getDimensions),
             VELUM_ONE(getCategory),
             VELUM_REFERENCE(SwRecordLayout),
             VELUM_REFERENCE(BaseType),
             VELUM_MANY(Axeses),
             VELUM_VALUE_READ_BY(IsApplication, isApplication),
             VELUM_REFERENCE(ValueAxisDataType)});
    }
    {
        using Intf = SharedAxisTypeIntf;
        expectBlock<Intf, foundation::NSInterface::ValueTypeIntf>(
            {VELUM_REFERENCE(SwRecordLayout),
             VELUM_REFERENCE(Axis),
             VELUM_VALUE_READ_BY(IsApplication, isApplication),
             VELUM_MANY(SharedFroms),
             VELUM_REFERENCE(ValueAxisDataType)});
    }
    {
        using Intf = AxisIntf;
        expectBlock<Intf, foundation::NSInterface::NamedElementIntf>(
            {VELUM_REFERENCE(BaseType),
             VELUM_REFERENCE(SharedAxis),
             VELUM_VALUE(Dimensions),
             VELUM_REFERENCE(InputVariableType)});
    }
    {
        using Intf = SwRecordLayoutIntf;
        expectBlock<Intf, foundation::NSInterface::PackageableElementIntf>(
            {VELUM_MANY(LookupTableTypes), VELUM_MANY(SharedAxisTypes)});
    }
}

TEST(VirtualOrder, UnitsAndComputation) {
    {
        using Intf = UnitIntf;
        expectBlock<Intf, foundation::NSInterface::PackageableElementIntf>(
            {VELUM_ONE(convert),
             VELUM_ONE(convertToBase),
             VELUM_ONE(getFactorAndOffsetToBase),
             VELUM_ONE(hasSameDimensions),
             VELUM_ONE(getBaseDimensionExponents),
             VELUM_ONE(setUnitExpression),
             VELUM_ONE(getUnitExpression),
             VELUM_VALUE(ConvFactor),
             VELUM_VALUE(ConvOffset),
             VELUM_REFERENCE(ConvUnit),
             VELUM_REFERENCE(Dimension),
             VELUM_VALUE(Symbol),
             VELUM_MANY(BaseUnits),
             VELUM_MANY(BaseExponents),
             VELUM_MANY(Superscripts),
             VELUM_MANY(Subscripts)});
    }
    {
        using Intf = DimensionIntf;
        expectBlock<Intf, foundation::NSInterface::PackageableElementIntf>(
            {VELUM_MANY(Units),
             VELUM_ONE(setDimensionExpression),
             VELUM_ONE(getDimensionExpression),
             VELUM_REFERENCE(BaseUnit),
             VELUM_MANY(BaseDimensions),
             VELUM_MANY(BaseExponents),
             VELUM_VALUE(Symbol)});
    }
    {
        using Intf = CompuMethodIntf;
        expectBlock<Intf, foundation::NSInterface::PackageableElementIntf>(
            {VELUM_REFERENCE(Category),
             VELUM_REFERENCE(Unit),
             VELUM_VALUE(DisplayFormat),
             VELUM_MANY(CalToInternalCompuNumerators),
             VELUM_MANY(CalToInternalCompuDenominators),
             VELUM_MANY(PrimitiveTypes)});
    }
    {
        using Intf = DataConstrIntf;
        expectBlock<Intf, foundation::NSInterface::PackageableElementIntf>(
            {VELUM_REFERENCE(Unit), VELUM_MANY(PrimitiveTypes)});
    }
    {
        using Intf = SwBaseTypeIntf;
        expectBlock<Intf, foundation::NSInterface::PackageableElementIntf>(
            {VELUM_MANY(PrimitiveTypes)});
    }
}

TEST(VirtualOrder, Values) {
    {
        using Intf = LiteralRealIntf;
        expectBlock<Intf, foundation::NSInterface::ValueSpecificationIntf>({VELUM_VALUE(Value)});
    }
    {
        using Intf = ConstantSpecificationIntf;
        expectBlock<Intf, foundation::NSInterface::PackageableElementIntf>(
            {VELUM_ONE(setConstantExpression),
             VELUM_ONE(getConstantExpression),
             VELUM_REFERENCE(ConstantValue)});
    }
    {
        using Intf = ConstantReferenceIntf;
        expectBlock<Intf, foundation::NSInterface::ValueSpecificationIntf>(
            {VELUM_REFERENCE(Value)});
    }
    {
        using Intf = EnumerationLiteralReferenceIntf;
        expectBlock<Intf, foundation::NSInterface::ValueSpecificationIntf>(
            {VELUM_ONE(isComputable),
             VELUM_ONE(stringValue),
             VELUM_VALUE(LiteralText),
             VELUM_REFERENCE(Value)});
    }
    {
        using Intf = CompositeSpecificationIntf;
        expectBlock<Intf, foundation::NSInterface::ValueSpecificationIntf>(
            {VELUM_MANY(OwnedValues)});
    }
    {
        using Intf = ValueElementIntf;
        expectBlock<Intf, foundation::NSInterface::NamedElementIntf>(
            {VELUM_REFERENCE(OwningComposite), VELUM_REFERENCE(Value)});
    }
    {
        using Intf = MatrixValueSpecificationIntf;
        expectBlock<Intf, CompositeSpecificationIntf>(
            {VELUM_MANY(OwnedCells), VELUM_VALUE_READ_BY(IsSparse, isSparse)});
    }
    {
        using Intf = CellIntf;
        expectBlock<Intf, ValueElementIntf>({VELUM_MANY(Indexs)});
    }
    {
        using Intf = StructureValueSpecificationIntf;
        expectBlock<Intf, CompositeSpecificationIntf>({VELUM_MANY(OwnedSlots)});
    }
    {
        using Intf = SlotIntf;
        expectBlock<Intf, ValueElementIntf>({VELUM_REFERENCE(StructElement)});
    }
    {
        using Intf = ApplicationValueSpecificationIntf;
        expectBlock<Intf, foundation::NSInterface::ValueSpecificationIntf>(
            {VELUM_MANY(Vs), VELUM_MANY(Dimensionses)});
    }
    {
        using Intf = LookupTableSpecificationIntf;
        expectBlock<Intf, ApplicationValueSpecificationIntf>({VELUM_MANY(Axeses)});
    }
}

// What takes an operation over keeps its place.
TEST(VirtualOrder, RedefinitionsAddNothing) {
    EXPECT_EQ(slotOf(&BooleanIntf::setMinValue), slotOf(&RealIntf::setMinValue));
    EXPECT_EQ(slotOf(&BooleanIntf::isMaxOpen), slotOf(&RealIntf::isMaxOpen));
    EXPECT_EQ(slotOf(&EnumerationIntf::getGroundValue), slotOf(&PrimitiveTypeIntf::getGroundValue));
    using foundation::NSInterface::TypedElementIntf;
    EXPECT_EQ(slotOf(&StructElementIntf::setOnlyType), slotOf(&TypedElementIntf::setOnlyType));
    using foundation::NSInterface::NamedElementIntf;
    EXPECT_EQ(slotOf(&StructElementIntf::setNamespace), slotOf(&NamedElementIntf::setNamespace));
}

/// The operation that takes what an object of the class needs, and the one that takes nothing.
template <class Made, class... Required>
class Creators {
public:
    template <class Intf>
    using Full = Made (Intf::*)(QOB::Deviant, Required...);
    template <class Intf>
    using Short = Made (Intf::*)(QOB::Deviant);
};

#define VELUM_CREATORS(Class, ...)                                                                 \
    slotOf(static_cast<Creators<types::Class, __VA_ARGS__>::Full<Intf>>(&Intf::create##Class)),    \
        slotOf(                                                                                    \
            static_cast<Creators<types::Class, __VA_ARGS__>::Short<Intf>>(&Intf::create##Class))

TEST(VirtualOrder, FactoryHasTwoCreatorsAClassAndEndsBehindItsPair) {
    using foundation::ValueSpecification;
    using QOB::String;
    using Intf = FactoryIntf;
    std::vector<std::size_t> creators{
        VELUM_CREATORS(FloatingPoint, types::FloatingPointKind, String),
        VELUM_CREATORS(Complex, types::Real, String),
        VELUM_CREATORS(Dimension, String),
        VELUM_CREATORS(LiteralReal, QOB::Real, String),
        VELUM_CREATORS(FixedPoint, String),
        VELUM_CREATORS(Integer, String),
        VELUM_CREATORS(Unit, String),
        VELUM_CREATORS(Matrix, foundation::ValueType, String),
        VELUM_CREATORS(EnumerationLiteral, QOB::Integer, QOB::Integer, types::Enumeration, String),
        VELUM_CREATORS(Enumeration, String),
        VELUM_CREATORS(Boolean, String),
        VELUM_CREATORS(MatrixValueSpecification, String),
        VELUM_CREATORS(Cell, types::CompositeSpecification, ValueSpecification, String),
        VELUM_CREATORS(Structure, String),
        VELUM_CREATORS(StructureValueSpecification, String),
        VELUM_CREATORS(Slot, types::CompositeSpecification, ValueSpecification, String),
        VELUM_CREATORS(EnumerationLiteralReference, String),
        VELUM_CREATORS(ConstantSpecification, ValueSpecification, String),
        VELUM_CREATORS(ConstantReference, types::ConstantSpecification, String),
        VELUM_CREATORS(StructElement, types::Structure, String),
        VELUM_CREATORS(CompuMethod, String, String),
        VELUM_CREATORS(DataConstr, String),
        VELUM_CREATORS(SwBaseType, String),
        VELUM_CREATORS(LookupTableType, types::SwRecordLayout, types::PrimitiveType, String),
        VELUM_CREATORS(SharedAxisType, types::SwRecordLayout, types::Axis, String),
        VELUM_CREATORS(SwRecordLayout, String),
        VELUM_CREATORS(Axis, QOB::Integer, String),
        VELUM_CREATORS(VoidPointer, types::SwBaseType, String),
        VELUM_CREATORS(ApplicationValueSpecification, String),
        VELUM_CREATORS(LookupTableSpecification, String),
        VELUM_CREATORS(DataSize, QOB::Integer, types::DataSizeUnitKind),
        VELUM_CREATORS(Time, QOB::Real, types::TimeUnitKind)};
    expectBlock<Intf, QOB::NSInterface::FactoryObjectIntf>(creators);
    EXPECT_EQ(slotOf(&Intf::createObject), VelumTest::slotsOfPair<Intf>().back() + 1);
}

} // namespace
