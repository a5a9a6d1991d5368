#include "ownercheck.h"
#include "qob/qob/property.h"

namespace QOB::NSInterface {

// A state is bound to nothing; a root object is a BoundProperty.

void PropertyIntf::internal_bind(PropertyBinding const&) {
}
PropertyBinding PropertyIntf::internal_binding() const {
    return {};
}

void PropertyIntf::setContainerQOB(Deviant deviant, ClassObject const& container) {
    setOwningClass(
        deviant,
        QOB::internal::ownerOf<Class>(container, "The container of a property is a class."));
}

} // namespace QOB::NSInterface
