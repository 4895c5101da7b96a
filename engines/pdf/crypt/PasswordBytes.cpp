#include "engines/pdf/crypt/PasswordBytes.h"

#include "text/Utf8.h"

#include <algorithm>
#include <array>

namespace quillow::pdf {

namespace {

/// The characters from 0x18 and from 0x80 on that differ from Latin-1.
constexpr unsigned kFirstOfAccents = 0x18;
constexpr std::array<char32_t, 8> kAccents{0x02D8, 0x02C7, 0x02C6, 0x02D9, 0x02DD, 0x02DB, 0x02DA, 0x02DC};
constexpr unsigned kFirstOfSigns = 0x80;
constexpr std::array<char32_t, 31> kSigns{0x2022, 0x2020, 0x2021, 0x2026, 0x2014, 0x2013, 0x0192, 0x2044,
                                          0x2039, 0x203A, 0x2212, 0x2030, 0x201E, 0x201C, 0x201D, 0x2018,
                                          0x2019, 0x201A, 0x2122, 0xFB01, 0xFB02, 0x0141, 0x0152, 0x0160,
                                          0x0178, 0x017D, 0x0131, 0x0142, 0x0153, 0x0161, 0x017E};
constexpr char32_t kEuro = 0x20AC;
constexpr unsigned kEuroByte = 0xA0;
constexpr char32_t kSoftHyphen = 0xAD; // has no byte

bool isLatin(char32_t character) {
    return (character < 0x7F && (character < kFirstOfAccents || character > 0x1F)) ||
           (character > kEuroByte && character <= 0xFF && character != kSoftHyphen);
}

template <std::size_t size>
std::optional<unsigned> byteIn(const std::array<char32_t, size>& characters, unsigned first, char32_t character) {
    const auto* const found = std::find(characters.begin(), characters.end(), character);
    if (found == characters.end()) return std::nullopt;
    return first + static_cast<unsigned>(found - characters.begin());
}

std::optional<unsigned> byteOf(char32_t character) {
    if (isLatin(character)) return static_cast<unsigned>(character);
    if (character == kEuro) return kEuroByte;
    if (const auto byte = byteIn(kAccents, kFirstOfAccents, character)) return byte;
    return byteIn(kSigns, kFirstOfSigns, character);
}

} // namespace

std::optional<std::string> pdfDocBytes(std::string_view utf8) {
    std::string bytes;
    while (!utf8.empty()) {
        const text::DecodedCodePoint next = text::decodeUtf8(utf8);
        const std::optional<unsigned> byte = byteOf(next.codePoint);
        if (!byte) return std::nullopt;
        bytes += static_cast<char>(*byte);
        utf8.remove_prefix(next.length);
    }
    return bytes;
}

} // namespace quillow::pdf
