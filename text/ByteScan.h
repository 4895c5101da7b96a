// Searches among bytes, sixteen at a time where the processor can (SSE2), with the same answers everywhere.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace quillow::text {

namespace scan {

inline constexpr std::size_t kBlock = 16;
inline constexpr std::size_t kHalfBlock = 8;

#ifdef __SSE2__
/// A bit for each of sixteen bytes that is one of the wanted ones, the lowest for the first.
template <char... kWanted>
[[nodiscard]] inline unsigned maskOf(__m128i block) {
    return static_cast<unsigned>(_mm_movemask_epi8((_mm_cmpeq_epi8(block, _mm_set1_epi8(kWanted)) | ...)));
}
[[nodiscard]] inline __m128i load(const char* bytes) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}
/// Eight bytes, and eight zero bytes behind them.
[[nodiscard]] inline __m128i loadHalf(const char* bytes) {
    return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes));
}
#endif

} // namespace scan

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
    for (; bytes.size() - from >= scan::kBlock; from += scan::kBlock)
        if (const unsigned mask = scan::maskOf<kWanted...>(scan::load(bytes.data() + from)); mask != 0)
            return from + static_cast<std::size_t>(std::countr_zero(mask));
#endif
    return findFirstOfPortable<kWanted...>(bytes, from);
}

/// The white space of HTML and CSS: TAB, LF, FF, CR and SP.
[[nodiscard]] constexpr bool isBlank(char c) {
    constexpr std::uint64_t kBlanks = 1ULL << ' ' | 1ULL << '\t' | 1ULL << '\n' | 1ULL << '\f' | 1ULL << '\r';
    const auto byte = static_cast<unsigned char>(c);
    return byte <= ' ' && (kBlanks >> byte & 1) != 0;
}

/// As skipBlanks, one byte after the other.
[[nodiscard]] constexpr std::size_t skipBlanksPortable(std::string_view bytes, std::size_t from) {
    while (from < bytes.size() && isBlank(bytes[from]))
        ++from;
    return from;
}

/// The position of the first byte at or after `from` that is no white space.
[[nodiscard]] inline std::size_t skipBlanks(std::string_view bytes, std::size_t from) {
#ifdef __SSE2__
    for (; bytes.size() - from >= scan::kBlock; from += scan::kBlock) {
        const unsigned blanks = scan::maskOf<' ', '\t', '\n', '\f', '\r'>(scan::load(bytes.data() + from));
        if (blanks != 0xFFFF) return from + static_cast<std::size_t>(std::countr_one(blanks));
    }
    if (bytes.size() - from >= scan::kHalfBlock)
        from += static_cast<std::size_t>(
            std::countr_one(scan::maskOf<' ', '\t', '\n', '\f', '\r'>(scan::loadHalf(bytes.data() + from))));
#endif
    return skipBlanksPortable(bytes, from);
}

/// As findBlank, one byte after the other.
[[nodiscard]] constexpr std::size_t findBlankPortable(std::string_view bytes, std::size_t from) {
    while (from < bytes.size() && !isBlank(bytes[from]))
        ++from;
    return from;
}

/// The position of the first white space at or after `from`; the view's size where there is none.
[[nodiscard]] inline std::size_t findBlank(std::string_view bytes, std::size_t from) {
#ifdef __SSE2__
    for (; bytes.size() - from >= scan::kBlock; from += scan::kBlock) {
        const unsigned blanks = scan::maskOf<' ', '\t', '\n', '\f', '\r'>(scan::load(bytes.data() + from));
        if (blanks != 0) return from + static_cast<std::size_t>(std::countr_zero(blanks));
    }
    if (bytes.size() - from >= scan::kHalfBlock) {
        const unsigned blanks = scan::maskOf<' ', '\t', '\n', '\f', '\r'>(scan::loadHalf(bytes.data() + from));
        if (blanks != 0) return from + static_cast<std::size_t>(std::countr_zero(blanks));
        from += scan::kHalfBlock;
    }
#endif
    return findBlankPortable(bytes, from);
}

/// As findBlankRun, one byte after the other.
[[nodiscard]] constexpr std::size_t findBlankRunPortable(std::string_view bytes, std::size_t from) {
    const auto isSingleSpace = [bytes](std::size_t at) {
        return bytes[at] == ' ' && at + 1 < bytes.size() && !isBlank(bytes[at + 1]);
    };
    while (from < bytes.size() && (!isBlank(bytes[from]) || isSingleSpace(from)))
        ++from;
    return from;
}

/// The position of the first white space at or after `from` that is anything but one SP with something after it.
[[nodiscard]] inline std::size_t findBlankRun(std::string_view bytes, std::size_t from) {
#ifdef __SSE2__
    while (bytes.size() - from > scan::kBlock) {
        const __m128i block = scan::load(bytes.data() + from);
        const unsigned blanks = scan::maskOf<' ', '\t', '\n', '\f', '\r'>(block);
        const unsigned following = blanks >> 1 | (isBlank(bytes[from + scan::kBlock]) ? 1U << (scan::kBlock - 1) : 0U);
        const unsigned runs = blanks & (~scan::maskOf<' '>(block) | following);
        if (runs != 0) return from + static_cast<std::size_t>(std::countr_zero(runs));
        from += scan::kBlock;
    }
    if (bytes.size() - from > scan::kHalfBlock) {
        const __m128i block = scan::loadHalf(bytes.data() + from);
        const unsigned blanks = scan::maskOf<' ', '\t', '\n', '\f', '\r'>(block);
        const unsigned following = blanks >> 1 | (isBlank(bytes[from + scan::kHalfBlock]) ? 0x80U : 0U);
        const unsigned runs = blanks & (~scan::maskOf<' '>(block) | following);
        if (runs != 0) return from + static_cast<std::size_t>(std::countr_zero(runs));
        from += scan::kHalfBlock;
    }
#endif
    return findBlankRunPortable(bytes, from);
}

/// A "binary data byte" of the MIME Sniffing Standard, section 3: a control character that no text has.
[[nodiscard]] constexpr bool isBinaryByte(char c) {
    return static_cast<unsigned char>(c) < ' ' && !isBlank(c) && c != '\x1B';
}

/// As countBinaryBytes, one byte after the other.
[[nodiscard]] constexpr std::size_t countBinaryBytesPortable(std::string_view bytes) {
    std::size_t count = 0;
    for (const char c : bytes)
        count += isBinaryByte(c) ? 1 : 0;
    return count;
}

/// How many of the bytes are binary data bytes.
[[nodiscard]] inline std::size_t countBinaryBytes(std::string_view bytes) {
    std::size_t count = 0;
#ifdef __SSE2__
    for (; bytes.size() >= scan::kBlock; bytes.remove_prefix(scan::kBlock)) {
        const __m128i block = scan::load(bytes.data());
        const __m128i low = _mm_cmpeq_epi8(_mm_min_epu8(block, _mm_set1_epi8(0x1F)), block);
        const auto controls = static_cast<unsigned>(_mm_movemask_epi8(low));
        if (controls == 0) continue;
        const unsigned allowed = scan::maskOf<'\t', '\n', '\f', '\r', '\x1B'>(block);
        count += static_cast<std::size_t>(std::popcount(controls & ~allowed));
    }
#endif
    return count + countBinaryBytesPortable(bytes);
}

} // namespace quillow::text
