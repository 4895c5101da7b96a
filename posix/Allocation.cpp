// The allocation functions of C++ for programs that read documents: each thread has a cache of small blocks. Engines
// make and drop some hundred small vectors and strings for each page.
#include "posix/BlockCache.h"

#include <cstddef>
#include <new>

namespace {

using quillow::BlockCache;

constinit thread_local BlockCache cache;

/// Ends the cache with its thread. What is given back later is freed at once.
class CacheEnd {
public:
    ~CacheEnd() { cache.close(); }
    /// The object exists from the first call on.
    void wait() { waits_ = true; }

private:
    bool waits_ = false;
};
thread_local CacheEnd cacheEnd;

[[gnu::noinline]] void* allocateNew(std::size_t size) {
    cacheEnd.wait();
    for (;;) {
        if (void* const block = cache.takeNew(size)) return block;
        const std::new_handler handler = std::get_new_handler();
        if (handler == nullptr) throw std::bad_alloc();
        handler();
    }
}

} // namespace

// The forms for arrays and those that throw nothing call these. Those for over-aligned types use malloc and free alone.

void* operator new(std::size_t size) {
    void* const kept = cache.takeKept(size);
    return kept != nullptr ? kept : allocateNew(size);
}

void operator delete(void* place) noexcept {
    if (place != nullptr) cache.give(place);
}

void operator delete(void* place, std::size_t size) noexcept {
    if (place != nullptr) cache.give(place, size);
}
