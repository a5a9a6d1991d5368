#include "qob/kernel/meta/metaclassof.h"

namespace QOB {

ImmutableClass metaClassOf(IntrospectiveMethods const& methods) {
    // The record of a data type has no functions; what else has a live type is a class.
    if (methods.meta == nullptr || methods.getSingleValued == nullptr) {
        return {};
    }
    return {ofClass,
            static_cast<NSInterface::ClassIntf*>(methods.meta),
            internal::rootDeviantOf(methods.meta)};
}

} // namespace QOB
