#include "support/classblock.h"
#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundation.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

// Every class of it is named below: NOLINTNEXTLINE(google-build-using-namespace)
using namespace Zorvane::metamodel::foundation::NSInterface;
using QOB::NSInterface::ClassObjectIntf;
using VelumTest::expectBlock;

namespace {

TEST(VirtualOrder, ElementsAndNames) {
    {
        using Intf = ElementIntf;
        expectBlock<Intf, ClassObjectIntf>(
            {VELUM_MANY(OwnedElements), VELUM_REFERENCE(Owner), VELUM_MANY(OwnedComments)});
    }
    {
        using Intf = NamedElementIntf;
        expectBlock<Intf, ElementIntf>({VELUM_ONE(qualifiedName),
                                        VELUM_ONE(qualifiedNameWithSeparator),
                                        VELUM_REFERENCE(Namespace),
                                        VELUM_VALUE(Name),
                                        VELUM_REFERENCE(Visibility),
                                        VELUM_MANY(ClientDependencies)});
    }
    {
        using Intf = NamespaceIntf;
        expectBlock<Intf, NamedElementIntf>(
            {VELUM_MANY(OwnedMembers), VELUM_MANY(ElementImports), VELUM_MANY(NamespaceImports)});
    }
}

TEST(VirtualOrder, TypesAndWhatHasOne) {
    expectBlock<PackageableElementIntf, NamedElementIntf>({});
    expectBlock<TypeIntf, PackageableElementIntf>({});
    {
        using Intf = ValueTypeIntf;
        expectBlock<Intf, TypeIntf>({VELUM_REFERENCE(InvalidValue)});
    }
    {
        using Intf = TypedElementIntf;
        expectBlock<Intf, NamedElementIntf>({VELUM_REFERENCE(Type), VELUM_REFERENCE(OwnedType)});
    }
    expectBlock<ValueSpecificationIntf, TypedElementIntf>({});
}

} // namespace
