#include "freshmodel.h"

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;
using VelumTest::elementsOf;
using VelumTest::list;

namespace {

class ArrayTypesTest : public VelumTest::FreshModel {};

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

} // namespace
