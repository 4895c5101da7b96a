#include "engines/pdf/fonts/fontfiles/CharacterMap.h"

#include "text/Bytes.h"

namespace quillow::pdf {
namespace {

constexpr std::size_t kU16 = 2;
constexpr std::size_t kU32 = 4;

// Places in the subtables, by format.
constexpr std::size_t kByteArray = 6;
constexpr std::size_t kHighByteKeys = 6;
constexpr std::size_t kHighBytes = 256;
constexpr std::size_t kSubHeaders = kHighByteKeys + kHighBytes * kU16;
constexpr std::size_t kSegmentCount = 6;
constexpr std::size_t kSegmentEnds = 14;
constexpr std::size_t kSegmentPadding = 2;
constexpr std::size_t kTrimmedStart = 6;
constexpr std::size_t kTrimmedArray = 10;
constexpr std::size_t kLongTrimmedStart = 12;
constexpr std::size_t kLongTrimmedArray = 20;
constexpr std::size_t kGroupCount = 12;
constexpr std::size_t kGroups = 16;
constexpr std::size_t kBytesAGroup = 3 * kU32;

/// Some producers write it as the range offset of the last segment, which has no glyphs.
constexpr std::size_t kNoRange = 0xFFFF;

std::size_t wholeItems(std::size_t claimed, std::size_t size, std::size_t start, std::size_t itemSize) {
    return size <= start ? 0 : std::min(claimed, (size - start) / itemSize);
}

} // namespace

std::uint64_t CharacterMap::numberAt(std::size_t offset, std::size_t size) const {
    return text::ByteCursor(bytes_).at(offset).number(size);
}

CharacterMap::CharacterMap(std::string_view bytes)
    : bytes_(bytes)
    , format_(text::ByteCursor(bytes).u16()) {
    switch (format_) {
    case 0:
    case 6:
    case 10: segmentCount_ = 1; break;
    case 2: segmentCount_ = kHighBytes; break;
    case 4:
        rowSize_ = numberAt(kSegmentCount, kU16) & ~std::size_t{1};
        // As many as have their differences. Range offsets that are missing are 0.
        segmentCount_ = wholeItems(rowSize_ / kU16, bytes.size(), kSegmentEnds + kSegmentPadding + 2 * rowSize_, kU16);
        break;
    case 12:
    case 13: segmentCount_ = wholeItems(numberAt(kGroupCount, kU32), bytes.size(), kGroups, kBytesAGroup); break;
    default: break;
    }
    if (bytes.size() <= kByteArray) segmentCount_ = 0;
}

GlyphIndex CharacterMap::glyphOf(std::uint32_t code) const {
    const std::size_t index = indexOfSegment(code);
    if (index >= segmentCount_) return 0;
    const Segment segment = segmentAt(index);
    return code < segment.first || code > segment.last ? GlyphIndex{0} : glyphIn(segment, code);
}

/// The segment to which a code belongs, if it belongs to any. Segments are sorted by their last codes.
std::size_t CharacterMap::indexOfSegment(std::uint32_t code) const {
    if (format_ == 2) return code > 0xFF ? code >> 8 : code;
    std::size_t low = 0;
    std::size_t high = segmentCount_;
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        if (segmentAt(middle).last < code)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

CharacterMap::Segment CharacterMap::segmentAt(std::size_t index) const {
    const auto trimmed = [this](std::size_t start, std::size_t array, std::size_t size) {
        const auto first = static_cast<std::uint32_t>(numberAt(start, size));
        const auto count = wholeItems(numberAt(start + size, size), bytes_.size(), array, kU16);
        if (count == 0) return Segment{};
        return Segment{first, static_cast<std::uint32_t>(first + count - 1), 0, 0, kU16, array};
    };
    switch (format_) {
    case 0: return {0, 0xFF, 0, 0, 1, kByteArray};
    case 2: return highByteSegment(index);
    case 4: return deltaSegment(index);
    case 6: return trimmed(kTrimmedStart, kTrimmedArray, kU16);
    case 10: return trimmed(kLongTrimmedStart, kLongTrimmedArray, kU32);
    default: return groupSegment(index);
    }
}

/// Format 2: the codes of two bytes that begin with a byte, or the code of that one byte.
CharacterMap::Segment CharacterMap::highByteSegment(std::size_t highByte) const {
    const std::size_t key = numberAt(kHighByteKeys + highByte * kU16, kU16);
    const std::size_t header = kSubHeaders + key;
    const auto first = static_cast<std::uint32_t>(numberAt(header, kU16));
    const auto count = static_cast<std::uint32_t>(numberAt(header + kU16, kU16));
    const auto delta = static_cast<std::uint32_t>(numberAt(header + 2 * kU16, kU16));
    const std::size_t rangeOffset = header + 3 * kU16;
    const std::size_t array = rangeOffset + numberAt(rangeOffset, kU16);
    const auto high = static_cast<std::uint32_t>(highByte);
    if (count == 0) return {};
    if (key != 0) return {high << 8 | first, (high << 8 | first) + count - 1, delta, 0, kU16, array};
    if (high < first || high - first >= count) return {};
    return {high, high, delta, 0, kU16, array + (high - first) * kU16};
}

/// Format 4.
CharacterMap::Segment CharacterMap::deltaSegment(std::size_t index) const {
    const std::size_t end = kSegmentEnds + index * kU16;
    const std::size_t rangeOffset = end + 3 * rowSize_ + kSegmentPadding;
    const auto first = static_cast<std::uint32_t>(numberAt(end + rowSize_ + kSegmentPadding, kU16));
    const auto last = static_cast<std::uint32_t>(numberAt(end, kU16));
    const auto delta = static_cast<std::uint32_t>(numberAt(end + 2 * rowSize_ + kSegmentPadding, kU16));
    const std::size_t range = numberAt(rangeOffset, kU16);
    if (range == kNoRange) return {last, last, 0, 0, 0, 0};
    if (range != 0) return {first, last, delta, 0, kU16, rangeOffset + range};
    return {first, last, (first + delta) & 0xFFFF, 1, 0, 0};
}

/// Formats 12 and 13.
CharacterMap::Segment CharacterMap::groupSegment(std::size_t index) const {
    text::ByteCursor group = text::ByteCursor(bytes_).at(kGroups + index * kBytesAGroup);
    Segment segment;
    segment.first = group.u32();
    segment.last = group.u32();
    segment.glyph = group.u32();
    segment.step = format_ == 12 ? 1 : 0;
    return segment;
}

GlyphIndex CharacterMap::glyphIn(const Segment& segment, std::uint32_t code) const {
    const std::uint32_t place = code - segment.first;
    if (segment.elementSize == 0) {
        const std::uint64_t glyph = segment.glyph + std::uint64_t{place} * segment.step;
        const bool isModulo = format_ == 4;
        return isModulo || glyph <= 0xFFFF ? static_cast<GlyphIndex>(glyph) : GlyphIndex{0};
    }
    const std::uint64_t element =
        numberAt(segment.array + std::size_t{place} * segment.elementSize, segment.elementSize);
    return element == 0 ? GlyphIndex{0} : static_cast<GlyphIndex>(element + segment.glyph);
}

/// The code behind the last one in the segment that can have a glyph: arrays end with the bytes, counting with the
/// glyphs.
std::uint32_t CharacterMap::endOfUse(const Segment& segment, std::uint32_t first, std::uint32_t glyphCount) const {
    const std::uint32_t last = std::min(segment.last, kLastCode);
    if (first > last) return first;
    std::uint64_t most = 1;
    if (segment.elementSize != 0)
        most = wholeItems(bytes_.size(), bytes_.size(), segment.array, segment.elementSize);
    else if (segment.step != 0)
        most = segment.glyph < glyphCount ? glyphCount - segment.glyph : 0;
    const std::uint64_t end = std::min<std::uint64_t>(std::uint64_t{last} + 1, segment.first + most);
    return static_cast<std::uint32_t>(std::max<std::uint64_t>(first, end));
}

} // namespace quillow::pdf
