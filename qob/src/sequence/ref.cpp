#include "qob/kernel/containers/sequence/ref.h"

#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/nsinterface/valueobjectintf.h"

namespace QOB::Generic {

void countObject(void* data, bool up) {
    if (data == nullptr) {
        return;
    }
    ReferenceCountingIntf const* const object =
        static_cast<NSInterface::ClassObjectIntf const*>(data);
    if (up) {
        internal::retain(object);
    } else {
        internal::release(object);
    }
}

bool equalObjects(Object const& a, Object const& b) {
    if (a == b) {
        return true;
    }
    ValueObject const first(a);
    ValueObject const second(b);
    return first.get() != nullptr && second.get() != nullptr &&
           first.getValueTypeName() == second.getValueTypeName() && a.toString() == b.toString();
}

template struct ValueBlock<Integer>;
template struct ValueBlock<Real>;
template struct ValueBlock<String>;
template struct ValueBlock<ExternalToolInfo>;
template struct ValueBlock<Object>;

} // namespace QOB::Generic
