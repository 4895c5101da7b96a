// A cursor over the bytes of a binary format whose numbers are big-endian, such as font files and cross-reference
// streams.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillow::text {

/// Reads numbers and blocks from the start of a view to its end. A read beyond the end returns 0 or an empty view,
/// moves to the end and is remembered: check `ok()` once after a group of reads.
class ByteCursor {
public:
    ByteCursor() = default;
    explicit ByteCursor(std::string_view bytes)
        : bytes_(bytes) {}

    /// Whether all reads so far were inside the bytes.
    [[nodiscard]] bool ok() const { return ok_; }
    [[nodiscard]] bool atEnd() const { return position_ == bytes_.size(); }
    [[nodiscard]] std::size_t position() const { return position_; }
    [[nodiscard]] std::size_t remaining() const { return bytes_.size() - position_; }

    /// A cursor at an offset from the start of the same bytes. Not ok if the offset is beyond the end.
    [[nodiscard]] ByteCursor at(std::size_t offset) const {
        ByteCursor other(bytes_);
        other.skip(offset);
        return other;
    }

    void skip(std::size_t count) { take(count); }

    /// The next `count` bytes.
    std::string_view take(std::size_t count) {
        if (count > remaining()) {
            ok_ = false;
            position_ = bytes_.size();
            return {};
        }
        const std::string_view block = bytes_.substr(position_, count);
        position_ += count;
        return block;
    }

    /// A number of `count` bytes, at most 8, the highest byte first. Reading no byte gives 0.
    std::uint64_t number(std::size_t count) {
        std::uint64_t value = 0;
        for (const char byte : take(count))
            value = value << 8 | static_cast<std::uint8_t>(byte);
        return value;
    }

    std::uint8_t u8() { return static_cast<std::uint8_t>(number(1)); }
    std::uint16_t u16() { return static_cast<std::uint16_t>(number(2)); }
    std::uint32_t u32() { return static_cast<std::uint32_t>(number(4)); }
    std::int8_t i8() { return static_cast<std::int8_t>(u8()); }
    std::int16_t i16() { return static_cast<std::int16_t>(u16()); }
    std::int32_t i32() { return static_cast<std::int32_t>(u32()); }

private:
    std::string_view bytes_;
    std::size_t position_ = 0;
    bool ok_ = true;
};

} // namespace quillow::text
