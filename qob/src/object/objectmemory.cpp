#include "qob/kernel/deviant/objectmemory.h"

#include "qob/qob/export.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

namespace QOB::internal {

#if defined(__SANITIZE_ADDRESS__)
#define QOB_WATCHED_HEAP
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QOB_WATCHED_HEAP
#endif
#endif

#ifdef QOB_WATCHED_HEAP

void* allocateObject(std::size_t size) {
    return ::operator new(size);
}
void freeObject(void* memory) noexcept {
    ::operator delete(memory);
}

#else

namespace {

constexpr std::size_t BlockSize = std::size_t{64} * 1024;
/// What begins a block; cells stand at multiples of a cache line where their size allows it.
constexpr std::size_t HeaderSize = 64;
constexpr std::size_t BlocksPerPiece = 8;
constexpr std::size_t CellUnit = sizeof(void*);
/// The largest cell; a larger object has a block of its own.
constexpr std::size_t LargestCell = 2048;
constexpr std::size_t SizeCount = LargestCell / CellUnit + 1;

struct Cell {
    Cell* next;
};

struct Piece;

struct Block {
    Piece* piece; ///< null for a block of one large object
    Block* next;
    Block* previous;
    Cell* freed;
    std::uint32_t cellSize;
    std::uint32_t used;
    std::uint32_t untouched; ///< the offset of the first cell that was never used
    bool isListed;           ///< among the blocks of its size that have room

    bool isFull() const noexcept { return freed == nullptr && untouched + cellSize > BlockSize; }
};
static_assert(sizeof(Block) <= HeaderSize);

/// What is asked of the system at a time.
struct Piece {
    std::byte* memory;
    Piece* next;
    Piece* previous;
    std::uint32_t used; ///< blocks that have a size
    std::uint32_t fresh;
    Block* freed;

    bool isFull() const noexcept { return freed == nullptr && fresh == BlocksPerPiece; }
};

/// Blocks with room by the size of their cells, and pieces with room. Plain data: objects are freed
/// until the very end of the process.
constinit Block* roomy[SizeCount]{};
constinit Piece* roomyPieces = nullptr;

template <class Node>
void link(Node*& first, Node* node) noexcept {
    node->previous = nullptr;
    node->next = first;
    if (first != nullptr) {
        first->previous = node;
    }
    first = node;
}

template <class Node>
void unlink(Node*& first, Node* node) noexcept {
    (node->previous != nullptr ? node->previous->next : first) = node->next;
    if (node->next != nullptr) {
        node->next->previous = node->previous;
    }
}

constexpr std::align_val_t BlockAlignment{BlockSize};

Piece* newPiece() {
    auto* const piece = new Piece{};
    try {
        piece->memory =
            static_cast<std::byte*>(::operator new(BlocksPerPiece* BlockSize, BlockAlignment));
    } catch (...) {
        delete piece;
        throw;
    }
    link(roomyPieces, piece);
    return piece;
}

Block* takeBlock() {
    Piece* const piece = roomyPieces != nullptr ? roomyPieces : newPiece();
    Block* block = piece->freed;
    if (block != nullptr) {
        piece->freed = block->next;
    } else {
        block = reinterpret_cast<Block*>(piece->memory + piece->fresh++ * BlockSize);
    }
    ++piece->used;
    if (piece->isFull()) {
        unlink(roomyPieces, piece);
    }
    return new (block) Block{.piece = piece,
                             .next = nullptr,
                             .previous = nullptr,
                             .freed = nullptr,
                             .cellSize = 0,
                             .used = 0,
                             .untouched = HeaderSize,
                             .isListed = false};
}

void giveBack(Block* block) noexcept {
    Piece* const piece = block->piece;
    if (piece->isFull()) {
        link(roomyPieces, piece);
    }
    block->next = std::exchange(piece->freed, block);
    if (--piece->used == 0) {
        unlink(roomyPieces, piece);
        ::operator delete(piece->memory, BlockAlignment);
        delete piece;
    }
}

QOB_NOINLINE void* allocateLarge(std::size_t size) {
    void* const memory = ::operator new(HeaderSize + size, BlockAlignment);
    return reinterpret_cast<std::byte*>(new (memory) Block{}) + HeaderSize;
}

QOB_NOINLINE Block* addBlock(std::size_t size) {
    Block* const block = takeBlock();
    block->cellSize = static_cast<std::uint32_t>(size * CellUnit);
    block->isListed = true;
    link(roomy[size], block);
    return block;
}

/// A block from which a cell was taken or to which one came back.
QOB_NOINLINE void relist(Block* block) noexcept {
    Block*& first = roomy[block->cellSize / CellUnit];
    if (block->isFull()) {
        unlink(first, block);
        block->isListed = false;
    } else if (!block->isListed) {
        link(first, block);
        block->isListed = true;
    } else if (block->used == 0 && (first != block || block->next != nullptr)) {
        unlink(first, block); // not the only one: objects may come and go
        giveBack(block);
    }
}

} // namespace

void* allocateObject(std::size_t size) {
    std::size_t const units = (size + CellUnit - 1) / CellUnit;
    if (units >= SizeCount) {
        return allocateLarge(size);
    }
    Block* block = roomy[units];
    if (block == nullptr) {
        block = addBlock(units);
    }
    ++block->used;
    void* cell = block->freed;
    if (cell != nullptr) {
        block->freed = block->freed->next;
    } else {
        cell = reinterpret_cast<std::byte*>(block) + block->untouched;
        block->untouched += block->cellSize;
    }
    if (block->isFull()) {
        relist(block);
    }
    return cell;
}

void freeObject(void* memory) noexcept {
    if (memory == nullptr) {
        return;
    }
    auto* const block = reinterpret_cast<Block*>(reinterpret_cast<std::uintptr_t>(memory) &
                                                 ~(std::uintptr_t{BlockSize} - 1));
    if (block->piece == nullptr) {
        ::operator delete(block, BlockAlignment);
        return;
    }
    block->freed = new (memory) Cell{block->freed};
    if (--block->used == 0 || !block->isListed) {
        relist(block);
    }
}

#endif

} // namespace QOB::internal
