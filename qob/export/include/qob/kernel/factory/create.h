#pragma once

#include "qob/kernel/deviant/countedpointer.h"
#include "qob/kernel/deviant/onewrite.h"
#include "qob/qob/model.h"

namespace QOB {

namespace internal {
/// The deviant of a model's handle, for operations on the model as a whole. Raises if the handle is
/// empty, the model has ended or the deviant is gone.
QOB_EXPORT Deviant accessedDeviant(Model const& model);
/// Undoes a creation that failed half-way, as if the object had never been in the deviant: its id
/// is free, and the open transaction has no record of it.
QOB_EXPORT void revokeCreation(NSInterface::ClassObjectIntf* object, Deviant deviant);
} // namespace internal

/// Creates an object of root-object class `Impl` in a model and returns a `Handle` to it in the
/// model handle's deviant; the object exists only there. Calls `initialize` with the handle once
/// the object has its first state, to set the values that its class requires, the name last.
///
/// Raises, before anything is created, if the deviant can't be written. If the id or an initial
/// value is refused, the creation is undone and the exception is passed on.
template <class Handle, class Impl, class Initialize>
Handle createObject(Model const& model, Integer const& id, Initialize const& initialize) {
    Deviant const deviant = internal::accessedDeviant(model);
    deviant.assertWritable(nullptr);
    internal::OneWrite const write;
    auto* const object = new Impl();
    CountedPointer<Impl> const keep(object);
    object->enterModel(deviant);
    deviant.markObjectCreated(object->classObject());
    // Nothing sees the first state yet, so its model is set directly, not by a write.
    static_cast<typename Impl::PrimaryBase*>(object->internal_createDeviation(deviant))
        ->setModelQOB(deviant, model);
    Handle handle(object, deviant);
    try {
        model->bindObjectId(deviant, ClassObject(object->classObject(), deviant), id);
        model->internal_addRootObject(deviant, object->classObject());
        initialize(handle);
    } catch (...) {
        internal::revokeCreation(object->classObject(), deviant);
        throw;
    }
    return handle;
}

template <class Handle, class Impl>
Handle createObject(Model const& model, Integer const& id) {
    return createObject<Handle, Impl>(model, id, [](Handle const&) {});
}

/// The same with an id that the model chooses.
template <class Handle, class Impl, class Initialize>
Handle createObject(Model const& model, Initialize const& initialize) {
    Deviant const deviant = internal::accessedDeviant(model);
    deviant.assertWritable(nullptr);
    return createObject<Handle, Impl>(model, model->allocateObjectId(deviant), initialize);
}

} // namespace QOB
