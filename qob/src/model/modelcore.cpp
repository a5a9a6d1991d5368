#include "model/modelcore.h"

#include "model/keepalive.h"
#include "object/describe.h"
#include "qob/qob/assert.h"
#include "registry/remnants.h"

#include <climits>

#include <algorithm>
#include <utility>

namespace QOB::internal {

namespace {
ModelCore* firstModel = nullptr;
} // namespace

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
    DeviantRecord& record = deviantRecordAt(index);
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
