#pragma once

#include "qob/qob/model.h"
#include "qob/qob/nsinterface/namedelementintf.h"

namespace QOB {
class ImmutableNamedElement;
class NamedElement;
class ImmutableNamespace;
class Namespace;
} // namespace QOB

QOB_HANDLES(QOB::NSInterface::NamedElementIntf,
            QOB::ImmutableNamedElement,
            QOB::NamedElement,
            "qob/export/include/qob/qob/namedelement.h")
QOB_HANDLES(QOB::NSInterface::NamespaceIntf,
            QOB::ImmutableNamespace,
            QOB::Namespace,
            "qob/export/include/qob/qob/namedelement.h")

namespace QOB {

/// What every handle on a named element offers for reading; `Base` is a ReadHandle.
template <class Base>
class NamedElementReading : public ClassObjectReading<Base> {
public:
    using ClassObjectReading<Base>::ClassObjectReading;

    bool hasName() const { return (*this)->hasName(this->getDeviant()); }
    String getName() const { return (*this)->getName(this->getDeviant()); }
};

/// The same for writing; `Base` is a WriteHandle.
template <class Base>
class NamedElementWriting : public ClassObjectWriting<Base> {
public:
    using ClassObjectWriting<Base>::ClassObjectWriting;

    void removeName() const { (*this)->removeName(this->getDeviant()); }
    void setName(String const& name) const { (*this)->setName(this->getDeviant(), name); }
};

/// An element of a metamodel that has a name, for reading.
class ImmutableNamedElement
    : public NamedElementReading<ReadHandle<NSInterface::NamedElementIntf>> {
public:
    using NamedElementReading::NamedElementReading;
};

/// An element of a metamodel that has a name.
class NamedElement : public NamedElementWriting<WriteHandle<ImmutableNamedElement>> {
public:
    using NamedElementWriting::NamedElementWriting;
};

/// An element that has named elements of its own, for reading.
class ImmutableNamespace : public NamedElementReading<ReadHandle<NSInterface::NamespaceIntf>> {
public:
    using NamedElementReading::NamedElementReading;
};

/// An element that has named elements of its own.
class Namespace : public NamedElementWriting<WriteHandle<ImmutableNamespace>> {
public:
    using NamedElementWriting::NamedElementWriting;
};

} // namespace QOB
