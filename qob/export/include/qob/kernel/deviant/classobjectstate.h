#pragma once

#include "qob/kernel/deviant/countedpointer.h"
#include "qob/qob/model.h"
#include "qob/qob/nsinterface/classobjectintf.h"

namespace QOB {

/// What every state holds for its class object.
struct ClassObjectFields {
    CountedPointer<NSInterface::ModelIntf> model;
    CountedPointer<NSInterface::ClassObjectIntf> container;
};

/// The operations of ClassObjectIntf on a state: plain access to ClassObjectFields, which `Leaf`
/// has in a member `fields_`. An id belongs to the root object and never to a state.
template <class Leaf, class Base>
class ClassObjectState : public Base {
    using Methods = NSInterface::ClassObjectIntf;

public:
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

private:
    static void failNoId() { QOB_FAIL("this code should not be hit"); }

    ClassObjectFields& fields() noexcept { return static_cast<Leaf*>(this)->fields_; }
    ClassObjectFields const& fields() const noexcept {
        return static_cast<Leaf const*>(this)->fields_;
    }
};

} // namespace QOB
