#include "qob/qob/domainregistry.h"
#include "qob/qob/factory.h"
#include "qob/qob/transaction.h"
#include "velum_foundation/zorvane/metamodel.h"
#include "velum_types/types.h"
#include "velum_types/zorvane/metamodel/types/nsmetaregistry/metapackage.h"
#include "velum_types/zorvane/metamodel/types/nsmetaregistry/valuetypes.h"

#include <gtest/gtest.h>

#include <string>

namespace types = Zorvane::metamodel::types;
namespace meta = types::NSImplementation;

namespace {

template <class Elements>
std::string namesOf(Elements const& elements) {
    std::string names;
    for (auto const& element : elements) {
        names += names.empty() ? "" : " ";
        names += element.getName().view();
    }
    return names;
}

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
    EXPECT_EQ(namesOf(package().getOwnedTypes()),
              "CompuMethodCategory TimeUnitKind DataSizeUnitKind FloatingPointKind Time DataSize");
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
    EXPECT_EQ(package().getOwnedTypes().size(), 6U);
}

TEST_F(MetaPackage, StopTakesEverythingDownAndAStartBringsItBack) {
    meta::unregisterValueTypes();
    EXPECT_EQ(meta::staticGetTypesMetaPackage(), nullptr);
    EXPECT_EQ(meta::staticGetDataSizeMeta(), nullptr);
    EXPECT_FALSE(types::DataSize::MetaDataType().isValid());
    EXPECT_FALSE(QOB::TypeInfoRegistry::isRegistered(types::Time::getTypeName()));
    EXPECT_FALSE(QOB::ValueObjectFactory::isValueObjectType(types::Time::getTypeName()));
    meta::unregisterValueTypes();

    meta::registerValueTypes();
    EXPECT_TRUE(types::DataSize::MetaDataType().isValid());
    EXPECT_EQ(package().getOwnedTypes().size(), 6U);
}
