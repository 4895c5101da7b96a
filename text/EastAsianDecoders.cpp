#include "text/EastAsianDecoders.h"

#include "text/EncodingTables.h"
#include "text/PairTable.h"

#include <algorithm>

namespace quillow::text {

namespace {

constexpr char32_t kHalfwidthKatakana = 0xFF61;

bool isAscii(std::uint8_t byte) {
    return byte < 0x80;
}

bool isBetween(std::uint8_t byte, std::uint8_t first, std::uint8_t last) {
    return byte >= first && byte <= last;
}

/// The input of a decoder: the bytes that are not consumed yet.
class Input {
public:
    explicit Input(std::string_view bytes)
        : bytes_(bytes) {}

    [[nodiscard]] bool atEnd(std::size_t ahead = 0) const { return at_ + ahead >= bytes_.size(); }
    [[nodiscard]] std::uint8_t peek(std::size_t ahead = 0) const {
        return static_cast<std::uint8_t>(bytes_[at_ + ahead]);
    }
    void skip(std::size_t count) { at_ += count; }

    /// Consumes the run of ASCII bytes that comes next, and returns it.
    std::string_view takeAscii() {
        if (atEnd() || peek() >= 0x80) return {};
        const std::size_t length = asciiPrefixLength(bytes_.substr(at_));
        at_ += length;
        return bytes_.substr(at_ - length, length);
    }

private:
    std::string_view bytes_;
    std::size_t at_ = 0;
};

/// Writes an error and consumes `count` bytes.
void putError(Input& in, DecoderOutput& out, std::size_t count) {
    out.putError();
    in.skip(count);
}

/// Copies the runs of ASCII. Calls `decodeOne` at every other byte, with that byte; it consumes one character.
template <typename DecodeOne>
void decodeAll(std::string_view bytes, DecoderOutput& out, DecodeOne decodeOne) {
    Input in(bytes);
    while (true) {
        out.putUtf8(in.takeAscii());
        if (in.atEnd()) return;
        decodeOne(in, in.peek());
    }
}

/// The last step of every decoder of pairs: writes the character, or an error. After an error an ASCII trail byte
/// stays unconsumed.
void putPair(Input& in, DecoderOutput& out, char32_t codePoint, std::uint8_t trail) {
    if (codePoint != 0) {
        out.put(codePoint);
        in.skip(2);
        return;
    }
    putError(in, out, isAscii(trail) ? 1 : 2);
}

/// Section 5, "index gb18030 ranges code point"; 0 for null.
char32_t gb18030RangesCodePoint(std::uint32_t pointer) {
    constexpr std::uint32_t kLastOfBasicPlane = 39419;
    constexpr std::uint32_t kFirstSupplementary = 189000;
    constexpr std::uint32_t kLastSupplementary = 1237575;
    if (pointer > kLastSupplementary || (pointer > kLastOfBasicPlane && pointer < kFirstSupplementary)) return 0;
    if (pointer >= kFirstSupplementary) return 0x10000 + (pointer - kFirstSupplementary);
    if (pointer == 7457) return 0xE7C7;
    const Gb18030Range* next =
        std::upper_bound(kGb18030Ranges, kGb18030Ranges + kGb18030RangeCount, pointer,
                         [](std::uint32_t wanted, const Gb18030Range& range) { return wanted < range.pointer; });
    const Gb18030Range& range = next[-1];
    return range.codePoint + (pointer - range.pointer);
}

/// Decodes a code of four bytes, which begins with a lead byte and a digit, or writes an error. If the third or
/// fourth byte is wrong, only the lead byte is consumed.
void putFourBytes(Input& in, DecoderOutput& out) {
    if (in.atEnd(2)) return putError(in, out, 2);
    if (!isBetween(in.peek(2), 0x81, 0xFE)) return putError(in, out, 1);
    if (in.atEnd(3)) return putError(in, out, 3);
    if (!isBetween(in.peek(3), 0x30, 0x39)) return putError(in, out, 1);
    const std::uint32_t pointer =
        (in.peek(0) - 0x81U) * 12600 + (in.peek(1) - 0x30U) * 1260 + (in.peek(2) - 0x81U) * 10 + (in.peek(3) - 0x30U);
    const char32_t codePoint = gb18030RangesCodePoint(pointer);
    if (codePoint != 0) {
        out.put(codePoint);
    } else {
        out.putError();
    }
    in.skip(4);
}

} // namespace

// Section 10.2.1. GBK has the same decoder.
void decodeGb18030(std::string_view bytes, DecoderOutput& out) {
    decodeAll(bytes, out, [&out](Input& in, std::uint8_t lead) {
        if (lead == 0x80) {
            out.put(0x20AC);
            in.skip(1);
        } else if (lead == 0xFF || in.atEnd(1)) {
            putError(in, out, 1);
        } else if (isBetween(in.peek(1), 0x30, 0x39)) {
            putFourBytes(in, out);
        } else {
            putPair(in, out, kGbkPairs.decode(lead, in.peek(1)), in.peek(1));
        }
    });
}

// Section 11.1.1.
void decodeBig5(std::string_view bytes, DecoderOutput& out) {
    decodeAll(bytes, out, [&out](Input& in, std::uint8_t lead) {
        if (!isBetween(lead, 0x81, 0xFE) || in.atEnd(1)) return putError(in, out, 1);
        const std::uint8_t trail = in.peek(1);
        // Pointers 1133, 1135, 1164 and 1166: each is a letter and a combining mark.
        if ((lead == 0x88) && (trail == 0x62 || trail == 0x64 || trail == 0xA3 || trail == 0xA5)) {
            out.put(trail < 0x80 ? 0x00CA : 0x00EA);
            out.put(trail == 0x62 || trail == 0xA3 ? 0x0304 : 0x030C);
            return in.skip(2);
        }
        putPair(in, out, kBig5Pairs.decode(lead, trail), trail);
    });
}

// Section 12.1.1.
void decodeEucJp(std::string_view bytes, DecoderOutput& out) {
    decodeAll(bytes, out, [&out](Input& in, std::uint8_t lead) {
        if ((lead != 0x8E && lead != 0x8F && !isBetween(lead, 0xA1, 0xFE)) || in.atEnd(1)) return putError(in, out, 1);
        const std::uint8_t second = in.peek(1);
        if (lead == 0x8E && isBetween(second, 0xA1, 0xDF)) {
            out.put(kHalfwidthKatakana + (second - 0xA1U));
            in.skip(2);
        } else if (lead == 0x8F && isBetween(second, 0xA1, 0xFE)) {
            if (in.atEnd(2)) return putError(in, out, 2);
            in.skip(1);
            putPair(in, out, kJisX0212Pairs.decode(second, in.peek(1)), in.peek(1));
        } else {
            putPair(in, out, lead >= 0xA1 ? kEucJpPairs.decode(lead, second) : 0, second);
        }
    });
}

// Section 12.3.1.
void decodeShiftJis(std::string_view bytes, DecoderOutput& out) {
    decodeAll(bytes, out, [&out](Input& in, std::uint8_t lead) {
        if (lead == 0x80) {
            out.put(0x80);
            in.skip(1);
        } else if (isBetween(lead, 0xA1, 0xDF)) {
            out.put(kHalfwidthKatakana + (lead - 0xA1U));
            in.skip(1);
        } else if (lead == 0xA0 || lead > 0xFC || in.atEnd(1)) {
            putError(in, out, 1);
        } else {
            putPair(in, out, kShiftJisPairs.decode(lead, in.peek(1)), in.peek(1));
        }
    });
}

// Section 13.1.1.
void decodeEucKr(std::string_view bytes, DecoderOutput& out) {
    decodeAll(bytes, out, [&out](Input& in, std::uint8_t lead) {
        if (!isBetween(lead, 0x81, 0xFE) || in.atEnd(1)) return putError(in, out, 1);
        putPair(in, out, kUhcPairs.decode(lead, in.peek(1)), in.peek(1));
    });
}

} // namespace quillow::text
