#pragma once

#include "qob/qob/export.h"
#include "qob/qob/model.h"
#include "qob/qob/object.h"
#include "qob/qob/property.h"

#include <memory>
#include <vector>

namespace QOB {

namespace internal {
class ChangeCollector;
class ObserverList;
} // namespace internal

/// One object in a batch of changes.
///
/// Properties are live properties of the object's class, its supers and QOB.ClassObject, of which
/// ContainerQOB, AppliedStereotypeInstance, ExternalId, ExternalToolInfo and ObjectId may change
/// (and Uri, of a model). Derived properties don't appear. Where a property of the class leads to
/// the container (StructElement.Structure), it appears instead of ContainerQOB.
class QOB_EXPORT ObjectChange {
public:
    /// In the observed deviant. One that was destroyed there has only its class and its id.
    ClassObject const& object() const noexcept { return object_; }
    /// What has other values than before, in the order of the class; empty for an object that was
    /// created or destroyed.
    std::vector<ImmutableProperty> const& properties() const noexcept { return properties_; }
    bool has(ImmutableProperty const& property) const;
    /// The values before the change, in order; none for an object that is new. Tool infos are texts
    /// ("key=value"), as in Attribute::valuesOf. Raises QOB::Exception for a property that the
    /// object doesn't have.
    std::vector<Object> oldValues(ImmutableProperty const& property) const;
    /// The values now; none for an object that is gone.
    std::vector<Object> newValues(ImmutableProperty const& property) const;

private:
    friend class internal::ChangeCollector;

    std::vector<Object> valuesIn(NSInterface::ObjectIntf* state,
                                 Integer const& id,
                                 ImmutableProperty const& property) const;

    ClassObject object_;
    NSInterface::ObjectIntf* before_ = nullptr;
    NSInterface::ObjectIntf* after_ = nullptr;
    Integer idBefore_;
    std::vector<ImmutableProperty> properties_;
};

/// What one transaction has changed in one deviant, or an undo, a redo, a merge or a single write
/// outside a transaction. Valid while an observer is being told. The objects of each list are in
/// the order in which they entered the model; none is in two lists.
class QOB_EXPORT Changes {
public:
    /// In the observed deviant.
    Model const& model() const noexcept { return model_; }
    std::vector<ObjectChange> const& created() const noexcept { return created_; }
    std::vector<ObjectChange> const& destroyed() const noexcept { return destroyed_; }
    /// Objects that were there before and still are, the model among them.
    std::vector<ObjectChange> const& changed() const noexcept { return changed_; }
    bool empty() const noexcept {
        return created_.empty() && destroyed_.empty() && changed_.empty();
    }

    Changes(Changes const&) = delete;
    Changes& operator=(Changes const&) = delete;

private:
    friend class internal::ChangeCollector;

    Changes() = default;

    Model model_;
    std::vector<ObjectChange> created_;
    std::vector<ObjectChange> destroyed_;
    std::vector<ObjectChange> changed_;
};

/// Is told of what changes in a model, as one deviant shows it.
///
/// Owned by the user. It may be destroyed at any time, while it is told too, and is told no more
/// from then on; it keeps neither the model nor its objects.
///
/// What is told: one batch for each transaction that is committed, each undo, redo and merge, and
/// each write outside a transaction, after it is complete. States are compared: a value that was
/// set and set back doesn't appear, and nothing is told if nothing has changed or a transaction is
/// rolled back. Both ends of an association appear, each with its own object; of an association
/// with another model only the end in this one. An id that is bound outside of a creation is told
/// at once, since a rollback doesn't take it back: to the observers of every deviant that shows the
/// object, or did before a transaction that is open there destroyed it. The other values in such a
/// batch are those before the open transaction. The model's own list of objects (Model.rootObjects)
/// doesn't appear, and factories don't. An observer of a branch is also told of what the root
/// changes in objects that the branch reads there; not, however, while a transaction that is open
/// in the branch has written the object.
///
/// While observers are told, writing to their model, in any deviant, raises QOB::Exception, as does
/// anything that begins or ends a transaction or a deviant there; nothing changes. Other models may
/// be written. An exception that leaves changed() reaches the caller who committed or wrote, after
/// everything is done and all observers have been told; if several raise, it is the first one's. It
/// is dropped if the write itself is raising.
///
/// The work is proportional to the changed objects and the length of their changed lists. Models
/// without an observer pay nothing.
class QOB_EXPORT Observer {
public:
    Observer(Observer const&) = delete;
    Observer& operator=(Observer const&) = delete;
    virtual ~Observer();

    /// Begins to observe the deviant of the handle. An observer that begins while others are told
    /// is told of the next change. Raises QOB::Exception if this one observes already, and while a
    /// transaction is open in the deviant.
    void observe(Model const& model);
    /// Does nothing if it doesn't observe.
    void stop() noexcept;
    bool isObserving() const noexcept;

    virtual void changed(Changes const& changes) = 0;
    /// The model, or the deviant, has ended; the observer has been stopped.
    virtual void ended() noexcept;

protected:
    Observer() noexcept = default;

private:
    friend class internal::ObserverList;

    std::shared_ptr<internal::ObserverList> list_;
};

} // namespace QOB
