#pragma once

#include "qob/kernel/deviant/destruction.h"
#include "qob/kernel/deviant/deviations.h"
#include "qob/kernel/deviant/objectmemory.h"
#include "qob/kernel/deviant/onewrite.h"
#include "qob/qob/object.h"

#include <cstddef>
#include <vector>

namespace QOB {

namespace internal {
/// Checks that don't depend on the class.
[[noreturn]] QOB_EXPORT void failNoRootDeviant(char const* implementationName);

/// Appends the stereotypes applied to the object in the deviant, which every object contains. Does
/// nothing for an object that doesn't exist there.
QOB_EXPORT void appendStereotypeInstances(NSInterface::ClassObjectIntf* object,
                                          Deviant deviant,
                                          std::vector<ClassObject>& contained);
/// For an object that dies after its model has ended.
QOB_EXPORT void forgetOutliving(NSInterface::ClassObjectIntf* object) noexcept;
} // namespace internal

/// The part of a model object that exists once, whatever the number of deviants: its identity (id,
/// root deviant, reference count) and the place of its states. `Intf` is its interface class,
/// `StateType` the class of its states. A concrete class derives from it and passes itself:
///
///     class XImpl final : public RootObject<XIntf, XDeviantImpl> { ... };
///
/// Handles count in place; the object is deleted with the last of them.
template <class Intf, class StateType>
class RootObject : public Intf, public Deviations<StateType> {
    using Base = Deviations<StateType>;

public:
    using ObjectIntf = NSInterface::ObjectIntf;
    using PrimaryBase = typename Intf::PrimaryBase;
    using Base::isValid;

    static void* operator new(std::size_t size) { return internal::allocateObject(size); }
    static void operator delete(void* memory) noexcept { internal::freeObject(memory); }

    void incRef() const override { ++count(); }
    void decRef() const override { internal::releaseCounted(count(), counted()); }
    int numRef() const override { return count(); }

    void internal_disconnect(Deviant deviant) override {
        internal::disconnect(*this, deviant, &partsOf, [](DeviationsBase&, Deviant) {});
    }
    void internal_discard(Deviant deviant, bool detach) override {
        internal::discard(*this, deviant, detach, &partsOf);
    }
    void destroy(Deviant deviant) override {
        this->requireOwn(deviant);
        deviant.assertWritable(classObject());
        if (deviant_isValid(deviant)) {
            internal::OneWrite const write;
            classObject()->internal_disconnect(deviant);
            classObject()->internal_discard(deviant, true);
        }
    }
    bool deviant_isValid(Deviant deviant) const override { return Base::isValid(deviant); }
    void deviant_destroyState(ObjectIntf* state) override {
        if (isRealState(state)) {
            Base::destroyState(Base::requireOwnState(state));
        }
    }
    void deviant_markModelDestroyed() override {
        ObjectIntf* const state = this->rootState_;
        this->rootState_ = static_cast<ObjectIntf*>(Deviant::ModelDestroyed);
        this->rootDeviant_ = Deviant();
        deviant_destroyState(state);
    }
    void deviant_commitTransientState(Deviant deviant) override {
        if (deviant.isRootDeviant()) {
            this->requireOwn(deviant);
            Base::commit(deviant, Base::Operations);
        }
    }
    ObjectIntf* deviant_getCopyOfDeviation(Deviant deviant) override {
        ObjectIntf* const state = Base::stateOf(deviant);
        return isRealState(state) ? Base::copyState(state) : state;
    }
    ObjectIntf* internal_getDeviation(Deviant deviant) override { return Base::stateOf(deviant); }
    void internal_setDeviation(Deviant deviant, ObjectIntf* state) override {
        this->requireOwn(deviant);
        ObjectIntf* const own = Base::requireOwnState(state);
        ObjectIntf* const old = Base::stateOf(deviant);
        if (own != old) {
            Base::setStateOf(deviant, own);
            deviant_destroyState(old);
        }
    }
    ObjectIntf* internal_createDeviation(Deviant deviant) override {
        this->requireOwn(deviant);
        if (isRealState(Base::stateOf(deviant))) {
            return nullptr;
        }
        ObjectIntf* const state = Base::createState();
        Base::setStateOf(deviant, state);
        return state;
    }
    void internal_destroyDeviation(Deviant deviant) override {
        this->requireOwn(deviant);
        ObjectIntf* const old = Base::stateOf(deviant);
        Base::setStateOf(deviant, static_cast<ObjectIntf*>(Deviant::InvalidObject));
        deviant_destroyState(old);
    }
    Deviant getRootDeviant() const override { return this->rootDeviant_; }
    /// Objects can't be read from text: always returns the box of an invalid text.
    ImmutableObject convertFromString(Deviant, String) override { return Object(String()); }

    bool hasObjectId(Deviant) const override { return true; }
    void removeObjectId(Deviant deviant) override { setObjectId(deviant, Integer()); }
    void setObjectId(Deviant deviant, Integer const& id) override {
        this->checkAccess(deviant);
        this->objectId_ = id;
    }
    Integer getObjectId(Deviant) const override { return this->objectId_; }

    /// The object as the kernel knows it.
    NSInterface::ClassObjectIntf* classObject() const noexcept {
        return const_cast<PrimaryBase*>(
            static_cast<PrimaryBase const*>(static_cast<Intf const*>(this)));
    }

    /// Adds the object to the model of `deviant`. Call it once, right after construction. Raises if
    /// the deviant is gone.
    void enterModel(Deviant deviant) {
        this->checkAccess(deviant);
        this->rootDeviant_ = deviant.getRootDeviant();
        this->rootDeviant_.addObjectToModel(classObject());
    }
    /// The first state in the deviant, with default values, of an object that has just been made.
    StateType* createFirstState(Deviant deviant) {
        StateType* const state = Base::createTypedState();
        Base::setStateOf(deviant, Base::untyped(state));
        return state;
    }

protected:
    /// The stereotypes that are applied in the deviant; none if the object doesn't exist there.
    std::vector<ClassObject> stereotypes(Deviant deviant) const {
        std::vector<ClassObject> found;
        if (isValid(deviant) && this->readState(deviant)->hasAppliedStereotypeInstances(deviant)) {
            internal::appendStereotypeInstances(classObject(), deviant, found);
        }
        return found;
    }
    static std::vector<ClassObject> partsOf(DeviationsBase& object, Deviant deviant) {
        return static_cast<RootObject&>(object).stereotypes(deviant);
    }

    RootObject() {
        IntegerIncDec const guard(&count());
        this->PrimaryBase::countInPlace();
        this->PrimaryBase::setRootPart(this);
        this->belongTo(classObject());
    }
    ~RootObject() override {
        IntegerIncDec const guard(&count());
        if (this->rootDeviant_.isNotNull()) {
            this->rootDeviant_.removeObjectFromModel(classObject());
        } else if (this->rootState_ == Deviant::ModelDestroyed) {
            internal::forgetOutliving(classObject());
        }
        if (isRealState(this->rootState_)) {
            Base::destroyState(this->rootState_);
        }
        this->rootState_ = nullptr;
    }

    /// The first state of a new object in the root deviant, with default values. Owned by the
    /// caller.
    static StateType* createRootDeviation(Deviant deviant, char const* implementationName) {
        if (!deviant.isRootDeviant()) {
            internal::failNoRootDeviant(implementationName);
        }
        return new StateType();
    }

    ReferenceCountingIntf const* counted() const noexcept {
        return static_cast<PrimaryBase const*>(static_cast<Intf const*>(this));
    }
    int& count() const noexcept { return this->PrimaryBase::referenceCount_; }
};

} // namespace QOB
