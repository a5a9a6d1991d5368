#include "freshmodel.h"
#include "support/failure.h"

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;
using VelumTest::elementsOf;
using VelumTest::list;

namespace {

class ValueSpecificationsTest : public VelumTest::FreshModel {
protected:
    types::LiteralReal number(double value) const {
        return types::LiteralReal::create(model, value, QOB::String());
    }
    QOB::Deviant root() const { return model.getDeviant(); }
};

TEST_F(ValueSpecificationsTest, ConstantOwnsItsValue) {
    auto const two = number(2);
    auto const constant = types::ConstantSpecification::create(model, two, "two");
    EXPECT_EQ(constant.getName(), "two");
    EXPECT_EQ(constant.getConstantValue(), foundation::ValueSpecification(two));
    EXPECT_EQ(two.getContainerQOB(), QOB::ClassObject(constant));
    EXPECT_EQ(two.getOwner(), foundation::Element(constant));
    EXPECT_EQ(elementsOf(constant.getContaineeQOBs()), list(QOB::ClassObject(two)));
    EXPECT_EQ(elementsOf(constant.getOwnedElements()), list(foundation::Element(two)));

    constant.setConstantValue(number(3));
    EXPECT_FALSE(two.hasContainerQOB());
    EXPECT_FALSE(two.hasOwner());
    EXPECT_EQ(constant.getOwnedElements().size(), 1);
    EXPECT_FALSE(types::ConstantSpecification::create(model).hasConstantValue());
}

TEST_F(ValueSpecificationsTest, ConstantsExpressionIsNotBuiltYet) {
    auto const constant = types::ConstantSpecification::create(model);
    auto const& methods = types::NSInterface::ConstantSpecificationIntf::sIntrospectiveMethods;
    QOB::NSInterface::ObjectIntf* const object = QOB::Object(constant).get();
    std::string const message =
        "The ConstantSpecification.constantExpression derived property is not yet implemented!";
    EXPECT_THROW(constant.getConstantExpression(), QOB::UnImplementedException);
    EXPECT_EQ(VelumTest::messageOf([&] { constant.getConstantExpression(); }), message);
    EXPECT_EQ(VelumTest::messageOf([&] { constant.setConstantExpression(""); }), message);
    EXPECT_EQ(VelumTest::messageOf([&] { methods.getSingleValued(object, root(), 1); }), message);
    EXPECT_EQ(
        VelumTest::messageOf([&] { methods.setSingleValued(object, root(), 1, QOB::String("1")); }),
        message);
    EXPECT_FALSE(methods.hasSingleValued(object, root(), 1));
}

TEST_F(ValueSpecificationsTest, OperationsOfALiteralReferenceAreNotBuiltYet) {
    auto const reference = types::EnumerationLiteralReference::create(model);
    EXPECT_THROW(reference.isComputable(), QOB::UnImplementedException);
    EXPECT_EQ(VelumTest::messageOf([&] { reference.isComputable(); }),
              "The EnumerationLiteralReference.isComputable operation is not yet implemented!");
    EXPECT_EQ(VelumTest::messageOf([&] { reference.stringValue(); }),
              "The EnumerationLiteralReference.stringValue operation is not yet implemented!");
    EXPECT_NE(VelumTest::failureOf([&] { reference.stringValue(); })
                  .find(" at velum_types/zorvane/metamodel/types/nshandmaintained/"
                        "zorvanemetamodeltypesenumerationliteralreferenceimplhand.cpp:"),
              std::string::npos);
}

TEST_F(ValueSpecificationsTest, SlotsMakeATreeWithTheirComposite) {
    auto const composite = types::StructureValueSpecification::create(model, "origin");
    auto const zero = number(0);
    auto const slot = types::Slot::create(model, composite, zero, "x");
    EXPECT_FALSE(slot.hasStructElement());
    EXPECT_EQ(slot.getOwningComposite(), types::CompositeSpecification(composite));
    EXPECT_EQ(slot.getOwner(), foundation::Element(composite));
    EXPECT_EQ(slot.getValue(), foundation::ValueSpecification(zero));
    EXPECT_EQ(elementsOf(composite.getOwnedSlots()), list(slot));
    EXPECT_EQ(elementsOf(composite.getOwnedValues()), list(types::ValueElement(slot)));
    EXPECT_EQ(elementsOf(composite.getOwnedElements()), list(foundation::Element(slot)));
    EXPECT_EQ(elementsOf(composite.getContaineeQOBs()), list(QOB::ClassObject(slot)));

    EXPECT_EQ(zero.getOwner(), foundation::Element(slot));
    EXPECT_EQ(elementsOf(slot.getOwnedElements()), list(foundation::Element(zero)));

    auto const element = types::StructElement::create(model);
    slot.setStructElement(element);
    EXPECT_EQ(slot.getStructElement(), element) << "of no structure at all: nobody checks";

    composite.destroy();
    EXPECT_FALSE(slot.isValid());
    EXPECT_FALSE(zero.isValid());
    EXPECT_TRUE(element.isValid());
}

TEST_F(ValueSpecificationsTest, CompositesNestToAnyDepth) {
    auto const outer = types::StructureValueSpecification::create(model, "outer");
    auto const inner = types::MatrixValueSpecification::create(model, "inner");
    auto const slot = types::Slot::create(model, outer, inner, "matrix");
    auto const cell = types::Cell::create(model, inner, number(1), "cell");
    EXPECT_EQ(types::MatrixValueSpecification(slot.getValue()).getOwnedCells().front(), cell);
    EXPECT_EQ(cell.getOwner().getOwner().getOwner(), foundation::Element(outer));
    slot.removeValue();
    EXPECT_FALSE(inner.hasContainerQOB());
    EXPECT_TRUE(inner.isValid()) << "a removal does not destroy";
}

TEST_F(ValueSpecificationsTest, CellsAreReachedByBothNamesOfTheirList) {
    auto const matrix = types::MatrixValueSpecification::create(model, "identity");
    EXPECT_EQ(matrix.isSparse(), false);
    EXPECT_TRUE(matrix.hasIsSparse());
    auto const first = types::Cell::create(model, matrix, number(1), "first");
    auto const second = types::Cell::create(model);
    types::CompositeSpecification(matrix).getOwnedValues().push_back(second);
    EXPECT_EQ(elementsOf(matrix.getOwnedCells()), list(first, second));
    EXPECT_EQ(second.getOwningComposite(), types::CompositeSpecification(matrix));
    second.removeOwningComposite();
    EXPECT_EQ(elementsOf(matrix.getOwnedValues()), list(types::ValueElement(first)));

    auto const& own = types::NSInterface::MatrixValueSpecificationIntf::sIntrospectiveMethods;
    auto const& base = types::NSInterface::CompositeSpecificationIntf::sIntrospectiveMethods;
    QOB::NSInterface::ObjectIntf* const object = QOB::Object(matrix).get();
    EXPECT_EQ(own.getMultiValued(object, root(), 1, false).generic_size(), 1);
    EXPECT_EQ(base.getMultiValued(object, root(), 1, false).generic_size(), 1);
    EXPECT_EQ(VelumTest::messageOf([&] { own.getSingleValued(object, root(), 1); }),
              "Zorvane.metamodel.types.MatrixValueSpecification::getSingleValued on illegal "
              "property with id 1");
    EXPECT_EQ(QOB::Boolean(own.getSingleValued(object, root(), 2)), false);
}

TEST_F(ValueSpecificationsTest, CompositeOfOneKindTakesNoElementOfTheOther) {
    auto const matrix = types::MatrixValueSpecification::create(model, "matrix");
    auto const slot = types::Slot::create(model);
    EXPECT_NE(VelumTest::failureOf([&] { matrix.getOwnedValues().push_back(slot); }), "");
    EXPECT_TRUE(matrix.getOwnedCells().empty());
    EXPECT_FALSE(slot.hasOwningComposite());
}

TEST_F(ValueSpecificationsTest, ValueInsideItselfEnds) {
    auto const table = types::LookupTableSpecification::create(model, "own axis");
    table.getAxeses().push_back(table);
    EXPECT_EQ(table.getContainerQOB(), QOB::ClassObject(table));
    table.destroy();
    EXPECT_FALSE(table.isValid());

    auto const composite = types::StructureValueSpecification::create(model, "own slot");
    auto const slot = types::Slot::create(model, composite, composite, "slot");
    slot.destroy();
    EXPECT_FALSE(slot.isValid());
    EXPECT_FALSE(composite.isValid());
}

} // namespace
