#include "qob/qob/stereotypeobject.h"

#include "kernelpackage.h"
#include "metaobject.h"
#include "namedelementstate.h"
#include "qob/kernel/factory/create.h"
#include "qob/kernel/meta/metaclassof.h"
#include "qob/kernel/property/assignrules.h"
#include "qob/kernel/property/optionalvalue.h"
#include "qob/kernel/property/reference.h"
#include "qob/kernel/property/reflective.h"

namespace QOB {

using NSInterface::StereotypeObjectIntf;

namespace {

MetaPropertyDescription stereotypeName{.name = "StereotypeName",
                                       .package = &get_QOB_PackageIntrospectiveMethods,
                                       .typeIndex = StringIndex,
                                       .flags = PropertyUnique,
                                       .lower = 1,
                                       .id = StereotypeObjectIntf::StereotypeNameId};
MetaPropertyDescription taggedValue{.name = "Value",
                                    .package = &get_QOB_PackageIntrospectiveMethods,
                                    .typeIndex = StringIndex,
                                    .flags = PropertyUnique,
                                    .id = StereotypeObjectIntf::ValueId};
MetaPropertyDescription* stereotypeProperties[] = {nullptr, &stereotypeName, &taggedValue};

struct StereotypeObjectDescription {
    using Interface = StereotypeObjectIntf;
    static constexpr char const* name = StereotypeObjectIntf::Name;
    static constexpr reflective::Place place{__FILE__, __LINE__};
    using Properties =
        reflective::List<reflective::Single<StereotypeObjectIntf::StereotypeNameId,
                                            &StereotypeObjectIntf::getStereotypeName,
                                            reflective::always,
                                            &StereotypeObjectIntf::setStereotypeName,
                                            &StereotypeObjectIntf::removeStereotypeName>,
                         reflective::Single<StereotypeObjectIntf::ValueId,
                                            &StereotypeObjectIntf::getValue,
                                            &StereotypeObjectIntf::hasValue,
                                            &StereotypeObjectIntf::setValue,
                                            &StereotypeObjectIntf::removeValue>>;
};

} // namespace

namespace NSInterface {

constinit IntrospectiveMethods StereotypeObjectIntf::sIntrospectiveMethods =
    reflective::methodsOf<StereotypeObjectDescription>(stereotypeProperties,
                                                       QOB::internal::belowClassObject,
                                                       &QOB::internal::kernelPackage);

ImmutableClass StereotypeObjectIntf::getMetaClass(Deviant) const {
    return metaClassOf(sIntrospectiveMethods);
}

bool StereotypeObjectIntf::hasStereotypeName(Deviant) const {
    return true;
}
void StereotypeObjectIntf::removeStereotypeName(Deviant) {
}
void StereotypeObjectIntf::setStereotypeName(Deviant deviant, String const& name) {
    property::setMandatory<&StereotypeObjectIntf::getStereotypeName,
                           &StereotypeObjectIntf::setStereotypeName>(this, deviant, name);
}
String StereotypeObjectIntf::getStereotypeName(Deviant deviant) const {
    return property::get<&StereotypeObjectIntf::getStereotypeName>(this, deviant);
}

bool StereotypeObjectIntf::hasValue(Deviant deviant) const {
    return property::get<&StereotypeObjectIntf::hasValue>(this, deviant);
}
void StereotypeObjectIntf::removeValue(Deviant deviant) {
    property::removeOptional<&StereotypeObjectIntf::hasValue, &StereotypeObjectIntf::removeValue>(
        this, deviant);
}
void StereotypeObjectIntf::setValue(Deviant deviant, String const& value) {
    property::setOptional<&StereotypeObjectIntf::getValue,
                          &StereotypeObjectIntf::setValue,
                          &StereotypeObjectIntf::removeValue>(this, deviant, value);
}
String StereotypeObjectIntf::getValue(Deviant deviant) const {
    return property::get<&StereotypeObjectIntf::getValue>(this, deviant);
}

void StereotypeObjectIntf::setContainerQOB(Deviant deviant, ClassObject const& container) {
    if (!container.isValid()) {
        removeContainerQOB(deviant);
        return;
    }
    property::requireSameModel(
        this, deviant, container, ClassObjectIntf::sIntrospectiveMethods, ContainerQOBId);
    container->getAppliedStereotypeInstances(deviant).push_back(StereotypeObject(this, deviant));
}
void StereotypeObjectIntf::removeContainerQOB(Deviant deviant) {
    setOnlyContainerQOB(deviant, ClassObject());
}
void StereotypeObjectIntf::setOnlyContainerQOB(Deviant deviant, ClassObject const& container) {
    property::requireSameModel(
        this, deviant, container, ClassObjectIntf::sIntrospectiveMethods, ContainerQOBId);
    ClassObject const old = getContainerQOB(deviant);
    if (old.isValid() && old != container) {
        old->getAppliedStereotypeInstancesWithoutAssociation(deviant).removeAll(
            StereotypeObject(this, deviant));
    }
    ClassObjectIntf::setOnlyContainerQOB(deviant, container);
}

void StereotypeObjectIntf::internal_deviationAssign(Deviant deviant,
                                                    ObjectIntf* source,
                                                    Deviant sourceDeviant) {
    property::assignBlocks<StereotypeObjectIntf, StereotypeObjectIntf, ClassObjectIntf>(
        this, deviant, source, sourceDeviant);
}

void StereotypeObjectIntf::internal_assignBlock(Deviant deviant,
                                                StereotypeObjectIntf const* source,
                                                Deviant sourceDeviant) {
    property::assignEach<property::AssignMandatory<&StereotypeObjectIntf::getStereotypeName,
                                                   &StereotypeObjectIntf::setStereotypeName>,
                         property::AssignOptional<&StereotypeObjectIntf::hasValue,
                                                  &StereotypeObjectIntf::getValue,
                                                  &StereotypeObjectIntf::setValue,
                                                  &StereotypeObjectIntf::removeValue>>(
        this, deviant, source, sourceDeviant);
}

} // namespace NSInterface

namespace {

class StereotypeObjectDeviantImpl final
    : public ClassObjectState<StereotypeObjectDeviantImpl, StereotypeObjectIntf> {
public:
    struct Fields : ClassObjectFields {
        String name = "";
        String value;
    };

    bool hasStereotypeName(Deviant) const override { return true; }
    void removeStereotypeName(Deviant) override {}
    void setStereotypeName(Deviant, String const& name) override { fields_.name = name; }
    String getStereotypeName(Deviant) const override { return fields_.name; }
    bool hasValue(Deviant) const override { return fields_.value.isValid(); }
    void removeValue(Deviant) override { fields_.value = String(); }
    void setValue(Deviant, String const& value) override { fields_.value = value; }
    String getValue(Deviant) const override { return fields_.value; }

    Fields fields_;
};

class StereotypeObjectImpl final
    : public NSImplementation::MetaObject<StereotypeObjectDeviantImpl, StereotypeObjectIntf> {};

/// The initial name, where it is given.
struct StereotypeNamed {
    String const& name;

    void operator()(StereotypeObject const& stereotype) const {
        stereotype.setStereotypeName(name);
    }
};

} // namespace

StereotypeObject StereotypeObject::create(Model const& model) {
    return createObject<StereotypeObject, StereotypeObjectImpl>(model, NSImplementation::Unnamed());
}
StereotypeObject StereotypeObject::create(Model const& model, String const& name) {
    return createObject<StereotypeObject, StereotypeObjectImpl>(model, StereotypeNamed{name});
}
StereotypeObject StereotypeObject::createWithId(Model const& model, Integer const& id) {
    return createObject<StereotypeObject, StereotypeObjectImpl>(model, id);
}

} // namespace QOB
