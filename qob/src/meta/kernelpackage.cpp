#include "kernelpackage.h"

#include "qob/kernel/meta/metaclasscreation.h"
#include "qob/qob/domainregistry.h"
#include "qob/qob/externaltoolinfo.h"
#include "values/valuetext.h"

#include <array>
#include <cstddef>

namespace QOB {

namespace internal {

namespace {

using NSInterface::ClassIntf;
using NSInterface::ClassObjectIntf;
using NSInterface::FactoryObjectIntf;
using NSInterface::ModelIntf;
using NSInterface::StereotypeObjectIntf;

/// A data type of the package: only its live element is reached through its record.
struct KernelDataType {
    char const* name;
    char const* dottedName; ///< of its values, where they can be boxed
    IntrospectiveMethods methods;
};

constinit KernelDataType booleanType{"Boolean", "QOB.Boolean", {}};
constinit KernelDataType stringType{"String", "QOB.String", {}};
constinit KernelDataType realType{"Real", "QOB.Real", {}};
constinit KernelDataType integerType{"Integer", "QOB.Integer", {}};
constinit KernelDataType externalToolInfoType{"ExternalToolInfo", nullptr, {}};

constexpr std::array dataTypes{&booleanType,
                               &stringType,
                               &realType,
                               &integerType,
                               &externalToolInfoType};

/// Entry 0 and the last one stay null.
constexpr std::size_t TableSize = ExternalToolInfoIndex + 2;

constexpr std::array<IntrospectiveMethods*, TableSize> makeTable() {
    std::array<IntrospectiveMethods*, TableSize> table{};
    table[ClassObjectIndex] = &ClassObjectIntf::sIntrospectiveMethods;
    table[ModelIndex] = &ModelIntf::sIntrospectiveMethods;
    table[StereotypeObjectIndex] = &StereotypeObjectIntf::sIntrospectiveMethods;
    table[FactoryObjectIndex] = &FactoryObjectIntf::sIntrospectiveMethods;
    table[BooleanIndex] = &booleanType.methods;
    table[StringIndex] = &stringType.methods;
    table[RealIndex] = &realType.methods;
    table[IntegerIndex] = &integerType.methods;
    table[ExternalToolInfoIndex] = &externalToolInfoType.methods;
    return table;
}

constexpr std::array<IntrospectiveMethods*, TableSize> table = makeTable();

struct KernelClass {
    MetaClassDescription description;
    ClassIntf* meta = nullptr;
    bool updated = false;
};

constinit KernelClass classes[] = {
    {{.name = "ClassObject",
      .dottedName = ClassObjectIntf::Name,
      .methods = &ClassObjectIntf::sIntrospectiveMethods,
      .propertyCount = ClassObjectIntf::ObjectIdId,
      .isAbstract = true}},
    {{.name = "Model",
      .dottedName = "QOB.Model",
      .methods = &ModelIntf::sIntrospectiveMethods,
      .propertyCount = ModelIntf::RootObjectsId}},
    {{.name = "StereotypeObject",
      .dottedName = StereotypeObjectIntf::Name,
      .methods = &StereotypeObjectIntf::sIntrospectiveMethods,
      .propertyCount = StereotypeObjectIntf::ValueId}},
    {{.name = "FactoryObject",
      .dottedName = FactoryObjectIntf::Name,
      .methods = &FactoryObjectIntf::sIntrospectiveMethods,
      .isAbstract = true}},
};

} // namespace

constinit PackageIntrospectiveMethods kernelPackage{table.data(), TableSize};
constinit SuperReference const belowClassObject[2] = {
    {&get_QOB_PackageIntrospectiveMethods, ClassObjectIndex},
    {}};

void createKernelPackage(Factory const& factory) {
    Package const package = factory.createPackage("QOB");
    package.setContainerQOB(ClassObject(package.getModelQOB()));
    package.setUri(DomainRegistry::canonicalUri("QOB"));
    for (KernelDataType* const each : dataTypes) {
        DataType const type = factory.createDataType(each->name);
        type.setPackage(package);
        each->methods.meta = type.get();
        if (each->dottedName != nullptr) {
            describeOwnType(each->dottedName, type);
        }
    }
    for (KernelClass& each : classes) {
        createMetaClass(each.meta, each.description, factory, package);
    }
    for (KernelClass& each : classes) {
        updateMetaClass(each.updated, each.meta, each.description, factory);
    }
}

void forgetKernelPackage() noexcept {
    for (KernelDataType* const each : dataTypes) {
        each->methods.meta = nullptr;
    }
    for (KernelClass& each : classes) {
        rollBackMetaClass(each.updated, each.meta, each.description);
    }
}

} // namespace internal

PackageIntrospectiveMethods const* get_QOB_PackageIntrospectiveMethods() {
    return &internal::kernelPackage;
}

} // namespace QOB
