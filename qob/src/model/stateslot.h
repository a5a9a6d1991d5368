#pragma once

#include "qob/qob/nsinterface/objectintf.h"

namespace QOB::internal {

/// What a deviant holds for one object.
struct StateSlot {
    NSInterface::ObjectIntf* state = nullptr;
    /// The object was destroyed here, as opposed to never having been seen here.
    bool destroyedHere = false;
};

} // namespace QOB::internal
