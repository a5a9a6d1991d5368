#pragma once

#include "qob/qob/nsinterface/namedelementintf.h"

namespace QOB {

class Package;
class Type;
template <class T>
class Sequence;

namespace NSInterface {

/// A package of a metamodel: it owns its types and its nested packages, and ends with them.
class QOB_EXPORT PackageIntf : public InterfaceOf<PackageIntf, NamespaceIntf> {
public:
    enum PropertyId : unsigned { UriId = 1, ParentId = 2, NestedPackagesId = 3, OwnedTypesId = 4 };
    static constexpr char const* Name = "QOB.Package";
    static constexpr char const* ImmutableName = "QOB.ImmutablePackage";
    static IntrospectiveMethods sIntrospectiveMethods;

    /// The URI that the package was given; it doesn't follow from the model's.
    bool hasUri(Deviant deviant) const override;
    void removeUri(Deviant deviant) override;
    void setUri(Deviant deviant, String const& uri) override;
    String getUri(Deviant deviant) const override;

    /// The package that owns this one; the other end of its nested packages. A set raises
    /// QOB::Exception if the parent lies within this package or in another model.
    virtual bool hasParent(Deviant deviant) const;
    virtual void removeParent(Deviant deviant);
    virtual void setParent(Deviant deviant, Package const& parent);
    virtual Package getParent(Deviant deviant) const;
    virtual void removeOnlyParent(Deviant deviant);
    virtual void setOnlyParent(Deviant deviant, Package const& parent);

    virtual Sequence<Package> getNestedPackages(Deviant deviant);
    virtual Sequence<Package> getNestedPackagesWithoutAssociation(Deviant deviant);
    virtual Sequence<Type> getOwnedTypes(Deviant deviant);
    virtual Sequence<Type> getOwnedTypesWithoutAssociation(Deviant deviant);

    /// The container of a package is its parent, or its model if it has none: a set of another
    /// object raises QOB::Exception.
    void setContainerQOB(Deviant deviant, ClassObject const& container) override;
    void removeContainerQOB(Deviant deviant) override;
    void
    internal_deviationAssign(Deviant deviant, ObjectIntf* source, Deviant sourceDeviant) override;
    void internal_assignBlock(Deviant deviant, PackageIntf const* source, Deviant sourceDeviant);

    /// This object as a base; the argument only picks the overload.
    ObjectIntf* upcast_helper(ObjectIntf const*) { return this; }
    ObjectIntf const* upcast_helper(ObjectIntf const*) const { return this; }
};

} // namespace NSInterface
} // namespace QOB
