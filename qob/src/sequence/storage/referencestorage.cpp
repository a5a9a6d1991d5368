#include "qob/kernel/containers/sequence/multiindex/referencestorage.h"

#include "sequence/storage/chunk.h"
#include "sequence/storage/directory.h"

#include <algorithm>
#include <cassert>
#include <functional>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace QOB {

using storage::ArrayLimit;
using storage::ChunkLimit;
using storage::Element;
using storage::NoSlot;
using storage::release;
using storage::retain;

namespace {
/// Debug builds check lists up to this length after each write. A check looks at all of a list:
/// were it longer, every model would pay for it when its list of roots is filled.
[[maybe_unused]] constexpr std::size_t CheckedLength = 128;
} // namespace

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

ReferenceStorage::const_iterator
ReferenceStorage::const_iterator::inNextChunk(const_iterator end) noexcept {
    end.toNextChunk();
    return end;
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
    large().index.beginChange(large());
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
    if (directory.size > storage::ArrayAgain) {
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

/// Where the element is in a long list; false if it isn't there.
bool ReferenceStorage::findInChunks(Element element,
                                    std::uint32_t& slot,
                                    std::uint32_t& offset) const {
    Directory& directory = large();
    if (directory.findNoted(element, slot, offset)) {
        return true;
    }
    directory.index.ensure(directory);
    slot = directory.index.slotOf(element);
    if (slot == NoSlot) {
        return false;
    }
    offset = directory.slots[slot]->find(element);
    return true;
}

bool ReferenceStorage::contains(Element element) const {
    if (block_ == nullptr) {
        return false;
    }
    if (!isLarge()) {
        return small().find(element) != small().size;
    }
    if (large().notesPlaces && !large().index.isMade()) {
        std::uint32_t slot = NoSlot;
        std::uint32_t offset = 0;
        return findInChunks(element, slot, offset);
    }
    large().index.ensure(large());
    return large().index.slotOf(element) != NoSlot;
}

std::size_t ReferenceStorage::indexOf(Element element) const {
    if (block_ == nullptr) {
        return NotFound;
    }
    if (!isLarge()) {
        std::uint32_t const offset = small().find(element);
        return offset == small().size ? NotFound : offset;
    }
    std::uint32_t slot = NoSlot;
    std::uint32_t offset = 0;
    if (!findInChunks(element, slot, offset)) {
        return NotFound;
    }
    return large().elementsBefore(large().orderOfSlot[slot]) + offset;
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
        block_ = Chunk::allocate(storage::FirstCapacity);
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
    directory.index.ensure(directory);
    auto const [entry, isNew] = directory.index.map().try_emplace(element, NoSlot);
    if (!isNew) {
        return false;
    }
    try {
        Directory::Place const place = directory.placeForInsertion(index);
        directory.ownChunk(place.order).insert(place.offset, element);
        entry->second = directory.order[place.order];
        directory.sizeChanged(place.order, 1);
    } catch (...) {
        directory.index.map().erase(element);
        throw;
    }
    directory.index.noteChange(element, NoSlot);
    retain(element);
    checkAfterWrite();
    return true;
}

/// False if the list is long, or has become it just now.
bool ReferenceStorage::appendToArray(Element element) {
    if (block_ == nullptr) {
        block_ = Chunk::allocate(storage::FirstCapacity);
    }
    if (isLarge()) {
        return false;
    }
    if (small().size == ArrayLimit) {
        makeLarge();
        return false;
    }
    Chunk& array = ownSmall(small().size + 1);
    array.append(&element, 1);
    retain(element);
    checkAfterWrite();
    return true;
}

void ReferenceStorage::append(Element element) {
    if (!appendToArray(element)) {
        insert(size(), element);
    }
}

void ReferenceStorage::appendNoting(Element element) {
    if (appendToArray(element)) {
        return;
    }
    Directory& directory = ownLarge();
    if (directory.index.isMade()) {
        insert(size(), element);
        return;
    }
    directory.beginNoting();
    Directory::Place const place = directory.placeForInsertion(directory.size);
    directory.ownChunk(place.order).append(&element, 1);
    directory.sizeChanged(place.order, 1);
    internal::ListPlace::note(element, {directory.order[place.order], place.offset});
    retain(element);
    checkAfterWrite();
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
    std::uint32_t slot = NoSlot;
    std::uint32_t offset = 0;
    if (!findInChunks(element, slot, offset)) {
        return false;
    }
    eraseInChunk(large().orderOfSlot[slot], offset, 1);
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
        directory.index.remove(first[i]);
    }
    chunk.erase(offset, number);
    directory.sizeChanged(order, 0U - number);
    if (chunk.size == 0) {
        directory.removeChunk(order);
    } else if (chunk.size < storage::SparseChunk) {
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
        directory.index.ensure(directory);
        Directory::Place const where = directory.locate(index);
        Element& place = directory.ownChunk(where.order).elements()[where.offset];
        directory.index.map().emplace(element, directory.order[where.order]);
        directory.index.noteChange(element, NoSlot);
        release(place);
        directory.index.remove(place);
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
