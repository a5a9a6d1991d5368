#pragma once

#include "qob/qob/class.h" // IWYU pragma: keep
#include "qob/qob/type.h"  // IWYU pragma: keep

/// The operations of every handle that give a live class or type: they need its handle.
namespace QOB {

template <class Base>
ImmutableType ObjectReading<Base>::getMetaType() const {
    return (*this)->getMetaType(this->getDeviant());
}

template <class Base>
ImmutableClass ClassObjectReading<Base>::getMetaClass() const {
    return (*this)->getMetaClass(this->getDeviant());
}

} // namespace QOB
