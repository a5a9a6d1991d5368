#include "freshmodel.h"
#include "support/failure.h"

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;
using VelumTest::elementsOf;
using VelumTest::isWrittenIn;
using VelumTest::list;

namespace {

class StructureTest : public VelumTest::FreshModel {
protected:
    types::Structure const point = types::Structure::create(model, "Point");
    types::StructElement const x = types::StructElement::create(model);
    types::FloatingPoint const real = types::FloatingPoint::create(model);
};

TEST_F(StructureTest, BothNamesOfATypeMeanOneReference) {
    foundation::TypedElement const typed = x;
    typed.setType(real);
    EXPECT_EQ(x.getZorvane_metamodel_types_StructElement_Type(), foundation::ValueType(real));
    x.removeZorvane_metamodel_types_StructElement_Type();
    EXPECT_FALSE(typed.hasType());
    x.setZorvane_metamodel_types_StructElement_Type(point);
    EXPECT_EQ(typed.getType(), foundation::Type(point));
    typed.setOnlyType(real);
    EXPECT_EQ(x.getZorvane_metamodel_types_StructElement_Type(), foundation::ValueType(real));

    QOB::Deviant const branch = model.createDeviant();
    typed.inDeviant(branch).setOnlyType(real);
    typed.inDeviant(branch).setType(real);
    EXPECT_FALSE(isWrittenIn(branch, x));

    typed.setOnlyType(foundation::Type());
    EXPECT_FALSE(x.hasZorvane_metamodel_types_StructElement_Type());
    typed.setType(real);
    typed.removeOnlyType();
    EXPECT_FALSE(x.hasType());
}

TEST_F(StructureTest, NamespaceOfAnElementIsItsStructure) {
    foundation::NamedElement const named = x;
    named.setNamespace(point);
    EXPECT_EQ(x.getStructure(), point);
    EXPECT_EQ(named.getNamespace(), foundation::Namespace(point));
    EXPECT_EQ(elementsOf(point.getElementses()), list(x));
    EXPECT_TRUE(point.getOwnedMembers().contains(x));
    EXPECT_TRUE(point.getOwnedElements().contains(x));
    EXPECT_TRUE(point.getContaineeQOBs().contains(QOB::ClassObject(x)));
    EXPECT_EQ(x.getOwner(), foundation::Element(point));

    named.removeNamespace();
    EXPECT_FALSE(x.hasStructure());
    EXPECT_TRUE(point.getElementses().empty());

    named.setOnlyNamespace(point);
    EXPECT_EQ(x.getStructure(), point);
    EXPECT_TRUE(point.getElementses().empty()) << "one end only";
}

TEST_F(StructureTest, NamespaceThatIsNoStructureIsARemoval) {
    auto const enumeration = types::Enumeration::create(model);
    foundation::NamedElement const named = x;
    x.setStructure(point);
    named.setNamespace(enumeration);
    EXPECT_FALSE(x.hasStructure());
    EXPECT_FALSE(named.hasNamespace());
    EXPECT_TRUE(point.getElementses().empty());
    EXPECT_TRUE(enumeration.getOwnedMembers().empty());
}

TEST_F(StructureTest, ElementHasAReferredAndAnInlineTypeSideBySide) {
    auto const inlined = types::Integer::create(model);
    x.setType(real);
    x.setInlineType(inlined);
    EXPECT_EQ(x.getType(), foundation::Type(real));
    EXPECT_EQ(x.getInlineType(), foundation::ValueType(inlined));
    EXPECT_FALSE(real.hasContainerQOB());
    EXPECT_EQ(inlined.getContainerQOB(), QOB::ClassObject(x));
    EXPECT_EQ(elementsOf(x.getContaineeQOBs()), list(QOB::ClassObject(inlined)));

    x.removeType();
    EXPECT_TRUE(x.hasInlineType());
    x.setType(inlined);
    x.removeInlineType();
    EXPECT_EQ(x.getType(), foundation::Type(inlined)) << "another property of the same value";
    EXPECT_FALSE(inlined.hasContainerQOB());
}

TEST_F(StructureTest, TypesThatContainEachOtherCanBeReadAndEnd) {
    x.setStructure(point);
    x.setInlineType(point); // nobody refuses it
    EXPECT_EQ(point.getContainerQOB(), QOB::ClassObject(x));
    EXPECT_EQ(x.qualifiedName(), "Point.");
    x.setType(real);
    QOB::Transaction transaction(model);
    point.destroy();
    EXPECT_FALSE(point.isValid());
    EXPECT_FALSE(x.isValid());
    EXPECT_TRUE(real.isValid());
    transaction.rollback();
    EXPECT_EQ(x.getInlineType(), foundation::ValueType(point));
    x.removeInlineType();
    EXPECT_FALSE(point.hasContainerQOB());
    EXPECT_EQ(elementsOf(point.getElementses()), list(x));
}

TEST_F(StructureTest, NamespacesThatContainEachOtherAreReported) {
    auto const segment = types::Structure::create(model, "Segment");
    point.setOnlyNamespace(segment); // one end: a structure has no list for another
    EXPECT_EQ(point.qualifiedName(), "Segment.Point");
    segment.setOnlyNamespace(point);
    EXPECT_EQ(VelumTest::messageOf([&] { point.qualifiedName(); }),
              "The namespaces of this element contain one another");
    segment.destroy();
    EXPECT_FALSE(segment.isValid());
}

} // namespace
