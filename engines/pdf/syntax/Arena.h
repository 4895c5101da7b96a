// Memory for the objects of a document: pieces are handed out one after another and are freed together.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <string_view>
#include <type_traits>
#include <vector>

namespace quillow::pdf {

/// Pieces never move while the arena lives. Throws std::bad_alloc.
class Arena {
public:
    /// Memory for `count` values, which have no defined value yet.
    template <class Value>
    [[nodiscard]] std::span<Value> make(std::size_t count) {
        static_assert(std::is_trivially_destructible_v<Value> && alignof(Value) <= kAlignment);
        return {static_cast<Value*>(static_cast<void*>(allocate(count * sizeof(Value)))), count};
    }

    template <class Value>
    [[nodiscard]] std::span<Value> keep(std::span<const Value> values) {
        const std::span<Value> kept = make<Value>(values.size());
        std::uninitialized_copy(values.begin(), values.end(), kept.begin());
        return kept;
    }

    [[nodiscard]] std::string_view keep(std::string_view bytes) {
        const std::span<char> kept = keep(std::span<const char>(bytes));
        return {kept.data(), kept.size()};
    }

    /// Bytes of all pieces.
    [[nodiscard]] std::size_t size() const { return size_; }

    /// Frees all pieces, but keeps the first chunk to use it again.
    void clear();

private:
    static constexpr std::size_t kAlignment = 8;
    static constexpr std::size_t kChunk = std::size_t{32} << 10;

    [[nodiscard]] char* allocate(std::size_t size) {
        size = (size + kAlignment - 1) / kAlignment * kAlignment;
        if (size > static_cast<std::size_t>(end_ - next_)) addChunk(size);
        char* const piece = next_;
        next_ += size;
        size_ += size;
        return piece;
    }
    void addChunk(std::size_t size);

    std::vector<std::unique_ptr<char[]>> chunks_;
    char* next_ = nullptr;
    char* end_ = nullptr;
    std::size_t size_ = 0;
};

} // namespace quillow::pdf
