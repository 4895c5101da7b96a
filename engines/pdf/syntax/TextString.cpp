#include "engines/pdf/syntax/TextString.h"

#include "text/Unicode.h"
#include "text/Utf8.h"

#include <array>
#include <cstdint>

namespace quillow::pdf {
namespace {

constexpr std::string_view kBigEndianMark = "\xFE\xFF";
constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr char32_t kEscape = 0x1B;

/// The codes of PDFDocEncoding that are not those of Latin-1 (annex D.3): 0x18 to 0x1F, and 0x80 to 0xA0.
constexpr std::uint8_t kAccents = 0x18;
constexpr std::array<char16_t, 8> kAccentCharacters = {0x02D8, 0x02C7, 0x02C6, 0x02D9, 0x02DD, 0x02DB, 0x02DA, 0x02DC};
constexpr std::uint8_t kSigns = 0x80;
constexpr std::array<char16_t, 33> kSignCharacters = {
    0x2022, 0x2020, 0x2021, 0x2026, 0x2014, 0x2013, 0x0192, 0x2044, 0x2039, 0x203A, 0x2212,
    0x2030, 0x201E, 0x201C, 0x201D, 0x2018, 0x2019, 0x201A, 0x2122, 0xFB01, 0xFB02, 0x0141,
    0x0152, 0x0160, 0x0178, 0x017D, 0x0131, 0x0142, 0x0153, 0x0161, 0x017E, 0xFFFD, 0x20AC};
constexpr std::uint8_t kUndefinedDelete = 0x7F;
constexpr std::uint8_t kUndefinedHyphen = 0xAD;

char32_t characterOf(std::uint8_t code) {
    if (code >= kAccents && code < kAccents + kAccentCharacters.size()) return kAccentCharacters[code - kAccents];
    if (code >= kSigns && code < kSigns + kSignCharacters.size()) return kSignCharacters[code - kSigns];
    return code == kUndefinedDelete || code == kUndefinedHyphen ? text::kReplacementCharacter : code;
}

std::u32string decodePdfDocEncoding(std::string_view bytes) {
    std::u32string text;
    text.reserve(bytes.size());
    for (const char byte : bytes)
        text.push_back(characterOf(static_cast<std::uint8_t>(byte)));
    return text;
}

std::u32string decodeUtf8(std::string_view bytes) {
    std::u32string text;
    while (!bytes.empty()) {
        const text::DecodedCodePoint next = text::decodeUtf8(bytes);
        text.push_back(next.codePoint);
        bytes.remove_prefix(next.length);
    }
    return text;
}

/// The code unit at an offset; `high` is where its high byte is.
char32_t unitAt(std::string_view bytes, std::size_t at, std::size_t high) {
    const auto byteAt = [&](std::size_t i) { return static_cast<char32_t>(static_cast<std::uint8_t>(bytes[at + i])); };
    return byteAt(high) << 8 | byteAt(1 - high);
}

/// An odd byte at the end is dropped.
std::u32string decodeUtf16(std::string_view bytes, std::size_t high) {
    std::u32string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at + 2 <= bytes.size(); at += 2) {
        const char32_t unit = unitAt(bytes, at, high);
        const char32_t next = at + 4 <= bytes.size() ? unitAt(bytes, at + 2, high) : 0;
        if (text::isHighSurrogate(unit) && text::isLowSurrogate(next)) {
            text.push_back(text::combineSurrogates(unit, next));
            at += 2;
        } else {
            text.push_back(text::isSurrogate(unit) ? text::kReplacementCharacter : unit);
        }
    }
    return text;
}

/// A language escape is U+001B, two to four letters or more, and U+001B again (7.9.2.2.1). An escape without an end is
/// not text either, but what follows it may be.
void removeLanguageEscapes(std::u32string& text) {
    constexpr std::size_t kLongest = 16;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != kEscape) {
            text[kept++] = text[i];
            continue;
        }
        const std::size_t end = text.find(kEscape, i + 1);
        if (end != std::u32string::npos && end - i <= kLongest) i = end;
    }
    text.resize(kept);
}

bool startsWith(std::string_view bytes, std::string_view mark) {
    return bytes.substr(0, mark.size()) == mark;
}

std::u32string decodeMarked(std::string_view bytes) {
    if (startsWith(bytes, kBigEndianMark)) return decodeUtf16(bytes.substr(kBigEndianMark.size()), 0);
    if (startsWith(bytes, kLittleEndianMark)) return decodeUtf16(bytes.substr(kLittleEndianMark.size()), 1);
    return decodeUtf8(bytes.substr(kUtf8Mark.size()));
}

} // namespace

std::u32string decodeTextString(std::string_view bytes) {
    if (!startsWith(bytes, kBigEndianMark) && !startsWith(bytes, kLittleEndianMark) && !startsWith(bytes, kUtf8Mark)) {
        return decodePdfDocEncoding(bytes);
    }
    std::u32string text = decodeMarked(bytes);
    removeLanguageEscapes(text);
    return text;
}

} // namespace quillow::pdf
