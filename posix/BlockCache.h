// Small blocks of memory that were given back, kept for the next one who needs a block of their size.
#pragma once

#include <array>
#include <cstddef>

namespace quillow {

/// Stands before malloc and free, which need several times as many instructions for a small block. Blocks come from
/// malloc, so a block of one cache may be given to another one. Not safe for use from several threads: each has a cache
/// of its own. Does not free its blocks at its end, so that a thread's cache needs no test whether it exists.
class BlockCache {
public:
    /// Larger blocks are not kept.
    static constexpr std::size_t kLargestBlock = 1024;
    /// Bytes of the blocks of one class that are kept, and so some 4 MiB in all: what a page of text needs.
    static constexpr std::size_t kMostBytes = std::size_t{64} << 10;

    /// A block of at least `size` bytes, aligned for every fundamental type. Null if none is kept.
    [[nodiscard]] void* takeKept(std::size_t size) {
        const std::size_t number = classOf(size);
        if (number >= kClasses || lists_[number].first == nullptr) return nullptr;
        List& list = lists_[number];
        Block* const block = list.first;
        list.first = block->next;
        list.bytes -= sizeOf(number);
        return block;
    }
    /// A new block. Null if there is no memory; then no block is kept either.
    [[nodiscard]] void* takeNew(std::size_t size);

    /// Takes back a block that was taken with that size.
    void give(void* place, std::size_t size) {
        const std::size_t number = classOf(size);
        if (number < kClasses && lists_[number].bytes < kMostBytes) [[likely]] {
            List& list = lists_[number];
            Block* const block = static_cast<Block*>(place);
            block->next = list.first;
            list.first = block;
            list.bytes += sizeOf(number);
            return;
        }
        giveAway(place);
    }

    /// The same if the caller does not know the size.
    void give(void* place);

    /// Frees all blocks that are kept.
    void release();
    /// The same, and keeps none from now on.
    void close();

    /// Bytes of the blocks that are kept, for tests.
    [[nodiscard]] std::size_t bytesKept() const;

private:
    struct Block {
        Block* next;
    };
    struct List {
        Block* first = nullptr;
        std::size_t bytes = 0; ///< of the blocks; kMostBytes if none may be added
    };

    /// glibc has blocks of 16 n + 8 bytes. Class n has those for sizes up to this number.
    static constexpr std::size_t kStep = 16;
    static constexpr std::size_t kOffset = 8;
    static constexpr std::size_t kClasses = kLargestBlock / kStep + 1;

    [[nodiscard]] static constexpr std::size_t sizeOf(std::size_t number) { return number * kStep + kOffset; }
    [[nodiscard]] static constexpr std::size_t classOf(std::size_t size) {
        return size <= kOffset ? 0 : (size + kStep - 1 - kOffset) / kStep;
    }

    static void giveAway(void* place);

    std::array<List, kClasses> lists_{};
};

} // namespace quillow
