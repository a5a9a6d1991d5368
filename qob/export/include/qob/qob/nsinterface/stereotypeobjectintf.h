#pragma once

#include "qob/kernel/interfaceof.h"

namespace QOB::NSInterface {

/// A stereotype as it is applied to one object: the stereotype's name and, if it has one, a value.
/// The object that it is applied to is its container, and ends with what is applied to it. A tag of
/// a metamodel's element is one of these.
class QOB_EXPORT StereotypeObjectIntf : public InterfaceOf<StereotypeObjectIntf, ClassObjectIntf> {
public:
    enum PropertyId : unsigned { StereotypeNameId = 1, ValueId = 2 };
    static constexpr char const* Name = "QOB.StereotypeObject";
    static constexpr char const* ImmutableName = "QOB.ImmutableStereotypeObject";
    static IntrospectiveMethods sIntrospectiveMethods;

    ImmutableClass getMetaClass(Deviant deviant) const override;

    /// The name is always there; a new one is empty.
    virtual bool hasStereotypeName(Deviant deviant) const;
    /// Does nothing: a name is always there.
    virtual void removeStereotypeName(Deviant deviant);
    virtual void setStereotypeName(Deviant deviant, String const& name);
    virtual String getStereotypeName(Deviant deviant) const;

    virtual bool hasValue(Deviant deviant) const;
    virtual void removeValue(Deviant deviant);
    virtual void setValue(Deviant deviant, String const& value);
    virtual String getValue(Deviant deviant) const;

    /// Sets the object to which the stereotype is applied, at both ends.
    void setContainerQOB(Deviant deviant, ClassObject const& container) override;
    void removeContainerQOB(Deviant deviant) override;
    /// Takes the stereotype from the object that had it; the new one's list is left to the caller.
    void setOnlyContainerQOB(Deviant deviant, ClassObject const& container) override;

    void
    internal_deviationAssign(Deviant deviant, ObjectIntf* source, Deviant sourceDeviant) override;
    void internal_assignBlock(Deviant deviant,
                              StereotypeObjectIntf const* source,
                              Deviant sourceDeviant);
};

} // namespace QOB::NSInterface
