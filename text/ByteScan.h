// Byte searches, sixteen bytes at a time with SSE2. Each has a portable version with the same results.
#pragma once

#include "text/Ascii.h"
#include "text/ByteBlock.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillow::text {

/// Like findFirstOf, byte by byte.
template <char... kWanted>
[[nodiscard]] constexpr std::size_t findFirstOfPortable(std::string_view bytes, std::size_t from) {
    while (from < bytes.size() && !((bytes[from] == kWanted) || ...))
        ++from;
    return from;
}

/// The position of the first of the wanted bytes at or after `from`, or the view's size if there is none. `from`
/// must not be past the end.
template <char... kWanted>
[[nodiscard]] inline std::size_t findFirstOf(std::string_view bytes, std::size_t from) {
#ifdef __SSE2__
    for (; bytes.size() - from >= kBlock; from += kBlock)
        if (const unsigned mask = maskOf<kWanted...>(loadBlock(bytes.data() + from)); mask != 0)
            return from + static_cast<std::size_t>(std::countr_zero(mask));
#endif
    return findFirstOfPortable<kWanted...>(bytes, from);
}

/// Like skipBlanks, byte by byte.
[[nodiscard]] constexpr std::size_t skipBlanksPortable(std::string_view bytes, std::size_t from) {
    while (from < bytes.size() && isBlank(bytes[from]))
        ++from;
    return from;
}

/// The position of the first byte at or after `from` that is not white space, or the view's size if there is none.
[[nodiscard]] inline std::size_t skipBlanks(std::string_view bytes, std::size_t from) {
#ifdef __SSE2__
    for (; bytes.size() - from >= kBlock; from += kBlock) {
        const unsigned blanks = maskOf<' ', '\t', '\n', '\f', '\r'>(loadBlock(bytes.data() + from));
        if (blanks != 0xFFFF) return from + static_cast<std::size_t>(std::countr_one(blanks));
    }
    if (bytes.size() - from >= kHalfBlock)
        from += static_cast<std::size_t>(
            std::countr_one(maskOf<' ', '\t', '\n', '\f', '\r'>(loadHalfBlock(bytes.data() + from))));
#endif
    return skipBlanksPortable(bytes, from);
}

/// Like findBlank, byte by byte.
[[nodiscard]] constexpr std::size_t findBlankPortable(std::string_view bytes, std::size_t from) {
    while (from < bytes.size() && !isBlank(bytes[from]))
        ++from;
    return from;
}

/// The position of the first white space at or after `from`, or the view's size if there is none. `from` must
/// not be past the end.
[[nodiscard]] inline std::size_t findBlank(std::string_view bytes, std::size_t from) {
#ifdef __SSE2__
    const auto blanks = [&](__m128i block) { return maskOf<' ', '\t', '\n', '\f', '\r'>(block); };
    for (; bytes.size() - from >= kBlock; from += kBlock)
        if (const unsigned mask = blanks(loadBlock(bytes.data() + from)); mask != 0)
            return from + static_cast<std::size_t>(std::countr_zero(mask));
    for (; bytes.size() - from >= kHalfBlock; from += kHalfBlock)
        if (const unsigned mask = blanks(loadHalfBlock(bytes.data() + from)); mask != 0)
            return from + static_cast<std::size_t>(std::countr_zero(mask));
    if (bytes.size() >= kHalfBlock) {
        // The last eight bytes. The shift drops those before `from`.
        const std::size_t start = bytes.size() - kHalfBlock;
        const unsigned mask = blanks(loadHalfBlock(bytes.data() + start)) >> (from - start);
        return mask == 0 ? bytes.size() : from + static_cast<std::size_t>(std::countr_zero(mask));
    }
#endif
    return findBlankPortable(bytes, from);
}

/// Like findBlankRun, byte by byte.
[[nodiscard]] constexpr std::size_t findBlankRunPortable(std::string_view bytes, std::size_t from) {
    const auto isSingleSpace = [bytes](std::size_t at) {
        return bytes[at] == ' ' && at + 1 < bytes.size() && !isBlank(bytes[at + 1]);
    };
    while (from < bytes.size() && (!isBlank(bytes[from]) || isSingleSpace(from)))
        ++from;
    return from;
}

/// The position of the first white space at or after `from` that is not a single SP followed by another character,
/// or the view's size if there is none.
[[nodiscard]] inline std::size_t findBlankRun(std::string_view bytes, std::size_t from) {
#ifdef __SSE2__
    while (bytes.size() - from > kBlock) {
        const __m128i block = loadBlock(bytes.data() + from);
        const unsigned blanks = maskOf<' ', '\t', '\n', '\f', '\r'>(block);
        const unsigned following = blanks >> 1 | (isBlank(bytes[from + kBlock]) ? 1U << (kBlock - 1) : 0U);
        const unsigned runs = blanks & (~maskOf<' '>(block) | following);
        if (runs != 0) return from + static_cast<std::size_t>(std::countr_zero(runs));
        from += kBlock;
    }
    if (bytes.size() - from > kHalfBlock) {
        const __m128i block = loadHalfBlock(bytes.data() + from);
        const unsigned blanks = maskOf<' ', '\t', '\n', '\f', '\r'>(block);
        const unsigned following = blanks >> 1 | (isBlank(bytes[from + kHalfBlock]) ? 0x80U : 0U);
        const unsigned runs = blanks & (~maskOf<' '>(block) | following);
        if (runs != 0) return from + static_cast<std::size_t>(std::countr_zero(runs));
        from += kHalfBlock;
    }
#endif
    return findBlankRunPortable(bytes, from);
}

/// A "binary data byte" of the MIME Sniffing Standard, section 3: a control character that does not occur in text.
[[nodiscard]] constexpr bool isBinaryByte(char c) {
    return static_cast<unsigned char>(c) < ' ' && !isBlank(c) && c != '\x1B';
}

/// Like countBinaryBytes, byte by byte.
[[nodiscard]] constexpr std::size_t countBinaryBytesPortable(std::string_view bytes) {
    std::size_t count = 0;
    for (const char c : bytes)
        count += isBinaryByte(c) ? 1 : 0;
    return count;
}

/// The number of binary data bytes.
[[nodiscard]] inline std::size_t countBinaryBytes(std::string_view bytes) {
    std::size_t count = 0;
#ifdef __SSE2__
    for (; bytes.size() >= kBlock; bytes.remove_prefix(kBlock)) {
        const __m128i block = loadBlock(bytes.data());
        const __m128i low = _mm_cmpeq_epi8(_mm_min_epu8(block, _mm_set1_epi8(0x1F)), block);
        const auto controls = highBits(low);
        if (controls == 0) continue;
        const unsigned allowed = maskOf<'\t', '\n', '\f', '\r', '\x1B'>(block);
        count += static_cast<std::size_t>(std::popcount(controls & ~allowed));
    }
#endif
    return count + countBinaryBytesPortable(bytes);
}

} // namespace quillow::text
