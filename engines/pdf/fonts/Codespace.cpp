#include "engines/pdf/fonts/Codespace.h"

#include <algorithm>
#include <cstddef>

namespace quillow::pdf {

namespace {

/// How many bytes of a code, from the first, lie in a range. `value` has `bytes` of them, at most the range's.
unsigned matchingBytes(const CodespaceRange& range, std::uint32_t value, unsigned bytes) {
    for (unsigned i = 0; i < bytes; ++i) {
        const auto byteOf = [&](std::uint32_t number, unsigned size) { return number >> 8 * (size - 1 - i) & 0xFF; };
        const std::uint32_t byte = byteOf(value, bytes);
        if (byte < byteOf(range.first, range.bytes) || byte > byteOf(range.last, range.bytes)) return i;
    }
    return bytes;
}

} // namespace

CharacterCode nextCode(std::span<const CodespaceRange> ranges, const char*& p, const char* end) {
    const auto left = static_cast<std::size_t>(end - p);
    const auto available = static_cast<unsigned>(std::min<std::size_t>(left, kMaxBytesOfCode));
    std::uint32_t values[kMaxBytesOfCode + 1] = {};
    for (unsigned i = 0; i < available; ++i)
        values[i + 1] = values[i] << 8 | static_cast<std::uint8_t>(p[i]);

    unsigned longest = 0; // matching bytes of the best range
    unsigned bytes =
        kMaxBytesOfCode; // to consume if no range matches whole: those of the best or of the shortest range
    const CodespaceRange* whole = nullptr;
    for (const CodespaceRange& range : ranges) {
        if (range.bytes == 0 || range.bytes > kMaxBytesOfCode) continue;
        const unsigned known = std::min<unsigned>(available, range.bytes);
        const unsigned matching = matchingBytes(range, values[known], known);
        if (matching == range.bytes && (!whole || range.bytes < whole->bytes)) whole = &range;
        if (matching > longest || (matching == longest && range.bytes < bytes)) {
            longest = matching;
            bytes = range.bytes;
        }
    }
    if (whole)
        bytes = whole->bytes;
    else if (ranges.empty())
        bytes = 1;
    bytes = std::min(bytes, available);
    p += bytes;
    return {values[bytes], static_cast<std::uint8_t>(bytes), whole != nullptr};
}

} // namespace quillow::pdf
