#include "sequence/storage/directory.h"

#include <cstddef>
#include <utility>

namespace QOB {

using storage::ChunkLimit;
using storage::NoSlot;

namespace {

/// Room for one more than `size`, growing by doubling.
template <class T>
void makeRoom(std::vector<T>& vector, std::size_t size) {
    if (vector.capacity() <= size) {
        vector.reserve(2 * size + 8);
    }
}

} // namespace

ReferenceStorage::Directory::Directory(Directory const& other)
    : Block(true),
      size(other.size),
      slots(other.slots),
      freeSlots(other.freeSlots),
      order(other.order),
      orderOfSlot(other.orderOfSlot),
      tree(other.tree),
      treeIsValid(other.treeIsValid),
      notesPlaces(other.notesPlaces),
      index(other.index) {
    for (Chunk* const chunk : slots) {
        if (chunk != nullptr) {
            ++chunk->count;
        }
    }
}

ReferenceStorage::Directory::~Directory() {
    index.leave();
    for (std::uint32_t const slot : order) {
        Chunk::drop(slots[slot]);
    }
}

std::uint32_t ReferenceStorage::Directory::addChunk(std::uint32_t orderIndex, Chunk* chunk) {
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

void ReferenceStorage::Directory::removeChunk(std::uint32_t orderIndex) noexcept {
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

void ReferenceStorage::Directory::renumber(std::uint32_t from) noexcept {
    for (std::uint32_t i = from; i < order.size(); ++i) {
        orderOfSlot[order[i]] = i;
    }
}

void ReferenceStorage::Directory::appendToTree() {
    auto const i = static_cast<std::uint32_t>(tree.size());
    std::uint32_t sum = chunkAt(i - 1).size;
    for (std::uint32_t child = i - 1; child > i - lowestBit(i); child -= lowestBit(child)) {
        sum += tree[child];
    }
    tree.push_back(sum);
}

void ReferenceStorage::Directory::makeTree() {
    tree.assign(1, 0);
    tree.reserve(order.size() + 1);
    while (tree.size() <= order.size()) {
        appendToTree();
    }
    treeIsValid = true;
}

ReferenceStorage::Directory::Place
ReferenceStorage::Directory::locateByTree(std::uint32_t position) {
    ensureTree();
    std::uint32_t node = 0;
    std::uint32_t step = 1;
    while (std::size_t{2} * step < tree.size()) {
        step *= 2;
    }
    for (; step != 0; step /= 2) {
        if (node + step < tree.size() && tree[node + step] <= position) {
            node += step;
            position -= tree[node];
        }
    }
    return {node, position};
}

ReferenceStorage::Directory::Place
ReferenceStorage::Directory::placeForInsertion(std::size_t position) {
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
    split(place.order, slot);
    std::uint32_t const kept = chunkAt(place.order).size;
    return place.offset <= kept ? place : Place{place.order + 1, place.offset - kept};
}

void ReferenceStorage::Directory::split(std::uint32_t orderIndex, std::uint32_t slot) noexcept {
    Chunk& full = chunkAt(orderIndex);
    Chunk& fresh = *slots[slot];
    constexpr std::uint32_t kept = ChunkLimit / 2;
    fresh.append(full.elements() + kept, ChunkLimit - kept);
    full.size = kept;
    elementsMoved(slot, 0, fresh.size);
    sizeChanged(orderIndex, 0U - fresh.size);
    sizeChanged(orderIndex + 1, fresh.size);
}

void ReferenceStorage::Directory::joinWithNeighbour(std::uint32_t orderIndex) noexcept {
    Chunk& sparse = chunkAt(orderIndex);
    auto const fits = [&](std::uint32_t other) {
        return other < chunkCount() && chunkAt(other).count == 1 &&
               chunkAt(other).size + sparse.size <= storage::JoinedLimit;
    };
    std::uint32_t into = orderIndex + 1;
    std::uint32_t offset = 0;
    if (orderIndex != 0 && fits(orderIndex - 1)) {
        into = orderIndex - 1;
        offset = chunkAt(into).size;
        chunkAt(into).append(sparse.elements(), sparse.size);
    } else if (fits(into)) {
        chunkAt(into).prepend(sparse.elements(), sparse.size);
    } else {
        return;
    }
    elementsMoved(order[into], offset, sparse.size);
    sizeChanged(into, sparse.size);
    sizeChanged(orderIndex, 0U - sparse.size);
    sparse.size = 0; // the counts went with the elements
    removeChunk(orderIndex);
}

void ReferenceStorage::Directory::beginNoting() noexcept {
    if (notesPlaces) {
        return;
    }
    notesPlaces = true;
    for (std::uint32_t const slot : order) {
        for (std::uint32_t i = 0; i != slots[slot]->size; ++i) {
            internal::ListPlace::note(slots[slot]->elements()[i], {slot, i});
        }
    }
}

bool ReferenceStorage::Directory::findNoted(Element element,
                                            std::uint32_t& slot,
                                            std::uint32_t& offset) const noexcept {
    if (!notesPlaces || index.isMade()) {
        return false;
    }
    auto const noted = internal::ListPlace::of(element);
    if (noted.slot >= slots.size() || slots[noted.slot] == nullptr) {
        return false;
    }
    slot = noted.slot;
    offset = slots[slot]->findBelow(element, noted.offset);
    return offset != slots[slot]->size;
}

void ReferenceStorage::Directory::elementsMoved(std::uint32_t slot,
                                                std::uint32_t offset,
                                                std::uint32_t number) noexcept {
    Element const* const elements = slots[slot]->elements();
    for (std::uint32_t i = offset; i != offset + number; ++i) {
        if (index.isMade()) {
            index.move(elements[i], slot);
        } else if (notesPlaces) {
            internal::ListPlace::note(elements[i], {slot, i});
        }
    }
}

bool ReferenceStorage::Directory::isConsistent() {
    std::size_t total = 0;
    for (std::uint32_t i = 0; i < order.size(); ++i) {
        Chunk const& chunk = chunkAt(i);
        if (orderOfSlot[order[i]] != i || chunk.count == 0 || chunk.size == 0 ||
            chunk.size > ChunkLimit || chunk.capacity < ChunkLimit || elementsBefore(i) != total) {
            return false;
        }
        total += chunk.size;
    }
    if (total != size || slots.size() != order.size() + freeSlots.size()) {
        return false;
    }
    Index::Map distinct;
    for (std::uint32_t const slot : order) {
        for (std::uint32_t i = 0; i < slots[slot]->size; ++i) {
            if (!distinct.emplace(slots[slot]->elements()[i], slot).second) {
                return false;
            }
        }
    }
    return index.isConsistentWith(distinct);
}

} // namespace QOB
