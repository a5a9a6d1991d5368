#include "qob/kernel/property/reference.h"

#include "qob/kernel/deviant/sparseproperties.h"

namespace QOB::property {

void exchangeForeign(NSInterface::ClassObjectIntf const* object,
                     NSInterface::ClassObjectIntf* state,
                     NSInterface::ObjectIntf const* old,
                     NSInterface::ObjectIntf* value) {
    using QOB::internal::SparseProperties;
    if (value != nullptr && value->getRootDeviant() != object->getRootDeviant()) {
        SparseProperties::addForeign(state, object, value);
    }
    if (old != nullptr) {
        SparseProperties::removeForeign(state, old);
    }
}

} // namespace QOB::property
