#include "qob/qob/domainregistry.h"
#include "qob/qob/transaction.h"
#include "velum_foundation/zorvane/metamodel.h"
#include "velum_foundation/zorvane/metamodel/foundation/nsinterface/zorvanemetamodelfoundationelementintf.h"

#include <gtest/gtest.h>

using QOB::Package;
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
