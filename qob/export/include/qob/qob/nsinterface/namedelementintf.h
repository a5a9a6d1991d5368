#pragma once

#include "qob/kernel/interfaceof.h"

/// The kernel's own metaclasses, of which metamodels are made. Metamodels are objects of the
/// meta-registry's model: they have states, deviants, transactions and undo like all objects.
namespace QOB::NSInterface {

/// An element of a metamodel that has a name. The name is always there; a new one is empty.
class QOB_EXPORT NamedElementIntf : public InterfaceOf<NamedElementIntf, ClassObjectIntf> {
public:
    enum PropertyId : unsigned { NameId = 1 };
    static constexpr char const* Name = "QOB.NamedElement";
    static IntrospectiveMethods sIntrospectiveMethods;

    virtual bool hasName(Deviant deviant) const;
    /// Does nothing: a name is always there.
    virtual void removeName(Deviant deviant);
    virtual void setName(Deviant deviant, String const& name);
    virtual String getName(Deviant deviant) const;

    void
    internal_deviationAssign(Deviant deviant, ObjectIntf* source, Deviant sourceDeviant) override;
    /// The part of internal_deviationAssign that the properties of this class are.
    void
    internal_assignBlock(Deviant deviant, NamedElementIntf const* source, Deviant sourceDeviant);
};

/// An element that has named elements of its own.
class QOB_EXPORT NamespaceIntf : public InterfaceOf<NamespaceIntf, NamedElementIntf> {};

} // namespace QOB::NSInterface
