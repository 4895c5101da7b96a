#include "text/Utf8.h"

#include <cstdint>
#include <cstring>

namespace quillow::text {

namespace {

bool isAsciiBlock(const char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return (word & 0x8080808080808080ULL) == 0;
}

} // namespace

void appendUtf8(std::string& out, char32_t c) {
    if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) c = kReplacementCharacter;
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

bool isValidUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        if (bytes.size() >= 8 && isAsciiBlock(bytes.data())) {
            bytes.remove_prefix(8);
            continue;
        }
        const DecodedCodePoint decoded = decodeUtf8(bytes);
        if (!decoded.wellFormed) return false;
        bytes.remove_prefix(decoded.length);
    }
    return true;
}

bool isMultiByteUtf8(std::string_view bytes) {
    for (const char byte : bytes)
        if (static_cast<std::uint8_t>(byte) >= 0x80) return isValidUtf8(bytes);
    return false;
}

} // namespace quillow::text
