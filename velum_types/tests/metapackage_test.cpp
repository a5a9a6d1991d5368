#include "qob/qob/domainregistry.h"
#include "qob/qob/factory.h"
#include "qob/qob/transaction.h"
#include "qob/qob/typeinforegistry.h"
#include "support/names.h"
#include "velum_foundation/zorvane/metamodel.h"
#include "velum_types/types.h"
#include "velum_types/zorvane/metamodel/types/nsmetaregistry/typeregistration.h"
#include "velum_types/zorvane/metamodel/types/nsmetaregistry/zorvanemetamodeltypesmetapackage.h"

#include <gtest/gtest.h>

#include <string>

namespace types = Zorvane::metamodel::types;
namespace meta = types::NSImplementation;

using VelumTest::namesOf;

namespace {

/// The started library, and the package as a reader of the meta-registry finds it.
class MetaPackage : public testing::Test {
protected:
    MetaPackage() { types::initialize(); }

    QOB::Model registry = QOB::DomainRegistry::instance()->getMetaRegistry();
    QOB::Package package() const { return meta::staticGetTypesMetaModel(registry); }
};

template <class Kind>
void expectLiterals(char const* expected) {
    QOB::ImmutableEnumeration const element(Kind::MetaDataType());
    ASSERT_TRUE(element.isValid()) << Kind::getTypeName();
    EXPECT_EQ("Zorvane.metamodel.types." + std::string(element.getName()), Kind::getTypeName());
    EXPECT_EQ(namesOf(element.getOwnedLiterals()), expected);
    EXPECT_EQ(Kind(1).getMetaDataType(), QOB::ImmutableDataType(element));
}

} // namespace

TEST_F(MetaPackage, StandsInTheMetamodelWithTheValueClasses) {
    ASSERT_TRUE(package().isValid());
    EXPECT_EQ(std::string(package().getName()), "types");
    EXPECT_EQ(std::wstring(package().getUri()),
              QOB::DomainRegistry::instance()->getDomainCanonicalUri("types"));
    EXPECT_EQ(package().getParent().get(),
              Zorvane::metamodel::NSImplementation::staticGetMetamodelMetaPackage());
    EXPECT_EQ(
        namesOf(package().getOwnedTypes()),
        "CompuMethodCategory TimeUnitKind DataSizeUnitKind FloatingPointKind Time DataSize "
        "PrimitiveType Real FloatingPoint Complex Dimension LiteralReal FixedPoint Integer Unit "
        "Matrix EnumerationLiteral Enumeration Factory Boolean CompositeSpecification "
        "MatrixValueSpecification ValueElement Cell Structure StructureValueSpecification Slot "
        "EnumerationLiteralReference ConstantSpecification ConstantReference StructElement "
        "CompuMethod DataConstr SwBaseType LookupTableType SharedAxisType SwRecordLayout Axis "
        "VoidPointer ApplicationValueSpecification LookupTableSpecification");
}

TEST_F(MetaPackage, ClassesLeadToTheirSupersAndProperties) {
    QOB::ImmutableClass const boolean = types::Boolean::MetaClass();
    ASSERT_TRUE(boolean.isValid());
    EXPECT_EQ(namesOf(boolean.getSupers()), "Real");
    EXPECT_EQ(namesOf(boolean.getOwnedAttributes()), "minValue maxValue isMinOpen isMaxOpen");
    EXPECT_EQ(types::Boolean::MetaClass(), types::ImmutableBoolean::MetaClass());
    QOB::Model const model = types::NSInterface::FactoryIntf::createNewModel();
    types::Boolean const type = types::Boolean::create(model, "flag");
    EXPECT_EQ(type.getMetaClass(), boolean);
    // By name, an inherited property and a redefined one.
    type.setOrAdd("Name", QOB::Object(QOB::String("other")));
    EXPECT_EQ(type.getName(), "other");
    type.setOrAdd("maxValue", QOB::Object(QOB::Real(7.0)));
    EXPECT_EQ(type.getMaxValue(), 7.0);
    EXPECT_THROW(type.getOne("colour"), QOB::Exception);
    model.destroy();
}

TEST_F(MetaPackage, TagsTellHostsWhatToHide) {
    int hidden = 0;
    int shown = 0;
    int tagged = 0;
    for (QOB::Type const& type : package().getOwnedTypes()) {
        QOB::Class const cls(type);
        if (!cls.isValid()) {
            continue;
        }
        tagged += QOB::hasTag("qob_metaclass", cls) ? 1 : 0;
        for (QOB::Property const& property : cls.getOwnedAttributes()) {
            ++(QOB::hasTag("qob_hide_in_lumvo", property) ? hidden : shown);
        }
    }
    EXPECT_EQ(hidden, 56);
    EXPECT_EQ(shown, 53);
    EXPECT_EQ(tagged, 34);
    EXPECT_TRUE(QOB::hasTag("qob_hide_in_lumvo", types::Axis::MetaClass()));
    EXPECT_FALSE(QOB::hasTag("qob_metaclass", types::Axis::MetaClass()));
    EXPECT_TRUE(QOB::hasTag("qob_factory", types::Factory::MetaClass()));
    EXPECT_EQ(QOB::getTagValue("qob_metamodel", package()), "Zorvane.metamodel.types");
}

TEST_F(MetaPackage, EveryIteratorAndSequenceIsRegistered) {
    for (char const* const name : {"Factory",
                                   "DataSizeIterator",
                                   "SequenceOfTime",
                                   "ImmutableSequenceOfImmutableFloatingPoint",
                                   "SequenceOfImmutableVoidPointer",
                                   "LookupTableSpecificationImmutableIterator",
                                   "ImmutableFactoryIterator"}) {
        EXPECT_TRUE(
            QOB::TypeInfoRegistry::isRegistered(std::string("Zorvane.metamodel.types.") += name))
            << name;
    }
    EXPECT_FALSE(QOB::TypeInfoRegistry::isRegistered("Zorvane.metamodel.types.Unit"));
}

TEST_F(MetaPackage, ValueClassesLeadToTheirElements) {
    expectLiterals<types::CompuMethodCategory>(
        "Identical Linear RatFunc TextTable LinearAndTextTable");
    expectLiterals<types::TimeUnitKind>("s ms us min hrs dys wks mos yrs");
    expectLiterals<types::DataSizeUnitKind>("bit byte KB MB GB");
    expectLiterals<types::FloatingPointKind>("IEEE_Double IEEE_Single");
    EXPECT_EQ(std::string(types::DataSize::MetaDataType().getName()), "DataSize");
    EXPECT_EQ(types::DataSize().getMetaDataType().getPackage(), package());
    EXPECT_EQ(std::string(types::Time::MetaDataType().getName()), "Time");
}

TEST_F(MetaPackage, ASecondStartMakesNothing) {
    QOB::NSInterface::PackageIntf* const before = meta::staticGetTypesMetaPackage();
    QOB::Transaction transaction(registry);
    EXPECT_EQ(meta::staticInitializeTypesMeta(), before);
    transaction.commit();
    EXPECT_EQ(package().getOwnedTypes().size(), 41);
}

TEST_F(MetaPackage, StopTakesEverythingDownAndAStartBringsItBack) {
    meta::unregisterTypes();
    EXPECT_EQ(meta::staticGetTypesMetaPackage(), nullptr);
    EXPECT_EQ(meta::staticGetDataSizeMeta(), nullptr);
    EXPECT_FALSE(types::DataSize::MetaDataType().isValid());
    EXPECT_FALSE(QOB::TypeInfoRegistry::isRegistered(types::Time::getTypeName()));
    EXPECT_FALSE(QOB::ValueObjectFactory::isValueObjectType(types::Time::getTypeName()));
    meta::unregisterTypes();

    meta::staticForgetTypesMetaPackage(); // so that the classes are completed again, for other
                                          // tests
    meta::registerTypes();
    EXPECT_TRUE(types::DataSize::MetaDataType().isValid());
    EXPECT_EQ(package().getOwnedTypes().size(), 41);
}
