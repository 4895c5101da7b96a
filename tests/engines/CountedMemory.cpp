#include "tests/engines/CountedMemory.h"

#include <cstdlib>
#include <new>

namespace quillow::test {

std::atomic<std::size_t> liveBytes = 0;
std::atomic<std::size_t> mostBytes = 0;

} // namespace quillow::test

namespace {

using quillow::test::liveBytes;
using quillow::test::mostBytes;

constexpr std::size_t kHeader = alignof(std::max_align_t); // before each block, holds its size

} // namespace

void* operator new(std::size_t size) {
    auto* block = static_cast<char*>(std::malloc(size + kHeader));
    if (block == nullptr) throw std::bad_alloc();
    *reinterpret_cast<std::size_t*>(block) = size;
    const std::size_t live = liveBytes += size;
    if (live > mostBytes) mostBytes = live;
    return block + kHeader;
}

void operator delete(void* pointer) noexcept {
    if (pointer == nullptr) return;
    char* block = static_cast<char*>(pointer) - kHeader;
    liveBytes -= *reinterpret_cast<std::size_t*>(block);
    std::free(block);
}

void operator delete(void* pointer, std::size_t) noexcept {
    operator delete(pointer);
}
