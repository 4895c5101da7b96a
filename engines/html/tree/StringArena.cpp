#include "engines/html/tree/StringArena.h"

#include <algorithm>

namespace quillow::html {

std::string_view StringArena::keep(std::string_view text) {
    if (text.size() > chunkSize_ - chunkUsed_) addChunk(text.size());
    char* const room = chunk_ + chunkUsed_;
    std::copy(text.begin(), text.end(), room);
    chunkUsed_ += text.size();
    return {room, text.size()};
}

std::size_t StringArena::locate(std::string_view text) {
    // The two addresses may belong to different objects, so they are compared as numbers.
    const std::size_t offset = reinterpret_cast<std::uintptr_t>(text.data()) - reinterpret_cast<std::uintptr_t>(chunk_);
    if (offset < chunkUsed_) return chunkPlace_ + offset;
    return locate(keep(text));
}

void StringArena::addChunk(std::size_t size) {
    const std::size_t pieces = std::max<std::size_t>((size + kPiece - 1) / kPiece, 1);
    chunkPlace_ = pieces_.size() * kPiece;
    chunkSize_ = pieces * kPiece;
    chunkUsed_ = 0;
    chunk_ = chunks_.emplace_back(std::make_unique_for_overwrite<char[]>(chunkSize_)).get();
    for (std::size_t i = 0; i < pieces; ++i)
        pieces_.push_back(chunk_ + i * kPiece);
}

} // namespace quillow::html
