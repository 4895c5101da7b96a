// Names of tags and attributes as numbers: a name of up to sixteen bytes is read, put in lower case and compared at a stroke.
#pragma once

#include "text/Ascii.h"
#include "text/ByteBlock.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

namespace quillow::html {

/// The bytes of a lower-case name, the first in the lowest bits; all zero for a name that is longer than both halves hold
/// or has U+0000 in it.
struct NameKey {
    static constexpr std::size_t kMaxLength = 16;
    std::uint64_t low = 0;
    std::uint64_t high = 0;
    friend constexpr bool operator==(const NameKey&, const NameKey&) = default;

    /// Sets the byte at `index`, which is zero so far.
    constexpr void put(std::size_t index, char c) {
        (index < 8 ? low : high) |= std::uint64_t{static_cast<unsigned char>(c)} << (index % 8 * 8);
    }
    /// Spreads the keys over 2 to the power of `bits` numbers.
    [[nodiscard]] constexpr std::size_t hash(unsigned bits) const {
        constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15; // 2 to the power of 64 over the golden ratio
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

/// What ends a name: white space, "/" and ">", and for an attribute's name "=" too.
enum class NameEnd { tag, attribute };

struct ScannedName {
    NameKey key; ///< of the name in lower case
    std::size_t length = 0;
    bool asWritten = true; ///< no upper-case letter and no U+0000 in it: the source has it as it is to be
};

/// Reads the name at `from`, which is not past the end of the source, one byte after the other.
template <NameEnd end>
[[nodiscard]] ScannedName scanNamePortable(std::string_view source, std::size_t from);

extern template ScannedName scanNamePortable<NameEnd::tag>(std::string_view source, std::size_t from);
extern template ScannedName scanNamePortable<NameEnd::attribute>(std::string_view source, std::size_t from);

[[nodiscard]] constexpr bool endsName(char c, NameEnd end) {
    return text::isBlank(c) || c == '/' || c == '>' || (c == '=' && end == NameEnd::attribute);
}

#ifdef __SSE2__
/// Masks that keep the first bytes of a block: the load begins so many bytes before the middle.
inline constexpr std::array<char, 2 * NameKey::kMaxLength> kKeepFirst = [] {
    std::array<char, 2 * NameKey::kMaxLength> masks{};
    std::fill_n(masks.begin(), NameKey::kMaxLength, static_cast<char>(0xFF));
    return masks;
}();

/// 0xFF for each byte that may end a name: all that does, and control characters, which do not.
template <NameEnd end>
[[nodiscard]] inline __m128i mayEndName(__m128i block) {
    const __m128i blank = _mm_cmpeq_epi8(_mm_min_epu8(block, _mm_set1_epi8(0x20)), block);
    const __m128i slash = _mm_cmpeq_epi8(block, _mm_set1_epi8('/'));
    __m128i ends = _mm_or_si128(_mm_or_si128(blank, slash), _mm_cmpeq_epi8(block, _mm_set1_epi8('>')));
    if constexpr (end == NameEnd::attribute) ends = _mm_or_si128(ends, _mm_cmpeq_epi8(block, _mm_set1_epi8('=')));
    return ends;
}

/// 0xFF for each of "A" to "Z", which are moved to the lowest signed numbers.
[[nodiscard]] inline __m128i upperCaseBytes(__m128i block) {
    const __m128i moved = _mm_add_epi8(block, _mm_set1_epi8(static_cast<char>(0x80 - 'A')));
    return _mm_cmplt_epi8(moved, _mm_set1_epi8(static_cast<char>(0x80 + 26)));
}
#endif

/// The same, sixteen bytes at a time where the processor can.
template <NameEnd end>
[[nodiscard]] inline ScannedName scanName(std::string_view source, std::size_t from) {
#ifdef __SSE2__
    if (source.size() - from >= NameKey::kMaxLength) {
        const __m128i block = text::loadBlock(source.data() + from);
        const auto ends = text::highBits(mayEndName<end>(block));
        const auto length = static_cast<std::size_t>(std::countr_zero(ends));
        // Of what may end a name, only control characters do not.
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
