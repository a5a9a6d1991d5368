#pragma once

#include "qob/qob/nsinterface/classintf.h"
#include "qob/qob/type.h"

namespace QOB {

/// A metaclass, for reading.
class ImmutableClass : public TypeReading<ReadHandle<NSInterface::ClassIntf>> {
public:
    using TypeReading::TypeReading;
};

/// A metaclass.
class Class : public TypeWriting<WriteHandle<ImmutableClass>> {
public:
    using TypeWriting::TypeWriting;
};

template <class Base>
ImmutableClass ClassObjectReading<Base>::getMetaClass() const {
    return (*this)->getMetaClass(this->getDeviant());
}

} // namespace QOB

QOB_SEQUENCE_NAMES(QOB::Class, "QOB.", "Class")
