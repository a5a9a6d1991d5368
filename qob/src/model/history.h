#pragma once

#include "model/stateslot.h"
#include "qob/kernel/deviant/deviations.h"
#include "qob/qob/nsinterface/classobjectintf.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <vector>

namespace QOB::internal {

using NSInterface::ClassObjectIntf;
using NSInterface::ObjectIntf;

/// The old state of one object, as a transaction or an undo step keeps it. Owns the state and, by
/// one count, keeps the object alive that alone can free it.
struct SavedState {
    ClassObjectIntf* object = nullptr;
    StateSlot slot;
    /// The object is new in the deviant: the slot is what stood there before, mostly nothing.
    bool created = false;
};

/// Something outside of all states that goes back and forth with them, such as a pointer to a live
/// class.
class StepPart {
public:
    StepPart() = default;
    StepPart(StepPart const&) = delete;
    StepPart& operator=(StepPart const&) = delete;
    virtual ~StepPart() = default;
    /// Swaps what is there now for what was kept.
    virtual void exchange() noexcept = 0;
};

/// Everything that brings a deviant from one point in time to another, in order of first write.
struct Step {
    std::vector<SavedState> states;
    std::vector<std::unique_ptr<StepPart>> parts;

    bool empty() const noexcept { return states.empty() && parts.empty(); }
    /// Frees the states first and lets go of the objects last.
    void release();
};

/// A transaction that has not ended. Transactions on the same deviant join it.
struct OpenTransaction {
    std::uint64_t serial = 0;
    int depth = 1;
    Step record;
    /// Of a branch: where the record has an object. An object itself knows its place in the root's.
    boost::unordered_flat_map<ClassObjectIntf const*, std::size_t> savedIndex;
};

/// Transactions and undo of one deviant: what brings it back to what it was.
class History {
public:
    explicit History(DeviantData& deviant) noexcept : deviant_(deviant) {}
    History(History const&) = delete;
    History& operator=(History const&) = delete;

    /// What the open transaction has recorded for the object; null if nothing. Only while one is
    /// open.
    ObjectIntf* savedOldState(ClassObjectIntf const* object) const noexcept;
    /// Takes the state over; returns what is recorded.
    ObjectIntf* saveOldState(ClassObjectIntf const* object, ObjectIntf* state);
    void markCreated(ClassObjectIntf const* object);
    /// In the root: saves a copy of the object's state unless the open transaction has one.
    template <class Copy>
    void saveRootStateOnce(DeviationsBase& object, Copy const& copy) {
        std::vector<SavedState>& states = open_->record.states;
        ClassObjectIntf* const owner = object.owner();
        if (object.savedAt_ < states.size() && states[object.savedAt_].object == owner) {
            return;
        }
        states.emplace_back();
        try {
            states.back().slot.state = copy(object.rootState_);
        } catch (...) {
            states.pop_back();
            throw;
        }
        states.back().object = owner;
        object.savedAt_ = static_cast<std::uint32_t>(states.size() - 1);
        retain(static_cast<ReferenceCountingIntf const*>(owner));
    }
    /// Goes with the open transaction; without one, what is about to change is final.
    void keep(std::unique_ptr<StepPart> part);
    /// Forgets what was kept so, in steps too: the library that it lies in is going.
    void forgetParts() noexcept;
    /// Takes back what the open transaction recorded since it created the object.
    void forgetCreation(ClassObjectIntf const* object);
    /// Whether taking something back, or undoing that, may show the object here again.
    bool mayComeBack(ClassObjectIntf const* object) const;

    /// Begins a transaction or joins the open one; returns its serial number.
    std::uint64_t begin();
    int depth() const noexcept { return open_ != nullptr ? open_->depth : 0; }
    bool isOpen(std::uint64_t serial) const noexcept {
        return open_ != nullptr && open_->serial == serial;
    }
    /// Ends one level; the outermost makes the changes final and tells the observers. Returns what
    /// the first of them raised.
    std::exception_ptr commit();
    /// Takes everything back, whatever the depth.
    void rollback() noexcept;

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
    void drop();

private:
    /// Where an undo step keeps the old state of an object.
    struct Place {
        std::size_t step = 0;
        std::size_t position = 0;
    };

    static constexpr std::size_t NotSaved = static_cast<std::size_t>(-1);

    /// Where the open transaction has the object's old state, or NotSaved.
    std::size_t placeOf(ClassObjectIntf const* object) const noexcept;
    /// Appends an entry for an object that has none.
    void enter(SavedState const& saved);
    bool travel(std::vector<Step>& from, std::vector<Step>& to);
    /// Enters or takes out what the last undo step leads back to the root.
    void enterStepsToRoot();
    void dropStepsToRoot();
    void protectReaders(SavedState const& saved);
    void restore(SavedState& saved) noexcept;
    void closeTransaction() noexcept;

    DeviantData& deviant_;
    std::unique_ptr<OpenTransaction> open_;
    std::vector<Step> undo_;
    std::vector<Step> redo_;
    /// Of a branch: the objects that undoing makes it read in the root again, one step for each.
    boost::unordered_flat_map<ClassObjectIntf const*, Place> stepsToRoot_;
};

} // namespace QOB::internal
