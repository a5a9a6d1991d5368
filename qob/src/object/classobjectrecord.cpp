#include "meta/kernelpackage.h"
#include "qob/kernel/property/reflective.h"
#include "qob/qob/model.h"
#include "qob/qob/stereotypeobject.h"

namespace QOB::NSInterface {

namespace {

constexpr unsigned Many = PropertyMultiValued | PropertyUnique;

MetaPropertyDescription uri{.name = "Uri",
                            .package = &get_QOB_PackageIntrospectiveMethods,
                            .typeIndex = StringIndex,
                            .flags = PropertyUnique,
                            .id = ClassObjectIntf::UriId};
MetaPropertyDescription modelQOB{.name = "ModelQOB",
                                 .package = &get_QOB_PackageIntrospectiveMethods,
                                 .typeIndex = ModelIndex,
                                 .flags = PropertyUnique,
                                 .id = ClassObjectIntf::ModelQOBId,
                                 .associationName = "",
                                 .hasOpposite = 1,
                                 .oppositePackage = &get_QOB_PackageIntrospectiveMethods,
                                 .oppositeClass = ModelIndex,
                                 .oppositeId = ModelIntf::RootObjectsId};
MetaPropertyDescription containerQOB{.name = "ContainerQOB",
                                     .package = &get_QOB_PackageIntrospectiveMethods,
                                     .typeIndex = ClassObjectIndex,
                                     .flags = PropertyUnique,
                                     .id = ClassObjectIntf::ContainerQOBId,
                                     .associationName = "",
                                     .hasOpposite = 1,
                                     .oppositePackage = &get_QOB_PackageIntrospectiveMethods,
                                     .oppositeClass = ClassObjectIndex,
                                     .oppositeId = ClassObjectIntf::ContaineeQOBId};
MetaPropertyDescription containeeQOB{.name = "ContaineeQOB",
                                     .package = &get_QOB_PackageIntrospectiveMethods,
                                     .typeIndex = ClassObjectIndex,
                                     .flags = PropertyReadOnly | PropertyDerived |
                                              PropertyComposite | Many,
                                     .upper = MetaPropertyDescription::Unbounded,
                                     .id = ClassObjectIntf::ContaineeQOBId,
                                     .associationName = "",
                                     .hasOpposite = 1,
                                     .oppositePackage = &get_QOB_PackageIntrospectiveMethods,
                                     .oppositeClass = ClassObjectIndex,
                                     .oppositeId = ClassObjectIntf::ContainerQOBId};
MetaPropertyDescription appliedStereotypeInstance{.name = "AppliedStereotypeInstance",
                                                  .package = &get_QOB_PackageIntrospectiveMethods,
                                                  .typeIndex = StereotypeObjectIndex,
                                                  .flags = PropertyComposite | Many,
                                                  .upper = MetaPropertyDescription::Unbounded,
                                                  .id =
                                                      ClassObjectIntf::AppliedStereotypeInstanceId,
                                                  .associationName = "",
                                                  .otherEndName = ""};
MetaPropertyDescription rootModel{.name = "RootModel",
                                  .package = &get_QOB_PackageIntrospectiveMethods,
                                  .typeIndex = ModelIndex,
                                  .flags = PropertyReadOnly | PropertyUnique,
                                  .id = ClassObjectIntf::RootModelId,
                                  .associationName = "",
                                  .otherEndName = ""};
MetaPropertyDescription externalId{.name = "ExternalId",
                                   .package = &get_QOB_PackageIntrospectiveMethods,
                                   .typeIndex = StringIndex,
                                   .flags = PropertyUnique,
                                   .id = ClassObjectIntf::ExternalIdId};
MetaPropertyDescription externalToolInfo{.name = "ExternalToolInfo",
                                         .package = &get_QOB_PackageIntrospectiveMethods,
                                         .typeIndex = ExternalToolInfoIndex,
                                         .flags = Many,
                                         .upper = MetaPropertyDescription::Unbounded,
                                         .id = ClassObjectIntf::ExternalToolInfoId};
MetaPropertyDescription objectId{.name = "ObjectId",
                                 .package = &get_QOB_PackageIntrospectiveMethods,
                                 .typeIndex = IntegerIndex,
                                 .flags = PropertyUnique,
                                 .id = ClassObjectIntf::ObjectIdId};
MetaPropertyDescription* properties[] = {nullptr,
                                         &uri,
                                         &modelQOB,
                                         &containerQOB,
                                         &containeeQOB,
                                         &appliedStereotypeInstance,
                                         &rootModel,
                                         &externalId,
                                         &externalToolInfo,
                                         &objectId};

struct ClassObjectDescription {
    using Interface = ClassObjectIntf;
    static constexpr char const* name = ClassObjectIntf::Name;
    static constexpr reflective::Place place{__FILE__, __LINE__};
    using Properties = reflective::List<
        reflective::Single<ClassObjectIntf::UriId,
                           &ClassObjectIntf::getUri,
                           &ClassObjectIntf::hasUri,
                           &ClassObjectIntf::setUri,
                           &ClassObjectIntf::removeUri>,
        reflective::Single<ClassObjectIntf::ModelQOBId,
                           &ClassObjectIntf::getModelQOB,
                           &ClassObjectIntf::hasModelQOB,
                           &ClassObjectIntf::setModelQOB,
                           &ClassObjectIntf::removeModelQOB,
                           &ClassObjectIntf::setOnlyModelQOB,
                           &ClassObjectIntf::removeOnlyModelQOB>,
        reflective::Single<ClassObjectIntf::ContainerQOBId,
                           &ClassObjectIntf::getContainerQOB,
                           &ClassObjectIntf::hasContainerQOB,
                           &ClassObjectIntf::setContainerQOB,
                           &ClassObjectIntf::removeContainerQOB,
                           &ClassObjectIntf::setOnlyContainerQOB,
                           &ClassObjectIntf::removeOnlyContainerQOB>,
        reflective::Many<ClassObjectIntf::ContaineeQOBId,
                         &ClassObjectIntf::getContaineeQOBs,
                         &ClassObjectIntf::getContaineeQOBsWithoutAssociation>,
        reflective::Many<ClassObjectIntf::AppliedStereotypeInstanceId,
                         &ClassObjectIntf::getAppliedStereotypeInstances,
                         &ClassObjectIntf::getAppliedStereotypeInstancesWithoutAssociation>,
        reflective::Single<ClassObjectIntf::RootModelId,
                           &ClassObjectIntf::getRootModel,
                           &ClassObjectIntf::hasRootModel,
                           nullptr,
                           &ClassObjectIntf::removeRootModel,
                           nullptr,
                           &ClassObjectIntf::removeOnlyRootModel>,
        reflective::Single<ClassObjectIntf::ExternalIdId,
                           &ClassObjectIntf::getExternalId,
                           &ClassObjectIntf::hasExternalId,
                           &ClassObjectIntf::setExternalId,
                           &ClassObjectIntf::removeExternalId>,
        reflective::Many<ClassObjectIntf::ExternalToolInfoId,
                         &ClassObjectIntf::getExternalToolInfos,
                         &ClassObjectIntf::getExternalToolInfosWithoutAssociation>,
        reflective::Single<ClassObjectIntf::ObjectIdId,
                           &ClassObjectIntf::getObjectId,
                           &ClassObjectIntf::hasObjectId,
                           &ClassObjectIntf::setObjectId,
                           &ClassObjectIntf::removeObjectId>>;
};

} // namespace

constinit IntrospectiveMethods ClassObjectIntf::sIntrospectiveMethods =
    reflective::methodsOf<ClassObjectDescription>(properties,
                                                  nullptr,
                                                  &QOB::internal::kernelPackage);

} // namespace QOB::NSInterface
