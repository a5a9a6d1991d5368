#include "propertyindex.h"
#include "qob/qob/class.h"

namespace QOB::NSInterface {

// A state is bound to nothing; a root object is a BoundClass.

void ClassIntf::internal_bind(ClassBinding const&) {
}
ClassBinding ClassIntf::internal_binding() const {
    return {};
}
QOB::internal::PropertyIndex const& ClassIntf::internal_propertyIndex() const {
    static auto const* const empty = new QOB::internal::PropertyIndex(ClassBinding());
    return *empty;
}

} // namespace QOB::NSInterface
