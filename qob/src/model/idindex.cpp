#include "model/idindex.h"

#include <climits>

#include <algorithm>
#include <cstddef>

namespace QOB::internal {

bool IdIndex::isInUse(int id) const {
    return firstWith(id) != nullptr || shared_.contains(id);
}

Integer IdIndex::allocate() {
    if (highest_ != INT_MAX) {
        return ++highest_;
    }
    // There are fewer objects than ids, so the search ends.
    do {
        lastFree_ = lastFree_ != INT_MAX ? lastFree_ + 1 : 1;
    } while (isInUse(lastFree_));
    return lastFree_;
}

NSInterface::ClassObjectIntf* IdIndex::firstWith(int id) const {
    if (id >= 0 && static_cast<std::size_t>(id) < dense_.size()) {
        return dense_[static_cast<std::size_t>(id)];
    }
    auto const found = sparse_.find(id);
    return found != sparse_.end() ? found->second : nullptr;
}

NSInterface::ClassObjectIntf*& IdIndex::placeOf(int id) {
    // Ids that others gave move to their positions only if the gap to them is small.
    constexpr std::size_t gap = 64;
    if (id >= 0 && static_cast<std::size_t>(id) < dense_.size() + gap && sparse_.empty()) {
        auto const position = static_cast<std::size_t>(id);
        if (position >= dense_.size()) {
            dense_.resize(position + 1);
        }
        return dense_[position];
    }
    return id >= 0 && static_cast<std::size_t>(id) < dense_.size()
               ? dense_[static_cast<std::size_t>(id)]
               : sparse_[id];
}

NSInterface::ClassObjectIntf* IdIndex::find(Deviant deviant, Integer id) const {
    ClassObjectIntf* const candidate = firstWith(id);
    if (candidate != nullptr && candidate->deviant_isValid(deviant)) {
        return candidate;
    }
    if (shared_.empty()) {
        return nullptr;
    }
    auto const [first, last] = shared_.equal_range(id);
    auto const shared = std::find_if(
        first, last, [&](auto const& entry) { return entry.second->deviant_isValid(deviant); });
    return shared != last ? shared->second : nullptr;
}

void IdIndex::enter(int id, ClassObjectIntf* object) {
    if (ClassObjectIntf*& place = placeOf(id); place == nullptr) {
        place = object;
    } else {
        shared_.emplace(id, object);
    }
    highest_ = std::max(highest_, id);
}

void IdIndex::forget(int id, ClassObjectIntf* object) {
    if (firstWith(id) == object) {
        placeOf(id) = nullptr;
        return;
    }
    auto const isObject = [&](auto const& entry) { return entry.second == object; };
    if (std::erase_if(shared_, isObject) == 0) {
        boost::unordered::erase_if(sparse_, isObject);
        std::replace(dense_.begin(), dense_.end(), object, static_cast<ClassObjectIntf*>(nullptr));
    }
}

void IdIndex::clear() noexcept {
    dense_.clear();
    sparse_.clear();
    shared_.clear();
}

} // namespace QOB::internal
