#pragma once

#include "model/deviantrecords.h"
#include "model/history.h"
#include "model/stateslot.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <vector>

namespace QOB::internal {

/// The long part of a deviant: its states (in a branch), its transactions and its undo.
class DeviantData {
public:
    DeviantData(ModelCore& model, Deviant self) noexcept
        : model_(model), self_(self), history_(*this) {}
    DeviantData(DeviantData const&) = delete;
    DeviantData& operator=(DeviantData const&) = delete;

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

    /// Frees all states of a branch.
    void dropStates();

private:
    friend class ModelCore;

    ModelCore& model_;
    Deviant self_;
    DeviantData* previous_ = nullptr;
    DeviantData* next_ = nullptr;
    boost::unordered_flat_map<ClassObjectIntf const*, StateSlot> states_;
    History history_;
};

} // namespace QOB::internal
