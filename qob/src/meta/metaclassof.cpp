#include "qob/kernel/meta/metaclassof.h"

#include "qob/qob/domainregistry.h"

namespace QOB {

ImmutableClass metaClassOf(IntrospectiveMethods const& methods) {
    if (methods.meta == nullptr) {
        return {};
    }
    return {castObject<NSInterface::ClassIntf>(methods.meta), methods.meta->getRootDeviant()};
}

} // namespace QOB
