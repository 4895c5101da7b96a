// Operations on sixteen bytes at a time with SSE2, which every x86-64 processor has.
#pragma once

#include <cstddef>

#ifdef __SSE2__
#include <immintrin.h>

namespace quillow::text {

inline constexpr std::size_t kBlock = sizeof(__m128i);
inline constexpr std::size_t kHalfBlock = kBlock / 2;

[[nodiscard]] inline __m128i loadBlock(const char* bytes) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}

/// Eight bytes, followed by eight zero bytes.
[[nodiscard]] inline __m128i loadHalfBlock(const char* bytes) {
    return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes));
}

/// The highest bit of each byte. The lowest bit of the result belongs to the first byte.
[[nodiscard]] inline unsigned highBits(__m128i block) {
    return static_cast<unsigned>(_mm_movemask_epi8(block));
}

/// A mask with a bit for each byte that is one of the wanted ones.
template <char... kWanted>
[[nodiscard]] inline unsigned maskOf(__m128i block) {
    return highBits((_mm_cmpeq_epi8(block, _mm_set1_epi8(kWanted)) | ...));
}

} // namespace quillow::text
#endif
