#include "posix/BlockCache.h"

#include <malloc.h>

#include <cstdlib>

namespace quillow {

void* BlockCache::takeNew(std::size_t size) {
    const std::size_t number = classOf(size);
    const std::size_t whole = number < kClasses ? sizeOf(number) : size;
    if (void* const block = std::malloc(whole)) return block;
    release();
    return std::malloc(whole);
}

void BlockCache::give(void* place) {
    const std::size_t usable = ::malloc_usable_size(place);
    // A block may be larger than its class. It then moves to the largest class that it has room for.
    const std::size_t number = (usable - kOffset) / kStep;
    give(place, number < kClasses ? sizeOf(number) : usable);
}

void BlockCache::giveAway(void* place) {
    std::free(place);
}

void BlockCache::release() {
    for (List& list : lists_) {
        while (list.first != nullptr) {
            Block* const block = list.first;
            list.first = block->next;
            std::free(block);
        }
        list.bytes = 0;
    }
}

void BlockCache::close() {
    release();
    for (List& list : lists_)
        list.bytes = kMostBytes;
}

std::size_t BlockCache::bytesKept() const {
    std::size_t bytes = 0;
    for (const List& list : lists_)
        if (list.first != nullptr) bytes += list.bytes;
    return bytes;
}

} // namespace quillow
