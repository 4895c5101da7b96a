#include "engines/pdf/fonts/CodeReader.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

constexpr CodespaceRange kTwoBytes{0, 0xFFFF, 2};

std::uint32_t firstByte(std::uint32_t code, const CodespaceRange& range) {
    return code >> 8 * (range.bytes - 1U) & 0xFF;
}

} // namespace

CodeReader::CodeReader()
    : CodeReader(std::span(&kTwoBytes, 1)) {}

CodeReader::CodeReader(std::span<const CodespaceRange> ranges)
    : ranges_(ranges.begin(), ranges.end()) {
    if (ranges_.empty()) ranges_.push_back(kTwoBytes);
    std::array<bool, 256> isKnown{};
    for (const CodespaceRange& range : ranges_)
        for (std::uint32_t byte = firstByte(range.first, range); byte <= firstByte(range.last, range); ++byte) {
            const bool agrees = !isKnown[byte] || lengths_[byte] == range.bytes;
            lengths_[byte] = agrees ? range.bytes : kAmbiguous;
            isKnown[byte] = true;
        }
    hasPairsOnly_ = std::all_of(lengths_.begin(), lengths_.end(), [](std::uint8_t length) { return length == 2; });
}

} // namespace quillow::pdf
