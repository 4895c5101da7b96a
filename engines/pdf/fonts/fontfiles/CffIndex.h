// An INDEX of the Compact Font Format: an array of byte strings (Technical Note 5176, 5).
#pragma once

#include "text/Bytes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillow::pdf {

class CffIndex {
public:
    CffIndex() = default;

    /// Reads the INDEX that begins at the cursor and moves the cursor behind it. If bytes are missing it has as many
    /// elements as have offsets, and the last ones are empty.
    explicit CffIndex(text::ByteCursor& cursor) {
        const std::size_t count = cursor.u16();
        if (count == 0) return;
        offsetSize_ = cursor.u8();
        if (offsetSize_ == 0 || offsetSize_ > kLargestOffset) return;
        const std::size_t offsets = std::min(count + 1, cursor.remaining() / offsetSize_);
        offsets_ = cursor.take(offsets * offsetSize_);
        count_ = offsets == 0 ? 0 : offsets - 1;
        data_ = cursor.take(std::min(offsetAt(count_), cursor.remaining()));
    }

    [[nodiscard]] std::size_t count() const { return count_; }

    /// An element. Empty if there is none or its offsets are wrong.
    [[nodiscard]] std::string_view operator[](std::size_t index) const {
        if (index >= count_) return {};
        const std::size_t start = offsetAt(index);
        const std::size_t end = std::min(offsetAt(index + 1), data_.size());
        return start < end ? data_.substr(start, end - start) : std::string_view();
    }

private:
    static constexpr std::size_t kLargestOffset = 4;

    /// From the start of the data. In the file they count from the byte before it.
    [[nodiscard]] std::size_t offsetAt(std::size_t index) const {
        const auto offset =
            static_cast<std::size_t>(text::ByteCursor(offsets_).at(index * offsetSize_).number(offsetSize_));
        return offset == 0 ? 0 : offset - 1;
    }

    std::size_t count_ = 0;
    std::size_t offsetSize_ = 1;
    std::string_view offsets_;
    std::string_view data_;
};

} // namespace quillow::pdf
