#pragma once

#include "qob/qob/deviant.h"
#include "qob/qob/nsinterface/objectintf.h"
#include "qob/qob/referencecounting.h"

namespace QOB::internal {

/// What every access to a model object begins with: its state in the root, and the root itself. It
/// lies in the object at a distance that the object's first base knows (rootPartOf).
struct RootPart {
    NSInterface::ObjectIntf* rootState_ = nullptr;
    Deviant rootDeviant_;
};

/// What getRootDeviant() returns, mostly without the call.
inline Deviant rootDeviantOf(NSInterface::ObjectIntf const* object) {
    if (RootPart const* const part = rootPartOf(object)) {
        return part->rootDeviant_;
    }
    return isInNoModel(object) ? Deviant() : object->getRootDeviant();
}

/// What deviant_isValid() returns, without the call for an object that is seen in its root.
inline bool isThere(NSInterface::ObjectIntf const* object, Deviant deviant) {
    RootPart const* const part = rootPartOf(object);
    return (part != nullptr && part->rootDeviant_ == deviant && isRealState(part->rootState_)) ||
           object->deviant_isValid(deviant);
}

} // namespace QOB::internal
