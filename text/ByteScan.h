// Searches for any of a few bytes, sixteen at a time where the processor can (SSE2), with the same answer everywhere.
#pragma once

#include <bit>
#include <cstddef>
#include <string_view>

#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace quillow::text {

/// As findFirstOf, one byte after the other.
template <char... kWanted>
[[nodiscard]] constexpr std::size_t findFirstOfPortable(std::string_view bytes, std::size_t from) {
    while (from < bytes.size() && !((bytes[from] == kWanted) || ...))
        ++from;
    return from;
}

/// The position of the first of the wanted bytes at or after `from`, which is not past the end; the view's size where there
/// is none.
template <char... kWanted>
[[nodiscard]] inline std::size_t findFirstOf(std::string_view bytes, std::size_t from) {
#ifdef __SSE2__
    constexpr std::size_t kBlock = 16;
    for (; bytes.size() - from >= kBlock; from += kBlock) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes.data() + from));
        __m128i found = _mm_setzero_si128();
        ((found = _mm_or_si128(found, _mm_cmpeq_epi8(block, _mm_set1_epi8(kWanted)))), ...);
        const auto mask = static_cast<unsigned>(_mm_movemask_epi8(found));
        if (mask != 0) return from + static_cast<std::size_t>(std::countr_zero(mask));
    }
#endif
    return findFirstOfPortable<kWanted...>(bytes, from);
}

} // namespace quillow::text
