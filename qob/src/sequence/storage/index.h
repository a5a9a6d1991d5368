#pragma once

#include "sequence/storage/chunk.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace QOB {

/// Element to slot, for a family of directories that come from one another by writes. The map
/// describes the directories at `current`; the log holds one step for each change, which crossed
/// in either direction leads to the state before or after it.
struct QOB_HIDDEN ReferenceStorage::Index {
    using Map = boost::unordered_flat_map<Element, std::uint32_t>;

    struct Step {
        Element element;
        std::uint32_t slotBeyond; ///< what the element has on the other side of the step
    };

    class Share;

    Map map;
    std::vector<Step> log;
    std::size_t current = 0;
    std::size_t travelled = 0; ///< steps crossed by look-ups so far
    Share* shares = nullptr;
};

/// What a directory has of an index: nothing, or the index and the position in its log at which the
/// index describes the directory. An index belongs to its shares together.
class QOB_HIDDEN ReferenceStorage::Index::Share {
public:
    Share() noexcept = default;
    /// Of the same index, at the same position.
    Share(Share const& other) noexcept {
        if (other.index_ != nullptr) {
            join(*other.index_, other.position_);
        }
    }
    Share& operator=(Share const&) = delete;
    ~Share() { leave(); }

    void leave() noexcept;
    bool isMade() const noexcept { return index_ != nullptr; }

    /// Makes the map describe the directory, which this share belongs to.
    void ensure(Directory const& directory) {
        if (index_ == nullptr || index_->current != position_) {
            bringHere(directory);
        }
    }

    // These need a share that has been ensured.

    /// For a change of the directory that noteChange() reports.
    Map& map() noexcept { return index_->map; }
    /// NoSlot for an element that isn't in the list.
    std::uint32_t slotOf(Element element) const noexcept {
        auto const found = index_->map.find(element);
        return found == index_->map.end() ? storage::NoSlot : found->second;
    }
    /// Notes a change for those who share the index. Whoever is further away than an index of its
    /// own would cost has to make one.
    void noteChange(Element element, std::uint32_t slotBefore) noexcept {
        if (!isOnly()) {
            record(element, slotBefore);
        }
    }

    // Without an index these do nothing.

    /// Before a change of the directory: it becomes the newest that the log knows.
    void beginChange(Directory const& directory);
    /// The element has come to another slot.
    void move(Element element, std::uint32_t slot) noexcept {
        if (index_ != nullptr) {
            auto const found = index_->map.find(element);
            noteChange(element, std::exchange(found->second, slot));
        }
    }
    /// The element is leaving the list.
    void remove(Element element) noexcept {
        if (index_ != nullptr) {
            auto const found = index_->map.find(element);
            noteChange(element, found->second);
            index_->map.erase(found);
        }
    }

    /// False if the map describes the directory now and says something else.
    bool isConsistentWith(Map const& slots) const {
        return index_ == nullptr || index_->current != position_ || index_->map == slots;
    }

private:
    bool isOnly() const noexcept { return index_->shares == this && next_ == nullptr; }
    void join(Index& index, std::size_t position) noexcept;
    template <class Condition>
    void dismissOthers(Condition const& condition) noexcept;
    void bringHere(Directory const& directory);
    void build(Directory const& directory);
    void cross(Step& step);
    void forgetLog() noexcept;
    void record(Element element, std::uint32_t slotBefore) noexcept;

    Index* index_ = nullptr;
    std::size_t position_ = 0;
    Share* previous_ = nullptr;
    Share* next_ = nullptr;
};

} // namespace QOB
