#include "qob/kernel/deviant/deviations.h"

#include "model/modelcore.h"
#include "qob/qob/assert.h"

namespace QOB {

namespace {

using State = DeviationsBase::State;

bool isInvalidObject(State state) noexcept {
    return state == Deviant::InvalidObject;
}

/// Whether a deviant with this entry reads the root.
bool readsRoot(State state) noexcept {
    return state == nullptr || state == Deviant::FallbackToRoot;
}

} // namespace

void internal::failOtherState() {
    internal::failAt(__FILE__, __LINE__, "The state belongs to an object of another class.");
}

void DeviationsBase::checkAccess(Deviant deviant) const {
    QOB_REQUIRE(rootState_ != Deviant::ModelDestroyed,
                "object accessed after its model has been destroyed");
    QOB_REQUIRE(deviant.isValid(), "object accessed after its deviant has been removed");
}

void DeviationsBase::requireOwn(Deviant deviant) const {
    checkAccess(deviant);
    QOB_REQUIRE(deviant == rootDeviant_ || deviant.getRootDeviant() == rootDeviant_,
                "The deviant belongs to another model.");
}

Deviant DeviationsBase::effectiveDeviant(Deviant deviant) const {
    QOB_INVARIANT(rootDeviant_.isNotNull() && rootDeviant_.isRootDeviant(),
                  "Internal assertion without a message detected! Please fix me asap");
    return deviant.getRootDeviant() == rootDeviant_ ? deviant : rootDeviant_;
}

State DeviationsBase::stateOf(Deviant deviant) const {
    if (deviant.isRootDeviant()) {
        return rootState_;
    }
    return hasBranchState_ != 0 ? deviant.getStateOfObject(owner()) : nullptr;
}

void DeviationsBase::setStateOf(Deviant deviant, State state) {
    if (deviant.isRootDeviant()) {
        rootState_ = state;
    } else {
        deviant.setStateOfObject(owner(), state);
    }
}

State DeviationsBase::rootBaseline(Deviant deviant) const {
    State const saved = deviant.getRootDeviant().getSavedOldStateOfObject(owner());
    return saved != nullptr ? saved : rootState_;
}

State DeviationsBase::seenIn(Deviant deviant) const {
    State const state = stateOf(deviant);
    return readsRoot(state) ? rootBaseline(deviant) : state;
}

bool DeviationsBase::isValid(Deviant deviant) const {
    if (deviant == rootDeviant_ && isRealState(rootState_)) {
        return true;
    }
    if (rootState_ == Deviant::ModelDestroyed || !deviant.isValid()) {
        return false;
    }
    return isRealState(seenIn(deviant));
}

State DeviationsBase::readStateSlow(Deviant deviant) const {
    // A branch of the object's own model, mostly: one look at its record and one at the root's.
    internal::DeviantRecord const& record = DeviantAccess::record(deviant);
    if (deviant.isValid() && rootDeviant_.isNotNull() &&
        record.rootIndex == DeviantAccess::index(rootDeviant_) && deviant != rootDeviant_) {
        State state = hasBranchState_ != 0 ? record.data->state(owner()) : nullptr;
        if (readsRoot(state)) {
            bool const rootIsOpen =
                (DeviantAccess::record(rootDeviant_).writeGate & internal::InTransaction) != 0;
            state = rootIsOpen ? rootBaseline(deviant) : rootState_;
        }
        if (isRealState(state)) {
            return state;
        }
    }
    checkAccess(deviant);
    Deviant const effective = effectiveDeviant(deviant);
    State state = stateOf(effective);
    if (readsRoot(state)) {
        state = rootBaseline(effective);
    }
    if (!isRealState(state)) {
        effective.assertObjectNotPresentInDeviant(owner());
    }
    return state;
}

State DeviationsBase::writeStateSlow(Deviant deviant, StateOperations const& operations) {
    // In the root's open transaction, mostly.
    internal::DeviantRecord const& record = DeviantAccess::record(deviant);
    if (readsRootDirectly(deviant) && deviant.isValid() &&
        (record.writeGate | internal::UndoEnabled) ==
            (internal::InTransaction | internal::UndoEnabled)) {
        record.data->history().saveRootStateOnce(*this, operations.copy);
        return rootState_;
    }
    checkAccess(deviant);
    Deviant const effective = effectiveDeviant(deviant);
    if (DeviantAssertions::sAssertionsEnabled) {
        effective.internal_assertWritable(owner());
    }
    State const state = stateOf(effective);
    if (!readsRoot(state)) {
        if (isInvalidObject(state)) {
            effective.assertObjectNotPresentInDeviant(owner());
        }
        saveOldStateOnce(effective, state, operations);
        return state;
    }
    State const baseline = rootBaseline(effective);
    if (!isRealState(baseline)) {
        effective.assertObjectNotPresentInDeviant(owner());
    }
    State const copy = operations.copy(baseline);
    setStateOf(effective, copy);
    saveOldStateOnce(effective, state, operations);
    return copy;
}

void DeviationsBase::saveOldStateOnce(Deviant deviant,
                                      State state,
                                      StateOperations const& operations) {
    auto const copy = [&] { return isRealState(state) ? operations.copy(state) : state; };
    if (deviant.hasUndoStack()) {
        if (deviant.getSavedOldStateOfObject(owner()) == nullptr) {
            deviant.saveOldStateOfObject(owner(), copy());
        }
    } else if (deviant.isObserved()) {
        internal::DeviantData& data = *DeviantAccess::record(deviant).data;
        if (!data.keepsOldState(owner())) {
            data.keepOldState(owner(), copy());
        }
    }
}

void DeviationsBase::commit(Deviant root, StateOperations const& operations) {
    internal::ModelCore& model = internal::ModelCore::of(root);
    if (!model.hasBranches()) {
        return;
    }
    State const baseline = rootBaseline(root);
    if (baseline == nullptr) {
        return;
    }
    auto const copyOfBaseline = [&] {
        return isRealState(baseline) ? operations.copy(baseline) : baseline;
    };
    model.forEachBranch([&](internal::DeviantData& branch) {
        branch.history().keepForUndo(owner(), copyOfBaseline);
    });
    model.forEachBranchUntil([&](internal::DeviantData const& branch) {
        Deviant const deviant = branch.self();
        if (deviant.getSavedOldStateOfObject(owner()) == Deviant::FallbackToRoot) {
            deviant.saveOldStateOfObject(owner(), copyOfBaseline());
            return true; // later deviants keep reading the root
        }
        if (readsRoot(stateOf(deviant))) {
            setStateOf(deviant, copyOfBaseline());
        }
        return false;
    });
}

} // namespace QOB
