#pragma once

#include "qob/qob/nsinterface/namedelementintf.h"

namespace QOB {

class Package;

namespace NSInterface {

/// Any type of a metamodel. It belongs to a package and ends with it.
class QOB_EXPORT TypeIntf : public InterfaceOf<TypeIntf, NamespaceIntf> {
public:
    enum PropertyId : unsigned { PackageId = 1 };
    static constexpr char const* Name = "QOB.Type";
    static IntrospectiveMethods sIntrospectiveMethods;

    /// The package that owns the type; the other end of its owned types. A set of one in another
    /// model raises QOB::Exception.
    virtual bool hasPackage(Deviant deviant) const;
    virtual void removePackage(Deviant deviant);
    virtual void setPackage(Deviant deviant, Package const& package);
    virtual Package getPackage(Deviant deviant) const;
    virtual void removeOnlyPackage(Deviant deviant);
    virtual void setOnlyPackage(Deviant deviant, Package const& package);

    /// The container of a type is its package: a set of another object raises QOB::Exception.
    void setContainerQOB(Deviant deviant, ClassObject const& container) override;
    void removeContainerQOB(Deviant deviant) override;
};

} // namespace NSInterface
} // namespace QOB
