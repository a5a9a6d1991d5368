#include "meta/kernelpackage.h"
#include "qob/kernel/property/reflective.h"
#include "qob/qob/model.h"

/// The class Model as data.
namespace QOB::NSInterface {

namespace {

MetaPropertyDescription rootObjects{
    .name = "rootObjects",
    .package = &get_QOB_PackageIntrospectiveMethods,
    .typeIndex = ClassObjectIndex,
    .flags = PropertyOrdered | PropertyUnique | PropertyMultiValued,
    .lower = 0,
    .upper = MetaPropertyDescription::Unbounded,
    .id = ModelIntf::RootObjectsId,
    .associationName = "",
    .hasOpposite = 1,
    .oppositePackage = &get_QOB_PackageIntrospectiveMethods,
    .oppositeClass = ClassObjectIndex,
    .oppositeId = ClassObjectIntf::ModelQOBId,
};
MetaPropertyDescription* modelProperties[] = {nullptr, &rootObjects};

struct ModelDescription {
    using Interface = ModelIntf;
    static constexpr char const* name = "QOB.Model";
    static constexpr reflective::Place place{__FILE__, __LINE__};
    using Properties =
        reflective::List<reflective::Many<ModelIntf::RootObjectsId,
                                          &ModelIntf::getRootObjects,
                                          &ModelIntf::getRootObjectsWithoutAssociation>>;
};

} // namespace

constinit IntrospectiveMethods ModelIntf::sIntrospectiveMethods =
    reflective::methodsOf<ModelDescription>(modelProperties,
                                            QOB::internal::belowClassObject,
                                            &QOB::internal::kernelPackage);

} // namespace QOB::NSInterface
