#pragma once

#include "qob/qob/export.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>

namespace QOB {

namespace NSInterface {
class ClassObjectIntf;
} // namespace NSInterface

/// An ordered list of distinct objects, each of them counted. Access by position, and look-up and
/// removal by value, are fast at every length:
///
/// - Up to 128 elements it is one array that is scanned; an empty one is a null word.
/// - Above that, the elements are in chunks of up to 256. A hash leads from an element to the slot
///   of its chunk, a Fenwick tree from a position to its chunk.
///
/// A copy costs nothing and shares everything; a write copies the directory of chunks and clones
/// the one chunk that it changes. A chunk owns one reference count for each of its elements,
/// however many lists share it. The hash is shared by all copies: it describes one of them and
/// keeps a record of the steps that lead to the others, so that going back to an older copy costs
/// what has changed since, not the length of the list.
///
/// Iterators and positions are valid until the next write; to keep them longer, keep a copy of the
/// list. Not safe for concurrent use, copies of one list included.
class QOB_EXPORT ReferenceStorage {
    struct Block;
    struct Chunk;
    struct Directory;
    struct Index;

public:
    using Element = NSInterface::ClassObjectIntf const*;
    using value_type = Element;

    static constexpr std::size_t NotFound = static_cast<std::size_t>(-1);

    class QOB_EXPORT const_iterator {
    public:
        using iterator_category = std::bidirectional_iterator_tag;
        using value_type = Element;
        using difference_type = std::ptrdiff_t;
        using pointer = Element const*;
        using reference = Element const&;

        const_iterator() noexcept = default;

        reference operator*() const noexcept { return *position_; }
        pointer operator->() const noexcept { return position_; }
        const_iterator& operator++() noexcept {
            // By value, so that the iterator of a loop stays in registers.
            if (++position_ == chunkEnd_ && directory_ != nullptr) {
                *this = inNextChunk(*this);
            }
            return *this;
        }
        const_iterator operator++(int) noexcept {
            const_iterator const old = *this;
            ++*this;
            return old;
        }
        const_iterator& operator--() noexcept {
            if (position_ == chunkBegin_ && directory_ != nullptr) {
                toPreviousChunk();
            }
            --position_;
            return *this;
        }
        const_iterator operator--(int) noexcept {
            const_iterator const old = *this;
            --*this;
            return old;
        }
        friend bool operator==(const_iterator const& a, const_iterator const& b) noexcept {
            return a.position_ == b.position_;
        }
        bool atBegin() const noexcept { return position_ == chunkBegin_ && order_ == 0; }
        bool atEnd() const noexcept { return position_ == chunkEnd_; }

    private:
        friend class ReferenceStorage;

        void toNextChunk() noexcept;
        static const_iterator inNextChunk(const_iterator end) noexcept;
        void toPreviousChunk() noexcept;
        void enterChunk(Chunk const& chunk, std::size_t offset) noexcept;

        Element const* position_ = nullptr;
        Element const* chunkBegin_ = nullptr;
        Element const* chunkEnd_ = nullptr;
        Directory const* directory_ = nullptr;
        std::uint32_t order_ = 0;
    };
    using iterator = const_iterator;

    ReferenceStorage() noexcept = default;
    ReferenceStorage(ReferenceStorage const& other) noexcept;
    ReferenceStorage(ReferenceStorage&& other) noexcept
        : block_(std::exchange(other.block_, nullptr)) {}
    ReferenceStorage& operator=(ReferenceStorage other) noexcept {
        swap(other);
        return *this;
    }
    ~ReferenceStorage() {
        if (block_ != nullptr) {
            drop(std::exchange(block_, nullptr));
        }
    }
    void swap(ReferenceStorage& other) noexcept { std::swap(block_, other.block_); }

    bool empty() const noexcept { return block_ == nullptr; }
    std::size_t size() const noexcept { return block_ == nullptr ? 0 : sizeOfBlock(); }

    /// The element at a position below size().
    Element at(std::size_t index) const;
    Element front() const { return at(0); }
    Element back() const { return at(size() - 1); }

    bool contains(Element element) const;
    /// The position of the element, or NotFound.
    std::size_t indexOf(Element element) const;

    const_iterator begin() const noexcept;
    const_iterator end() const noexcept;
    /// At a position up to size(), which is the end.
    const_iterator iteratorAt(std::size_t index) const;
    std::size_t indexOf(const_iterator const& position) const;
    /// True if neither has been written since one was copied from the other: iterators of one are
    /// valid for both.
    bool shares(ReferenceStorage const& other) const noexcept { return block_ == other.block_; }

    /// These count the element up and return true, or change nothing and return false if the
    /// element is already in the list.
    bool push_back(Element element) { return insert(size(), element); }
    bool push_front(Element element) { return insert(0, element); }
    /// Appends an element that isn't in the list, which the caller knows.
    void append(Element element);
    /// The same in the list of a model's objects: where the element stands is noted in it, so that
    /// a list that is only written so needs no hash.
    void appendNoting(Element element);
    /// Before the element at a position up to size().
    bool insert(std::size_t index, Element element);

    /// Each removal first counts the element down, then removes it. False if the element isn't in
    /// the list.
    bool erase(Element element);
    void eraseAt(std::size_t index) { eraseRange(index, 1); }
    /// `count` elements from `index` on; all of them must be there.
    void eraseRange(std::size_t index, std::size_t count);
    void clear() noexcept;

    /// Replaces the element at `index`: counts the old one down, then the new one up. Returns false
    /// and changes nothing if the new one is already in the list.
    bool replaceAt(std::size_t index, Element element);

    /// Ends the sharing of a short list's array, so that each element is counted for this list.
    /// Does nothing to a long list.
    void ownShortArray();

    /// The same elements in the same order. Free where the two share their chunks.
    friend bool operator==(ReferenceStorage const& a, ReferenceStorage const& b) noexcept {
        return a.equals(b);
    }

    /// True if array, chunks, hash and tree are consistent. For tests; a debug build checks it
    /// after each write to a list of moderate length.
    bool isConsistent() const;

private:
    static void drop(Block* block) noexcept;
    bool equals(ReferenceStorage const& other) const noexcept;
    std::size_t sizeOfBlock() const noexcept;
    bool isLarge() const noexcept;
    Chunk& small() const noexcept;
    Directory& large() const noexcept;

    Chunk& ownSmall(std::uint32_t capacity);
    Directory& ownLarge();
    void makeLarge();
    bool appendToArray(Element element);
    bool findInChunks(Element element, std::uint32_t& slot, std::uint32_t& offset) const;
    void eraseInArray(std::uint32_t offset, std::uint32_t number);
    void eraseInChunk(std::uint32_t order, std::uint32_t offset, std::uint32_t number);
    void becomeSmallAgain() noexcept;
    void checkAfterWrite() const;

    Block* block_ = nullptr;
};

} // namespace QOB
