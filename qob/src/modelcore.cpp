#include "modelcore.h"

#include "qob/kernel/factory/create.h"
#include "qob/qob/assert.h"
#include "remnants.h"

#include <climits>

#include <algorithm>
#include <exception>
#include <utility>

namespace QOB::internal {

namespace {

std::uint32_t firstFreeRecord = 0;
std::uint32_t recordCount = 1; // the null word's record
std::uint64_t transactionSerial = 0;
ModelCore* firstModel = nullptr;

DeviantRecord& recordAt(std::uint32_t index) noexcept {
    return deviantChunks[index / RecordsPerChunk][index % RecordsPerChunk];
}

/// A record nobody uses: recycled, or new in a chunk that is made when it is needed.
std::uint32_t acquireRecord() {
    if (firstFreeRecord != 0) {
        std::uint32_t const index = firstFreeRecord;
        firstFreeRecord = recordAt(index).nextFree;
        return index;
    }
    std::uint32_t const chunk = recordCount / RecordsPerChunk;
    QOB_REQUIRE(chunk < MaximalChunks, "The number of living deviants is at its limit.");
    if (deviantChunks[chunk] == nullptr) {
        deviantChunks[chunk] = new DeviantRecord[RecordsPerChunk];
    }
    recordAt(recordCount).generation = 1;
    return recordCount++;
}

/// Makes every word of the record invalid for ever. A record whose generations are used up is not
/// used again.
void retireRecord(std::uint32_t index) noexcept {
    DeviantRecord& record = recordAt(index);
    record.writeGate = 0;
    record.rootIndex = 0;
    record.model = nullptr;
    record.data = nullptr;
    if (++record.generation != UINT32_MAX) {
        record.nextFree = std::exchange(firstFreeRecord, index);
    }
}

ReferenceCountingIntf const* counted(ClassObjectIntf const* object) noexcept {
    return object;
}

/// Keeps a group of objects alive while their states are freed.
class KeepAlive {
public:
    explicit KeepAlive(std::vector<ClassObjectIntf*> objects) : objects_(std::move(objects)) {
        for (ClassObjectIntf* const object : objects_) {
            retain(counted(object));
        }
    }
    KeepAlive(KeepAlive const&) = delete;
    KeepAlive& operator=(KeepAlive const&) = delete;
    ~KeepAlive() {
        for (ClassObjectIntf* const object : objects_) {
            release(counted(object));
        }
    }
    std::vector<ClassObjectIntf*> const& objects() const noexcept { return objects_; }

private:
    std::vector<ClassObjectIntf*> objects_;
};

} // namespace

std::string describe(ObjectIntf const* object) {
    if (object == nullptr) {
        return "the model";
    }
    std::string text = "the object (";
    try {
        text += object->getLumvoName(false);
    } catch (Exception const&) {
        text += "a type without a name";
    }
    if (auto const* classObject = castObject<ClassObjectIntf>(object)) {
        if (Integer const id = classObject->getObjectId(Deviant()); id.isValid() && id != -1) {
            text += ", id " + std::string(id.toString());
        }
    }
    return text + ")";
}

void revokeCreation(ClassObjectIntf* object, Deviant deviant) {
    object->destroy(deviant); // what refers to it lets go
    DeviantData& data = DeviantData::of(deviant);
    data.forgetCreation(object);
    data.model().forgetId(object);
}

// Step -----------------------------------------------------------------------------------------

void Step::release() {
    for (SavedState& saved : states) {
        saved.object->deviant_destroyState(std::exchange(saved.slot.state, nullptr));
    }
    for (SavedState const& saved : std::exchange(states, {})) {
        internal::release(counted(saved.object));
    }
    parts.clear();
}

namespace {
void exchangeBackwards(std::vector<std::unique_ptr<StepPart>> const& parts) noexcept {
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        (*part)->exchange();
    }
}
} // namespace

// DeviantData ----------------------------------------------------------------------------------

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

bool DeviantData::mayComeBack(ClassObjectIntf const* object) const {
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

ObjectIntf* DeviantData::savedOldState(ClassObjectIntf const* object) const noexcept {
    auto const found = open_->savedIndex.find(object);
    if (found == open_->savedIndex.end()) {
        return nullptr;
    }
    SavedState const& saved = open_->record.states[found->second];
    return saved.created ? static_cast<ObjectIntf*>(Deviant::InvalidObject) : saved.slot.state;
}

ObjectIntf* DeviantData::saveOldState(ClassObjectIntf const* object, ObjectIntf* state) {
    QOB_REQUIRE(open_ != nullptr, "An old state can be saved only in an open transaction.");
    model_.requireOwn(object);
    if (state == nullptr) {
        state = static_cast<ObjectIntf*>(Deviant::FallbackToRoot);
    }
    auto* const writable = const_cast<ClassObjectIntf*>(object);
    auto const [entry, isNew] = open_->savedIndex.try_emplace(object, open_->record.states.size());
    if (isNew) {
        open_->record.states.push_back({writable, {state, false}, false});
        retain(counted(object));
    } else {
        SavedState& saved = open_->record.states[entry->second];
        writable->deviant_destroyState(std::exchange(saved.slot.state, state));
    }
    return state;
}

void DeviantData::markCreated(ClassObjectIntf const* object) {
    if (open_ == nullptr) {
        return;
    }
    model_.requireOwn(object);
    if (open_->savedIndex.try_emplace(object, open_->record.states.size()).second) {
        // A branch that takes the creation back is without the object, also where the root has come
        // to know it since.
        StateSlot before = slotOf(object);
        if (!isRoot() && (before.state == nullptr || before.state == Deviant::FallbackToRoot)) {
            before.state = static_cast<ObjectIntf*>(Deviant::InvalidObject);
        }
        open_->record.states.push_back({const_cast<ClassObjectIntf*>(object), before, true});
        retain(counted(object));
    }
}

void DeviantData::keep(std::unique_ptr<StepPart> part) {
    if (open_ != nullptr) {
        open_->record.parts.push_back(std::move(part));
    }
}

void DeviantData::forgetParts() noexcept {
    for (auto* const steps : {&undo_, &redo_}) {
        for (Step& step : *steps) {
            step.parts.clear();
        }
    }
    if (open_ != nullptr) {
        open_->record.parts.clear();
    }
}

void DeviantData::forgetCreation(ClassObjectIntf const* object) {
    if (open_ == nullptr) {
        return;
    }
    auto const found = open_->savedIndex.find(object);
    std::vector<SavedState>& states = open_->record.states;
    if (found == open_->savedIndex.end() || !states[found->second].created) {
        return;
    }
    auto const first = states.begin() + static_cast<std::ptrdiff_t>(found->second);
    std::for_each(states.rbegin(), std::make_reverse_iterator(first), [this](SavedState& saved) {
        restore(saved);
        open_->savedIndex.erase(saved.object);
    });
    Step refused;
    refused.states.assign(first, states.end());
    states.erase(first, states.end());
    refused.release();
}

std::uint64_t DeviantData::begin() {
    if (open_ != nullptr) {
        ++open_->depth;
    } else {
        open_ = std::make_unique<OpenTransaction>();
        open_->serial = ++transactionSerial;
        setGate(InTransaction, true);
    }
    return open_->serial;
}

void DeviantData::commit() {
    if (open_->depth > 1) {
        --open_->depth;
        return;
    }
    if (isRoot()) {
        for (SavedState const& saved : open_->record.states) {
            saved.object->deviant_commitTransientState(self_);
        }
    }
    Step step = std::move(open_->record);
    closeTransaction();
    if (hasGate(UndoEnabled) && !step.empty()) {
        for (Step& undone : std::exchange(redo_, {})) {
            undone.release();
        }
        undo_.push_back(std::move(step));
        enterStepsToRoot();
    } else {
        step.release();
    }
}

void DeviantData::rollback() noexcept {
    Step& record = open_->record;
    for (auto saved = record.states.rbegin(); saved != record.states.rend(); ++saved) {
        restore(*saved);
    }
    exchangeBackwards(record.parts);
    Step step = std::move(record);
    closeTransaction();
    step.release();
}

void DeviantData::restore(SavedState& saved) noexcept {
    if (saved.created) {
        exchange(saved);
        return;
    }
    saved.object->internal_setDeviation(self_, std::exchange(saved.slot.state, nullptr));
    if (auto const found = states_.find(saved.object); found != states_.end()) {
        found->second.destroyedHere = saved.slot.destroyedHere;
    }
}

void DeviantData::closeTransaction() noexcept {
    open_.reset();
    setGate(InTransaction, false);
}

void DeviantData::setGate(WriteGate bit, bool on) noexcept {
    std::uint32_t& gate = DeviantAccess::record(self_).writeGate;
    gate = on ? gate | bit : gate & ~static_cast<std::uint32_t>(bit);
}

bool DeviantData::hasGate(WriteGate bit) const noexcept {
    return (DeviantAccess::record(self_).writeGate & bit) != 0;
}

void DeviantData::setUndoEnabled(bool enabled) {
    setGate(UndoEnabled, enabled);
    if (!enabled) {
        for (auto* const steps : {&undo_, &redo_}) {
            for (Step& step : std::exchange(*steps, {})) {
                step.release();
            }
        }
        stepsToRoot_.clear();
    }
}

void DeviantData::enterStepsToRoot() {
    if (isRoot()) {
        return;
    }
    std::vector<SavedState> const& states = undo_.back().states;
    for (std::size_t i = 0; i != states.size(); ++i) {
        if (states[i].slot.state == Deviant::FallbackToRoot) {
            stepsToRoot_[states[i].object] = {undo_.size() - 1, i};
        }
    }
}

void DeviantData::dropStepsToRoot() {
    for (SavedState const& saved : undo_.back().states) {
        auto const found = stepsToRoot_.find(saved.object);
        if (found != stepsToRoot_.end() && found->second.step == undo_.size() - 1) {
            stepsToRoot_.erase(found);
        }
    }
}

bool DeviantData::travel(std::vector<Step>& from, std::vector<Step>& to) {
    QOB_REQUIRE(open_ == nullptr, "Undo and redo wait for the end of the open transaction.");
    QOB_REQUIRE(!hasGate(ReadOnly), "A read-only deviant has no undo and no redo.");
    if (from.empty()) {
        return false;
    }
    to.reserve(to.size() + 1);
    if (&from == &undo_) {
        dropStepsToRoot();
    }
    Step& step = from.back();
    if (isRoot() && model_.hasBranches()) {
        for (SavedState const& saved : step.states) {
            protectReaders(saved);
        }
    }
    for (auto saved = step.states.rbegin(); saved != step.states.rend(); ++saved) {
        exchange(*saved);
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
    return true;
}

void DeviantData::exchange(SavedState& saved) {
    if (isRoot()) {
        std::swap(ModelCore::deviationsOf(saved.object).rootState_, saved.slot.state);
        return;
    }
    auto const [entry, isNew] = states_.try_emplace(saved.object);
    std::swap(entry->second, saved.slot);
    if (entry->second.state == nullptr) {
        states_.erase(entry);
    } else {
        ModelCore::deviationsOf(saved.object).hasBranchState_ = 1;
    }
}

void DeviantData::protectReaders(SavedState const& saved) {
    if (ModelCore::deviationsOf(saved.object).rootState_ != nullptr) {
        saved.object->deviant_commitTransientState(self_);
        return;
    }
    // The object is about to come back in the root: branches that don't know it stay without it.
    model_.forEachBranch([&](DeviantData& branch) {
        if (branch.state(saved.object) == nullptr) {
            branch.setState(saved.object, static_cast<ObjectIntf*>(Deviant::InvalidObject));
        }
    });
}

void DeviantData::dropRecords() {
    if (open_ != nullptr) {
        Step step = std::move(open_->record);
        closeTransaction();
        step.release();
    }
    setUndoEnabled(false);
}

void DeviantData::dropStates() {
    KeepAlive const keep(isRoot() ? std::vector<ClassObjectIntf*>() : changedObjects());
    auto const states = std::exchange(states_, {});
    for (auto const& [object, slot] : states) {
        const_cast<ClassObjectIntf*>(object)->deviant_destroyState(slot.state);
    }
}

// ModelCore ------------------------------------------------------------------------------------

ModelCore::ModelCore(ClassObjectIntf* model) : model_(model) {
    root_ = &makeDeviant();
    DeviantAccess::record(root_->self()).rootIndex = DeviantAccess::index(root_->self());
    retain(counted(model_));
    nextModel_ = firstModel;
    if (nextModel_ != nullptr) {
        nextModel_->previousModel_ = this;
    }
    firstModel = this;
}

ModelCore::~ModelCore() {
    if (previousModel_ != nullptr) {
        previousModel_->nextModel_ = nextModel_;
    } else {
        firstModel = nextModel_;
    }
    if (nextModel_ != nullptr) {
        nextModel_->previousModel_ = previousModel_;
    }
}

ModelCore& ModelCore::of(Deviant deviant) {
    return DeviantData::of(deviant).model();
}

DeviationsBase& ModelCore::deviationsOf(ClassObjectIntf const* object) {
    auto* const deviations = castObject<DeviationsBase>(const_cast<ClassObjectIntf*>(object));
    QOB_REQUIRE(deviations != nullptr, "The object is no root object.");
    return *deviations;
}

void ModelCore::endAll(ClassObjectIntf const* kept) noexcept {
    for (ModelCore* core = firstModel; core != nullptr;) {
        if (core->model_ == kept) {
            core = core->nextModel_;
        } else {
            core->model_->destroy(core->root());
            core = firstModel; // the list has changed
        }
    }
}

void ModelCore::forgetParts() noexcept {
    for (DeviantData* data = root_; data != nullptr; data = data->next_) {
        data->forgetParts();
    }
}

DeviantData& ModelCore::makeDeviant() {
    std::uint32_t const index = acquireRecord();
    DeviantRecord& record = recordAt(index);
    Deviant const self = DeviantAccess::make(index, record.generation);
    try {
        record.data = new DeviantData(*this, self);
    } catch (...) {
        retireRecord(index);
        throw;
    }
    record.model = this;
    record.rootIndex = root_ != nullptr ? DeviantAccess::index(root_->self()) : index;
    DeviantData& data = *record.data;
    data.previous_ = last_;
    if (last_ != nullptr) {
        last_->next_ = &data;
    }
    last_ = &data;
    return data;
}

void ModelCore::retireDeviant(DeviantData& data) {
    (data.next_ != nullptr ? data.next_->previous_ : last_) = data.previous_;
    if (data.previous_ != nullptr) {
        data.previous_->next_ = data.next_;
    }
    retireRecord(DeviantAccess::index(data.self()));
    delete &data;
}

Deviant ModelCore::createBranch() {
    return makeDeviant().self();
}

void ModelCore::removeBranch(Deviant branch) {
    DeviantData& data = DeviantData::of(branch);
    if (data.open_ != nullptr) {
        data.rollback();
    }
    data.dropRecords();
    data.dropStates();
    retireDeviant(data);
}

void ModelCore::allDeviants(std::vector<Deviant>& deviants) const {
    for (DeviantData const* data = root_; data != nullptr; data = data->next_) {
        deviants.push_back(data->self());
    }
}

DeviationsBase& ModelCore::requireOwn(ClassObjectIntf const* object) const {
    DeviationsBase& deviations = deviationsOf(object);
    QOB_REQUIRE(deviations.rootDeviant_ == root(), "The object belongs to another model.");
    return deviations;
}

void ModelCore::addObject(ClassObjectIntf* object) {
    DeviationsBase& deviations = requireOwn(object);
    QOB_REQUIRE(deviations.slot_ == DeviationsBase::NoSlot, "The object is in the model already.");
    QOB_REQUIRE(objects_.size() < DeviationsBase::NoSlot,
                "The number of objects of the model is at its limit.");
    objects_.push_back(object);
    deviations.slot_ = static_cast<std::uint32_t>(objects_.size() - 1) & DeviationsBase::NoSlot;
}

void ModelCore::removeObject(ClassObjectIntf* object) {
    DeviationsBase& deviations = requireOwn(object);
    if (deviations.slot_ == DeviationsBase::NoSlot) {
        return;
    }
    objects_[deviations.slot_] = nullptr;
    ++freeSlots_;
    deviations.slot_ = DeviationsBase::NoSlot;
    forgetId(object);
    if (deviations.hasBranchState_ != 0) {
        forEachBranch([object](DeviantData& branch) { branch.forgetObject(object); });
    }
    compactObjects();
}

void ModelCore::compactObjects() {
    while (!objects_.empty() && objects_.back() == nullptr) {
        objects_.pop_back();
        --freeSlots_;
    }
    constexpr std::size_t worthIt = 64;
    if (freeSlots_ < worthIt || freeSlots_ < objects_.size() / 2) {
        return;
    }
    std::erase(objects_, nullptr);
    freeSlots_ = 0;
    for (std::size_t i = 0; i < objects_.size(); ++i) {
        deviationsOf(objects_[i]).slot_ = static_cast<std::uint32_t>(i) & DeviationsBase::NoSlot;
    }
}

bool ModelCore::isIdInUse(int id) const {
    return firstWithId(id) != nullptr || sharedIds_.contains(id);
}

Integer ModelCore::allocateId() {
    if (highestId_ != INT_MAX) {
        return ++highestId_;
    }
    // There are fewer objects than ids, so the search ends.
    do {
        lastFreeId_ = lastFreeId_ != INT_MAX ? lastFreeId_ + 1 : 1;
    } while (isIdInUse(lastFreeId_));
    return lastFreeId_;
}

bool ModelCore::meets(ClassObjectIntf const* owner,
                      ClassObjectIntf const* object,
                      Deviant deviant) const {
    // Where an object is created, what comes back by undo does so after the object is gone.
    bool const isNew = deviationsOf(object).hasBoundId_ == 0;
    for (DeviantData const* data = root_; data != nullptr; data = data->next_) {
        Deviant const each = data->self();
        bool const isHere = each == deviant || object->deviant_isValid(each) ||
                            (!isNew && data->mayComeBack(object));
        bool const followsUndo = isNew && each == deviant;
        if (isHere &&
            (owner->deviant_isValid(each) || (!followsUndo && data->mayComeBack(owner)))) {
            return true;
        }
    }
    return false;
}

void ModelCore::bindId(Deviant deviant, ClassObjectIntf* object, Integer id) {
    if (id.isValid()) {
        forEachWithId(id, [&](ClassObjectIntf* owner) {
            if (owner != object && meets(owner, object, deviant)) {
                std::string const subject = describe(owner);
                QOB_FAIL("The object id (%d) belongs to %s already.",
                         static_cast<int const&>(id),
                         subject.c_str());
            }
        });
    }
    forgetId(object);
    object->setObjectId(deviant, id);
    if (!id.isValid()) {
        return;
    }
    if (ClassObjectIntf*& place = placeOfId(id); place == nullptr) {
        place = object;
    } else {
        sharedIds_.emplace(id, object);
    }
    deviationsOf(object).hasBoundId_ = 1;
    highestId_ = std::max<int>(highestId_, id);
}

ClassObjectIntf* ModelCore::firstWithId(int id) const {
    if (id >= 0 && static_cast<std::size_t>(id) < denseIds_.size()) {
        return denseIds_[static_cast<std::size_t>(id)];
    }
    auto const found = sparseIds_.find(id);
    return found != sparseIds_.end() ? found->second : nullptr;
}

ClassObjectIntf*& ModelCore::placeOfId(int id) {
    // Ids that others gave move to their positions only if the gap to them is small.
    constexpr std::size_t gap = 64;
    if (id >= 0 && static_cast<std::size_t>(id) < denseIds_.size() + gap && sparseIds_.empty()) {
        auto const position = static_cast<std::size_t>(id);
        if (position >= denseIds_.size()) {
            denseIds_.resize(position + 1);
        }
        return denseIds_[position];
    }
    return id >= 0 && static_cast<std::size_t>(id) < denseIds_.size()
               ? denseIds_[static_cast<std::size_t>(id)]
               : sparseIds_[id];
}

ClassObjectIntf* ModelCore::findId(Deviant deviant, Integer id) const {
    ClassObjectIntf* const candidate = firstWithId(id);
    if (candidate != nullptr && candidate->deviant_isValid(deviant)) {
        return candidate;
    }
    if (sharedIds_.empty()) {
        return nullptr;
    }
    auto const [first, last] = sharedIds_.equal_range(id);
    auto const shared = std::find_if(
        first, last, [&](auto const& entry) { return entry.second->deviant_isValid(deviant); });
    return shared != last ? shared->second : nullptr;
}

void ModelCore::forgetId(ClassObjectIntf* object) {
    DeviationsBase& deviations = deviationsOf(object);
    if (deviations.hasBoundId_ == 0) {
        return;
    }
    deviations.hasBoundId_ = 0;
    if (firstWithId(deviations.objectId_) == object) {
        placeOfId(deviations.objectId_) = nullptr;
        return;
    }
    // The object shares its id, or its id was set past the index.
    auto const isObject = [&](auto const& entry) { return entry.second == object; };
    if (std::erase_if(sharedIds_, isObject) == 0) {
        boost::unordered::erase_if(sparseIds_, isObject);
        std::replace(
            denseIds_.begin(), denseIds_.end(), object, static_cast<ClassObjectIntf*>(nullptr));
    }
}

void ModelCore::end() {
    std::vector<ClassObjectIntf*> objects;
    objects.reserve(objectCount());
    forEachObject([&](ClassObjectIntf* object) { objects.push_back(object); });
    KeepAlive const keep(std::move(objects));

    for (DeviantData* data = root_; data != nullptr; data = data->next_) {
        data->dropRecords();
    }
    for (DeviantData* data = root_; data != nullptr; data = data->next_) {
        data->dropStates();
    }
    for (ClassObjectIntf* const object : keep.objects()) {
        object->deviant_markModelDestroyed();
        if (object->numRef() > 1) { // no state counts it any more, so some handle does
            noteOutliving(object);
        }
    }
    objects_.clear();
    freeSlots_ = 0;
    denseIds_.clear();
    sparseIds_.clear();
    sharedIds_.clear();
    while (last_ != nullptr) {
        retireDeviant(*last_);
    }
    root_ = nullptr;
    internal::release(counted(model_));
}

} // namespace QOB::internal
