#include "freshmodel.h"

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;
using VelumTest::elementsOf;
using VelumTest::list;

namespace {

class ArrayTypesTest : public VelumTest::FreshModel {};

TEST_F(ArrayTypesTest, NewTypesAreEmpty) {
    auto const matrix = types::Matrix::create(model);
    EXPECT_TRUE(matrix.getDimensionses().empty());
    EXPECT_TRUE(matrix.getSymbolicDimensionses().empty()) << "the default is no element";
    EXPECT_FALSE(matrix.hasBaseType());
    EXPECT_TRUE(matrix.hasIsApplication());
    EXPECT_EQ(matrix.isApplication(), false);
    auto const complex = types::Complex::create(model);
    EXPECT_FALSE(complex.hasBaseType());
    EXPECT_TRUE(complex.hasIsApplication());
    EXPECT_EQ(complex.isApplication(), false);
    auto const pointer = types::VoidPointer::create(model);
    EXPECT_FALSE(pointer.hasSwBaseType());
    EXPECT_FALSE(pointer.hasSwImplPolicy());
    EXPECT_FALSE(pointer.getSwImplPolicy().isValid());
    EXPECT_TRUE(pointer.hasIsApplication());
    EXPECT_EQ(pointer.isApplication(), false);
}

TEST_F(ArrayTypesTest, MatrixRepeatsNumbersOfElementsButNotTheirNames) {
    auto const matrix = types::Matrix::create(model);
    matrix.getDimensionses().push_back(3);
    matrix.getDimensionses().push_back(3);
    EXPECT_EQ(elementsOf(matrix.getDimensionses()), list<QOB::Integer>(3, 3));
    matrix.getSymbolicDimensionses().push_back("N");
    matrix.getSymbolicDimensionses().push_back("N");
    EXPECT_EQ(elementsOf(matrix.getSymbolicDimensionses()), list(QOB::String("N")));
}

TEST_F(ArrayTypesTest, BaseTypesAreReferredToAndNotOwned) {
    auto const enumeration = types::Enumeration::create(model);
    auto const structure = types::Structure::create(model);
    auto const complex = types::Complex::create(model, enumeration, "gears");
    EXPECT_EQ(complex.getBaseType(), types::Real(enumeration));
    auto const matrix = types::Matrix::create(model, structure, "points");
    EXPECT_EQ(matrix.getBaseType(), foundation::ValueType(structure));
    EXPECT_EQ(matrix.getName(), "points");
    EXPECT_TRUE(matrix.getContaineeQOBs().empty());
    matrix.setBaseType(matrix);
    EXPECT_EQ(matrix.getBaseType(), foundation::ValueType(matrix)) << "nobody checks for circles";
    complex.removeBaseType();
    EXPECT_FALSE(complex.hasBaseType());
}

TEST_F(ArrayTypesTest, VoidPointersPolicyIsThereWhileItIsSet) {
    auto const pointer = types::VoidPointer::create(model);
    pointer.setSwImplPolicy("CONST");
    EXPECT_TRUE(pointer.hasSwImplPolicy());
    pointer.setSwImplPolicy("");
    EXPECT_TRUE(pointer.hasSwImplPolicy()) << "an empty text is a text";
    pointer.removeSwImplPolicy();
    EXPECT_FALSE(pointer.hasSwImplPolicy());
    EXPECT_FALSE(pointer.getSwImplPolicy().isValid());
}

TEST_F(ArrayTypesTest, ReadOnlyPropertyOfAPointerCanBeWritten) {
    auto const pointer = types::VoidPointer::create(model);
    pointer.setIsApplication(true);
    EXPECT_EQ(pointer.isApplication(), true);
    types::NSInterface::VoidPointerIntf::sIntrospectiveMethods.setSingleValued(
        QOB::Object(pointer).get(), model.getDeviant(), 1, QOB::Boolean(false));
    EXPECT_EQ(pointer.isApplication(), false);
}

} // namespace
