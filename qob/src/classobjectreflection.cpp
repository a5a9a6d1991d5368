#include "qob/qob/model.h"
#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/object.h"
#include "qob/qob/sequence.h"

/// The properties of ClassObject by id: the model (2) and the container (3).
namespace QOB::NSInterface {

namespace {

ClassObjectIntf& classObject(ObjectIntf* object) {
    auto* const found = castObject<ClassObjectIntf>(object);
    QOB_REQUIRE(found != nullptr, "illegal object");
    return *found;
}

[[noreturn]] void failIllegalProperty(char const* function, unsigned id) {
    if (id == 0) {
        QOB_FAIL("QOB.ClassObject::%s on illegal property", function);
    }
    QOB_FAIL("QOB.ClassObject::%s on illegal property with id %u", function, id);
    throw Exception(function); // not reached
}

Object getSingleValued(ObjectIntf* object, Deviant deviant, unsigned id) {
    ClassObjectIntf const& self = classObject(object);
    switch (id) {
    case ClassObjectIntf::ModelQOBId:
        return self.getModelQOB(deviant);
    case ClassObjectIntf::ContainerQOBId:
        return self.getContainerQOB(deviant);
    default:
        failIllegalProperty("getSingleValued", id);
    }
}

bool hasSingleValued(ObjectIntf* object, Deviant deviant, unsigned id) {
    ClassObjectIntf const& self = classObject(object);
    switch (id) {
    case 0:
        failIllegalProperty("hasSingleValued", id);
    case ClassObjectIntf::ModelQOBId:
        return self.hasModelQOB(deviant);
    case ClassObjectIntf::ContainerQOBId:
        return self.hasContainerQOB(deviant);
    default:
        return false;
    }
}

void setSingleValued(ObjectIntf* object, Deviant deviant, unsigned id, Object const& value) {
    ClassObjectIntf& self = classObject(object);
    switch (id) {
    case ClassObjectIntf::ModelQOBId:
        return self.setModelQOB(deviant, Model(value));
    case ClassObjectIntf::ContainerQOBId:
        return self.setContainerQOB(deviant, ClassObject(value));
    default:
        failIllegalProperty("setSingleValued", id);
    }
}

void setOnlySingleValued(ObjectIntf* object, Deviant deviant, unsigned id, Object const& value) {
    ClassObjectIntf& self = classObject(object);
    switch (id) {
    case ClassObjectIntf::ModelQOBId:
        return self.setOnlyModelQOB(deviant, Model(value));
    case ClassObjectIntf::ContainerQOBId:
        return self.setOnlyContainerQOB(deviant, ClassObject(value));
    default:
        failIllegalProperty("setOnlySingleValued", id);
    }
}

void removeSingleValued(ObjectIntf* object, Deviant deviant, unsigned id) {
    ClassObjectIntf& self = classObject(object);
    switch (id) {
    case ClassObjectIntf::ModelQOBId:
        return self.removeModelQOB(deviant);
    case ClassObjectIntf::ContainerQOBId:
        return self.removeContainerQOB(deviant);
    default:
        failIllegalProperty("removeSingleValued", id);
    }
}

void removeOnlySingleValued(ObjectIntf* object, Deviant deviant, unsigned id) {
    ClassObjectIntf& self = classObject(object);
    switch (id) {
    case ClassObjectIntf::ModelQOBId:
        return self.removeOnlyModelQOB(deviant);
    case ClassObjectIntf::ContainerQOBId:
        return self.removeOnlyContainerQOB(deviant);
    default:
        failIllegalProperty("removeOnlySingleValued", id);
    }
}

/// No property of ClassObject has many values.
Generic::SequenceRef getMultiValued(ObjectIntf* object, Deviant, unsigned id, bool) {
    classObject(object);
    if (id == 0) {
        failIllegalProperty("getMultiValued", id);
    }
    return {};
}

Generic::SequenceRef getOnlyMultiValued(ObjectIntf* object, Deviant, unsigned id, bool) {
    classObject(object);
    if (id == 0) {
        failIllegalProperty("getOnlyMultiValued", id);
    }
    return {};
}

} // namespace

IntrospectiveMethods ClassObjectIntf::sIntrospectiveMethods = {
    .getSingleValued = &getSingleValued,
    .hasSingleValued = &hasSingleValued,
    .setSingleValued = &setSingleValued,
    .setOnlySingleValued = &setOnlySingleValued,
    .removeSingleValued = &removeSingleValued,
    .removeOnlySingleValued = &removeOnlySingleValued,
    .getMultiValued = &getMultiValued,
    .getOnlyMultiValued = &getOnlyMultiValued,
};

} // namespace QOB::NSInterface
