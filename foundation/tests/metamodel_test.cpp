#include "qob/qob/domainregistry.h"
#include "qob/qob/enumeration.h"
#include "qob/qob/transaction.h"
#include "qob/qob/typeinforegistry.h"
#include "qob/qob/valueobjectfactory.h"
#include "velum_foundation/zorvane/metamodel.h"
#include "velum_foundation/zorvane/metamodel/foundation/nsinterface/zorvanemetamodelfoundationelementintf.h"
#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationvisibilitykind.h"

#include <gtest/gtest.h>

#include <string>

using QOB::Package;
using Zorvane::metamodel::foundation::VisibilityKind;
using Zorvane::metamodel::foundation::NSInterface::ElementIntf;
using Zorvane::metamodel::NSImplementation::staticGetMetamodelMetaPackage;
using Zorvane::NSImplementation::staticGetZorvaneMetaModel;

namespace {

QOB::Model registry() {
    return QOB::DomainRegistry::instance()->getMetaRegistry();
}

/// The packages but the kernel's own.
int packagesOf(QOB::Model const& model) {
    int count = 0;
    for (QOB::ClassObject const& object : model.getRootObjects()) {
        Package const package(object);
        count += package.isValid() && package.getName() != QOB::String("QOB") ? 1 : 0;
    }
    return count;
}

/// The data type of the base metamodel is known by name, with its live element, and from texts.
void expectVisibilityKind() {
    std::string const name = "Zorvane.metamodel.foundation.VisibilityKind";
    EXPECT_EQ(VisibilityKind::getTypeName(), name);
    EXPECT_EQ(QOB::TypeInfoRegistry::getTypeInfo(name), VisibilityKind::getTypeInfo());
    QOB::ImmutableEnumeration const element(VisibilityKind::MetaDataType());
    ASSERT_TRUE(element.isValid());
    EXPECT_EQ(element.getName(), QOB::String("VisibilityKind"));
    EXPECT_EQ(element.getOwnedLiterals().size(), 4);
    EXPECT_EQ(VisibilityKind(QOB::ValueObjectFactory::createFromString(name, "protected")),
              VisibilityKind::ProtectedVisibility);
    EXPECT_EQ(VisibilityKind(QOB::ValueObjectFactory::create(name)),
              VisibilityKind::PublicVisibility);
    EXPECT_THROW(QOB::ValueObjectFactory::createFromString(name, "hidden"), QOB::Exception);
}

} // namespace

TEST(Metamodel, IsMadeOnceAndAgainWhenItIsGone) {
    staticGetZorvaneMetaModel(registry()).destroy();
    EXPECT_EQ(packagesOf(registry()), 0);
    {
        QOB::Transaction const forgotten(registry());
        EXPECT_TRUE(staticGetZorvaneMetaModel(registry()).isValid());
        EXPECT_NE(ElementIntf::sIntrospectiveMethods.meta, nullptr);
    }
    EXPECT_EQ(packagesOf(registry()), 0);
    EXPECT_EQ(ElementIntf::sIntrospectiveMethods.meta, nullptr);
    Package const product = staticGetZorvaneMetaModel(registry());
    ASSERT_TRUE(product.isValid());
    EXPECT_EQ(staticGetZorvaneMetaModel(registry()), product);
    EXPECT_EQ(&staticGetMetamodelMetaPackage(), &staticGetMetamodelMetaPackage());
    EXPECT_EQ(packagesOf(registry()), 3) << "with that of the base metamodel";
    EXPECT_FALSE(registry().getDeviant().isWithinTransaction());
    expectVisibilityKind();
}

TEST(Metamodel, ItsPackageLiesWithinTheProducts) {
    Package const product = staticGetZorvaneMetaModel(registry());
    Package const metamodel(staticGetMetamodelMetaPackage(), registry().getDeviant());
    EXPECT_EQ(product.getName(), QOB::String("Zorvane"));
    EXPECT_EQ(metamodel.getName(), QOB::String("metamodel"));
    EXPECT_EQ(metamodel.getUri(), QOB::String("qob://metamodels/metamodel"));
    EXPECT_EQ(metamodel.getParent(), product);
    EXPECT_EQ(product.getModelQOB(), registry());
    EXPECT_TRUE(registry().getContaineeQOBs().contains(product));
    EXPECT_FALSE(product.hasParent());
}

TEST(Metamodel, IsSeenInTheDeviantThatIsAskedFor) {
    QOB::Model const branch = registry().inDeviant(registry().createDeviant());
    EXPECT_EQ(staticGetZorvaneMetaModel(branch).getDeviant(), branch.getDeviant());
    registry().removeDeviant(branch.getDeviant());
}
