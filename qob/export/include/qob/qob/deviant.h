#pragma once

#include "qob/qob/export.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace QOB {

class Deviant;
struct IntrospectiveMethods;

namespace NSInterface {
class ObjectIntf;
class ClassObjectIntf;
} // namespace NSInterface

namespace internal {

class ModelCore;
class DeviantData;
class EndingWalk;

/// One view of one model, as the kernel holds it. Records are recycled and never freed or moved, so
/// a word that outlives its deviant can still be checked; the generation tells old from new.
struct DeviantRecord {
    std::uint32_t generation = 0;
    /// Zero if a write may proceed without further checks.
    std::uint32_t writeGate = 0;
    std::uint32_t rootIndex = 0;
    std::uint32_t nextFree = 0;
    ModelCore* model = nullptr;
    DeviantData* data = nullptr;
};

/// Why a write needs the full check. The bits of DeviantRecord::writeGate.
enum WriteGate : std::uint32_t {
    InTransaction = 1,
    ReadOnly = 2,
    UndoEnabled = 4,
    Observed = 8, ///< by observers of the deviant, or, in the root, by those of any branch
    Telling = 16, ///< observers are being told of a change: they only read
};

constexpr std::uint32_t RecordsPerChunk = 1024;
constexpr std::uint32_t MaximalChunks = 4096;

/// The chunks of records, which are never freed.
extern QOB_EXPORT DeviantRecord* deviantChunks[MaximalChunks];

} // namespace internal

/// The word of a deviant, and the checks on it.
class QOB_EXPORT DeviantAssertions {
public:
    constexpr DeviantAssertions() noexcept = default;

    /// Whether the checks on write paths are on.
    static bool sAssertionsEnabled;
    /// Sets the switch; returns its old value.
    static bool enableAssertions(bool enabled) noexcept;

    /// Does what internal_assertWritable does if the checks are on; otherwise returns true. Pass
    /// null to ask whether objects may be created here.
    bool assertWritable(NSInterface::ObjectIntf const* object) const;
    /// True if the deviant can be written now. Raises QOB::Exception if it has been removed, is
    /// read-only, or has undo enabled and no open transaction.
    bool internal_assertWritable(NSInterface::ObjectIntf const* object) const;
    /// Always raises QOB::Exception: the object doesn't exist in this deviant.
    [[noreturn]] void
    assertObjectNotPresentInDeviant(NSInterface::ClassObjectIntf const* object) const;

protected:
    constexpr DeviantAssertions(std::uint32_t index, std::uint32_t generation) noexcept
        : index_(index), generation_(generation) {}

    internal::DeviantRecord& record() const noexcept {
        return internal::deviantChunks[index_ / internal::RecordsPerChunk]
                                      [index_ % internal::RecordsPerChunk];
    }

    std::uint32_t index_ = 0;
    std::uint32_t generation_ = 0;
};

/// One view of a model: its root deviant or a branch. One machine word, passed by value. It may be
/// queried at any time, even after the deviant or its model is gone. A default-constructed deviant
/// is null.
class QOB_EXPORT Deviant : public DeviantAssertions {
public:
    using State = NSInterface::ObjectIntf*;

    /// Markers in place of a state pointer; never cast, never deleted, compared by identity.
    static void* const InvalidObject;  ///< the object doesn't exist in this deviant
    static void* const FallbackToRoot; ///< the deviant has no copy and reads the root
    static void* const ModelDestroyed; ///< the model is gone; only as an object's root state

    constexpr Deviant() noexcept = default;

    friend bool operator==(Deviant const& a, Deviant const& b) noexcept {
        return a.index_ == b.index_ && a.generation_ == b.generation_;
    }

    /// False for the null deviant only.
    bool isNotNull() const noexcept { return index_ != 0; }
    /// False once the deviant has been removed, and for the null deviant.
    bool isValid() const noexcept { return record().generation == generation_; }
    /// True for the root deviant of a living model.
    bool isRootDeviant() const noexcept {
        internal::DeviantRecord const& r = record();
        return r.generation == generation_ && r.rootIndex == index_;
    }
    /// The root deviant of the same model; the null deviant if this one isn't valid.
    Deviant getRootDeviant() const noexcept;
    /// The deviant in which this one shows an object whose root deviant is `root`: this one in the
    /// object's own model, otherwise the root. A removed deviant is returned unchanged, so that it
    /// is refused.
    Deviant inModelOf(Deviant root) const noexcept {
        return *this == root ? root : inModelOfOther(root);
    }
    /// Every deviant of the model: the root, then the others in order of creation. Replaces the
    /// contents of the vector; leaves it empty if this deviant isn't valid.
    void getAllDeviants(std::vector<Deviant>& deviants) const;

    /// The state of the object in this branch: real, a marker, or null if there is no entry.
    State getStateOfObject(NSInterface::ClassObjectIntf const* object) const noexcept;
    /// Stores a state in this branch, which takes ownership. The previous state is forgotten, not
    /// freed.
    void setStateOfObject(NSInterface::ClassObjectIntf const* object, State state) const;

    bool isWithinTransaction() const noexcept {
        return isValid() && (record().writeGate & internal::InTransaction) != 0;
    }
    /// True if writes outside a transaction are recorded for observers.
    bool isObserved() const noexcept {
        return isValid() && (record().writeGate & internal::Observed) != 0;
    }
    /// True while old states are recorded: every open transaction can be rolled back.
    bool hasUndoStack() const noexcept { return isWithinTransaction(); }
    /// The old state that the open transaction saved, or null. An object that the transaction
    /// created has the old state InvalidObject.
    State getSavedOldStateOfObject(NSInterface::ClassObjectIntf const* object) const noexcept;
    /// Records the object's old state in the open transaction, which takes ownership. Null is
    /// recorded as FallbackToRoot. A second call for an object replaces the saved state. Returns
    /// the recorded state. Raises QOB::Exception without an open transaction.
    State saveOldStateOfObject(NSInterface::ClassObjectIntf const* object, State state) const;

    /// Enters an object in the model; once, on the root deviant, right after construction.
    void addObjectToModel(NSInterface::ClassObjectIntf* object) const;
    /// Removes an object from its model and frees its states in all branches. Called by its
    /// destructor.
    void removeObjectFromModel(NSInterface::ClassObjectIntf* object) const;
    /// Records that the object is created in this deviant, before its first state exists here.
    void markObjectCreated(NSInterface::ClassObjectIntf const* object) const;

    /// Called for each value through which this deviant starts to refer to `other` by a property.
    /// After the first one in another model, the model searches its states for the models it refers
    /// to.
    void
    setOrAddReferred(Deviant const& other, IntrospectiveMethods const*, unsigned /*id*/) const {
        if (!(*this == other)) {
            noteReferred(other);
        }
    }
    /// Called for each value that no longer does. The states know what is left: undo may bring the
    /// reference back, and another deviant may have it.
    void
    removeReferred(Deviant const& /*other*/, IntrospectiveMethods const*, unsigned /*id*/) const {}
    /// True if `other` lies in another model. False if one of the two isn't valid.
    bool isInDifferentModel(Deviant const& other,
                            IntrospectiveMethods const*,
                            unsigned /*id*/) const noexcept {
        return !(*this == other) && isInOtherModel(other);
    }

    /// True if a write may proceed without further checks; false for a deviant that is gone.
    bool isWritableWithoutChecks() const noexcept {
        internal::DeviantRecord const& r = record();
        return r.generation == generation_ && r.writeGate == 0;
    }

    std::size_t hash() const noexcept {
        return std::hash<std::uint64_t>()((std::uint64_t(generation_) << 32) | index_);
    }

private:
    friend class internal::ModelCore;
    friend class internal::DeviantData;
    friend struct DeviantAccess;

    constexpr Deviant(std::uint32_t index, std::uint32_t generation) noexcept
        : DeviantAssertions(index, generation) {}

    // The slow paths, for a deviant other than the root, and for two that differ.
    Deviant inModelOfOther(Deviant root) const noexcept;
    void noteReferred(Deviant const& other) const;
    bool isInOtherModel(Deviant const& other) const noexcept;
};

/// True if a state pointer points to a state: neither null nor one of the markers.
inline bool isRealState(void const* state) noexcept {
    return reinterpret_cast<std::uintptr_t>(state) > 3;
}

} // namespace QOB

template <>
struct std::hash<QOB::Deviant> {
    std::size_t operator()(QOB::Deviant const& deviant) const noexcept { return deviant.hash(); }
};
