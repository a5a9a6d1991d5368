#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/kernel/deviant/countedpointer.h"
#include "qob/kernel/deviant/objectmemory.h"
#include "qob/kernel/deviant/sparseproperties.h"
#include "qob/kernel/upcast.h"
#include "qob/qob/model.h"
#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/stereotypeobject.h"

#include <cstddef>

namespace QOB {

/// The fields that every state of a class object has.
struct ClassObjectFields {
    CountedPointer<NSInterface::ModelIntf> model;
    CountedPointer<NSInterface::ClassObjectIntf> container;
};

/// The operations of ClassObjectIntf on a state: plain access to the ClassObjectFields in the
/// member `fields_` of `Leaf`, and to the tables of sparse properties. A state never has an id;
/// only the root object does.
template <class Leaf, class Base>
class ClassObjectState : public Base {
    using Sparse = internal::SparseProperties;

public:
    static void* operator new(std::size_t size) { return internal::allocateObject(size); }
    static void operator delete(void* memory) noexcept { internal::freeObject(memory); }

    bool hasObjectId(Deviant) const override { return failNoId(), false; }
    void removeObjectId(Deviant) override { failNoId(); }
    void setObjectId(Deviant, Integer const&) override { failNoId(); }
    Integer getObjectId(Deviant) const override { return failNoId(), Integer(); }

    bool hasModelQOB(Deviant) const override { return bool(fields().model); }
    void removeModelQOB(Deviant) override { fields().model = {}; }
    void setModelQOB(Deviant, Model const& model) override {
        fields().model = CountedPointer(model.get());
    }
    Model getModelQOB(Deviant deviant) const override {
        return Model(fields().model.get(), deviant);
    }
    void removeOnlyModelQOB(Deviant) override { fields().model = {}; }
    void setOnlyModelQOB(Deviant deviant, Model const& model) override {
        ClassObjectState::setModelQOB(deviant, model);
    }

    bool hasContainerQOB(Deviant) const override { return bool(fields().container); }
    void removeContainerQOB(Deviant) override { fields().container = {}; }
    void setContainerQOB(Deviant, ClassObject const& container) override {
        fields().container = CountedPointer(container.get());
    }
    ClassObject getContainerQOB(Deviant deviant) const override {
        return ClassObject(fields().container.get(), deviant);
    }
    void removeOnlyContainerQOB(Deviant) override { fields().container = {}; }
    void setOnlyContainerQOB(Deviant deviant, ClassObject const& container) override {
        ClassObjectState::setContainerQOB(deviant, container);
    }

    bool hasRootModel(Deviant) const override { return bool(fields().model); }
    void removeRootModel(Deviant) override { fields().model = {}; }
    Model getRootModel(Deviant deviant) const override {
        return Model(fields().model.get(), deviant);
    }
    void removeOnlyRootModel(Deviant) override { fields().model = {}; }

    bool hasAppliedStereotypeInstances(Deviant) const override {
        return Sparse::hasStereotypeInstances(state());
    }
    Sequence<StereotypeObject> getAppliedStereotypeInstances(Deviant deviant) override {
        return Sparse::stereotypeInstances(state(), deviant);
    }
    Sequence<StereotypeObject>
    getAppliedStereotypeInstancesWithoutAssociation(Deviant deviant) override {
        return Sparse::writableStereotypeInstances(state(), deviant);
    }

    bool hasExternalId(Deviant) const override { return Sparse::hasExternalId(state()); }
    void removeExternalId(Deviant) override { Sparse::setExternalId(state(), String()); }
    void setExternalId(Deviant, String const& id) override { Sparse::setExternalId(state(), id); }
    String getExternalId(Deviant) const override { return Sparse::externalId(state()); }

    bool hasExternalToolInfos(Deviant) const override { return Sparse::hasToolInfos(state()); }
    Sequence<ExternalToolInfo> getExternalToolInfos(Deviant deviant) override {
        return Sparse::toolInfos(state(), deviant);
    }
    Sequence<ExternalToolInfo> getExternalToolInfosWithoutAssociation(Deviant deviant) override {
        return Sparse::writableToolInfos(state(), deviant);
    }

private:
    NSInterface::ClassObjectIntf* state() noexcept {
        return upcast<NSInterface::ClassObjectIntf>(static_cast<Base*>(this));
    }
    NSInterface::ClassObjectIntf const* state() const noexcept {
        return upcast<NSInterface::ClassObjectIntf>(static_cast<Base const*>(this));
    }

    [[noreturn]] static void failNoId() {
        internal::failAt("qob/export/include/qob/kernel/deviant/classobjectstate.h",
                         __LINE__,
                         "this code should not be hit");
    }

    ClassObjectFields& fields() noexcept { return static_cast<Leaf*>(this)->fields_; }
    ClassObjectFields const& fields() const noexcept {
        return static_cast<Leaf const*>(this)->fields_;
    }
};

} // namespace QOB
