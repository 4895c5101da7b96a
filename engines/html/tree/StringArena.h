// Strings that a tree keeps beside its source.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace quillow::html {

/// Strings that stay where they are as long as the arena, at places that are numbers: those of one string follow each other.
class StringArena {
public:
    /// A copy of the text.
    [[nodiscard]] std::string_view keep(std::string_view text);
    /// The place of a text. Where it was not kept lately, it is kept once more.
    [[nodiscard]] std::size_t locate(std::string_view text);
    [[nodiscard]] const char* at(std::size_t place) const { return pieces_[place / kPiece] + place % kPiece; }

private:
    static constexpr std::size_t kPiece = std::size_t{64} * 1024;

    void addChunk(std::size_t size);

    std::vector<std::unique_ptr<char[]>> chunks_; ///< each of one piece or, for a long text, several
    std::vector<const char*> pieces_;
    char* chunk_ = nullptr; ///< the last one
    std::size_t chunkPlace_ = 0;
    std::size_t chunkSize_ = 0;
    std::size_t chunkUsed_ = 0;
};

} // namespace quillow::html
