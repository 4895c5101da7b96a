// Names of tags and attributes as numbers, so that a name of up to sixteen bytes is read, lower-cased and
// compared in one step.
#pragma once

#include "text/Ascii.h"
#include "text/ByteBlock.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

namespace quillow::html {

/// The bytes of a lower-case name, the first byte in the lowest bits. All zero for a name that is longer than
/// kMaxLength or contains U+0000.
struct NameKey {
    static constexpr std::size_t kMaxLength = 16;
    std::uint64_t low = 0;
    std::uint64_t high = 0;
    friend constexpr bool operator==(const NameKey&, const NameKey&) = default;

    /// Sets the byte at `index`, which must still be zero.
    constexpr void put(std::size_t index, char c) {
        (index < 8 ? low : high) |= std::uint64_t{static_cast<unsigned char>(c)} << (index % 8 * 8);
    }
    /// A hash below 2 to the power of `bits`.
    [[nodiscard]] constexpr std::size_t hash(unsigned bits) const {
        constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15; // 2 to the power of 64 divided by the golden ratio
        return static_cast<std::size_t>(((low ^ (high * kOdd)) * kOdd) >> (64 - bits));
    }
};

[[nodiscard]] constexpr NameKey keyOf(std::string_view lowerCase) {
    NameKey key;
    if (lowerCase.size() > NameKey::kMaxLength) return key;
    for (std::size_t i = 0; i < lowerCase.size(); ++i)
        key.put(i, lowerCase[i]);
    return key;
}

/// The kind of a name. White space, "/" and ">" end every name; "=" also ends an attribute's name.
enum class NameEnd { tag, attribute };

struct ScannedName {
    NameKey key; ///< key of the lower-case name
    std::size_t length = 0;
    /// True if the name has no upper-case letter and no U+0000, so that the slice of the source can
    /// be used as it is.
    bool asWritten = true;
};

/// Reads the name at `from`, byte by byte. `from` must not be past the end of the source.
template <NameEnd end>
[[nodiscard]] ScannedName scanNamePortable(std::string_view source, std::size_t from);

extern template ScannedName scanNamePortable<NameEnd::tag>(std::string_view source, std::size_t from);
extern template ScannedName scanNamePortable<NameEnd::attribute>(std::string_view source, std::size_t from);

[[nodiscard]] constexpr bool endsName(char c, NameEnd end) {
    return text::isBlank(c) || c == '/' || c == '>' || (c == '=' && end == NameEnd::attribute);
}

#ifdef __SSE2__
/// Sixteen 0xFF bytes, then sixteen zero bytes. A load that begins n bytes before the middle gives a mask that
/// keeps the first n bytes of a block.
inline constexpr std::array<char, 2 * NameKey::kMaxLength> kKeepFirst = [] {
    std::array<char, 2 * NameKey::kMaxLength> masks{};
    std::fill_n(masks.begin(), NameKey::kMaxLength, static_cast<char>(0xFF));
    return masks;
}();

/// 0xFF for each byte that ends a name and for every control character. The caller sorts out the control characters
/// that do not end a name.
template <NameEnd end>
[[nodiscard]] inline __m128i mayEndName(__m128i block) {
    const __m128i blank = _mm_cmpeq_epi8(_mm_min_epu8(block, _mm_set1_epi8(0x20)), block);
    const __m128i slash = _mm_cmpeq_epi8(block, _mm_set1_epi8('/'));
    __m128i ends = _mm_or_si128(_mm_or_si128(blank, slash), _mm_cmpeq_epi8(block, _mm_set1_epi8('>')));
    if constexpr (end == NameEnd::attribute) ends = _mm_or_si128(ends, _mm_cmpeq_epi8(block, _mm_set1_epi8('=')));
    return ends;
}

/// 0xFF for each byte from "A" to "Z". The addition moves these letters to the 26 lowest signed values, so that one
/// signed comparison finds them.
[[nodiscard]] inline __m128i upperCaseBytes(__m128i block) {
    const __m128i moved = _mm_add_epi8(block, _mm_set1_epi8(static_cast<char>(0x80 - 'A')));
    return _mm_cmplt_epi8(moved, _mm_set1_epi8(static_cast<char>(0x80 + 26)));
}
#endif

/// Does the same as scanNamePortable, with SSE2 sixteen bytes at a time.
template <NameEnd end>
[[nodiscard]] inline ScannedName scanName(std::string_view source, std::size_t from) {
#ifdef __SSE2__
    if (source.size() - from >= NameKey::kMaxLength) {
        const __m128i block = text::loadBlock(source.data() + from);
        const auto ends = text::highBits(mayEndName<end>(block));
        const auto length = static_cast<std::size_t>(std::countr_zero(ends));
        // A control character that is not white space does not end a name; the portable scan handles it.
        if (ends != 0 && (source[from + length] > ' ' || text::isBlank(source[from + length]))) {
            const __m128i kept =
                _mm_and_si128(block, text::loadBlock(kKeepFirst.data() + NameKey::kMaxLength - length));
            const __m128i upper = upperCaseBytes(kept);
            const __m128i lower = _mm_or_si128(kept, _mm_and_si128(upper, _mm_set1_epi8(0x20)));
            return {{static_cast<std::uint64_t>(_mm_cvtsi128_si64(lower)),
                     static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(lower, lower)))},
                    length,
                    text::highBits(upper) == 0};
        }
    }
#endif
    return scanNamePortable<end>(source, from);
}

} // namespace quillow::html
