#include "text/Utf8.h"

#include "text/Unicode.h"

#include <bit>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace quillow::text {

namespace {

constexpr std::size_t kBlock = 16;

/// The number of ASCII bytes at the start of a block of 16.
std::size_t asciiPrefixOfBlock(const char* bytes) {
#ifdef __SSE2__
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
    const auto high = static_cast<unsigned>(_mm_movemask_epi8(block));
    return high == 0 ? kBlock : static_cast<std::size_t>(std::countr_zero(high));
#else
    std::uint64_t words[2];
    std::memcpy(words, bytes, sizeof words);
    if (((words[0] | words[1]) & 0x8080808080808080ULL) == 0) return kBlock;
    std::size_t length = 0;
    while (static_cast<std::uint8_t>(bytes[length]) < 0x80)
        ++length;
    return length;
#endif
}

constexpr std::size_t kStride = 64;

/// True if kStride bytes are all ASCII.
bool isAsciiStride(const char* bytes) {
#ifdef __SSE2__
    const auto* const blocks = reinterpret_cast<const __m128i*>(bytes);
    const __m128i low = _mm_or_si128(_mm_loadu_si128(blocks), _mm_loadu_si128(blocks + 1));
    const __m128i high = _mm_or_si128(_mm_loadu_si128(blocks + 2), _mm_loadu_si128(blocks + 3));
    return _mm_movemask_epi8(_mm_or_si128(low, high)) == 0;
#else
    for (std::size_t at = 0; at < kStride; at += kBlock)
        if (asciiPrefixOfBlock(bytes + at) < kBlock) return false;
    return true;
#endif
}

bool isTrail(char byte) {
    return (static_cast<std::uint8_t>(byte) & 0xC0) == 0x80;
}

} // namespace

void appendUtf8(std::string& out, char32_t c) {
    if (c > kLastCodePoint || isSurrogate(c)) c = kReplacementCharacter;
    if (c < 0x80) {
        out.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
        const char bytes[] = {static_cast<char>(0xC0 | (c >> 6)), static_cast<char>(0x80 | (c & 0x3F))};
        out.append(bytes, sizeof bytes);
    } else if (c < 0x10000) {
        const char bytes[] = {static_cast<char>(0xE0 | (c >> 12)), static_cast<char>(0x80 | ((c >> 6) & 0x3F)),
                              static_cast<char>(0x80 | (c & 0x3F))};
        out.append(bytes, sizeof bytes);
    } else {
        const char bytes[] = {static_cast<char>(0xF0 | (c >> 18)), static_cast<char>(0x80 | ((c >> 12) & 0x3F)),
                              static_cast<char>(0x80 | ((c >> 6) & 0x3F)), static_cast<char>(0x80 | (c & 0x3F))};
        out.append(bytes, sizeof bytes);
    }
}

DecodedCodePoint decodeUtf8(std::string_view bytes) {
    const auto lead = static_cast<std::uint8_t>(bytes[0]);
    if (lead < 0x80) return {lead, 1, true};
    // Table 3-7: the lead byte sets the number of trail bytes and narrows the range of the first of them.
    std::size_t trails = 0;
    std::uint8_t lower = 0x80;
    std::uint8_t upper = 0xBF;
    char32_t codePoint = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        trails = 1;
        codePoint = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        trails = 2;
        codePoint = lead & 0x0F;
        if (lead == 0xE0) lower = 0xA0;
        if (lead == 0xED) upper = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        trails = 3;
        codePoint = lead & 0x07;
        if (lead == 0xF0) lower = 0x90;
        if (lead == 0xF4) upper = 0x8F;
    } else {
        return {kReplacementCharacter, 1, false};
    }
    std::size_t length = 1;
    for (; trails > 0; --trails, ++length) {
        if (length >= bytes.size()) return {kReplacementCharacter, length, false};
        const auto trail = static_cast<std::uint8_t>(bytes[length]);
        if (trail < lower || trail > upper) return {kReplacementCharacter, length, false};
        codePoint = (codePoint << 6) | (trail & 0x3F);
        lower = 0x80;
        upper = 0xBF;
    }
    return {codePoint, length, true};
}

std::size_t asciiPrefixLength(std::string_view bytes) {
    std::size_t at = 0;
    while (bytes.size() - at >= kStride && isAsciiStride(bytes.data() + at))
        at += kStride;
    while (bytes.size() - at >= kBlock) {
        const std::size_t length = asciiPrefixOfBlock(bytes.data() + at);
        at += length;
        if (length < kBlock) return at;
    }
    while (at < bytes.size() && static_cast<std::uint8_t>(bytes[at]) < 0x80)
        ++at;
    return at;
}

Utf8Prefix wellFormedUtf8Prefix(std::string_view bytes) {
    const char* const data = bytes.data();
    std::size_t at = 0;
    std::size_t trails = 0;
    // The common sequences first: two and three bytes whose lead byte does not narrow the first trail byte.
    while (bytes.size() - at >= kBlock) {
        const auto lead = static_cast<std::uint8_t>(data[at]);
        if (lead < 0x80) {
            while (bytes.size() - at >= kStride && isAsciiStride(data + at))
                at += kStride;
            if (bytes.size() - at >= kBlock) at += asciiPrefixOfBlock(data + at);
        } else if (lead >= 0xC2 && lead <= 0xDF && isTrail(data[at + 1])) {
            at += 2;
            trails += 1;
        } else if (lead > 0xE0 && lead <= 0xEF && lead != 0xED && isTrail(data[at + 1]) && isTrail(data[at + 2])) {
            at += 3;
            trails += 2;
        } else {
            const DecodedCodePoint decoded = decodeUtf8(bytes.substr(at));
            if (!decoded.wellFormed) return {at, at - trails};
            at += decoded.length;
            trails += decoded.length - 1;
        }
    }
    while (at < bytes.size()) {
        const DecodedCodePoint decoded = decodeUtf8(bytes.substr(at));
        if (!decoded.wellFormed) break;
        at += decoded.length;
        trails += decoded.length - 1;
    }
    return {at, at - trails};
}

std::size_t validUtf8PrefixLength(std::string_view bytes) {
    return wellFormedUtf8Prefix(bytes).bytes;
}

bool isValidUtf8(std::string_view bytes) {
    return validUtf8PrefixLength(bytes) == bytes.size();
}

bool isMultiByteUtf8(std::string_view bytes) {
    const std::size_t ascii = asciiPrefixLength(bytes);
    return ascii < bytes.size() && isValidUtf8(bytes.substr(ascii));
}

} // namespace quillow::text
