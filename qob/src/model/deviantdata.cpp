#include "model/deviantdata.h"

#include "model/keepalive.h"
#include "model/modelcore.h"
#include "qob/qob/assert.h"

#include <algorithm>
#include <utility>

namespace QOB::internal {

DeviantData& DeviantData::of(Deviant deviant) {
    QOB_REQUIRE(deviant.isValid(), "object accessed after its deviant has been removed");
    return *DeviantAccess::record(deviant).data;
}

bool DeviantData::isRoot() const noexcept {
    return self_.isRootDeviant();
}

ObjectIntf* DeviantData::state(ClassObjectIntf const* object) const noexcept {
    auto const found = states_.find(object);
    return found != states_.end() ? found->second.state : nullptr;
}

void DeviantData::setState(ClassObjectIntf const* object, ObjectIntf* state) {
    QOB_REQUIRE(!isRoot(), "The root's state of an object stands in the object, not in a table.");
    if (state == nullptr) {
        states_.erase(object);
        return;
    }
    DeviationsBase& deviations = model_.requireOwn(object);
    StateSlot& slot = states_[object];
    slot.destroyedHere =
        state == Deviant::InvalidObject && (slot.destroyedHere || isRealState(slot.state));
    slot.state = state;
    deviations.hasBranchState_ = 1;
}

void DeviantData::forgetObject(ClassObjectIntf* object) {
    auto const found = states_.find(object);
    if (found != states_.end()) {
        ObjectIntf* const state = found->second.state;
        states_.erase(found);
        object->deviant_destroyState(state);
    }
}

std::vector<ClassObjectIntf*> DeviantData::changedObjects() const {
    std::vector<ClassObjectIntf*> objects;
    if (isRoot()) {
        objects.reserve(model_.objectCount());
        model_.forEachObject([&](ClassObjectIntf* object) { objects.push_back(object); });
        return objects;
    }
    objects.reserve(states_.size());
    for (auto const& [object, slot] : states_) {
        objects.push_back(const_cast<ClassObjectIntf*>(object));
    }
    std::sort(objects.begin(), objects.end(), [](ClassObjectIntf* a, ClassObjectIntf* b) {
        return ModelCore::deviationsOf(a).slot_ < ModelCore::deviationsOf(b).slot_;
    });
    return objects;
}

StateSlot DeviantData::slotOf(ClassObjectIntf const* object) const {
    if (isRoot()) {
        ObjectIntf* const state = ModelCore::deviationsOf(object).rootState_;
        return {state, state == Deviant::InvalidObject};
    }
    auto const found = states_.find(object);
    return found != states_.end() ? found->second : StateSlot();
}

bool DeviantData::knowsAsDestroyed(ClassObjectIntf const* object) const {
    StateSlot const slot = slotOf(object);
    if (isRoot() || (slot.state != nullptr && slot.state != Deviant::FallbackToRoot)) {
        return slot.destroyedHere;
    }
    DeviantData const& root = DeviantData::of(model_.root());
    return root.slotOf(object).destroyedHere &&
           root.self().getSavedOldStateOfObject(object) == nullptr;
}

void DeviantData::exchange(ClassObjectIntf* object, StateSlot& saved) {
    if (isRoot()) {
        std::swap(ModelCore::deviationsOf(object).rootState_, saved.state);
        return;
    }
    auto const [entry, isNew] = states_.try_emplace(object);
    std::swap(entry->second, saved);
    if (entry->second.state == nullptr) {
        states_.erase(entry);
    } else {
        ModelCore::deviationsOf(object).hasBranchState_ = 1;
    }
}

void DeviantData::setDestroyedHere(ClassObjectIntf const* object, bool destroyedHere) noexcept {
    if (auto const found = states_.find(object); found != states_.end()) {
        found->second.destroyedHere = destroyedHere;
    }
}

void DeviantData::setGate(WriteGate bit, bool on) noexcept {
    std::uint32_t& gate = DeviantAccess::record(self_).writeGate;
    gate = on ? gate | bit : gate & ~static_cast<std::uint32_t>(bit);
}

bool DeviantData::hasGate(WriteGate bit) const noexcept {
    return (DeviantAccess::record(self_).writeGate & bit) != 0;
}

DeviantData::~DeviantData() {
    if (write_ != nullptr) {
        forgetWrite(*this);
        write_->step.release();
    }
}

void DeviantData::keep(SavedState const& saved) {
    if (write_ == nullptr) {
        write_ = std::make_unique<ObservedWrite>();
        noteWrite(*this);
    }
    if (write_->index.emplace(saved.object, write_->step.states.size()).second) {
        write_->step.states.push_back(saved);
        retain(counted(saved.object));
    }
}

void DeviantData::keepOldState(ClassObjectIntf const* object, ObjectIntf* state) {
    keep({const_cast<ClassObjectIntf*>(object), {state, false}, false});
}

void DeviantData::keepCreation(ClassObjectIntf const* object) {
    if (hasGate(Observed)) {
        keep({const_cast<ClassObjectIntf*>(object), {}, true});
    }
}

std::exception_ptr DeviantData::tellWrite() {
    std::unique_ptr<ObservedWrite> const write = std::move(write_);
    std::exception_ptr raised = tellObservers(*this, write->step.states);
    write->step.release();
    return raised;
}

ObjectIntf* DeviantData::oldState(ClassObjectIntf const* object) const noexcept {
    ObjectIntf* const saved = history_.depth() != 0 ? history_.savedOldState(object) : nullptr;
    if (saved != nullptr || !keepsOldState(object)) {
        return saved;
    }
    SavedState const& written = write_->step.states[write_->index.find(object)->second];
    if (written.created) {
        return static_cast<ObjectIntf*>(Deviant::InvalidObject);
    }
    return written.slot.state != nullptr ? written.slot.state
                                         : static_cast<ObjectIntf*>(Deviant::FallbackToRoot);
}

ObserverList& DeviantData::needObservers() {
    if (observers_ == nullptr) {
        observers_ = std::make_shared<ObserverList>(*this);
    }
    return *observers_;
}

void DeviantData::requireNotTelling(char const* what) const {
    if (hasGate(Telling)) {
        QOB_FAIL("Cannot %s: observers of the model are being told of a change.", what);
    }
}

void DeviantData::dropStates() {
    std::vector<ClassObjectIntf*> objects;
    objects.reserve(states_.size());
    for (auto const& [object, slot] : states_) {
        objects.push_back(const_cast<ClassObjectIntf*>(object));
    }
    KeepAlive const keep(std::move(objects));
    auto const states = std::exchange(states_, {});
    for (auto const& [object, slot] : states) {
        const_cast<ClassObjectIntf*>(object)->deviant_destroyState(slot.state);
    }
}

} // namespace QOB::internal
