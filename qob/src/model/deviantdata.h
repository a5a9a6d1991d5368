#pragma once

#include "model/deviantrecords.h"
#include "model/history.h"
#include "model/observers.h"
#include "model/stateslot.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <exception>
#include <memory>
#include <vector>

namespace QOB::internal {

/// What a write outside a transaction has changed so far, for observers.
struct ObservedWrite {
    Step step;
    boost::unordered_flat_map<ClassObjectIntf const*, std::size_t> index;
};

/// The long part of a deviant: its states (in a branch), its transactions and its undo.
class DeviantData {
public:
    DeviantData(ModelCore& model, Deviant self) noexcept
        : model_(model), self_(self), history_(*this) {}
    DeviantData(DeviantData const&) = delete;
    DeviantData& operator=(DeviantData const&) = delete;
    ~DeviantData();

    static DeviantData& of(Deviant deviant);

    ModelCore& model() const noexcept { return model_; }
    Deviant self() const noexcept { return self_; }
    bool isRoot() const noexcept;
    History& history() noexcept { return history_; }
    History const& history() const noexcept { return history_; }

    ObjectIntf* state(ClassObjectIntf const* object) const noexcept;
    void setState(ClassObjectIntf const* object, ObjectIntf* state);
    /// Frees what a branch holds for an object that is about to die.
    void forgetObject(ClassObjectIntf* object);
    /// The objects with an entry in this deviant, in the order in which they entered the model.
    std::vector<ClassObjectIntf*> changedObjects() const;
    /// What this deviant holds for the object as it stands, in the root too.
    StateSlot slotOf(ClassObjectIntf const* object) const;
    /// Swaps what this deviant holds for the object with what was saved of it. The root's slot
    /// keeps its own mark of destruction: there the state tells.
    void exchange(ClassObjectIntf* object, StateSlot& saved);
    /// Corrects the mark of an object that has an entry in a branch.
    void setDestroyedHere(ClassObjectIntf const* object, bool destroyedHere) noexcept;
    /// Whether the object is gone from this deviant because it was destroyed, here or in the root
    /// that a branch reads; as opposed to one that this deviant has never seen.
    bool knowsAsDestroyed(ClassObjectIntf const* object) const;

    void setGate(WriteGate bit, bool on) noexcept;
    bool hasGate(WriteGate bit) const noexcept;

    /// Those of this deviant; null if it never had one.
    std::shared_ptr<ObserverList> const& observers() const noexcept { return observers_; }
    bool hasObservers() const noexcept { return observers_ != nullptr && !observers_->empty(); }
    ObserverList& needObservers();
    // What a write outside a transaction changes, for observers. It lasts until tellWrite().
    bool keepsOldState(ClassObjectIntf const* object) const noexcept {
        return write_ != nullptr && write_->index.contains(object);
    }
    /// Takes the state over.
    void keepOldState(ClassObjectIntf const* object, ObjectIntf* state);
    /// Does nothing without observers.
    void keepCreation(ClassObjectIntf const* object);
    /// Tells what was written; returns what the first observer raised.
    std::exception_ptr tellWrite();
    /// What the transaction or the write that is going on has recorded for the object; null if
    /// nothing, InvalidObject if it has created it.
    ObjectIntf* oldState(ClassObjectIntf const* object) const noexcept;
    /// Raises while observers of the model are being told of a change.
    void requireNotTelling(char const* what) const;

    /// Frees all states of a branch.
    void dropStates();

private:
    friend class ModelCore;

    void keep(SavedState const& saved);

    ModelCore& model_;
    Deviant self_;
    DeviantData* previous_ = nullptr;
    DeviantData* next_ = nullptr;
    boost::unordered_flat_map<ClassObjectIntf const*, StateSlot> states_;
    History history_;
    std::shared_ptr<ObserverList> observers_;
    std::unique_ptr<ObservedWrite> write_;
};

} // namespace QOB::internal
