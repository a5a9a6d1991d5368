#pragma once

#include "qob/qob/export.h"
#include "qob/qob/nsinterface/classobjectintf.h"

#include <vector>

namespace QOB::internal {

/// The sparse properties of one state: what ClassObjectState does with the tables. A property that
/// a state doesn't have costs no look-up. Beside them, in the same way, the references of a state
/// to objects of other models: wherever the state goes, by a copy, by undo, they go with it.
struct QOB_EXPORT SparseProperties {
    using State = NSInterface::ClassObjectIntf;

    static bool hasStereotypeInstances(State const* state) noexcept {
        return has(state, StereotypeInstances) && !isEmptyStereotypeEntry(state);
    }
    /// What is there, for reading only: a state without an entry shows a common empty sequence.
    static Sequence<StereotypeObject> stereotypeInstances(State const* state, Deviant deviant);
    /// For writing: makes the sequence if there is none.
    static Sequence<StereotypeObject> writableStereotypeInstances(State* state, Deviant deviant);

    static bool hasExternalId(State const* state) noexcept { return has(state, ExternalId); }
    /// Invalid if there is none.
    static String externalId(State const* state) noexcept;
    /// An empty or invalid id is none.
    static void setExternalId(State* state, String const& id);

    static bool hasToolInfos(State const* state) noexcept {
        return has(state, ToolInfos) && !isEmptyToolInfoEntry(state);
    }
    static Sequence<ExternalToolInfo> toolInfos(State const* state, Deviant deviant);
    static Sequence<ExternalToolInfo> writableToolInfos(State* state, Deviant deviant);

    /// The state, one of `object`'s, refers to an object of another model from now on.
    static void addForeign(State* state, State const* object, NSInterface::ObjectIntf* value);
    /// Takes one such reference back; nothing for a value that isn't there.
    static void removeForeign(State* state, NSInterface::ObjectIntf const* value);
    /// The root deviants of the other models in which an object exists that is referred to by what
    /// the deviant shows; in order.
    static std::vector<Deviant> foreignModels(Deviant deviant);

    static void copy(State const& from, State& to);
    /// Forgets the state in all tables, and only then lets go of what they held for it.
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
