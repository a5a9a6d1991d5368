#pragma once

#include "qob/qob/nsinterface/datatypeintf.h"

namespace QOB {

class Enumeration;
class EnumerationLiteral;
template <class T>
class Sequence;

namespace NSInterface {

/// A data type whose values are its literals, which it owns.
class QOB_EXPORT EnumerationIntf : public InterfaceOf<EnumerationIntf, DataTypeIntf> {
public:
    enum PropertyId : unsigned { OwnedLiteralsId = 1 };
    static constexpr char const* Name = "QOB.Enumeration";
    static constexpr char const* ImmutableName = "QOB.ImmutableEnumeration";
    static IntrospectiveMethods sIntrospectiveMethods;

    virtual Sequence<EnumerationLiteral> getOwnedLiterals(Deviant deviant);
    virtual Sequence<EnumerationLiteral> getOwnedLiteralsWithoutAssociation(Deviant deviant);

    void
    internal_deviationAssign(Deviant deviant, ObjectIntf* source, Deviant sourceDeviant) override;
    void
    internal_assignBlock(Deviant deviant, EnumerationIntf const* source, Deviant sourceDeviant);
};

/// One value of an enumeration.
class QOB_EXPORT EnumerationLiteralIntf
    : public InterfaceOf<EnumerationLiteralIntf, NamedElementIntf> {
public:
    enum PropertyId : unsigned { EnumerationId = 1 };
    static constexpr char const* Name = "QOB.EnumerationLiteral";
    static constexpr char const* ImmutableName = "QOB.ImmutableEnumerationLiteral";
    static IntrospectiveMethods sIntrospectiveMethods;

    /// The enumeration that owns the literal; the other end of its owned literals. A set of one in
    /// another model raises QOB::Exception.
    virtual bool hasEnumeration(Deviant deviant) const;
    virtual void removeEnumeration(Deviant deviant);
    virtual void setEnumeration(Deviant deviant, Enumeration const& enumeration);
    virtual Enumeration getEnumeration(Deviant deviant) const;
    virtual void removeOnlyEnumeration(Deviant deviant);
    virtual void setOnlyEnumeration(Deviant deviant, Enumeration const& enumeration);

    /// The container of a literal is its enumeration: a set of another object raises
    /// QOB::Exception.
    void setContainerQOB(Deviant deviant, ClassObject const& container) override;
    void removeContainerQOB(Deviant deviant) override;
};

} // namespace NSInterface
} // namespace QOB
