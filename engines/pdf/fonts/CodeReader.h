// Cuts the strings of a composite font into codes, fast (ISO 32000-2, 9.7.6.3).
#pragma once

#include "engines/pdf/fonts/Codespace.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quillow::pdf {

/// The same codes as `nextCode` gives. A table says how long they are by their first byte, wherever that decides.
class CodeReader {
public:
    /// Two bytes a code, as Identity-H.
    CodeReader();
    /// Two bytes a code if there is no range.
    explicit CodeReader(std::span<const CodespaceRange> ranges);

    /// The number of the code that begins at `p`, and moves `p` behind it. `p` must not be the end.
    [[nodiscard]] std::uint32_t next(const char*& p, const char* end) const {
        const std::ptrdiff_t length = lengths_[static_cast<std::uint8_t>(*p)];
        if (length == kAmbiguous || length > end - p) return nextCode(ranges_, p, end).value;
        if (length == 2) {
            p += 2;
            return static_cast<std::uint32_t>(static_cast<std::uint8_t>(p[-2]) << 8 | static_cast<std::uint8_t>(p[-1]));
        }
        std::uint32_t value = 0;
        for (const char* const behind = p + length; p != behind; ++p)
            value = value << 8 | static_cast<std::uint8_t>(*p);
        return value;
    }

    /// Whether all codes have two bytes.
    [[nodiscard]] bool hasPairsOnly() const { return hasPairsOnly_; }
    /// Whether the byte is a code by itself.
    [[nodiscard]] bool isSingleByte(std::uint8_t byte) const { return lengths_[byte] == 1; }

private:
    static constexpr std::uint8_t kAmbiguous = 0;

    std::vector<CodespaceRange> ranges_;
    std::array<std::uint8_t, 256> lengths_{};
    bool hasPairsOnly_ = false;
};

} // namespace quillow::pdf
