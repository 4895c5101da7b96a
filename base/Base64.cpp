#include "base/Base64.h"

#include <cstdint>

namespace quillow {
namespace {

/// The value of a character of the alphabet, or -1.
int sextet(char character) {
    if (character >= 'A' && character <= 'Z') return character - 'A';
    if (character >= 'a' && character <= 'z') return character - 'a' + 26;
    if (character >= '0' && character <= '9') return character - '0' + 52;
    if (character == '+') return 62;
    return character == '/' ? 63 : -1;
}

bool isSpace(char character, Base64Space space) {
    if (character == '\r' || character == '\n') return true;
    return space == Base64Space::all && (character == ' ' || character == '\t');
}

} // namespace

std::optional<QByteArray> bytesFromBase64(const QByteArray& text, Base64Space space) {
    QByteArray line = text;
    line.removeIf([space](char character) { return isSpace(character, space); });
    if (line.size() % 4 != 0) return std::nullopt;
    const qsizetype padding = line.endsWith("==") ? 2 : line.endsWith('=') ? 1 : 0;
    const qsizetype length = line.size() - padding;

    QByteArray bytes;
    bytes.reserve(line.size() / 4 * 3);
    std::uint32_t bits = 0;
    int bitCount = 0;
    for (qsizetype i = 0; i < length; ++i) {
        const int value = sextet(line[i]);
        if (value < 0) return std::nullopt;
        bits = bits << 6 | static_cast<std::uint32_t>(value);
        bitCount += 6;
        if (bitCount < 8) continue;
        bitCount -= 8;
        bytes.append(static_cast<char>(bits >> bitCount & 0xFF));
    }
    const std::uint32_t unused = bits & ((1U << bitCount) - 1);
    return unused == 0 ? std::optional(bytes) : std::nullopt;
}

} // namespace quillow
