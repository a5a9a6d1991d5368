#pragma once

#include "qob/kernel/upcast.h"
#include "qob/qob/class.h"
#include "qob/qob/externaltoolinfo.h"
#include "qob/qob/model.h"
#include "qob/qob/object.h"
#include "qob/qob/property.h"
#include "qob/qob/sequence.h"
#include "qob/qob/stereotypeobject.h"

#include <utility>

namespace QOB {

/// The bases of an interface class that derives from two others which both inherit the kernel's
/// classes. The first base is the object: calls through the second are forwarded to the first.
/// Every shared operation is overridden here, once, which adds no virtual operation and makes its
/// name unambiguous in subclasses.
///
/// The deriving class forwards the operations of other common bases in the same way.
template <class First, class Second>
class JoinedBases : public First, public Second {
    using ObjectIntf = NSInterface::ObjectIntf;
    using ClassObjectIntf = NSInterface::ClassObjectIntf;
    using MethodTable = CooperativeVisitor::internal::MethodTable;
    using ClassInfo = CooperativeVisitor::internal::ClassInfo;

    static_assert(MayBeSecondPart<Second>, "handles on the second base must ask the object");

public:
    /// The path to bases that are inherited twice.
    using PrimaryBase = First;

    void incRef() const override { First::incRef(); }
    void decRef() const override { First::decRef(); }
    int numRef() const override { return First::numRef(); }
    ListOfReferences* getListOfReferences() const override { return First::getListOfReferences(); }
    CooperativeVisitor::internal::MethodInfo
    getVisitMethod(MethodTable const& table) const override {
        return First::getVisitMethod(table);
    }
    void* cast(ClassInfo const& info) const override { return First::cast(info); }

    void internal_disconnect(Deviant d) override { First::internal_disconnect(d); }
    void internal_discard(Deviant d, bool detach) override { First::internal_discard(d, detach); }
    void destroy(Deviant d) override { First::destroy(d); }
    bool deviant_isValid(Deviant d) const override { return First::deviant_isValid(d); }
    void deviant_destroyState(ObjectIntf* state) override { First::deviant_destroyState(state); }
    void deviant_markModelDestroyed() override { First::deviant_markModelDestroyed(); }
    void deviant_commitTransientState(Deviant d) override {
        First::deviant_commitTransientState(d);
    }
    ObjectIntf* deviant_getCopyOfDeviation(Deviant d) override {
        return First::deviant_getCopyOfDeviation(d);
    }
    ObjectIntf* internal_getDeviation(Deviant d) override {
        return First::internal_getDeviation(d);
    }
    void internal_setDeviation(Deviant d, ObjectIntf* state) override {
        First::internal_setDeviation(d, state);
    }
    ObjectIntf* internal_createDeviation(Deviant d) override {
        return First::internal_createDeviation(d);
    }
    void internal_destroyDeviation(Deviant d) override { First::internal_destroyDeviation(d); }
    void internal_deviationAssign(Deviant d, ObjectIntf* source, Deviant sourceDeviant) override {
        First::internal_deviationAssign(d, source, sourceDeviant);
    }
    Deviant getRootDeviant() const override { return First::getRootDeviant(); }
    char const* getLumvoName(bool immutable) const override {
        return First::getLumvoName(immutable);
    }
    String toString(Deviant d) const override { return First::toString(d); }
    ImmutableObject convertFromString(Deviant d, String text) override {
        return First::convertFromString(d, text);
    }
    ImmutableType getMetaType(Deviant d) const override { return First::getMetaType(d); }

    ImmutableClass getMetaClass(Deviant d) const override { return First::getMetaClass(d); }
    ExternalToolInfo getExternalToolInfo(Deviant d, String key) const override {
        return First::getExternalToolInfo(d, std::move(key));
    }
    void setExternalToolInfo(Deviant d, ExternalToolInfo info) override {
        First::setExternalToolInfo(d, std::move(info));
    }
    void removeExternalToolInfo(Deviant d, ExternalToolInfo info) override {
        First::removeExternalToolInfo(d, std::move(info));
    }
    ImmutableSequence<Object> get(Deviant d, ImmutableProperty const& property) const override {
        return First::get(d, property);
    }
    ImmutableSequence<Object> get(Deviant d, String name) const override {
        return First::get(d, std::move(name));
    }
    Object getOne(Deviant d, ImmutableProperty const& property) const override {
        return First::getOne(d, property);
    }
    Object getOne(Deviant d, String name) const override {
        return First::getOne(d, std::move(name));
    }
    bool has(Deviant d, ImmutableProperty const& property) const override {
        return First::has(d, property);
    }
    bool has(Deviant d, String name) const override { return First::has(d, std::move(name)); }
    void setOrAdd(Deviant d, ImmutableProperty const& property, Object value) override {
        First::setOrAdd(d, property, std::move(value));
    }
    void setOrAdd(Deviant d, String name, Object value) override {
        First::setOrAdd(d, std::move(name), std::move(value));
    }
    void setOrAddOnly(Deviant d, ImmutableProperty const& property, Object value) override {
        First::setOrAddOnly(d, property, std::move(value));
    }
    void setOrAddOnly(Deviant d, String name, Object value) override {
        First::setOrAddOnly(d, std::move(name), std::move(value));
    }
    void remove(Deviant d, ImmutableProperty const& property) override {
        First::remove(d, property);
    }
    void remove(Deviant d, String name) override { First::remove(d, std::move(name)); }
    void remove(Deviant d, ImmutableProperty const& property, Object value) override {
        First::remove(d, property, std::move(value));
    }
    void remove(Deviant d, String name, Object value) override {
        First::remove(d, std::move(name), std::move(value));
    }
    void removeOnly(Deviant d, ImmutableProperty const& property, Object value) override {
        First::removeOnly(d, property, std::move(value));
    }
    void removeOnly(Deviant d, String name, Object value) override {
        First::removeOnly(d, std::move(name), std::move(value));
    }
    void removeOne(Deviant d, ImmutableProperty const& property) override {
        First::removeOne(d, property);
    }
    void removeOne(Deviant d, String name) override { First::removeOne(d, std::move(name)); }
    void removeOneOnly(Deviant d, ImmutableProperty const& property) override {
        First::removeOneOnly(d, property);
    }
    void removeOneOnly(Deviant d, String name) override {
        First::removeOneOnly(d, std::move(name));
    }
    bool hasObjectId(Deviant d) const override { return First::hasObjectId(d); }
    void removeObjectId(Deviant d) override { First::removeObjectId(d); }
    void setObjectId(Deviant d, Integer const& id) override { First::setObjectId(d, id); }
    Integer getObjectId(Deviant d) const override { return First::getObjectId(d); }
    Sequence<ClassObject> getContaineeQOBs(Deviant d) override {
        return First::getContaineeQOBs(d);
    }
    Sequence<ClassObject> getContaineeQOBsWithoutAssociation(Deviant d) const override {
        return First::getContaineeQOBsWithoutAssociation(d);
    }
    bool hasUri(Deviant d) const override { return First::hasUri(d); }
    void removeUri(Deviant d) override { First::removeUri(d); }
    void setUri(Deviant d, String const& uri) override { First::setUri(d, uri); }
    String getUri(Deviant d) const override { return First::getUri(d); }
    bool hasAppliedStereotypeInstances(Deviant d) const override {
        return First::hasAppliedStereotypeInstances(d);
    }
    Sequence<StereotypeObject> getAppliedStereotypeInstances(Deviant d) override {
        return First::getAppliedStereotypeInstances(d);
    }
    Sequence<StereotypeObject> getAppliedStereotypeInstancesWithoutAssociation(Deviant d) override {
        return First::getAppliedStereotypeInstancesWithoutAssociation(d);
    }
    bool hasModelQOB(Deviant d) const override { return First::hasModelQOB(d); }
    void removeModelQOB(Deviant d) override { First::removeModelQOB(d); }
    void setModelQOB(Deviant d, Model const& model) override { First::setModelQOB(d, model); }
    Model getModelQOB(Deviant d) const override { return First::getModelQOB(d); }
    void removeOnlyModelQOB(Deviant d) override { First::removeOnlyModelQOB(d); }
    void setOnlyModelQOB(Deviant d, Model const& model) override {
        First::setOnlyModelQOB(d, model);
    }
    bool hasContainerQOB(Deviant d) const override { return First::hasContainerQOB(d); }
    void removeContainerQOB(Deviant d) override { First::removeContainerQOB(d); }
    void setContainerQOB(Deviant d, ClassObject const& container) override {
        First::setContainerQOB(d, container);
    }
    ClassObject getContainerQOB(Deviant d) const override { return First::getContainerQOB(d); }
    void removeOnlyContainerQOB(Deviant d) override { First::removeOnlyContainerQOB(d); }
    void setOnlyContainerQOB(Deviant d, ClassObject const& container) override {
        First::setOnlyContainerQOB(d, container);
    }
    bool hasRootModel(Deviant d) const override { return First::hasRootModel(d); }
    void removeRootModel(Deviant d) override { First::removeRootModel(d); }
    Model getRootModel(Deviant d) const override { return First::getRootModel(d); }
    void removeOnlyRootModel(Deviant d) override { First::removeOnlyRootModel(d); }
    bool hasExternalId(Deviant d) const override { return First::hasExternalId(d); }
    void removeExternalId(Deviant d) override { First::removeExternalId(d); }
    void setExternalId(Deviant d, String const& id) override { First::setExternalId(d, id); }
    String getExternalId(Deviant d) const override { return First::getExternalId(d); }
    bool hasExternalToolInfos(Deviant d) const override { return First::hasExternalToolInfos(d); }
    Sequence<ExternalToolInfo> getExternalToolInfos(Deviant d) override {
        return First::getExternalToolInfos(d);
    }
    Sequence<ExternalToolInfo> getExternalToolInfosWithoutAssociation(Deviant d) override {
        return First::getExternalToolInfosWithoutAssociation(d);
    }

    // For each shared class the overload of the first base; that of the second would name the same
    // operation.
    using First::getReadDeviantI;
    using First::getWriteDeviantI;
    using Second::getReadDeviantI;
    using Second::getWriteDeviantI;
    ObjectIntf* getReadDeviantI(Deviant d, ObjectIntf const* tag) const override {
        return First::getReadDeviantI(d, tag);
    }
    ObjectIntf* getWriteDeviantI(Deviant d, ObjectIntf const* tag) const override {
        return First::getWriteDeviantI(d, tag);
    }
    ClassObjectIntf* getReadDeviantI(Deviant d, ClassObjectIntf const* tag) const override {
        return First::getReadDeviantI(d, tag);
    }
    ClassObjectIntf* getWriteDeviantI(Deviant d, ClassObjectIntf const* tag) const override {
        return First::getWriteDeviantI(d, tag);
    }
};

} // namespace QOB
