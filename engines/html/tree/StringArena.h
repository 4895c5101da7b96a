// Storage for the strings of a tree that are not slices of its source.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace quillow::html {

/// Copies of strings. They never move while the arena lives. Each byte has a place, which is a number; the bytes of
/// one string have consecutive places.
class StringArena {
public:
    /// Copies the text and returns the copy.
    [[nodiscard]] std::string_view keep(std::string_view text);
    /// The place of a text. The text is copied first unless it lies in the last chunk.
    [[nodiscard]] std::size_t locate(std::string_view text);
    [[nodiscard]] const char* at(std::size_t place) const { return pieces_[place / kPiece] + place % kPiece; }

private:
    static constexpr std::size_t kPiece = std::size_t{64} * 1024;

    void addChunk(std::size_t size);

    std::vector<std::unique_ptr<char[]>> chunks_; ///< each chunk is one piece or, for a long text, several
    std::vector<const char*> pieces_;
    char* chunk_ = nullptr; ///< the last chunk
    std::size_t chunkPlace_ = 0;
    std::size_t chunkSize_ = 0;
    std::size_t chunkUsed_ = 0;
};

} // namespace quillow::html
