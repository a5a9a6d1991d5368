#pragma once

#include "qob/qob/assert.h"
#include "qob/qob/deviant.h"
#include "qob/qob/integer.h"
#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/rootpart.h"

#include <typeinfo>

namespace QOB {

namespace internal {
class History;
struct ListPlace;
[[noreturn]] QOB_EXPORT void failOtherState();
} // namespace internal

/// The operations on a state class that the type-independent half of Deviations needs.
struct StateOperations {
    NSInterface::ObjectIntf* (*create)();
    NSInterface::ObjectIntf* (*copy)(NSInterface::ObjectIntf const* state);
    void (*destroy)(NSInterface::ObjectIntf* state);
};

/// All states of one object: the root's, and, stored in the kernel's tables, one for each branch
/// that has written to it. A read in a branch without a state shows the root's baseline; the first
/// write there copies it, so that no other deviant ever sees the write. Reading never allocates,
/// and in the root needs no look-up. This half doesn't know the state's type; the kernel itself
/// uses it to access an object (by rootPartOf).
class QOB_EXPORT DeviationsBase : protected internal::RootPart {
public:
    using State = NSInterface::ObjectIntf*;
    using VisitationDomain = QOB::VisitationDomain;

    DeviationsBase(DeviationsBase const&) = delete;
    DeviationsBase& operator=(DeviationsBase const&) = delete;

    Deviant rootDeviant() const noexcept { return rootDeviant_; }

    /// Raises if the model is dead or the deviant is gone.
    void checkAccess(Deviant deviant) const;
    /// Raises for a deviant of another model too. For operations that begin or end states, which
    /// only work in the object's own deviants; reads and writes use effectiveDeviant().
    void requireOwn(Deviant deviant) const;
    /// The deviant to use for `deviant`: for one of another model, the object's root. Raises if the
    /// object has no root deviant.
    Deviant effectiveDeviant(Deviant deviant) const;
    /// The state in the deviant: real, a marker, or null.
    State stateOf(Deviant deviant) const;
    /// Stores a state; the previous one is forgotten, not freed.
    void setStateOf(Deviant deviant, State state);
    /// The state that deviants without their own read: the root's state before its open
    /// transaction, or its current one if none is open.
    State rootBaseline(Deviant deviant) const;
    /// What a read in the deviant would see: a state, a marker, or null.
    State seenIn(Deviant deviant) const;
    /// Whether the object exists in the deviant. A deviant of another model is not replaced here.
    bool isValid(Deviant deviant) const;

protected:
    DeviationsBase() noexcept = default;
    ~DeviationsBase() = default;

    /// True if a read in `deviant` may use the root state without further checks.
    bool readsRootDirectly(Deviant deviant) const noexcept {
        return deviant == rootDeviant_ && isRealState(rootState_);
    }

    QOB_NOINLINE State readStateSlow(Deviant deviant) const;
    QOB_NOINLINE State writeStateSlow(Deviant deviant, StateOperations const& operations);
    void saveOldStateOnce(Deviant deviant, State state, StateOperations const& operations);
    void commit(Deviant root, StateOperations const& operations);

    /// Called by the object, `owner`, when it is constructed.
    void belongTo(NSInterface::ClassObjectIntf const* owner) noexcept {
        ownerDistance_ = static_cast<std::uint32_t>(reinterpret_cast<void* const*>(this) -
                                                    reinterpret_cast<void* const*>(owner)) &
                         0x1F;
    }
    /// The object itself, the key to its states in the kernel's tables.
    NSInterface::ClassObjectIntf* owner() const noexcept {
        return reinterpret_cast<NSInterface::ClassObjectIntf*>(
            reinterpret_cast<void**>(const_cast<DeviationsBase*>(this)) - ownerDistance_);
    }

    Integer objectId_ = -1;

private:
    friend class internal::ModelCore;
    friend class internal::DeviantData;
    friend class internal::EndingWalk;
    friend class internal::History;
    friend struct internal::ListPlace;

    static constexpr std::uint32_t NoSlot = 0xFFF'FFFF;

    /// Index in the object table of the model.
    std::uint32_t slot_ : 28 = NoSlot;
    /// Set once a branch has an entry for the object; until then, reads in branches skip the
    /// look-up.
    std::uint32_t hasBranchState_ : 1 = 0;
    /// Set once the model's id index knows the object.
    std::uint32_t hasBoundId_ : 1 = 0;
    /// Set while a phase of the object's destruction runs.
    std::uint32_t isEnding_ : 1 = 0;
    /// Where the root's open transaction keeps the object's old state, if the entry there is the
    /// object's; otherwise it keeps none.
    std::uint32_t savedAt_ = 0;
    /// The distance from the object in words.
    std::uint32_t ownerDistance_ : 5 = 0;
    /// A guess at where the object is in the model's list of objects: its chunk, and its place in
    /// that.
    std::uint32_t listSlot_ : 19 = 0;
    std::uint32_t listOffset_ : 8 = 0;
};

static_assert(sizeof(DeviationsBase) == 32);

/// DeviationsBase for one class of state.
template <class StateType>
class Deviations : public DeviationsBase {
public:
    static StateType* typed(State state) noexcept {
        return static_cast<StateType*>(static_cast<typename StateType::PrimaryBase*>(state));
    }
    static StateType const* typed(NSInterface::ObjectIntf const* state) noexcept {
        return static_cast<StateType const*>(
            static_cast<typename StateType::PrimaryBase const*>(state));
    }
    static State untyped(StateType* state) noexcept {
        return static_cast<typename StateType::PrimaryBase*>(state);
    }
    /// A state passed from outside in the form of stateOf(); markers are unchanged. Raises for a
    /// state of another class.
    static State requireOwnState(State state) {
        if (!isRealState(state)) {
            return state;
        }
        if (typeid(*state) != typeid(StateType)) {
            internal::failOtherState();
        }
        // Through the whole object: the pointer may be to its second base.
        return untyped(static_cast<StateType*>(dynamic_cast<void*>(state)));
    }

    /// The state that a read in the deviant sees. Raises if there is none. Not const, because
    /// reading and writing use the same operations; a reader treats it as const.
    QOB_ALWAYS_INLINE StateType* readState(Deviant deviant) const {
        return typed(readsRootDirectly(deviant) ? rootState_ : readStateSlow(deviant));
    }

    /// The state that a write changes, if neither checks nor records come first; otherwise null,
    /// and the write takes checkedState().
    QOB_ALWAYS_INLINE StateType* directState(Deviant deviant) const {
        return readsRootDirectly(deviant) && deviant.isWritableWithoutChecks()
                   ? typed(this->rootState_)
                   : nullptr;
    }

    /// The state that any other write changes; see writeState().
    StateType* checkedState(Deviant deviant) const {
        return typed(const_cast<Deviations*>(this)->writeStateSlow(deviant, Operations));
    }

    /// The state that a write in the deviant changes. Creates it if needed, and saves the old state
    /// if a transaction is open. Raises if the deviant can't be written. Const, since an object's
    /// identity doesn't change when one of its states does.
    QOB_ALWAYS_INLINE StateType* writeState(Deviant deviant) const {
        return typed(readsRootDirectly(deviant) && deviant.isWritableWithoutChecks()
                         ? rootState_
                         : const_cast<Deviations*>(this)->writeStateSlow(deviant, Operations));
    }

protected:
    static StateType* createTypedState() {
        static_assert(alignof(StateType) <= alignof(void*), "see allocateObject");
        return new StateType();
    }
    static State createState() { return untyped(createTypedState()); }
    static State copyState(NSInterface::ObjectIntf const* state) {
        return untyped(new StateType(*typed(state)));
    }
    static void destroyState(State state) { delete typed(state); }

    static constexpr StateOperations Operations{&createState, &copyState, &destroyState};
};

} // namespace QOB
