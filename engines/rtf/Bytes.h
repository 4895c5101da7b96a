// Byte scans for the RTF scanner. Each finds the next byte of one class: sixteen bytes at a time with SSE2 (every
// x86-64 machine has it), byte by byte elsewhere.
#pragma once

#include "text/ByteBlock.h"

#include <cstddef>
#include <cstdint>

namespace quillow::rtf {

[[nodiscard]] constexpr bool isHigh(char c) {
    return (static_cast<std::uint8_t>(c) & 0x80) != 0;
}

/// The three bytes that make up RTF's group and control syntax.
[[nodiscard]] constexpr bool isSyntax(char c) {
    return c == '\\' || c == '{' || c == '}';
}

/// Printable ASCII except the syntax bytes.
[[nodiscard]] constexpr bool isPlainText(char c) {
    return c >= 0x20 && c < 0x7F && !isSyntax(c);
}

#if defined(__SSE2__)

[[nodiscard]] inline std::size_t lowestBit(unsigned mask) {
    return static_cast<std::size_t>(__builtin_ctz(mask));
}

/// The bit mask of the bytes that are not plain text. `v | 2` maps '}' to DEL. The comparison is signed, so bytes
/// over 0x7F are negative and below 0x20.
[[nodiscard]] inline unsigned notPlainText(__m128i v) {
    const __m128i low = _mm_cmplt_epi8(v, _mm_set1_epi8(0x20));
    const __m128i backslash = _mm_cmpeq_epi8(v, _mm_set1_epi8('\\'));
    const __m128i open = _mm_cmpeq_epi8(v, _mm_set1_epi8('{'));
    const __m128i close = _mm_cmpeq_epi8(_mm_or_si128(v, _mm_set1_epi8(2)), _mm_set1_epi8(0x7F));
    return text::highBits(_mm_or_si128(_mm_or_si128(low, backslash), _mm_or_si128(open, close)));
}

/// A superset of notPlainText() that is cheaper to compute: it also has '|' and '~'. Adding kShift makes every
/// byte over 'z' negative.
[[nodiscard]] inline unsigned unusualText(__m128i v) {
    constexpr char kShift = 0x80 - '{';
    const __m128i usual = _mm_cmpgt_epi8(_mm_add_epi8(v, _mm_set1_epi8(kShift)), _mm_set1_epi8(0x20 + kShift - 1));
    return text::highBits(_mm_andnot_si128(_mm_cmpeq_epi8(v, _mm_set1_epi8('\\')), usual)) ^ 0xFFFFU;
}

/// All ones in the bytes that are a backslash or a brace.
[[nodiscard]] inline __m128i syntaxBytes(__m128i v) {
    const __m128i backslash = _mm_cmpeq_epi8(v, _mm_set1_epi8('\\'));
    const __m128i open = _mm_cmpeq_epi8(v, _mm_set1_epi8('{'));
    const __m128i close = _mm_cmpeq_epi8(v, _mm_set1_epi8('}'));
    return _mm_or_si128(_mm_or_si128(backslash, open), close);
}

/// The number of ASCII letters at the start of a block, 0..16.
[[nodiscard]] inline std::size_t leadingLetters(__m128i v) {
    const __m128i offset = _mm_sub_epi8(_mm_or_si128(v, _mm_set1_epi8(0x20)), _mm_set1_epi8('a'));
    const unsigned letters = text::highBits(_mm_cmpeq_epi8(_mm_min_epu8(offset, _mm_set1_epi8(25)), offset));
    return lowestBit(~letters);
}

#endif

/// The first byte in [p, end) that is not plain text.
[[nodiscard]] inline const char* findTextEnd(const char* p, const char* end) {
#if defined(__SSE2__)
    for (; static_cast<std::size_t>(end - p) >= text::kBlock; p += text::kBlock)
        if (const unsigned mask = notPlainText(text::loadBlock(p))) return p + lowestBit(mask);
#endif
    while (p != end && isPlainText(*p))
        ++p;
    return p;
}

/// The first backslash or brace in [p, end).
[[nodiscard]] inline const char* findSyntax(const char* p, const char* end) {
#if defined(__SSE2__)
    for (; static_cast<std::size_t>(end - p) >= 4 * text::kBlock; p += 4 * text::kBlock) {
        const __m128i a = syntaxBytes(text::loadBlock(p));
        const __m128i b = syntaxBytes(text::loadBlock(p + text::kBlock));
        const __m128i c = syntaxBytes(text::loadBlock(p + 2 * text::kBlock));
        const __m128i d = syntaxBytes(text::loadBlock(p + 3 * text::kBlock));
        if (text::highBits(_mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d))) == 0) continue;
        if (const unsigned mask = text::highBits(a)) return p + lowestBit(mask);
        if (const unsigned mask = text::highBits(b)) return p + text::kBlock + lowestBit(mask);
        if (const unsigned mask = text::highBits(c)) return p + 2 * text::kBlock + lowestBit(mask);
        return p + 3 * text::kBlock + lowestBit(text::highBits(d));
    }
#endif
    while (p != end && !isSyntax(*p))
        ++p;
    return p;
}

/// The first byte over 0x7F in [p, end).
[[nodiscard]] inline const char* findHighByte(const char* p, const char* end) {
#if defined(__SSE2__)
    for (; static_cast<std::size_t>(end - p) >= text::kBlock; p += text::kBlock)
        if (const unsigned mask = text::highBits(text::loadBlock(p))) return p + lowestBit(mask);
#endif
    while (p != end && !isHigh(*p))
        ++p;
    return p;
}

/// The number of code points in well-formed UTF-8: its bytes minus its trail bytes.
[[nodiscard]] inline std::uint64_t countCodePoints(const char* p, const char* end) {
    const auto length = static_cast<std::uint64_t>(end - p);
    std::uint64_t trails = 0;
#if defined(__SSE2__)
    constexpr std::size_t kStride = 4 * text::kBlock;
    constexpr std::size_t kMostStrides = 63; // a stride adds up to 4 to each one-byte counter
    const __m128i firstLead = _mm_set1_epi8(static_cast<char>(0xC0));
    while (static_cast<std::size_t>(end - p) >= kStride) {
        __m128i counters = _mm_setzero_si128();
        const std::size_t strides = static_cast<std::size_t>(end - p) / kStride;
        const char* const stop = p + (strides < kMostStrides ? strides : kMostStrides) * kStride;
        for (; p != stop; p += kStride) {
            counters = _mm_sub_epi8(counters, _mm_cmpgt_epi8(firstLead, text::loadBlock(p)));
            counters = _mm_sub_epi8(counters, _mm_cmpgt_epi8(firstLead, text::loadBlock(p + text::kBlock)));
            counters = _mm_sub_epi8(counters, _mm_cmpgt_epi8(firstLead, text::loadBlock(p + 2 * text::kBlock)));
            counters = _mm_sub_epi8(counters, _mm_cmpgt_epi8(firstLead, text::loadBlock(p + 3 * text::kBlock)));
        }
        const __m128i sums = _mm_sad_epu8(counters, _mm_setzero_si128());
        trails += static_cast<std::uint64_t>(_mm_cvtsi128_si64(sums)) +
                  static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(sums, sums)));
    }
#endif
    for (; p != end; ++p)
        trails += (static_cast<std::uint8_t>(*p) & 0xC0) == 0x80 ? 1 : 0;
    return length - trails;
}

} // namespace quillow::rtf
