#pragma once

#include "qob/qob/export.h"
#include "qob/qob/nsinterface/classobjectintf.h"

#include <vector>

namespace QOB::internal {

/// Access to the sparse properties of one state, for ClassObjectState. A property that a state
/// doesn't have costs no look-up. The references of a state to objects of other models are kept in
/// the same way: they follow the state when it is copied or restored by undo.
struct QOB_EXPORT SparseProperties {
    using State = NSInterface::ClassObjectIntf;

    static bool hasStereotypeInstances(State const* state) noexcept {
        return has(state, StereotypeInstances) && !isEmptyStereotypeEntry(state);
    }
    /// For reading only: a state without an entry shows a common empty sequence.
    static Sequence<StereotypeObject> stereotypeInstances(State const* state, Deviant deviant);
    /// For writing: creates the sequence if there is none.
    static Sequence<StereotypeObject> writableStereotypeInstances(State* state, Deviant deviant);

    static bool hasExternalId(State const* state) noexcept { return has(state, ExternalId); }
    /// Invalid if there is none.
    static String externalId(State const* state) noexcept;
    /// An empty or invalid id removes it.
    static void setExternalId(State* state, String const& id);

    static bool hasToolInfos(State const* state) noexcept {
        return has(state, ToolInfos) && !isEmptyToolInfoEntry(state);
    }
    static Sequence<ExternalToolInfo> toolInfos(State const* state, Deviant deviant);
    static Sequence<ExternalToolInfo> writableToolInfos(State* state, Deviant deviant);

    /// Records that the state, one of `object`'s, refers to an object of another model.
    static void addForeign(State* state, State const* object, NSInterface::ObjectIntf* value);
    /// Removes one such record; does nothing if there is none.
    static void removeForeign(State* state, NSInterface::ObjectIntf const* value);
    /// The root deviants of the other models that the states seen in the deviant refer to, in
    /// order. An object that no longer exists doesn't count.
    static std::vector<Deviant> foreignModels(Deviant deviant);

    static void copy(State const& from, State& to);
    /// Removes the state from all tables, and only then releases its entries.
    static void drop(State& state) noexcept;

private:
    enum Bit : unsigned char {
        StereotypeInstances = 1,
        ExternalId = 2,
        ToolInfos = 4,
        ForeignReferences = 8
    };

    static bool isEmptyStereotypeEntry(State const* state) noexcept;
    static bool isEmptyToolInfoEntry(State const* state) noexcept;

    static bool has(State const* state, Bit bit) noexcept { return (state->sparse_ & bit) != 0; }
    static void mark(State* state, Bit bit) noexcept {
        state->sparse_ = static_cast<unsigned char>(state->sparse_ | bit);
    }
    static void unmark(State* state, Bit bit) noexcept {
        state->sparse_ = static_cast<unsigned char>(state->sparse_ & ~bit);
    }
};

} // namespace QOB::internal
