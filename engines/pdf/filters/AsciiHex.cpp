#include "engines/pdf/filters/AsciiHex.h"

#include "engines/pdf/filters/WhiteSpace.h"
#include "text/Ascii.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

constexpr int kNoDigit = -1;

/// Writes the bytes of the digits from `out` on and moves it behind them.
Decoding decodeDigits(std::string_view encoded, char*& out, const char* end) {
    int high = kNoDigit;
    for (const char c : encoded) {
        const int digit = text::hexValue(c);
        if (digit == kNoDigit) {
            if (isFilterWhiteSpace(c)) continue;
            if (c != '>') return Decoding::cut;
            break;
        }
        if (out == end) return Decoding::tooLong;
        if (high == kNoDigit) {
            high = digit;
        } else {
            *out++ = static_cast<char>(high << 4 | digit);
            high = kNoDigit;
        }
    }
    if (high != kNoDigit) *out++ = static_cast<char>(high << 4);
    return Decoding::complete;
}

} // namespace

Decoding decodeAsciiHex(std::string_view encoded, std::size_t limit, text::ByteBuffer& out) {
    const std::size_t before = out.size();
    const std::size_t most = std::min(encoded.size() / 2 + 1, limit);
    out.reserve(before + most + 1); // one more, so that there is a place even for no bytes
    out.resize(before + most);
    char* place = out.data() + before;
    const Decoding decoding = decodeDigits(encoded, place, place + most);
    out.resize(static_cast<std::size_t>(place - out.data()));
    return decoding;
}

} // namespace quillow::pdf
