#pragma once

#include "qob/qob/namedelement.h"
#include "qob/qob/nsinterface/typeintf.h"

namespace QOB {
class ImmutableType;
class Type;
} // namespace QOB

QOB_HANDLES(QOB::NSInterface::TypeIntf,
            QOB::ImmutableType,
            QOB::Type,
            "qob/export/include/qob/qob/type.h")

namespace QOB {

class Package;

/// What every handle on a type offers for reading; `Base` is a ReadHandle.
template <class Base>
class TypeReading : public NamedElementReading<Base> {
public:
    using NamedElementReading<Base>::NamedElementReading;

    bool hasPackage() const { return (*this)->hasPackage(this->getDeviant()); }
    Package getPackage() const;
};

/// The same for writing; `Base` is a WriteHandle.
template <class Base>
class TypeWriting : public NamedElementWriting<Base> {
public:
    using NamedElementWriting<Base>::NamedElementWriting;

    void removePackage() const { (*this)->removePackage(this->getDeviant()); }
    void setPackage(Package const& package) const {
        (*this)->setPackage(this->getDeviant(), package);
    }
    void removeOnlyPackage() const { (*this)->removeOnlyPackage(this->getDeviant()); }
    void setOnlyPackage(Package const& package) const {
        (*this)->setOnlyPackage(this->getDeviant(), package);
    }
};

/// Any type of a metamodel, for reading.
class ImmutableType : public TypeReading<ReadHandle<NSInterface::TypeIntf>> {
public:
    using TypeReading::TypeReading;
};

/// Any type of a metamodel.
class Type : public TypeWriting<WriteHandle<ImmutableType>> {
public:
    using TypeWriting::TypeWriting;
};

template <class Base>
ImmutableType ObjectReading<Base>::getMetaType() const {
    return (*this)->getMetaType(this->getDeviant());
}

} // namespace QOB

#include "qob/qob/package.h" // IWYU pragma: keep
