#include "engines/pdf/syntax/Arena.h"

namespace quillow::pdf {

void Arena::addChunk(std::size_t size) {
    const std::size_t room = std::max(size, kChunk);
    chunks_.push_back(std::make_unique_for_overwrite<char[]>(room));
    next_ = chunks_.back().get();
    end_ = next_ + room;
}

void Arena::clear() {
    size_ = 0;
    if (chunks_.empty()) return;
    chunks_.resize(1);
    next_ = chunks_.front().get();
    end_ = next_ + kChunk; // the first chunk may have more room, never less
}

} // namespace quillow::pdf
