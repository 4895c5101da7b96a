#include "util/exporter/Utf8Builder.h"

#include <utility>

namespace quillow {
namespace {

constexpr char32_t kReplacementCharacter = 0xFFFD;
constexpr qsizetype kUnitsAtOnce = 256;
/// The most bytes that one unit, or a lone surrogate pending before it, needs in UTF-8.
constexpr qsizetype kMaximumBytes = 3;

char* encode(char32_t character, char* out) {
    const auto trail = [](char32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
    if (character < 0x80) {
        *out++ = static_cast<char>(character);
    } else if (character < 0x800) {
        *out++ = static_cast<char>(0xC0 | character >> 6);
        *out++ = trail(character);
    } else if (character < 0x10000) {
        *out++ = static_cast<char>(0xE0 | character >> 12);
        *out++ = trail(character >> 6);
        *out++ = trail(character);
    } else {
        *out++ = static_cast<char>(0xF0 | character >> 18);
        *out++ = trail(character >> 12);
        *out++ = trail(character >> 6);
        *out++ = trail(character);
    }
    return out;
}

} // namespace

void Utf8Builder::append(QStringView piece) {
    char buffer[(kUnitsAtOnce + 1) * kMaximumBytes];
    while (!piece.isEmpty()) {
        const QStringView chunk = piece.left(kUnitsAtOnce);
        char* out = buffer;
        for (const QChar character : chunk) {
            const char16_t unit = character.unicode();
            if (pendingHigh_ != 0) {
                const char16_t high = std::exchange(pendingHigh_, char16_t{0});
                if (character.isLowSurrogate()) {
                    out = encode(QChar::surrogateToUcs4(high, unit), out);
                    continue;
                }
                out = encode(kReplacementCharacter, out);
            }
            if (character.isHighSurrogate())
                pendingHigh_ = unit;
            else
                out = encode(character.isLowSurrogate() ? kReplacementCharacter : char32_t{unit}, out);
        }
        bytes_.append(buffer, out - buffer);
        piece = piece.mid(chunk.size());
    }
}

QByteArray Utf8Builder::take() {
    char last[kMaximumBytes];
    if (std::exchange(pendingHigh_, char16_t{0}) != 0) bytes_.append(last, encode(kReplacementCharacter, last) - last);
    return std::exchange(bytes_, {});
}

} // namespace quillow
