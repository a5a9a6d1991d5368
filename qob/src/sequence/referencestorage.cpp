#include "qob/kernel/containers/sequence/multiindex/referencestorage.h"

#include "qob/qob/nsinterface/classobjectintf.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <algorithm>
#include <cassert>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

namespace QOB {

namespace {

using Element = ReferenceStorage::Element;

constexpr std::uint32_t FirstCapacity = 4;
constexpr std::uint32_t ArrayLimit = 64;
constexpr std::uint32_t ChunkLimit = 256;
/// A list that shrinks to this becomes an array again.
constexpr std::uint32_t ArrayAgain = 32;
/// A chunk that falls below the first is joined with a neighbour if both make no more than the
/// second.
constexpr std::uint32_t SparseChunk = 64;
constexpr std::uint32_t JoinedLimit = 192;

constexpr std::uint32_t NoSlot = 0xFFFF'FFFF;
/// A record of changes shorter than this is always worth keeping.
constexpr std::size_t ShortLog = 64;
/// Debug builds check lists up to this length after each write.
[[maybe_unused]] constexpr std::size_t CheckedLength = 1024;

void retain(Element element) {
    internal::retain(static_cast<ReferenceCountingIntf const*>(element));
}

void release(Element element) {
    internal::release(static_cast<ReferenceCountingIntf const*>(element));
}

} // namespace

/// What lists share: an array or a directory, counted by the lists that hold it.
struct ReferenceStorage::Block {
    explicit Block(bool isDirectory) noexcept : large(isDirectory) {}

    std::uint32_t count = 1;
    bool large;
};

/// An array of elements, each counted once for the chunk. Counted by lists (as the array of a short
/// one) or by directories.
struct ReferenceStorage::Chunk : Block {
    static Chunk* allocate(std::uint32_t capacity) {
        return new (::operator new(bytes(capacity))) Chunk(capacity);
    }
    /// Frees the memory; the elements' counts are someone else's by now.
    static void free(Chunk* chunk) noexcept { ::operator delete(chunk); }

    static void drop(Chunk* chunk) noexcept {
        if (--chunk->count == 0) {
            for (std::uint32_t i = 0; i < chunk->size; ++i) {
                release(chunk->elements()[i]);
            }
            free(chunk);
        }
    }

    Chunk* clone(std::uint32_t newCapacity) const {
        Chunk* const copy = allocate(newCapacity);
        copy->append(elements(), size);
        copy->retainAll();
        return copy;
    }

    Element* elements() noexcept { return reinterpret_cast<Element*>(this + 1); }
    Element const* elements() const noexcept { return reinterpret_cast<Element const*>(this + 1); }

    /// The offset of the element, or the size. Looks at eight elements between two jumps.
    std::uint32_t find(Element element) const noexcept {
        constexpr std::uint32_t step = 8;
        Element const* const first = elements();
        std::uint32_t i = 0;
        for (; i + step <= size; i += step) {
            bool found = false;
            for (std::uint32_t j = 0; j < step; ++j) {
                found |= first[i + j] == element;
            }
            if (found) {
                break;
            }
        }
        while (i < size && first[i] != element) {
            ++i;
        }
        return i;
    }
    void append(Element const* from, std::uint32_t number) noexcept {
        std::memcpy(elements() + size, from, number * sizeof(Element));
        size += number;
    }
    void prepend(Element const* from, std::uint32_t number) noexcept {
        std::memmove(elements() + number, elements(), size * sizeof(Element));
        std::memcpy(elements(), from, number * sizeof(Element));
        size += number;
    }
    void insert(std::uint32_t offset, Element element) noexcept {
        Element* const place = elements() + offset;
        std::memmove(place + 1, place, (size - offset) * sizeof(Element));
        *place = element;
        ++size;
    }
    void erase(std::uint32_t offset, std::uint32_t number) noexcept {
        Element* const place = elements() + offset;
        std::memmove(place, place + number, (size - offset - number) * sizeof(Element));
        size -= number;
    }
    void retainAll() const {
        for (std::uint32_t i = 0; i < size; ++i) {
            retain(elements()[i]);
        }
    }

    std::uint32_t size = 0;
    std::uint32_t capacity;

private:
    explicit Chunk(std::uint32_t room) noexcept : Block(false), capacity(room) {}
    static std::size_t bytes(std::uint32_t capacity) noexcept {
        return sizeof(Chunk) + capacity * sizeof(Element);
    }
};

/// Element to slot, for a family of directories that come from one another by writes. The map
/// describes the directories at `current_`; the log holds one step for each change, which crossed
/// in either direction leads to the state before or after it.
struct ReferenceStorage::Index {
    using Map = boost::unordered_flat_map<Element, std::uint32_t>;

    struct Step {
        Element element;
        std::uint32_t slotBeyond; ///< what the element has on the other side of the step
    };

    Map map;
    std::vector<Step> log;
    std::size_t current = 0;
    std::size_t travelled = 0; ///< steps crossed by look-ups so far
    Directory* holders = nullptr;
};

/// The chunks of a long list. A slot is a chunk's stable name: it stays when the chunk is cloned or
/// others come before it, so that the hash needn't change.
struct ReferenceStorage::Directory : Block {
    Directory() noexcept : Block(true) {}
    Directory(Directory const& other)
        : Block(true),
          size(other.size),
          slots(other.slots),
          freeSlots(other.freeSlots),
          order(other.order),
          orderOfSlot(other.orderOfSlot),
          tree(other.tree),
          treeIsValid(other.treeIsValid) {
        for (Chunk* const chunk : slots) {
            if (chunk != nullptr) {
                ++chunk->count;
            }
        }
        if (other.index != nullptr) {
            join(*other.index, other.logPosition);
        }
    }
    Directory& operator=(Directory const&) = delete;
    ~Directory() {
        leaveIndex();
        for (std::uint32_t const slot : order) {
            Chunk::drop(slots[slot]);
        }
    }

    struct Place {
        std::uint32_t order;
        std::uint32_t offset;
    };

    std::uint32_t chunkCount() const noexcept { return static_cast<std::uint32_t>(order.size()); }
    Chunk& chunkAt(std::uint32_t orderIndex) const noexcept { return *slots[order[orderIndex]]; }

    /// The chunk at a place in the order, ready to be changed.
    Chunk& ownChunk(std::uint32_t orderIndex) {
        Chunk*& chunk = slots[order[orderIndex]];
        if (chunk->count != 1) {
            Chunk* const copy = chunk->clone(ChunkLimit);
            --chunk->count;
            chunk = copy;
        }
        return *chunk;
    }

    /// Enters a chunk before the one at `orderIndex`; takes it over. Nothing changes if it raises.
    std::uint32_t addChunk(std::uint32_t orderIndex, Chunk* chunk) {
        makeRoom(order, order.size());
        makeRoom(tree, tree.size());
        std::uint32_t slot = NoSlot;
        if (freeSlots.empty()) {
            // Room for every slot to become free, so that removing a chunk can't fail.
            makeRoom(freeSlots, slots.size());
            makeRoom(slots, slots.size());
            orderOfSlot.push_back(0);
            slots.push_back(chunk);
            slot = static_cast<std::uint32_t>(slots.size() - 1);
        } else {
            slot = freeSlots.back();
            freeSlots.pop_back();
            slots[slot] = chunk;
        }
        order.insert(order.begin() + orderIndex, slot);
        renumber(orderIndex);
        if (treeIsValid && orderIndex + 1 == order.size()) {
            appendToTree();
        } else {
            treeIsValid = false;
        }
        return slot;
    }

    /// Takes a chunk out of the order and drops this directory's share in it.
    void removeChunk(std::uint32_t orderIndex) noexcept {
        std::uint32_t const slot = order[orderIndex];
        order.erase(order.begin() + orderIndex);
        Chunk* const chunk = std::exchange(slots[slot], nullptr);
        freeSlots.push_back(slot);
        renumber(orderIndex);
        if (orderIndex == order.size() && treeIsValid) {
            tree.pop_back();
        } else {
            treeIsValid = false;
        }
        Chunk::drop(chunk);
    }

    /// Room for one more than `size`, growing by doubling.
    template <class T>
    static void makeRoom(std::vector<T>& vector, std::size_t size) {
        if (vector.capacity() <= size) {
            vector.reserve(2 * size + 8);
        }
    }

    void renumber(std::uint32_t from) noexcept {
        for (std::uint32_t i = from; i < order.size(); ++i) {
            orderOfSlot[order[i]] = i;
        }
    }

    // The Fenwick tree over the sizes of the chunks in their order; entry 0 is unused.

    static constexpr std::uint32_t lowestBit(std::uint32_t i) noexcept { return i & (0U - i); }

    void appendToTree() {
        auto const i = static_cast<std::uint32_t>(tree.size());
        std::uint32_t sum = chunkAt(i - 1).size;
        for (std::uint32_t child = i - 1; child > i - lowestBit(i); child -= lowestBit(child)) {
            sum += tree[child];
        }
        tree.push_back(sum);
    }
    void ensureTree() {
        if (!treeIsValid) {
            tree.assign(1, 0);
            tree.reserve(order.size() + 1);
            while (tree.size() <= order.size()) {
                appendToTree();
            }
            treeIsValid = true;
        }
    }
    /// The size of a chunk and of the whole has changed by `difference` (modulo 2^32).
    void sizeChanged(std::uint32_t orderIndex, std::uint32_t difference) noexcept {
        size += difference;
        if (treeIsValid) {
            for (std::uint32_t i = orderIndex + 1; i < tree.size(); i += lowestBit(i)) {
                tree[i] += difference;
            }
        }
    }
    std::size_t elementsBefore(std::uint32_t orderIndex) {
        ensureTree();
        std::size_t sum = 0;
        for (std::uint32_t i = orderIndex; i != 0; i -= lowestBit(i)) {
            sum += tree[i];
        }
        return sum;
    }
    /// Where a position below size() is.
    Place locate(std::size_t position) {
        if (position < chunkAt(0).size) {
            return {0, static_cast<std::uint32_t>(position)};
        }
        std::uint32_t const last = chunkCount() - 1;
        if (std::size_t const rest = size - position; rest <= chunkAt(last).size) {
            return {last, static_cast<std::uint32_t>(chunkAt(last).size - rest)};
        }
        ensureTree();
        auto remainder = static_cast<std::uint32_t>(position);
        std::uint32_t node = 0;
        std::uint32_t step = 1;
        while (std::size_t{2} * step < tree.size()) {
            step *= 2;
        }
        for (; step != 0; step /= 2) {
            if (node + step < tree.size() && tree[node + step] <= remainder) {
                node += step;
                remainder -= tree[node];
            }
        }
        return {node, remainder};
    }

    /// Where an element can be inserted before the one at `position`: in a chunk with room. At the
    /// edge of a full chunk a new one is started, so that appending fills each to the brim; between
    /// two elements a full chunk is split. Whatever it raises, the list is still right.
    Place placeForInsertion(std::size_t position) {
        Place place{chunkCount() - 1, 0};
        if (position == size) {
            place.offset = chunkAt(place.order).size;
        } else {
            place = locate(position);
        }
        if (chunkAt(place.order).size < ChunkLimit) {
            ownChunk(place.order);
            return place;
        }
        bool const atBegin = place.offset == 0;
        bool const atEnd = place.offset == ChunkLimit;
        if (!atBegin && !atEnd) {
            ownChunk(place.order);
        }
        Chunk* const fresh = Chunk::allocate(ChunkLimit);
        std::uint32_t slot = NoSlot;
        try {
            slot = addChunk(atBegin ? place.order : place.order + 1, fresh);
        } catch (...) {
            Chunk::free(fresh);
            throw;
        }
        if (atBegin || atEnd) {
            return {atBegin ? place.order : place.order + 1, 0};
        }
        Chunk& full = chunkAt(place.order);
        constexpr std::uint32_t kept = ChunkLimit / 2;
        fresh->append(full.elements() + kept, ChunkLimit - kept);
        full.size = kept;
        for (std::uint32_t i = 0; i < fresh->size; ++i) {
            indexMove(fresh->elements()[i], slot);
        }
        sizeChanged(place.order, 0U - fresh->size);
        sizeChanged(place.order + 1, fresh->size);
        return place.offset <= kept ? place : Place{place.order + 1, place.offset - kept};
    }

    /// Empties a sparse chunk into a neighbour that no other list shares.
    void joinWithNeighbour(std::uint32_t orderIndex) noexcept {
        Chunk& sparse = chunkAt(orderIndex);
        auto const fits = [&](std::uint32_t other) {
            return other < chunkCount() && chunkAt(other).count == 1 &&
                   chunkAt(other).size + sparse.size <= JoinedLimit;
        };
        std::uint32_t into = orderIndex + 1;
        if (orderIndex != 0 && fits(orderIndex - 1)) {
            into = orderIndex - 1;
            chunkAt(into).append(sparse.elements(), sparse.size);
        } else if (fits(into)) {
            chunkAt(into).prepend(sparse.elements(), sparse.size);
        } else {
            return;
        }
        for (std::uint32_t i = 0; i < sparse.size; ++i) {
            indexMove(sparse.elements()[i], order[into]);
        }
        sizeChanged(into, sparse.size);
        sizeChanged(orderIndex, 0U - sparse.size);
        sparse.size = 0; // the counts went with the elements
        removeChunk(orderIndex);
    }

    bool isConsistent() {
        std::size_t total = 0;
        for (std::uint32_t i = 0; i < order.size(); ++i) {
            Chunk const& chunk = chunkAt(i);
            if (orderOfSlot[order[i]] != i || chunk.count == 0 || chunk.size == 0 ||
                chunk.size > ChunkLimit || chunk.capacity < ChunkLimit ||
                elementsBefore(i) != total) {
                return false;
            }
            total += chunk.size;
        }
        if (total != size || slots.size() != order.size() + freeSlots.size()) {
            return false;
        }
        boost::unordered_flat_map<Element, std::uint32_t> distinct;
        for (std::uint32_t const slot : order) {
            for (std::uint32_t i = 0; i < slots[slot]->size; ++i) {
                if (!distinct.emplace(slots[slot]->elements()[i], slot).second) {
                    return false;
                }
            }
        }
        return index == nullptr || index->current != logPosition || index->map == distinct;
    }

    // The index

    void join(Index& other, std::size_t position) noexcept {
        index = &other;
        logPosition = position;
        previousHolder = nullptr;
        nextHolder = other.holders;
        if (nextHolder != nullptr) {
            nextHolder->previousHolder = this;
        }
        other.holders = this;
    }
    void leaveIndex() noexcept {
        if (index == nullptr) {
            return;
        }
        (previousHolder != nullptr ? previousHolder->nextHolder : index->holders) = nextHolder;
        if (nextHolder != nullptr) {
            nextHolder->previousHolder = previousHolder;
        }
        if (index->holders == nullptr) {
            delete index;
        }
        index = nullptr;
        previousHolder = nullptr;
        nextHolder = nullptr;
    }
    template <class Condition>
    void dismissOthers(Condition condition) noexcept {
        for (Directory* holder = index->holders; holder != nullptr;) {
            Directory* const next = holder->nextHolder;
            if (holder != this && condition(*holder)) {
                holder->leaveIndex();
            }
            holder = next;
        }
    }

    void buildIndex() {
        auto fresh = std::make_unique<Index>();
        fresh->map.reserve(std::size_t{2} * size);
        for (std::uint32_t const slot : order) {
            Chunk const& chunk = *slots[slot];
            for (std::uint32_t i = 0; i < chunk.size; ++i) {
                fresh->map.emplace(chunk.elements()[i], slot);
            }
        }
        leaveIndex();
        join(*fresh.release(), 0);
    }

    /// Makes the map describe this directory. Many long ways between two lists that are both in use
    /// end with an index for each.
    void ensureIndex() {
        if (index == nullptr) {
            buildIndex();
            return;
        }
        if (index->current == logPosition) {
            return;
        }
        index->travelled += index->current > logPosition ? index->current - logPosition
                                                         : logPosition - index->current;
        if (index->travelled > index->map.size() + ShortLog) {
            buildIndex();
            return;
        }
        while (index->current > logPosition) {
            cross(index->log[index->current - 1]);
            --index->current;
        }
        while (index->current < logPosition) {
            cross(index->log[index->current]);
            ++index->current;
        }
    }
    void cross(Index::Step& step) {
        std::uint32_t const slot = slotOf(step.element);
        setSlot(step.element, step.slotBeyond);
        step.slotBeyond = slot;
    }
    std::uint32_t slotOf(Element element) const noexcept {
        auto const found = index->map.find(element);
        return found == index->map.end() ? NoSlot : found->second;
    }
    void setSlot(Element element, std::uint32_t slot) {
        if (slot == NoSlot) {
            index->map.erase(element);
        } else {
            index->map.insert_or_assign(element, slot);
        }
    }

    /// Before a change of this directory: it becomes the newest that the log knows.
    void beginChange() {
        if (index == nullptr) {
            return;
        }
        ensureIndex();
        if (isOnlyHolder()) {
            forgetLog();
        } else if (index->log.size() > logPosition) {
            dismissOthers(
                [this](Directory const& other) { return other.logPosition > logPosition; });
            index->log.resize(logPosition, {});
        }
    }
    bool isOnlyHolder() const noexcept { return index->holders == this && nextHolder == nullptr; }
    void forgetLog() noexcept {
        index->log.clear();
        index->current = 0;
        index->travelled = 0;
        logPosition = 0;
    }
    void indexMove(Element element, std::uint32_t slot) noexcept {
        if (index != nullptr) {
            auto const found = index->map.find(element);
            record(element, std::exchange(found->second, slot));
        }
    }
    void indexRemove(Element element) noexcept {
        if (index != nullptr) {
            auto const found = index->map.find(element);
            record(element, found->second);
            index->map.erase(found);
        }
    }
    /// Notes a change for those who share the index. Whoever is further away than an index of its
    /// own would cost has to make one.
    void record(Element element, std::uint32_t slotBefore) noexcept {
        if (isOnlyHolder()) {
            return;
        }
        if (index->log.size() <= index->map.size() + ShortLog) {
            try {
                index->log.push_back({element, slotBefore});
                logPosition = index->current = index->log.size();
                return;
            } catch (std::bad_alloc const&) {
                // Without the note the others can't come back to their state.
            }
        }
        dismissOthers([](Directory const&) { return true; });
        forgetLog();
    }

    std::uint32_t size = 0;
    std::vector<Chunk*> slots;
    std::vector<std::uint32_t> freeSlots;
    std::vector<std::uint32_t> order; ///< slots in the order of the list
    std::vector<std::uint32_t> orderOfSlot;
    std::vector<std::uint32_t> tree{0};
    bool treeIsValid = true;

    Index* index = nullptr; ///< owned by its holders together
    std::size_t logPosition = 0;
    Directory* previousHolder = nullptr;
    Directory* nextHolder = nullptr;
};

// Iteration

void ReferenceStorage::const_iterator::enterChunk(Chunk const& chunk, std::size_t offset) noexcept {
    chunkBegin_ = chunk.elements();
    chunkEnd_ = chunkBegin_ + chunk.size;
    position_ = chunkBegin_ + offset;
}

void ReferenceStorage::const_iterator::toNextChunk() noexcept {
    if (order_ + 1 < directory_->chunkCount()) {
        enterChunk(directory_->chunkAt(++order_), 0);
    }
}

void ReferenceStorage::const_iterator::toPreviousChunk() noexcept {
    if (order_ != 0) {
        Chunk const& chunk = directory_->chunkAt(--order_);
        enterChunk(chunk, chunk.size);
    }
}

ReferenceStorage::const_iterator ReferenceStorage::begin() const noexcept {
    const_iterator result;
    if (block_ != nullptr) {
        if (isLarge()) {
            result.directory_ = &large();
            result.enterChunk(large().chunkAt(0), 0);
        } else {
            result.enterChunk(small(), 0);
        }
    }
    return result;
}

ReferenceStorage::const_iterator ReferenceStorage::end() const noexcept {
    const_iterator result;
    if (block_ != nullptr) {
        if (isLarge()) {
            result.directory_ = &large();
            result.order_ = large().chunkCount() - 1;
            Chunk const& last = large().chunkAt(result.order_);
            result.enterChunk(last, last.size);
        } else {
            result.enterChunk(small(), small().size);
        }
    }
    return result;
}

ReferenceStorage::const_iterator ReferenceStorage::iteratorAt(std::size_t index) const {
    if (index == size()) {
        return end();
    }
    const_iterator result;
    if (isLarge()) {
        Directory::Place const place = large().locate(index);
        result.directory_ = &large();
        result.order_ = place.order;
        result.enterChunk(large().chunkAt(place.order), place.offset);
    } else {
        result.enterChunk(small(), index);
    }
    return result;
}

std::size_t ReferenceStorage::indexOf(const_iterator const& position) const {
    auto const offset = static_cast<std::size_t>(position.position_ - position.chunkBegin_);
    return position.directory_ == nullptr ? offset
                                          : large().elementsBefore(position.order_) + offset;
}

// Sharing

ReferenceStorage::ReferenceStorage(ReferenceStorage const& other) noexcept : block_(other.block_) {
    if (block_ != nullptr) {
        ++block_->count;
    }
}

void ReferenceStorage::drop(Block* block) noexcept {
    if (!block->large) {
        Chunk::drop(static_cast<Chunk*>(block));
    } else if (--block->count == 0) {
        delete static_cast<Directory*>(block);
    }
}

std::size_t ReferenceStorage::sizeOfBlock() const noexcept {
    return isLarge() ? large().size : small().size;
}

bool ReferenceStorage::isLarge() const noexcept {
    return block_ != nullptr && block_->large;
}

ReferenceStorage::Chunk& ReferenceStorage::small() const noexcept {
    return static_cast<Chunk&>(*block_);
}

ReferenceStorage::Directory& ReferenceStorage::large() const noexcept {
    return static_cast<Directory&>(*block_);
}

/// The array, held by this list alone and with room for `capacity` elements.
ReferenceStorage::Chunk& ReferenceStorage::ownSmall(std::uint32_t capacity) {
    Chunk& chunk = small();
    if (chunk.count != 1) {
        Chunk* const copy = chunk.clone(std::max(chunk.capacity, capacity));
        --chunk.count;
        block_ = copy;
    } else if (chunk.capacity < capacity) {
        Chunk* const grown = Chunk::allocate(std::max(chunk.capacity * 2, capacity));
        grown->append(chunk.elements(), chunk.size);
        Chunk::free(&chunk);
        block_ = grown;
    }
    return small();
}

/// The directory, held by this list alone.
ReferenceStorage::Directory& ReferenceStorage::ownLarge() {
    if (block_->count != 1) {
        auto* const copy = new Directory(large());
        --block_->count;
        block_ = copy;
    }
    large().beginChange();
    return large();
}

void ReferenceStorage::ownShortArray() {
    if (block_ != nullptr && !isLarge()) {
        ownSmall(small().size);
    }
}

void ReferenceStorage::makeLarge() {
    Chunk& array = ownSmall(ChunkLimit);
    auto directory = std::make_unique<Directory>();
    directory->size = array.size;
    directory->addChunk(0, &array);
    block_ = directory.release();
}

/// Called after a removal, on a directory that is this list's own.
void ReferenceStorage::becomeSmallAgain() noexcept {
    Directory& directory = large();
    if (directory.size > ArrayAgain) {
        return;
    }
    if (directory.size == 0) {
        drop(std::exchange(block_, nullptr));
        return;
    }
    Chunk* array = nullptr;
    try {
        array = Chunk::allocate(ArrayLimit);
    } catch (std::bad_alloc const&) {
        return; // stays large, which is right as well
    }
    for (std::uint32_t const slot : directory.order) {
        Chunk& chunk = *directory.slots[slot];
        array->append(chunk.elements(), chunk.size);
    }
    array->retainAll();
    drop(std::exchange(block_, array));
}

// Reading

Element ReferenceStorage::at(std::size_t index) const {
    if (!isLarge()) {
        return small().elements()[index];
    }
    Directory::Place const place = large().locate(index);
    return large().chunkAt(place.order).elements()[place.offset];
}

bool ReferenceStorage::contains(Element element) const {
    if (block_ == nullptr) {
        return false;
    }
    if (!isLarge()) {
        return small().find(element) != small().size;
    }
    large().ensureIndex();
    return large().slotOf(element) != NoSlot;
}

std::size_t ReferenceStorage::indexOf(Element element) const {
    if (block_ == nullptr) {
        return NotFound;
    }
    if (!isLarge()) {
        std::uint32_t const offset = small().find(element);
        return offset == small().size ? NotFound : offset;
    }
    large().ensureIndex();
    std::uint32_t const slot = large().slotOf(element);
    if (slot == NoSlot) {
        return NotFound;
    }
    return large().elementsBefore(large().orderOfSlot[slot]) + large().slots[slot]->find(element);
}

bool ReferenceStorage::equals(ReferenceStorage const& other) const noexcept {
    if (block_ == other.block_) {
        return true;
    }
    if (size() != other.size()) {
        return false;
    }
    const_iterator i = begin();
    const_iterator j = other.begin();
    for (std::size_t rest = size(); rest != 0;) {
        auto const number = std::min(i.chunkEnd_ - i.position_, j.chunkEnd_ - j.position_);
        if (i.position_ != j.position_ &&
            !std::equal(i.position_, i.position_ + number, j.position_)) {
            return false;
        }
        for (auto* const position : {&i, &j}) {
            position->position_ += number;
            if (position->position_ == position->chunkEnd_ && position->directory_ != nullptr) {
                position->toNextChunk();
            }
        }
        rest -= static_cast<std::size_t>(number);
    }
    return true;
}

// Writing

bool ReferenceStorage::insert(std::size_t index, Element element) {
    if (block_ == nullptr) {
        block_ = Chunk::allocate(FirstCapacity);
    }
    if (!isLarge()) {
        Chunk const& array = small();
        if (array.find(element) != array.size) {
            return false;
        }
        if (array.size < ArrayLimit) {
            ownSmall(array.size + 1).insert(static_cast<std::uint32_t>(index), element);
            retain(element);
            checkAfterWrite();
            return true;
        }
        makeLarge();
    } else if (block_->count != 1 && contains(element)) {
        return false; // before the directory is copied for nothing
    }
    Directory& directory = ownLarge();
    directory.ensureIndex();
    auto const [entry, isNew] = directory.index->map.try_emplace(element, NoSlot);
    if (!isNew) {
        return false;
    }
    try {
        Directory::Place const place = directory.placeForInsertion(index);
        directory.ownChunk(place.order).insert(place.offset, element);
        entry->second = directory.order[place.order];
        directory.sizeChanged(place.order, 1);
    } catch (...) {
        directory.index->map.erase(element);
        throw;
    }
    directory.record(element, NoSlot);
    retain(element);
    checkAfterWrite();
    return true;
}

bool ReferenceStorage::erase(Element element) {
    if (block_ == nullptr) {
        return false;
    }
    if (!isLarge()) {
        std::uint32_t const offset = small().find(element);
        if (offset == small().size) {
            return false;
        }
        eraseInArray(offset, 1);
        return true;
    }
    large().ensureIndex();
    std::uint32_t const slot = large().slotOf(element);
    if (slot == NoSlot) {
        return false;
    }
    std::uint32_t const order = large().orderOfSlot[slot];
    eraseInChunk(order, large().slots[slot]->find(element), 1);
    return true;
}

void ReferenceStorage::eraseRange(std::size_t index, std::size_t count) {
    while (count != 0 && isLarge()) {
        Directory::Place const place = large().locate(index);
        auto const number = static_cast<std::uint32_t>(
            std::min<std::size_t>(count, large().chunkAt(place.order).size - place.offset));
        eraseInChunk(place.order, place.offset, number);
        count -= number;
    }
    if (count == 0) {
        return;
    }
    eraseInArray(static_cast<std::uint32_t>(index), static_cast<std::uint32_t>(count));
}

void ReferenceStorage::eraseInArray(std::uint32_t offset, std::uint32_t number) {
    Chunk& array = ownSmall(small().size);
    for (std::uint32_t i = 0; i < number; ++i) {
        release(array.elements()[offset + i]);
    }
    array.erase(offset, number);
    if (array.size == 0) {
        drop(std::exchange(block_, nullptr));
    }
    checkAfterWrite();
}

void ReferenceStorage::eraseInChunk(std::uint32_t order,
                                    std::uint32_t offset,
                                    std::uint32_t number) {
    Directory& directory = ownLarge();
    Chunk& chunk = directory.ownChunk(order);
    Element const* const first = chunk.elements() + offset;
    for (std::uint32_t i = 0; i < number; ++i) {
        release(first[i]);
    }
    for (std::uint32_t i = 0; i < number; ++i) {
        directory.indexRemove(first[i]);
    }
    chunk.erase(offset, number);
    directory.sizeChanged(order, 0U - number);
    if (chunk.size == 0) {
        directory.removeChunk(order);
    } else if (chunk.size < SparseChunk) {
        directory.joinWithNeighbour(order);
    }
    becomeSmallAgain();
    checkAfterWrite();
}

void ReferenceStorage::clear() noexcept {
    if (block_ != nullptr) {
        drop(std::exchange(block_, nullptr));
    }
}

bool ReferenceStorage::replaceAt(std::size_t index, Element element) {
    if (contains(element)) {
        return false;
    }
    if (!isLarge()) {
        Element& place = ownSmall(small().size).elements()[index];
        release(place);
        place = element;
    } else {
        Directory& directory = ownLarge();
        directory.ensureIndex();
        Directory::Place const where = directory.locate(index);
        Element& place = directory.ownChunk(where.order).elements()[where.offset];
        directory.index->map.emplace(element, directory.order[where.order]);
        directory.record(element, NoSlot);
        release(place);
        directory.indexRemove(place);
        place = element;
    }
    retain(element);
    checkAfterWrite();
    return true;
}

// Invariants

void ReferenceStorage::checkAfterWrite() const {
    assert(size() > CheckedLength || isConsistent());
}

bool ReferenceStorage::isConsistent() const {
    if (block_ == nullptr) {
        return true;
    }
    if (!isLarge()) {
        Chunk const& array = small();
        std::vector<Element> sorted(array.elements(), array.elements() + array.size);
        std::sort(sorted.begin(), sorted.end(), std::less<>());
        return array.count > 0 && array.size > 0 && array.size <= array.capacity &&
               array.size <= ArrayLimit &&
               std::adjacent_find(sorted.begin(), sorted.end()) == sorted.end();
    }
    return large().isConsistent();
}

} // namespace QOB
