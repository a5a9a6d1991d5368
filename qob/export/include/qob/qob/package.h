#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/namedelement.h"
#include "qob/qob/nsinterface/packageintf.h"
#include "qob/qob/type.h"

namespace QOB {
class ImmutablePackage;
class Package;
} // namespace QOB

QOB_HANDLES(QOB::NSInterface::PackageIntf,
            QOB::ImmutablePackage,
            QOB::Package,
            "qob/export/include/qob/qob/package.h")

namespace QOB {

/// A package of a metamodel, for reading.
class ImmutablePackage : public NamedElementReading<ReadHandle<NSInterface::PackageIntf>> {
public:
    using NamedElementReading::NamedElementReading;

    bool hasParent() const { return (*this)->hasParent(getDeviant()); }
    Package getParent() const;
    ImmutableSequence<ImmutablePackage> getNestedPackages() const;
    ImmutableSequence<ImmutableType> getOwnedTypes() const;
};

/// A package of a metamodel.
class Package : public NamedElementWriting<WriteHandle<ImmutablePackage>> {
public:
    using NamedElementWriting::NamedElementWriting;

    /// A new package in the model and in the deviant of its handle, with the next free id.
    static QOB_EXPORT Package create(Model const& model);
    static QOB_EXPORT Package create(Model const& model, String const& name);
    /// With an id that the caller gives.
    static QOB_EXPORT Package createWithId(Model const& model, Integer const& id);

    void removeParent() const { (*this)->removeParent(getDeviant()); }
    void setParent(Package const& parent) const { (*this)->setParent(getDeviant(), parent); }
    void removeOnlyParent() const { (*this)->removeOnlyParent(getDeviant()); }
    void setOnlyParent(Package const& parent) const {
        (*this)->setOnlyParent(getDeviant(), parent);
    }
    Sequence<Package> getNestedPackages() const { return (*this)->getNestedPackages(getDeviant()); }
    Sequence<Package> getNestedPackagesWithoutAssociation() const {
        return (*this)->getNestedPackagesWithoutAssociation(getDeviant());
    }
    Sequence<Type> getOwnedTypes() const { return (*this)->getOwnedTypes(getDeviant()); }
    Sequence<Type> getOwnedTypesWithoutAssociation() const {
        return (*this)->getOwnedTypesWithoutAssociation(getDeviant());
    }
};

inline Package ImmutablePackage::getParent() const {
    return (*this)->getParent(getDeviant());
}
// Read only, through views that could write.
inline ImmutableSequence<ImmutablePackage> ImmutablePackage::getNestedPackages() const {
    return access()->getNestedPackagesWithoutAssociation(getDeviant());
}
inline ImmutableSequence<ImmutableType> ImmutablePackage::getOwnedTypes() const {
    return access()->getOwnedTypesWithoutAssociation(getDeviant());
}

template <class Base>
Package TypeReading<Base>::getPackage() const {
    return (*this)->getPackage(this->getDeviant());
}

} // namespace QOB

QOB_SEQUENCE_NAMES(QOB::Type, "QOB.", "Type")
QOB_SEQUENCE_NAMES(QOB::Package, "QOB.", "Package")
