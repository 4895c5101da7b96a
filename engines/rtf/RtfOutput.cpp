#include "engines/rtf/RtfOutput.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace quillow::rtf {

Output::~Output() {
    std::free(begin_);
}

void Output::grow(std::size_t atLeast) {
    const std::size_t used = size();
    const std::size_t capacity = static_cast<std::size_t>(limit_ - begin_);
    const std::size_t wanted = std::max({kInitialCapacity, capacity * 2, used + atLeast});
    // realloc moves large blocks by remapping pages, without copying them.
    auto* block = static_cast<char*>(std::realloc(begin_, wanted + kSlack));
    if (block == nullptr) throw std::bad_alloc();
    begin_ = block;
    cursor_ = block + used;
    limit_ = block + wanted;
}

void Output::append(std::string_view utf8) {
    if (static_cast<std::size_t>(limit_ - cursor_) < utf8.size()) grow(utf8.size());
    if (!utf8.empty()) std::memcpy(cursor_, utf8.data(), utf8.size());
    cursor_ += utf8.size();
    makeRoom();
}

std::string Output::cut(std::size_t from) {
    std::string taken(view(from));
    truncate(from);
    return taken;
}

} // namespace quillow::rtf
