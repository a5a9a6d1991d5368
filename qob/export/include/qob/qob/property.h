#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/namedelement.h"
#include "qob/qob/nsinterface/propertyintf.h"

namespace QOB {

/// A property of a metaclass, for reading.
class ImmutableProperty : public NamedElementReading<ReadHandle<NSInterface::PropertyIntf>> {
public:
    using NamedElementReading::NamedElementReading;
};

/// A property of a metaclass.
class Property : public NamedElementWriting<WriteHandle<ImmutableProperty>> {
public:
    using NamedElementWriting::NamedElementWriting;
};

} // namespace QOB

QOB_SEQUENCE_NAMES(QOB::Property, "QOB.", "Property")
