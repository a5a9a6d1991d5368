#pragma once

#include "sequence/storage/chunk.h"
#include "sequence/storage/index.h"
#include "sequence/storage/listplace.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace QOB {

/// The chunks of a long list. A slot is a chunk's stable name: it stays when the chunk is cloned or
/// others come before it, so that the hash needn't change.
struct QOB_HIDDEN ReferenceStorage::Directory : Block {
    Directory() noexcept : Block(true) {}
    Directory(Directory const& other);
    Directory& operator=(Directory const&) = delete;
    ~Directory();

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
            Chunk* const copy = chunk->clone(storage::ChunkLimit);
            --chunk->count;
            chunk = copy;
        }
        return *chunk;
    }

    /// Enters a chunk before the one at `orderIndex`; takes it over. Nothing changes if it raises.
    std::uint32_t addChunk(std::uint32_t orderIndex, Chunk* chunk);
    /// Takes a chunk out of the order and drops this directory's share in it.
    void removeChunk(std::uint32_t orderIndex) noexcept;

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
    /// Where a position below `size` is.
    Place locate(std::size_t position) {
        if (position < chunkAt(0).size) {
            return {0, static_cast<std::uint32_t>(position)};
        }
        std::uint32_t const last = chunkCount() - 1;
        if (std::size_t const rest = size - position; rest <= chunkAt(last).size) {
            return {last, static_cast<std::uint32_t>(chunkAt(last).size - rest)};
        }
        return locateByTree(static_cast<std::uint32_t>(position));
    }

    /// Where an element can be inserted before the one at `position`: in a chunk with room. At the
    /// edge of a full chunk a new one is started, so that appending fills each to the brim; between
    /// two elements a full chunk is split. Whatever it raises, the list is still right.
    Place placeForInsertion(std::size_t position);

    /// Notes the places of all elements, unless that is done.
    void beginNoting() noexcept;
    /// The place that an element has noted, if it is the right one and there is no index.
    bool findNoted(Element element, std::uint32_t& slot, std::uint32_t& offset) const noexcept;

    /// Empties a sparse chunk into a neighbour that no other list shares.
    void joinWithNeighbour(std::uint32_t orderIndex) noexcept;

    bool isConsistent();

    std::uint32_t size = 0;
    std::vector<Chunk*> slots;
    std::vector<std::uint32_t> freeSlots;
    std::vector<std::uint32_t> order; ///< slots in the order of the list
    std::vector<std::uint32_t> orderOfSlot;
    /// A Fenwick tree over the sizes of the chunks in their order; entry 0 is unused.
    std::vector<std::uint32_t> tree{0};
    bool treeIsValid = true;
    /// Elements note the slot of their chunk, which serves look-ups as long as there is no index.
    bool notesPlaces = false;
    Index::Share index;

private:
    /// The elements of a chunk from one offset on have come there from another chunk.
    void elementsMoved(std::uint32_t slot, std::uint32_t offset, std::uint32_t number) noexcept;
    void renumber(std::uint32_t from) noexcept;
    /// The upper half of a full chunk becomes the next one, which has been entered at `slot`.
    void split(std::uint32_t orderIndex, std::uint32_t slot) noexcept;

    static constexpr std::uint32_t lowestBit(std::uint32_t i) noexcept { return i & (0U - i); }
    void appendToTree();
    void ensureTree() {
        if (!treeIsValid) {
            makeTree();
        }
    }
    void makeTree();
    Place locateByTree(std::uint32_t position);
};

} // namespace QOB
