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
    /// The stereotypes that are applied to the model, and what lies in it and in no other object.
    Sequence<ClassObject> getContaineeQOBs(Deviant deviant) override;
    Sequence<ClassObject> getContaineeQOBsWithoutAssociation(Deviant deviant) const override;
    void
    internal_deviationAssign(Deviant deviant, ObjectIntf* source, Deviant sourceDeviant) override;

    /// A fresh id: above every id that the model has seen.
    virtual Integer allocateObjectId(Deviant deviant);
    /// Gives the object its id and enters it in the id index. Raises if another object that exists
    /// in the deviant has the id; nothing has changed then.
    virtual void bindObjectId(Deviant deviant, ClassObject object, Integer id);
    /// The model's objects in order of creation, and with it what keeps them alive. What is pushed
    /// belongs to the model from then on, what is taken out has none.
    virtual Sequence<ClassObject> getRootObjects(Deviant deviant);
    /// The same list; nothing is written at the objects.
    virtual Sequence<ClassObject> getRootObjectsWithoutAssociation(Deviant deviant) const;
    /// The object with the id, if it exists in the deviant; empty otherwise. O(1).
    virtual ClassObject findObject(Deviant deviant, Integer id) const;

    /// A new branch; it reads the root until it writes. O(1).
    virtual Deviant createDeviant(Deviant deviant);
    /// Ends a branch, with what is open there rolled back. Raises for the root, for another model's
    /// deviant and for one that is gone.
    virtual void removeDeviant(Deviant deviant, Deviant branch);
    /// Brings what `source` holds into `deviant`, in one transaction: its states are assigned, what
    /// it created comes in, what it destroyed is destroyed. What `deviant` destroyed stays so.
    virtual void mergeDeviant(Deviant deviant, Deviant source);

    /// While it is on, writes need a transaction and each committed one becomes a step. Turning it
    /// off drops the steps.
    virtual void setUndoEnabled(Deviant deviant, bool enabled);
    /// One step back or forth; false if there is none. Raises inside a transaction.
    virtual bool undo(Deviant deviant);
    virtual bool redo(Deviant deviant);
    /// While it is on, every write in the deviant raises.
    virtual void setReadOnly(Deviant deviant, bool readOnly);
    /// The models that this one refers to, as seen in the deviant.
    virtual std::vector<Model> getReferredModels(Deviant deviant) const;

    using ClassObjectIntf::getReadDeviantI;
    using ClassObjectIntf::getWriteDeviantI;
    virtual ModelIntf* getReadDeviantI(Deviant deviant, ModelIntf const* tag) const;
    virtual ModelIntf* getWriteDeviantI(Deviant deviant, ModelIntf const* tag) const;

    /// What lies in the model and in no other object, such as a package without a parent. Whatever
    /// is pushed has the model as its container from then on.
    Sequence<ClassObject> internal_ownContainees(Deviant deviant);
    /// Puts a new object at the end of the list of the model's objects; the quick form of a push
    /// through the list's view.
    virtual void internal_addRootObject(Deviant deviant, ClassObjectIntf* object);
    virtual void internal_removeRootObject(Deviant deviant, ClassObjectIntf* object);
};

} // namespace QOB::NSInterface
