#include "engines/pdf/content/HexString.h"

#include <bit>

namespace quillow::pdf {

namespace {

#ifdef __SSE2__
/// Decodes the digits up to the first other byte, by pairs, and returns the place behind them.
const char* decodePairs(const char* p, char*& to) {
    const auto atMost = [](__m128i bytes, char limit) {
        return _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(limit)), bytes);
    };
    for (;; p += text::kBlock) {
        const __m128i block = text::loadBlock(p);
        const __m128i digits = _mm_sub_epi8(block, _mm_set1_epi8('0'));
        const __m128i letters = _mm_sub_epi8(_mm_or_si128(block, _mm_set1_epi8(0x20)), _mm_set1_epi8('a'));
        const __m128i isDigit = atMost(digits, 9);
        const __m128i isLetter = atMost(letters, 5);
        const __m128i values = _mm_or_si128(_mm_and_si128(digits, isDigit),
                                            _mm_and_si128(_mm_add_epi8(letters, _mm_set1_epi8(10)), isLetter));
        const __m128i high = _mm_and_si128(_mm_slli_epi16(values, 4), _mm_set1_epi16(0xF0));
        const __m128i low = _mm_srli_epi16(values, 8);
        const __m128i bytes = _mm_or_si128(high, low);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(bytes, bytes));
        const int pairs = std::countr_one(text::highBits(_mm_or_si128(isDigit, isLetter))) / 2;
        to += pairs;
        if (pairs < static_cast<int>(text::kHalfBlock)) return p + 2 * pairs;
    }
}
#else
const char* decodePairs(const char* p, char*& to) {
    for (int byte = hexPairAt(p); byte >= 0; byte = hexPairAt(p)) {
        *to++ = static_cast<char>(byte);
        p += 2;
    }
    return p;
}
#endif

} // namespace

const char* decodeOtherHex(const char* p, const char* end, char*& to) {
    p = decodePairs(p, to);
    const char* const rest = p;
    while (*p != '>')
        ++p;
    to = decodeLooseHex({rest, p}, to);
    return p < end ? p : end;
}

char* decodeLooseHex(std::string_view digits, char* to) {
    int high = -1;
    for (const char c : digits) {
        const int digit = text::hexValue(c);
        if (digit < 0) continue;
        if (high < 0) {
            high = digit;
        } else {
            *to++ = static_cast<char>(high << 4 | digit);
            high = -1;
        }
    }
    if (high >= 0) *to++ = static_cast<char>(high << 4);
    return to;
}

} // namespace quillow::pdf
