#pragma once

#include "qob/qob/assert.h"
#include "qob/qob/object.h"

namespace QOB::internal {

/// The container as the class of the only objects that may own the object; empty for an empty one.
/// Raises `refusal` for an object of another class.
template <class Owner>
Owner ownerOf(ClassObject const& container, char const* refusal) {
    Owner owner(container);
    if (!owner.isValid() && container.isValid()) {
        QOB_FAIL("%s", refusal);
    }
    return owner;
}

} // namespace QOB::internal
