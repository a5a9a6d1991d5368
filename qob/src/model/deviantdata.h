#pragma once

#include "model/deviantrecords.h"
#include "model/history.h"
#include "model/stateslot.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <memory>
#include <vector>

namespace QOB::internal {

/// The long part of a deviant: its states (in a branch), its open transaction and its undo stacks.
class DeviantData {
public:
    DeviantData(ModelCore& model, Deviant self) : model_(model), self_(self) {}
    DeviantData(DeviantData const&) = delete;
    DeviantData& operator=(DeviantData const&) = delete;

    static DeviantData& of(Deviant deviant);

    ModelCore& model() const noexcept { return model_; }
    Deviant self() const noexcept { return self_; }
    bool isRoot() const noexcept;

    ObjectIntf* state(ClassObjectIntf const* object) const noexcept;
    void setState(ClassObjectIntf const* object, ObjectIntf* state);
    /// Frees what a branch holds for an object that is about to die.
    void forgetObject(ClassObjectIntf* object);
    /// The objects with an entry in this deviant, in the order in which they entered the model.
    std::vector<ClassObjectIntf*> changedObjects() const;
    /// What this deviant holds for the object as it stands, in the root too.
    StateSlot slotOf(ClassObjectIntf const* object) const;
    /// Whether the object is gone from this deviant because it was destroyed, here or in the root
    /// that a branch reads; as opposed to one that this deviant has never seen.
    bool knowsAsDestroyed(ClassObjectIntf const* object) const;
    /// Whether taking something back, or undoing that, may show the object here again.
    bool mayComeBack(ClassObjectIntf const* object) const;

    ObjectIntf* savedOldState(ClassObjectIntf const* object) const noexcept;
    ObjectIntf* saveOldState(ClassObjectIntf const* object, ObjectIntf* state);
    void markCreated(ClassObjectIntf const* object);
    /// Goes with the open transaction; without one, what is about to change is final.
    void keep(std::unique_ptr<StepPart> part);
    /// Forgets what was kept so, in steps too: the library that it lies in is going.
    void forgetParts() noexcept;
    /// Takes back what the open transaction recorded since it created the object.
    void forgetCreation(ClassObjectIntf const* object);

    /// Begins a transaction or joins the open one; returns its serial number.
    std::uint64_t begin();
    int depth() const noexcept { return open_ != nullptr ? open_->depth : 0; }
    bool isOpen(std::uint64_t serial) const noexcept {
        return open_ != nullptr && open_->serial == serial;
    }
    /// Ends one level; the outermost makes the changes final.
    void commit();
    /// Takes everything back, whatever the depth.
    void rollback() noexcept;

    void setGate(WriteGate bit, bool on) noexcept;
    bool hasGate(WriteGate bit) const noexcept;
    void setUndoEnabled(bool enabled);
    bool undo() { return travel(undo_, redo_); }
    bool redo() { return travel(redo_, undo_); }
    /// The root is about to leave behind what branches without a state of their own have been
    /// reading: a step that would bring this branch back to reading it there gets a copy.
    template <class Copy>
    void keepForUndo(ClassObjectIntf const* object, Copy const& copy) {
        if (auto const found = stepsToRoot_.find(object); found != stepsToRoot_.end()) {
            undo_[found->second.step].states[found->second.position].slot.state = copy();
            stepsToRoot_.erase(found);
        }
    }

    /// Drops the open transaction and the undo stacks without restoring anything.
    void dropRecords();
    /// Frees all states of a branch.
    void dropStates();

private:
    friend class ModelCore;

    /// Where an undo step keeps the old state of an object.
    struct Place {
        std::size_t step = 0;
        std::size_t position = 0;
    };

    bool travel(std::vector<Step>& from, std::vector<Step>& to);
    /// Enters or takes out what the last undo step leads back to the root.
    void enterStepsToRoot();
    void dropStepsToRoot();
    void exchange(SavedState& saved);
    void protectReaders(SavedState const& saved);
    void restore(SavedState& saved) noexcept;
    void closeTransaction() noexcept;

    ModelCore& model_;
    Deviant self_;
    DeviantData* previous_ = nullptr;
    DeviantData* next_ = nullptr;
    boost::unordered_flat_map<ClassObjectIntf const*, StateSlot> states_;
    std::unique_ptr<OpenTransaction> open_;
    std::vector<Step> undo_;
    std::vector<Step> redo_;
    /// Of a branch: the objects that undoing makes it read in the root again, one step for each.
    boost::unordered_flat_map<ClassObjectIntf const*, Place> stepsToRoot_;
};

} // namespace QOB::internal
