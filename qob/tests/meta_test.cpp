#include "fixture.h"
#include "qob/qob/domainregistry.h"
#include "qob/qob/factory.h"
#include "qob/qob/property.h"
#include "qob/qob/typeinforegistry.h"
#include "support/names.h"

#include <string>
#include <vector>

using QOB::DataType;
using QOB::Deviant;
using QOB::Enumeration;
using QOB::EnumerationLiteral;
using QOB::Package;
using QOB::Type;
using VelumTest::namesOf;

namespace {

/// The same element seen in another deviant.
template <class Handle>
Handle in(Deviant deviant, Handle const& handle) {
    return Handle(handle.get(), deviant);
}

/// "outer" owns "inner" and the types "size" and "unit"; the latter has the literals "bit", "byte".
class MetaElements : public testing::Test {
protected:
    MetaElements() : model(QOB::NSInterface::FactoryIntf::createNewModel()) {
        inner.setParent(outer);
        size.setPackage(outer);
        outer.getOwnedTypes().push_back(unit);
        bit.setEnumeration(unit);
        unit.getOwnedLiterals().push_back(byte);
    }
    void TearDown() override { model.destroy(); }

    QOB::Model model;
    Package outer = Package::create(model, "outer");
    Package inner = Package::create(model, "inner");
    DataType size = DataType::create(model, "size");
    Enumeration unit = Enumeration::create(model, "unit");
    EnumerationLiteral bit = EnumerationLiteral::create(model, "bit");
    EnumerationLiteral byte = EnumerationLiteral::create(model, "byte");
};

} // namespace

TEST_F(MetaElements, BothEndsOfAnOwnershipAgreeWhicheverIsWritten) {
    EXPECT_EQ(namesOf(outer.getNestedPackages()), "inner");
    EXPECT_EQ(namesOf(outer.getOwnedTypes()), "size unit");
    EXPECT_EQ(namesOf(unit.getOwnedLiterals()), "bit byte");
    EXPECT_EQ(inner.getParent(), outer);
    EXPECT_EQ(unit.getPackage(), outer);
    EXPECT_EQ(byte.getEnumeration(), unit);
    EXPECT_EQ(byte.getContainerQOB(), QOB::ClassObject(unit));

    unit.setPackage(inner);
    EXPECT_EQ(namesOf(outer.getOwnedTypes()), "size");
    EXPECT_EQ(namesOf(inner.getOwnedTypes()), "unit");
    outer.getOwnedTypes().push_front(unit);
    EXPECT_EQ(namesOf(outer.getOwnedTypes()), "unit size");
    EXPECT_TRUE(inner.getOwnedTypes().empty());

    unit.getOwnedLiterals().erase(0);
    EXPECT_FALSE(bit.hasEnumeration());
    byte.removeContainerQOB();
    EXPECT_TRUE(unit.getOwnedLiterals().empty());
    byte.setContainerQOB(unit);
    EXPECT_EQ(namesOf(unit.getOwnedLiterals()), "byte");
}

TEST_F(MetaElements, ARepeatedOwnerAddsNothingASecondTime) {
    bit.setEnumeration(unit);
    size.setPackage(outer);
    outer.getNestedPackages().push_back(inner);
    EXPECT_EQ(namesOf(unit.getOwnedLiterals()), "bit byte");
    EXPECT_EQ(namesOf(outer.getOwnedTypes()), "size unit");
    EXPECT_EQ(namesOf(outer.getNestedPackages()), "inner");
}

TEST_F(MetaElements, AnOwnerThatCannotBeIsRefusedAndNothingChanges) {
    EXPECT_EQ(messageOf([&] { outer.setParent(inner); }), "A package cannot lie within itself.");
    EXPECT_EQ(messageOf([&] { outer.getNestedPackages().push_back(outer); }),
              "A package cannot lie within itself.");
    EXPECT_EQ(messageOf([&] { size.setContainerQOB(unit); }),
              "The container of a type is a package.");
    QOB::Model const other = QOB::NSInterface::FactoryIntf::createNewModel();
    Package const stranger = Package::create(other, "stranger");
    EXPECT_EQ(messageOf([&] { size.setPackage(stranger); }),
              "Cross-model bi-directional associations are currently disallowed!");
    other.destroy();
    EXPECT_EQ(namesOf(outer.getNestedPackages()), "inner");
    EXPECT_EQ(namesOf(outer.getOwnedTypes()), "size unit");
    EXPECT_FALSE(outer.hasParent());
}

TEST_F(MetaElements, APackageHasTheUriThatItWasGivenAndNoOther) {
    model.setUri("memory:meta");
    EXPECT_FALSE(outer.hasUri());
    outer.setUri("qob://metamodels/outer");
    EXPECT_EQ(outer.getUri(), QOB::String("qob://metamodels/outer"));
    outer.removeUri();
    EXPECT_FALSE(outer.hasUri());
    EXPECT_TRUE(size.hasUri()); // of its model and its id
}

TEST_F(MetaElements, APackageWithoutAParentMayLieInItsModel) {
    QOB::ClassObject const whole(model);
    auto const containees = [&](Deviant deviant) {
        std::string text;
        for (QOB::ClassObject const& each : in(deviant, model).getContaineeQOBs()) {
            text += std::string(Package(each).getName().view()) + " ";
        }
        return text;
    };
    Deviant const root = model.getDeviant();
    outer.setContainerQOB(whole);
    outer.setContainerQOB(whole);
    EXPECT_EQ(containees(root), "outer ");
    EXPECT_EQ(outer.getContainerQOB(), whole);
    EXPECT_FALSE(outer.hasParent());
    outer.removeParent(); // it has none
    inner.setContainerQOB(whole);
    EXPECT_EQ(containees(root), "outer inner ");
    EXPECT_TRUE(outer.getNestedPackages().empty());
    outer.setParent(inner);
    EXPECT_EQ(containees(root), "inner ");
    EXPECT_EQ(outer.getParent(), inner);
    outer.removeContainerQOB();
    EXPECT_EQ(containees(root) + namesOf(inner.getNestedPackages()), "inner ");

    Deviant const branch = model.createDeviant();
    in(branch, inner).removeContainerQOB();
    in(branch, outer).setContainerQOB(whole);
    Package::create(model.inDeviant(branch), "new").setContainerQOB(model.inDeviant(branch));
    EXPECT_EQ(containees(root), "inner ");
    EXPECT_EQ(containees(branch), "outer new ");
    model.mergeDeviant(branch);
    EXPECT_EQ(containees(root), "outer new ");
    outer.destroy();
    EXPECT_EQ(containees(root), "new ");

    QOB::Model const stranger = QOB::NSInterface::FactoryIntf::createNewModel();
    EXPECT_EQ(messageOf([&] { inner.setContainerQOB(stranger); }),
              "Cross-model bi-directional associations are currently disallowed!");
    stranger.destroy();
}

TEST_F(MetaElements, WhatHasNoOwnerLosesNone) {
    size.removePackage();
    size.removePackage();
    size.removeContainerQOB();
    bit.removeEnumeration();
    bit.removeContainerQOB();
    outer.removeContainerQOB();
    QOB::Property const property = QOB::Property::create(model, "property");
    property.removeOwningClass();
    EXPECT_EQ(namesOf(outer.getOwnedTypes()), "unit");
    EXPECT_EQ(namesOf(unit.getOwnedLiterals()), "byte");
    EXPECT_FALSE(property.hasContainerQOB());
}

TEST_F(MetaElements, DestructionTakesWhatIsOwnedAlongAndLeavesTheOwner) {
    unit.destroy();
    EXPECT_FALSE(bit.isValid());
    EXPECT_EQ(namesOf(outer.getOwnedTypes()), "size");
    size.setPackage(inner);
    outer.destroy();
    EXPECT_FALSE(inner.isValid());
    EXPECT_FALSE(size.isValid());
}

TEST_F(MetaElements, ABranchKeepsItsOwnTree) {
    Deviant const branch = model.createDeviant();
    in(branch, unit).setPackage(in(branch, inner));
    in(branch, bit).destroy();
    in(branch, outer).setName("renamed");

    EXPECT_EQ(namesOf(outer.getOwnedTypes()), "size unit");
    EXPECT_EQ(namesOf(unit.getOwnedLiterals()), "bit byte");
    EXPECT_EQ(outer.getName(), QOB::String("outer"));
    EXPECT_EQ(namesOf(in(branch, outer).getOwnedTypes()), "size");
    EXPECT_EQ(namesOf(in(branch, inner).getOwnedTypes()), "unit");
    EXPECT_EQ(namesOf(in(branch, unit).getOwnedLiterals()), "byte");

    byte.setName("octet");
    model.mergeDeviant(branch);
    EXPECT_EQ(outer.getName(), QOB::String("renamed"));
    EXPECT_EQ(namesOf(outer.getOwnedTypes()), "size");
    EXPECT_EQ(namesOf(inner.getOwnedTypes()), "unit");
    EXPECT_EQ(unit.getPackage(), inner);
    EXPECT_FALSE(bit.isValid());
    EXPECT_EQ(namesOf(unit.getOwnedLiterals()), "octet");
}

TEST_F(MetaElements, AMergeBringsInWhatABranchCreatedWithItsModelAndItsOwner) {
    QOB::Model const branch = model.inDeviant(model.createDeviant());
    Package const made = Package::create(branch, "made");
    DataType const type = DataType::create(branch, "type");
    type.setPackage(made);
    made.setParent(in(branch.getDeviant(), outer));
    EXPECT_FALSE(in(model.getDeviant(), made).isValid());
    inner.destroy(); // gone in the root: it stays so

    model.mergeDeviant(branch.getDeviant());
    Package const here = in(model.getDeviant(), made);
    ASSERT_TRUE(here.isValid());
    EXPECT_EQ(here.getModelQOB(), model);
    EXPECT_EQ(here.getParent(), outer);
    EXPECT_EQ(namesOf(here.getOwnedTypes()), "type");
    EXPECT_EQ(namesOf(outer.getNestedPackages()), "made");
    EXPECT_EQ(in(model.getDeviant(), type).getPackage(), here);
}

TEST_F(MetaElements, UndoAndRedoWalkBothEndsTogether) {
    model.setUndoEnabled(true);
    {
        QOB::Transaction transaction(model);
        unit.setPackage(inner);
        bit.destroy();
        transaction.commit();
    }
    {
        QOB::Transaction const forgotten(model);
        outer.destroy();
    }
    EXPECT_EQ(namesOf(inner.getOwnedTypes()), "unit");
    ASSERT_TRUE(model.undo());
    EXPECT_EQ(namesOf(outer.getOwnedTypes()), "size unit");
    EXPECT_EQ(unit.getPackage(), outer);
    EXPECT_EQ(namesOf(unit.getOwnedLiterals()), "bit byte");
    EXPECT_EQ(bit.getEnumeration(), unit);
    ASSERT_TRUE(model.redo());
    EXPECT_EQ(namesOf(inner.getOwnedTypes()), "unit");
    EXPECT_FALSE(bit.isValid());
}

TEST_F(MetaElements, HandlesConvertAlongTheClassTree) {
    static_assert(std::is_convertible_v<Enumeration, QOB::ImmutableDataType>);
    static_assert(std::is_convertible_v<Enumeration, Type>);
    static_assert(!std::is_convertible_v<Type, Enumeration>);
    static_assert(!std::is_constructible_v<Type, QOB::ImmutableType>);
    Type const type = unit;
    EXPECT_EQ(Enumeration(type), unit);
    EXPECT_FALSE(Enumeration(Type(size)).isValid());
    EXPECT_FALSE(Package(QOB::Object(type)).isValid());
    EXPECT_EQ(QOB::ImmutableNamedElement(QOB::Object(bit)).getName(), QOB::String("bit"));
    EXPECT_STREQ(QOB::Object(type).getLumvoName(true), "QOB.ImmutableEnumeration");
    EXPECT_EQ(namesOf(QOB::ImmutablePackage(outer).getOwnedTypes()), "size unit");
    EXPECT_FALSE(unit->getMetaType(unit.getDeviant()).isValid());
}

TEST_F(MetaElements, PropertiesAreReachedByNumber) {
    using QOB::NSInterface::EnumerationIntf;
    using QOB::NSInterface::NamedElementIntf;
    using QOB::NSInterface::PackageIntf;
    using QOB::NSInterface::TypeIntf;
    Deviant const root = model.getDeviant();
    QOB::Object const package = outer;

    auto const& named = NamedElementIntf::sIntrospectiveMethods;
    named.setSingleValued(package.get(), root, 1, QOB::String("renamed"));
    EXPECT_EQ(QOB::String(named.getSingleValued(package.get(), root, 1)), QOB::String("renamed"));
    EXPECT_TRUE(named.hasSingleValued(package.get(), root, 1));
    EXPECT_EQ(messageOf([&] { named.setOnlySingleValued(package.get(), root, 1, package); }),
              "QOB.NamedElement::setOnlySingleValued on illegal property with id 1");
    EXPECT_EQ(messageOf([&] { named.getMultiValued(package.get(), root, 0, false); }),
              "QOB.NamedElement::getMultiValued on illegal property");
    EXPECT_TRUE(named.getMultiValued(package.get(), root, 1, false).isNull());

    auto const& owner = TypeIntf::sIntrospectiveMethods;
    owner.setSingleValued(QOB::Object(unit).get(), root, 1, inner);
    EXPECT_EQ(Package(owner.getSingleValued(QOB::Object(unit).get(), root, 1)), inner);
    owner.removeSingleValued(QOB::Object(unit).get(), root, 1);
    EXPECT_FALSE(owner.hasSingleValued(QOB::Object(unit).get(), root, 1));
    EXPECT_EQ(messageOf([&] { owner.hasSingleValued(package.get(), root, 1); }), "illegal object");

    auto const& packages = PackageIntf::sIntrospectiveMethods;
    packages.getMultiValued(package.get(), root, 4, true)
        .generic_push_back(QOB::Generic::toRef(Type(unit)));
    EXPECT_EQ(unit.getPackage(), outer);
}

TEST(MetaRegistry, ItsFactoryMakesTheElementsOfMetamodels) {
    QOB::DomainRegistry const& registry = *QOB::DomainRegistry::instance();
    QOB::Factory const factory = registry.getMetaRegistryFactory();
    EXPECT_EQ(factory.getModelQOB(), registry.getMetaRegistry());
    EXPECT_EQ(factory.getContainerQOB(), QOB::ClassObject(registry.getMetaRegistry()));

    Package const package = factory.createPackage("sample");
    Enumeration const kind = factory.createEnumeration();
    kind.setName("Kind");
    kind.setPackage(package);
    EnumerationLiteral const literal(factory.createFromString("QOB.EnumerationLiteral"));
    literal.setName("Plain");
    literal.setEnumeration(kind);
    EXPECT_EQ(package.getModelQOB(), registry.getMetaRegistry());
    EXPECT_EQ(namesOf(package.getOwnedTypes()), "Kind");
    EXPECT_EQ(namesOf(kind.getOwnedLiterals()), "Plain");
    EXPECT_TRUE(DataType(factory.createFromString("DataType")).isValid());
    EXPECT_EQ(QOB::Integer(factory.createFromString("QOB.Integer", "17")), 17);
    EXPECT_FALSE(factory.createFromString("Nothing").isValid());
    package.destroy();
}

TEST(MetaRegistry, AValueLeadsToTheElementThatDescribesItsType) {
    using QOB::TypeInfoRegistry;
    Tessel::TypeInfo const info = *TypeInfoRegistry::getTypeInfo("QOB.Real");
    DataType const type =
        QOB::DomainRegistry::instance()->getMetaRegistryFactory().createDataType();
    QOB::ImmutableDataType const own = TypeInfoRegistry::getMetaType("QOB.Real");
    QOB::Object const value = QOB::Real(1.5);
    EXPECT_EQ(own.getName(), QOB::String("Real"));
    EXPECT_EQ(value->getMetaType({}), QOB::ImmutableType(own));

    EXPECT_EQ(messageOf([&] { TypeInfoRegistry::registerMetaType("QOB.Real", info, type); }),
              "The type name (QOB.Real) is in use in the registry of type infos.");
    EXPECT_EQ(TypeInfoRegistry::getMetaType("QOB.Real"), own);
    TypeInfoRegistry::unregisterMetaType("QOB.Real");
    EXPECT_FALSE(TypeInfoRegistry::isRegistered("QOB.Real"));
    EXPECT_FALSE(value->getMetaType({}).isValid());
    TypeInfoRegistry::registerMetaType("QOB.Real", info, type);
    EXPECT_EQ(value->getMetaType({}), QOB::ImmutableType(type));

    TypeInfoRegistry::unregisterMetaType("QOB.Real");
    TypeInfoRegistry::registerMetaType("QOB.Real", info, own);
    type.destroy();
}
