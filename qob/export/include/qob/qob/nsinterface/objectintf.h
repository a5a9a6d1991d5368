#pragma once

#include "qob/qob/deviant.h"
#include "qob/qob/export.h"
#include "qob/qob/referencecounting.h"
#include "qob/qob/string.h"

namespace QOB {

class Object;
class ImmutableObject;
class ImmutableType;

namespace NSInterface {

/// Anything with a kernel identity. The bodies here are those of a state, which isn't counted, has
/// no states of its own and belongs to no deviant. Root objects override them.
class QOB_EXPORT ObjectIntf : public ReferenceCountingIntf {
public:
    using VisitationDomain = QOB::VisitationDomain;
    using VisitationBases = CooperativeVisitor::internal::Bases<>;

    void incRef() const override;
    void decRef() const override;
    int numRef() const override;
    CooperativeVisitor::internal::MethodInfo
    getVisitMethod(CooperativeVisitor::internal::MethodTable const& table) const override;
    void* cast(CooperativeVisitor::internal::ClassInfo const& info) const override;

    /// First phase of destruction: cuts every link across the border of the destroyed subtree.
    virtual void internal_disconnect(Deviant deviant);
    /// Second phase: ends the object and its contents. `detach` also removes it from its container.
    virtual void internal_discard(Deviant deviant, bool detach);
    /// Destroys the object in one deviant. Does nothing if it doesn't exist there.
    virtual void destroy(Deviant deviant);
    /// True if the object exists in the deviant.
    virtual bool deviant_isValid(Deviant deviant) const;
    /// Frees a state that the kernel owns; ignores markers and null.
    virtual void deviant_destroyState(ObjectIntf* state);
    /// The model has ended: every later access raises.
    virtual void deviant_markModelDestroyed();
    /// The root's changes are about to become final: keeps the old values for the deviants that
    /// read them.
    virtual void deviant_commitTransientState(Deviant deviant);
    /// A copy of the state in the deviant, owned by the caller; a marker is returned as it is.
    virtual ObjectIntf* deviant_getCopyOfDeviation(Deviant deviant);
    /// The state in the deviant, or a marker; still owned by the object.
    virtual ObjectIntf* internal_getDeviation(Deviant deviant);
    /// Replaces the state in the deviant, frees the old one and takes ownership of the new one.
    virtual void internal_setDeviation(Deviant deviant, ObjectIntf* state);
    /// Creates the first state in the deviant, with default values. Null if there already is one.
    virtual ObjectIntf* internal_createDeviation(Deviant deviant);
    /// Frees the state in the deviant; the object no longer exists there.
    virtual void internal_destroyDeviation(Deviant deviant);
    /// Assigns property by property from `source` as seen in `sourceDeviant`. On a root object each
    /// assignment is a full set with its association upkeep, on a state a plain copy. A property
    /// whose assignment raises QOB::Exception is skipped.
    virtual void
    internal_deviationAssign(Deviant deviant, ObjectIntf* source, Deviant sourceDeviant);
    /// The root deviant of the object's model; null if it has none any more.
    virtual Deviant getRootDeviant() const;
    /// The dotted name of the handle class for this object. Raises "Internal Error" on an object
    /// without one.
    virtual char const* getLumvoName(bool immutable) const;
    /// A text for people; invalid if the class has none.
    virtual String toString(Deviant deviant) const;
    virtual ImmutableObject convertFromString(Deviant deviant, String text);
    /// The type of the object in its metamodel; empty for objects without one. Needs the header of
    /// Type.
    virtual ImmutableType getMetaType(Deviant deviant) const;

    virtual ObjectIntf* getReadDeviantI(Deviant deviant, ObjectIntf const* tag) const;
    virtual ObjectIntf* getWriteDeviantI(Deviant deviant, ObjectIntf const* tag) const;
};

} // namespace NSInterface
} // namespace QOB
