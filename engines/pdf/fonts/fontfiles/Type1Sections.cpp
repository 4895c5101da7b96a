#include "engines/pdf/fonts/fontfiles/Type1Sections.h"

#include "engines/pdf/fonts/fontfiles/Type1Cipher.h"
#include "text/Ascii.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace quillow::pdf {
namespace {

constexpr std::string_view kStart = "eexec";
constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kGlyphs = "/CharStrings";
/// The word may also occur before the place where the encrypted part begins.
constexpr int kMostStarts = 4;
constexpr std::size_t kRandomBytes = 4;

constexpr char kSegmentMark = '\x80';
constexpr char kTextSegment = 1;
constexpr char kBinarySegment = 2;
constexpr std::size_t kSegmentHeader = 6;

bool isSegmentHeader(std::string_view bytes) {
    return bytes.size() >= kSegmentHeader && bytes[0] == kSegmentMark &&
           (bytes[1] == kTextSegment || bytes[1] == kBinarySegment);
}

/// Little-endian, unlike everything else in fonts.
std::size_t segmentLength(std::string_view header) {
    std::size_t length = 0;
    for (std::size_t i = kSegmentHeader; i-- > 2;)
        length = length << 8 | static_cast<std::uint8_t>(header[i]);
    return length;
}

/// The next place where an encrypted part may begin: the word, but not its name, and not at the end of a procedure.
std::size_t findStart(std::string_view font, std::size_t from) {
    for (std::size_t at = font.find(kStart, from); at != std::string_view::npos; at = font.find(kStart, at + 1)) {
        const std::size_t next = font.find_first_not_of(kBlanks, at + kStart.size());
        const bool isName = at > 0 && font[at - 1] == '/';
        const bool endsProcedure = next != std::string_view::npos && font[next] == '}';
        if (!isName && !endsProcedure) return at;
    }
    return std::string_view::npos;
}

/// 7.2: an encrypted part is hexadecimal if its first four bytes are hexadecimal digits.
bool isHexadecimal(std::string_view cipher) {
    const std::string_view first = cipher.substr(0, kRandomBytes);
    return std::all_of(first.begin(), first.end(), [](char c) { return text::hexValue(c) >= 0; });
}

std::string bytesOfHexadecimal(std::string_view digits) {
    std::string bytes;
    bytes.reserve(digits.size() / 2);
    int high = -1;
    for (const char digit : digits) {
        const int value = text::hexValue(digit);
        if (value < 0) continue;
        if (high >= 0) bytes.push_back(static_cast<char>(high << 4 | value));
        high = high >= 0 ? -1 : value;
    }
    return bytes;
}

void decrypt(std::string& bytes) {
    Type1Cipher cipher(Type1Cipher::kProgramKey);
    for (char& byte : bytes)
        byte = static_cast<char>(cipher.decrypt(static_cast<std::uint8_t>(byte)));
    bytes.erase(0, kRandomBytes);
}

std::string decryptFrom(std::string_view cipher) {
    cipher.remove_prefix(std::min(cipher.find_first_not_of(kBlanks), cipher.size()));
    std::string bytes = isHexadecimal(cipher) ? bytesOfHexadecimal(cipher) : std::string(cipher);
    decrypt(bytes);
    return bytes;
}

} // namespace

bool hasSegmentHeaders(std::string_view bytes) {
    return isSegmentHeader(bytes);
}

std::string withoutSegmentHeaders(std::string_view bytes) {
    std::string font;
    font.reserve(bytes.size());
    while (isSegmentHeader(bytes)) {
        const std::size_t length = segmentLength(bytes);
        bytes.remove_prefix(kSegmentHeader);
        font += bytes.substr(0, length);
        bytes.remove_prefix(std::min(length, bytes.size()));
    }
    return font += bytes;
}

std::string_view clearText(std::string_view font) {
    return font.substr(0, findStart(font, 0));
}

std::string decryptedText(std::string_view font) {
    std::size_t start = findStart(font, 0);
    for (int i = 0; i < kMostStarts && start != std::string_view::npos; ++i) {
        std::string text = decryptFrom(font.substr(start + kStart.size()));
        if (text.find(kGlyphs) != std::string::npos) return text;
        start = findStart(font, start + kStart.size());
    }
    return std::string(font);
}

} // namespace quillow::pdf
