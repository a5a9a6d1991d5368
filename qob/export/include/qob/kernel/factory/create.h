#pragma once

#include "qob/kernel/deviant/countedpointer.h"
#include "qob/qob/model.h"

namespace QOB {

namespace internal {
/// The deviant of a model's handle, for what acts on the model as a whole. Raises if the handle is
/// empty, the model is dead or the deviant is gone.
QOB_EXPORT Deviant accessedDeviant(Model const& model);
/// Takes a creation back that was refused half-way: in the deviant the object has never been, its
/// id is free, and the open transaction has recorded nothing of it.
QOB_EXPORT void revokeCreation(NSInterface::ClassObjectIntf* object, Deviant deviant);
} // namespace internal

/// Makes a new object of root-object class `Impl` in a model and returns the handle `Handle` on it,
/// in the model handle's deviant: only there does the object exist. `initialize` gets the handle
/// once the object has its first state, to set what its class requires, its name last.
///
/// Raises, before anything is made, if the deviant can't be written. What refuses the id or a first
/// value is passed on once no trace is left of the object.
template <class Handle, class Impl, class Initialize>
Handle createObject(Model const& model, Integer const& id, Initialize const& initialize) {
    Deviant const deviant = internal::accessedDeviant(model);
    deviant.assertWritable(nullptr);
    auto* const object = new Impl();
    CountedPointer<Impl> const keep(object);
    object->enterModel(deviant);
    deviant.markObjectCreated(object->classObject());
    // The first state is not yet seen by anyone: its model is set without the ways of a write.
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

/// With an id that the model chooses.
template <class Handle, class Impl, class Initialize>
Handle createObject(Model const& model, Initialize const& initialize) {
    Deviant const deviant = internal::accessedDeviant(model);
    deviant.assertWritable(nullptr);
    return createObject<Handle, Impl>(model, model->allocateObjectId(deviant), initialize);
}

} // namespace QOB
