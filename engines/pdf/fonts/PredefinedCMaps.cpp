#include "engines/pdf/fonts/PredefinedCMaps.h"

#include "engines/pdf/fonts/PredefinedCMapsTables.h"
#include "text/Unicode.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

constexpr std::uint32_t kLastUnit = 0xFFFF;
constexpr char32_t kNoCodePoint = 0xFFFFFFFF;

/// A code of four bytes is a pair.
char32_t ofUtf16(std::uint32_t value) {
    if (value <= kLastUnit) return value;
    const char32_t high = value >> 16;
    const char32_t low = value & kLastUnit;
    if (!text::isHighSurrogate(high) || !text::isLowSurrogate(low)) return kNoCodePoint;
    return text::combineSurrogates(high, low);
}

/// Codes that are longer than necessary mean nothing.
char32_t ofUtf8(CharacterCode code) {
    constexpr std::uint32_t kLeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    constexpr char32_t kFirstOfLength[] = {0, 0, 0x80, 0x800, 0x10000};
    char32_t c = code.value >> 8 * (code.bytes - 1U) & kLeadBits[code.bytes];
    for (unsigned left = code.bytes - 1U; left > 0; --left)
        c = c << 6 | (code.value >> 8 * (left - 1) & 0x3F);
    return c < kFirstOfLength[code.bytes] ? kNoCodePoint : c;
}

char32_t codePointOf(CMapCodes form, CharacterCode code) {
    switch (form) {
    case CMapCodes::Utf16: return ofUtf16(code.value);
    case CMapCodes::Utf8: return ofUtf8(code);
    default: return code.value;
    }
}

/// The CID of a key in a CMap's own segments: 0 if they do not have it, kNoCid if it has none.
std::uint32_t ownCidOf(const PredefinedCMap& cmap, std::uint32_t key) {
    const auto after =
        std::upper_bound(cmap.segments.begin(), cmap.segments.end(), key,
                         [](std::uint32_t k, const CMapSegment& segment) { return k < segment.firstCode; });
    if (after == cmap.segments.begin()) return 0;
    const CMapSegment& segment = *(after - 1);
    if (key > segment.lastCode()) return 0;
    const std::uint32_t offset = key - segment.firstCode;
    return segment.isArray() ? cmap.pool[segment.place() + offset] : segment.firstCid() + offset;
}

} // namespace

std::uint32_t PredefinedCMap::cidOf(CharacterCode code) const {
    if (!code.isInCodespace) return 0;
    if (codes == CMapCodes::Identity) return code.value;
    const std::uint32_t key = codePointOf(codes, code);
    for (const PredefinedCMap* cmap = this; cmap; cmap = cmap->parent) {
        const std::uint32_t cid = ownCidOf(*cmap, key);
        if (cid != 0) return cid == kNoCid ? 0 : cid;
    }
    return 0;
}

char32_t PredefinedCMap::unicodeOf(CharacterCode code) const {
    if (!isUnicode() || !code.isInCodespace) return 0;
    const char32_t c = codePointOf(codes, code);
    return text::isInterchangeable(c) ? c : 0;
}

const PredefinedCMap* predefinedCMap(std::string_view name) {
    const auto all = allPredefinedCMaps();
    const auto found = std::lower_bound(all.begin(), all.end(), name,
                                        [](const PredefinedCMap& cmap, std::string_view n) { return cmap.name < n; });
    return found != all.end() && found->name == name ? &*found : nullptr;
}

std::span<const PredefinedCMap> allPredefinedCMaps() {
    return {kPredefinedCMaps, kPredefinedCMapCount};
}

} // namespace quillow::pdf
