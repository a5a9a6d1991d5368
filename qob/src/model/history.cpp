#include "model/history.h"

#include "model/keepalive.h"
#include "model/modelcore.h"
#include "model/observers.h"
#include "qob/qob/assert.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace QOB::internal {

namespace {

std::uint64_t transactionSerial = 0;

void exchangeBackwards(std::vector<std::unique_ptr<StepPart>> const& parts) noexcept {
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        (*part)->exchange();
    }
}

} // namespace

void Step::release() {
    for (SavedState& saved : states) {
        saved.object->deviant_destroyState(std::exchange(saved.slot.state, nullptr));
    }
    for (SavedState const& saved : std::exchange(states, {})) {
        internal::release(counted(saved.object));
    }
    parts.clear();
}

bool History::mayComeBack(ClassObjectIntf const* object) const {
    auto const leadsBack = [object](Step const& step) {
        return std::any_of(
            step.states.begin(), step.states.end(), [object](SavedState const& saved) {
                return saved.object == object && saved.slot.state != nullptr &&
                       saved.slot.state != Deviant::InvalidObject;
            });
    };
    return (open_ != nullptr && leadsBack(open_->record)) ||
           std::any_of(undo_.begin(), undo_.end(), leadsBack) ||
           std::any_of(redo_.begin(), redo_.end(), leadsBack);
}

std::size_t History::placeOf(ClassObjectIntf const* object) const noexcept {
    if (deviant_.isRoot()) {
        std::vector<SavedState> const& states = open_->record.states;
        DeviationsBase const* const deviations = ModelCore::findDeviations(object);
        std::size_t const place = deviations != nullptr ? deviations->savedAt_ : NotSaved;
        return place < states.size() && states[place].object == object ? place : NotSaved;
    }
    auto const found = open_->savedIndex.find(object);
    return found != open_->savedIndex.end() ? found->second : NotSaved;
}

void History::enter(SavedState const& saved) {
    std::vector<SavedState>& states = open_->record.states;
    states.push_back(saved);
    if (deviant_.isRoot()) {
        ModelCore::deviationsOf(saved.object).savedAt_ =
            static_cast<std::uint32_t>(states.size() - 1);
    } else {
        open_->savedIndex.emplace(saved.object, states.size() - 1);
    }
    retain(counted(saved.object));
}

ObjectIntf* History::savedOldState(ClassObjectIntf const* object) const noexcept {
    std::size_t const place = placeOf(object);
    if (place == NotSaved) {
        return nullptr;
    }
    SavedState const& saved = open_->record.states[place];
    return saved.created ? static_cast<ObjectIntf*>(Deviant::InvalidObject) : saved.slot.state;
}

ObjectIntf* History::saveOldState(ClassObjectIntf const* object, ObjectIntf* state) {
    QOB_REQUIRE(open_ != nullptr, "An old state can be saved only in an open transaction.");
    deviant_.model().requireOwn(object);
    if (state == nullptr) {
        state = static_cast<ObjectIntf*>(Deviant::FallbackToRoot);
    }
    auto* const writable = const_cast<ClassObjectIntf*>(object);
    std::size_t const place = placeOf(object);
    if (place == NotSaved) {
        enter({writable, {state, false}, false});
    } else {
        SavedState& saved = open_->record.states[place];
        writable->deviant_destroyState(std::exchange(saved.slot.state, state));
    }
    return state;
}

void History::markCreated(ClassObjectIntf const* object) {
    if (open_ == nullptr) {
        deviant_.keepCreation(object);
        return;
    }
    deviant_.model().requireOwn(object);
    if (placeOf(object) == NotSaved) {
        // A branch that takes the creation back is without the object, also where the root has come
        // to know it since.
        StateSlot before = deviant_.slotOf(object);
        if (!deviant_.isRoot() &&
            (before.state == nullptr || before.state == Deviant::FallbackToRoot)) {
            before.state = static_cast<ObjectIntf*>(Deviant::InvalidObject);
        }
        enter({const_cast<ClassObjectIntf*>(object), before, true});
    }
}

void History::keep(std::unique_ptr<StepPart> part) {
    if (open_ != nullptr) {
        open_->record.parts.push_back(std::move(part));
    }
}

void History::forgetParts() noexcept {
    for (auto* const steps : {&undo_, &redo_}) {
        for (Step& step : *steps) {
            step.parts.clear();
        }
    }
    if (open_ != nullptr) {
        open_->record.parts.clear();
    }
}

void History::forgetCreation(ClassObjectIntf const* object) {
    if (open_ == nullptr) {
        return;
    }
    std::size_t const place = placeOf(object);
    std::vector<SavedState>& states = open_->record.states;
    if (place == NotSaved || !states[place].created) {
        return;
    }
    auto const first = states.begin() + static_cast<std::ptrdiff_t>(place);
    std::for_each(states.rbegin(), std::make_reverse_iterator(first), [this](SavedState& saved) {
        restore(saved);
        open_->savedIndex.erase(saved.object);
    });
    Step refused;
    refused.states.assign(first, states.end());
    states.erase(first, states.end());
    refused.release();
}

std::uint64_t History::begin() {
    deviant_.requireNotTelling("begin a transaction");
    if (open_ != nullptr) {
        ++open_->depth;
    } else {
        open_ = std::make_unique<OpenTransaction>();
        open_->serial = ++transactionSerial;
        deviant_.setGate(InTransaction, true);
    }
    return open_->serial;
}

std::exception_ptr History::commit() {
    if (open_->depth > 1) {
        --open_->depth;
        return nullptr;
    }
    if (deviant_.isRoot()) {
        for (SavedState const& saved : open_->record.states) {
            saved.object->deviant_commitTransientState(deviant_.self());
        }
    }
    Step step = std::move(open_->record);
    closeTransaction();
    if (deviant_.hasGate(UndoEnabled) && !step.empty()) {
        for (Step& undone : std::exchange(redo_, {})) {
            undone.release();
        }
        undo_.push_back(std::move(step));
        enterStepsToRoot();
        return tellObservers(deviant_, undo_.back().states);
    }
    std::exception_ptr raised = tellObservers(deviant_, step.states);
    step.release();
    return raised;
}

void History::rollback() noexcept {
    Step& record = open_->record;
    for (auto saved = record.states.rbegin(); saved != record.states.rend(); ++saved) {
        restore(*saved);
    }
    exchangeBackwards(record.parts);
    Step step = std::move(record);
    closeTransaction();
    step.release();
}

void History::restore(SavedState& saved) noexcept {
    if (saved.created) {
        deviant_.exchange(saved.object, saved.slot);
        return;
    }
    saved.object->internal_setDeviation(deviant_.self(), std::exchange(saved.slot.state, nullptr));
    deviant_.setDestroyedHere(saved.object, saved.slot.destroyedHere);
}

void History::closeTransaction() noexcept {
    open_.reset();
    deviant_.setGate(InTransaction, false);
}

void History::setUndoEnabled(bool enabled) {
    deviant_.setGate(UndoEnabled, enabled);
    if (!enabled) {
        for (auto* const steps : {&undo_, &redo_}) {
            for (Step& step : std::exchange(*steps, {})) {
                step.release();
            }
        }
        stepsToRoot_.clear();
    }
}

void History::enterStepsToRoot() {
    if (deviant_.isRoot()) {
        return;
    }
    std::vector<SavedState> const& states = undo_.back().states;
    for (std::size_t i = 0; i != states.size(); ++i) {
        if (states[i].slot.state == Deviant::FallbackToRoot) {
            stepsToRoot_[states[i].object] = {undo_.size() - 1, i};
        }
    }
}

void History::dropStepsToRoot() {
    if (stepsToRoot_.empty()) {
        return;
    }
    for (SavedState const& saved : undo_.back().states) {
        auto const found = stepsToRoot_.find(saved.object);
        if (found != stepsToRoot_.end() && found->second.step == undo_.size() - 1) {
            stepsToRoot_.erase(found);
        }
    }
}

bool History::travel(std::vector<Step>& from, std::vector<Step>& to) {
    deviant_.requireNotTelling("undo or redo");
    QOB_REQUIRE(open_ == nullptr, "Undo and redo wait for the end of the open transaction.");
    QOB_REQUIRE(!deviant_.hasGate(ReadOnly), "A read-only deviant has no undo and no redo.");
    if (from.empty()) {
        return false;
    }
    to.reserve(to.size() + 1);
    if (&from == &undo_) {
        dropStepsToRoot();
    }
    Step& step = from.back();
    if (deviant_.isRoot() && deviant_.model().hasBranches()) {
        for (SavedState const& saved : step.states) {
            protectReaders(saved);
        }
    }
    for (auto saved = step.states.rbegin(); saved != step.states.rend(); ++saved) {
        deviant_.exchange(saved->object, saved->slot);
    }
    exchangeBackwards(step.parts);
    // What is undone from the last write to the first is redone from the first to the last.
    std::reverse(step.states.begin(), step.states.end());
    std::reverse(step.parts.begin(), step.parts.end());
    to.push_back(std::move(step));
    from.pop_back();
    if (&to == &undo_) {
        enterStepsToRoot();
    }
    if (std::exception_ptr const raised = tellObservers(deviant_, to.back().states)) {
        std::rethrow_exception(raised);
    }
    return true;
}

void History::protectReaders(SavedState const& saved) {
    if (deviant_.slotOf(saved.object).state != nullptr) {
        saved.object->deviant_commitTransientState(deviant_.self());
        return;
    }
    // The object is about to come back in the root: branches that don't know it stay without it.
    deviant_.model().forEachBranch([&](DeviantData& branch) {
        if (branch.state(saved.object) == nullptr) {
            branch.setState(saved.object, static_cast<ObjectIntf*>(Deviant::InvalidObject));
        }
    });
}

void History::drop() {
    if (open_ != nullptr) {
        Step step = std::move(open_->record);
        closeTransaction();
        step.release();
    }
    setUndoEnabled(false);
}

} // namespace QOB::internal
