#pragma once

#include "qob/kernel/deviant/countedpointer.h"
#include "qob/kernel/deviant/onewrite.h"
#include "qob/qob/model.h"

#include <type_traits>

namespace QOB {

namespace internal {
/// The deviant of a model's handle, for operations on the model as a whole. Raises if the handle is
/// empty, the model has ended or the deviant is gone.
QOB_EXPORT Deviant accessedDeviant(Model const& model);
/// The same for creating an object: raises if the deviant can't be written, too.
QOB_EXPORT Deviant creatingDeviant(Model const& model);
/// An id that no object of the model has.
QOB_EXPORT Integer newObjectId(Deviant deviant);
/// Enters an object that has just been made in the model of the deviant, and notes there that it is
/// created.
QOB_EXPORT void enterObject(NSInterface::ClassObjectIntf* object, Deviant deviant);
/// Gives the new object its id, and its place in the model's list of objects.
QOB_EXPORT void
listObject(NSInterface::ClassObjectIntf* object, Deviant deviant, Integer const& id);
/// Undoes a creation that failed half-way, as if the object had never been in the deviant: its id
/// is free, and the open transaction has no record of it.
QOB_EXPORT void revokeCreation(NSInterface::ClassObjectIntf* object, Deviant deviant);

template <class Handle, class Impl>
Handle handleOf(Impl* object, Deviant deviant) {
    if constexpr (std::is_constructible_v<Handle, OfClass, Impl*, Deviant>) {
        return {ofClass, object, deviant};
    } else {
        return {object, deviant};
    }
}

/// Creates an object in a deviant that can be written.
template <class Handle, class Impl, class Initialize>
Handle createObjectIn(Model const& model,
                      Deviant deviant,
                      Integer const& id,
                      Initialize const& initialize) {
    OneWrite const write;
    auto* const object = new Impl();
    CountedPointer<Impl> const keep(object);
    NSInterface::ClassObjectIntf* const classObject = object->classObject();
    enterObject(classObject, deviant);
    // Nothing sees the first state yet, so its model is set directly, not by a write.
    static_cast<typename Impl::PrimaryBase*>(object->createFirstState(deviant))
        ->setModelQOB(deviant, model);
    Handle handle = handleOf<Handle>(object, deviant);
    try {
        listObject(classObject, deviant, id);
        initialize(handle);
    } catch (...) {
        revokeCreation(classObject, deviant);
        throw;
    }
    return handle;
}
} // namespace internal

/// Creates an object of root-object class `Impl` in a model and returns a `Handle` to it in the
/// model handle's deviant; the object exists only there. Calls `initialize` with the handle once
/// the object has its first state, to set the values that its class requires, the name last.
///
/// Raises, before anything is created, if the deviant can't be written. If the id or an initial
/// value is refused, the creation is undone and the exception is passed on.
template <class Handle, class Impl, class Initialize>
Handle createObject(Model const& model, Integer const& id, Initialize const& initialize) {
    return internal::createObjectIn<Handle, Impl>(
        model, internal::creatingDeviant(model), id, initialize);
}

template <class Handle, class Impl>
Handle createObject(Model const& model, Integer const& id) {
    return createObject<Handle, Impl>(model, id, [](Handle const&) {});
}

/// The same with an id that the model chooses.
template <class Handle, class Impl, class Initialize>
Handle createObject(Model const& model, Initialize const& initialize) {
    Deviant const deviant = internal::creatingDeviant(model);
    return internal::createObjectIn<Handle, Impl>(
        model, deviant, internal::newObjectId(deviant), initialize);
}

} // namespace QOB
