#pragma once

#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/object.h"
#include "qob/qob/sequence.h"

#include <vector>

namespace QOB::NSInterface {

/// A model: the owner of a set of objects, of the root deviant and of its branches. It is itself an
/// object of its model, so that its list of objects and its URI follow deviants, transactions and
/// undo like everything else. A model lives until it is destroyed or the library stops.
class QOB_EXPORT ModelIntf : public ClassObjectIntf {
public:
    using VisitationBases = CooperativeVisitor::internal::Bases<ClassObjectIntf>;

    enum PropertyId : unsigned { RootObjectsId = 1 };
    static IntrospectiveMethods sIntrospectiveMethods;

    CooperativeVisitor::internal::MethodInfo
    getVisitMethod(CooperativeVisitor::internal::MethodTable const& table) const override;
    void* cast(CooperativeVisitor::internal::ClassInfo const& info) const override;

    ImmutableClass getMetaClass(Deviant deviant) const override;
    bool hasUri(Deviant deviant) const override;
    void removeUri(Deviant deviant) override;
    void setUri(Deviant deviant, String const& uri) override;
    String getUri(Deviant deviant) const override;
    /// The stereotypes applied to the model, and the objects contained in it directly.
    Sequence<ClassObject> getContaineeQOBs(Deviant deviant) override;
    Sequence<ClassObject> getContaineeQOBsWithoutAssociation(Deviant deviant) const override;
    void
    internal_deviationAssign(Deviant deviant, ObjectIntf* source, Deviant sourceDeviant) override;

    /// A new id, above every id that the model has seen.
    virtual Integer allocateObjectId(Deviant deviant);
    /// Gives the object its id and enters it in the id index. Raises, and changes nothing, if
    /// another object that exists in the deviant has the id.
    virtual void bindObjectId(Deviant deviant, ClassObject object, Integer id);
    /// The model's objects in order of creation; this list keeps them alive. An object added to the
    /// list belongs to the model; one removed from it has no model.
    virtual Sequence<ClassObject> getRootObjects(Deviant deviant);
    /// The same list; writes to it don't update the objects.
    virtual Sequence<ClassObject> getRootObjectsWithoutAssociation(Deviant deviant) const;
    /// The object with the id, if it exists in the deviant; empty otherwise. O(1).
    virtual ClassObject findObject(Deviant deviant, Integer id) const;

    /// A new branch, which shows the root's state of each object until it writes to it. O(1).
    virtual Deviant createDeviant(Deviant deviant);
    /// Removes a branch and rolls back its open transaction. Raises for the root, for a deviant of
    /// another model and for one that is gone.
    virtual void removeDeviant(Deviant deviant, Deviant branch);
    /// Merges `source` into `deviant` in one transaction: assigns its states, adds the objects it
    /// created and destroys those it destroyed. Objects that `deviant` has destroyed stay
    /// destroyed.
    virtual void mergeDeviant(Deviant deviant, Deviant source);

    /// While undo is on, every write needs a transaction, and each committed transaction becomes a
    /// step. Turning undo off drops the steps.
    virtual void setUndoEnabled(Deviant deviant, bool enabled);
    /// One step back or forward; false if there is none. Raises inside a transaction.
    virtual bool undo(Deviant deviant);
    virtual bool redo(Deviant deviant);
    /// While the deviant is read-only, every write in it raises.
    virtual void setReadOnly(Deviant deviant, bool readOnly);
    /// The models that this one refers to, as seen in the deviant.
    virtual std::vector<Model> getReferredModels(Deviant deviant) const;

    using ClassObjectIntf::getReadDeviantI;
    using ClassObjectIntf::getWriteDeviantI;
    virtual ModelIntf* getReadDeviantI(Deviant deviant, ModelIntf const* tag) const;
    virtual ModelIntf* getWriteDeviantI(Deviant deviant, ModelIntf const* tag) const;

    /// The objects contained in the model directly, such as a package without a parent. Adding an
    /// object makes the model its container.
    Sequence<ClassObject> internal_ownContainees(Deviant deviant);
    /// Appends a new object to the list of the model's objects; a faster form of a push through the
    /// list's view.
    virtual void internal_addRootObject(Deviant deviant, ClassObjectIntf* object);
    virtual void internal_removeRootObject(Deviant deviant, ClassObjectIntf* object);
};

} // namespace QOB::NSInterface
