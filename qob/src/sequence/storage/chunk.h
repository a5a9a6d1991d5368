#pragma once

#include "qob/kernel/containers/sequence/multiindex/referencestorage.h"
#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/referencecounting.h"

#include <cstdint>
#include <cstring>
#include <new>

namespace QOB {

namespace storage {

using Element = ReferenceStorage::Element;

constexpr std::uint32_t FirstCapacity = 4;
constexpr std::uint32_t ArrayLimit = 128;
constexpr std::uint32_t ChunkLimit = 256;
/// A list that shrinks to this becomes an array again.
constexpr std::uint32_t ArrayAgain = 32;
/// A chunk that falls below the first is joined with a neighbour if both make no more than the
/// second.
constexpr std::uint32_t SparseChunk = 64;
constexpr std::uint32_t JoinedLimit = 192;

constexpr std::uint32_t NoSlot = 0xFFFF'FFFF;

inline void retain(Element element) {
    internal::retain(static_cast<ReferenceCountingIntf const*>(element));
}

inline void release(Element element) {
    internal::release(static_cast<ReferenceCountingIntf const*>(element));
}

} // namespace storage

/// What lists share: an array or a directory, counted by the lists that hold it.
struct QOB_HIDDEN ReferenceStorage::Block {
    explicit Block(bool isDirectory) noexcept : large(isDirectory) {}

    std::uint32_t count = 1;
    bool large;
};

/// An array of elements, each counted once for the chunk. Counted by lists (as the array of a short
/// one) or by directories.
struct QOB_HIDDEN ReferenceStorage::Chunk : Block {
    static Chunk* allocate(std::uint32_t capacity) {
        return new (::operator new(bytes(capacity))) Chunk(capacity);
    }
    /// Frees the memory; the elements' counts are someone else's by now.
    static void free(Chunk* chunk) noexcept { ::operator delete(chunk); }

    static void drop(Chunk* chunk) noexcept {
        if (--chunk->count == 0) {
            for (std::uint32_t i = 0; i < chunk->size; ++i) {
                storage::release(chunk->elements()[i]);
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
    /// The same for an element that has probably been at `offset`; removals have moved it down
    /// since.
    std::uint32_t findBelow(Element element, std::uint32_t offset) const noexcept {
        if (size != 0 && elements()[0] == element) {
            return 0; // the usual place in a list that is emptied from the front
        }
        for (std::uint32_t i = offset < size ? offset + 1 : size; i-- != 0;) {
            if (elements()[i] == element) {
                return i;
            }
        }
        return find(element);
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
            storage::retain(elements()[i]);
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
} // namespace QOB
