#include "engines/html/NameKey.h"

#include <bit>
#include <cstring>

#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace quillow::html {

namespace {

bool endsName(char c, NameEnd end) {
    return isWhiteSpace(c) || c == '/' || c == '>' || (c == '=' && end == NameEnd::attribute);
}

#ifdef __SSE2__
/// Masks that keep the first bytes of a block: the load begins so many bytes before the middle.
constexpr unsigned char kKeep[32] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
                                     0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

__m128i load(const void* bytes) {
    return _mm_loadu_si128(static_cast<const __m128i*>(bytes));
}

/// 0xFF for each byte that may end a name: all that does, and control characters, which do not.
__m128i mayEnd(__m128i block, NameEnd end) {
    const __m128i blank = _mm_cmpeq_epi8(_mm_min_epu8(block, _mm_set1_epi8(0x20)), block);
    const __m128i slash = _mm_cmpeq_epi8(block, _mm_set1_epi8('/'));
    const __m128i bracket = _mm_cmpeq_epi8(block, _mm_set1_epi8('>'));
    const __m128i equals = _mm_cmpeq_epi8(block, _mm_set1_epi8(end == NameEnd::attribute ? '=' : '>'));
    return _mm_or_si128(_mm_or_si128(blank, slash), _mm_or_si128(bracket, equals));
}

/// 0xFF for each of "A" to "Z", which are moved to the lowest signed numbers.
__m128i upperCase(__m128i block) {
    const __m128i moved = _mm_add_epi8(block, _mm_set1_epi8(static_cast<char>(0x80 - 'A')));
    return _mm_cmplt_epi8(moved, _mm_set1_epi8(static_cast<char>(0x80 + 26)));
}
#endif

} // namespace

ScannedName scanNamePortable(std::string_view source, std::size_t from, NameEnd end) {
    ScannedName name;
    bool holdsNul = false;
    for (; from < source.size() && !endsName(source[from], end); ++from, ++name.length) {
        const char c = source[from];
        if (name.length < NameKey::kMaxLength) name.key.put(name.length, toLower(c));
        if (c == '\0' || toLower(c) != c) name.asWritten = false;
        holdsNul = holdsNul || c == '\0';
    }
    if (name.length > NameKey::kMaxLength || holdsNul) name.key = {};
    return name;
}

ScannedName scanName(std::string_view source, std::size_t from, NameEnd end) {
#ifdef __SSE2__
    if (source.size() - from >= NameKey::kMaxLength) {
        const __m128i block = load(source.data() + from);
        const auto ends = static_cast<unsigned>(_mm_movemask_epi8(mayEnd(block, end)));
        ScannedName name;
        name.length = static_cast<std::size_t>(std::countr_zero(ends));
        if (ends != 0 && endsName(source[from + name.length], end)) {
            const __m128i kept = _mm_and_si128(block, load(kKeep + NameKey::kMaxLength - name.length));
            const __m128i upper = upperCase(kept);
            const __m128i lower = _mm_or_si128(kept, _mm_and_si128(upper, _mm_set1_epi8(0x20)));
            name.key.low = static_cast<std::uint64_t>(_mm_cvtsi128_si64(lower));
            name.key.high = static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(lower, lower)));
            name.asWritten = _mm_movemask_epi8(upper) == 0;
            return name;
        }
    }
#endif
    return scanNamePortable(source, from, end);
}

} // namespace quillow::html
