#include "engines/pdf/syntax/Lexer.h"

#include "text/Ascii.h"

#include <algorithm>

namespace quillow::pdf {
namespace {

/// What a byte means inside a literal string.
enum class StringByte : std::uint8_t { plain, open, close, escape, carriageReturn };

constexpr std::array<StringByte, 256> kStringBytes = [] {
    std::array<StringByte, 256> bytes{};
    bytes['('] = StringByte::open;
    bytes[')'] = StringByte::close;
    bytes['\\'] = StringByte::escape;
    bytes['\r'] = StringByte::carriageReturn;
    return bytes;
}();

constexpr std::size_t kExactDigits = 18; ///< decimal digits that 64 bits hold whatever they are

constexpr std::array<double, kExactDigits + 1> kPowersOfTen = [] {
    std::array<double, kExactDigits + 1> powers{};
    double power = 1;
    for (double& entry : powers) {
        entry = power;
        power *= 10;
    }
    return powers;
}();

constexpr std::size_t kLargestExponent =
    300; ///< of ten: further digits before the point change nothing, so that the value stays finite

bool isOneOf(char byte, std::string_view bytes) {
    return bytes.find(byte) != std::string_view::npos;
}

StringToken readLiteral(const char* p, const char* end) {
    const char* const begin = p + 1;
    bool isPlain = true;
    std::size_t depth = 1;
    for (p = begin; p < end; ++p) {
        switch (kStringBytes[static_cast<std::uint8_t>(*p)]) {
        case StringByte::plain: break;
        case StringByte::open: ++depth; break;
        case StringByte::close:
            if (--depth == 0) return {{begin, static_cast<std::size_t>(p - begin)}, isPlain, p + 1};
            break;
        case StringByte::escape:
            isPlain = false;
            if (p + 1 < end) ++p;
            break;
        case StringByte::carriageReturn: isPlain = false; break;
        }
    }
    return {{begin, static_cast<std::size_t>(end - begin)}, isPlain, end};
}

StringToken readHexadecimal(const char* p, const char* end) {
    const char* const begin = p + 1;
    const char* const close = std::find(begin, end, '>');
    return {{begin, static_cast<std::size_t>(close - begin)}, false, close == end ? end : close + 1};
}

/// A digit that is missing at the end is 0. Bytes that are no digits are passed over.
void unescapeHexadecimal(std::string_view raw, text::ByteBuffer& out) {
    int high = -1;
    for (const char byte : raw) {
        const int value = text::hexValue(byte);
        if (value < 0) continue;
        if (high >= 0) out.append(static_cast<char>(high << 4 | value));
        high = high >= 0 ? -1 : value;
    }
    if (high >= 0) out.append(static_cast<char>(high << 4));
}

bool isOctal(char byte) {
    return byte >= '0' && byte <= '7';
}

/// A line end inside a string is one LF, whatever the file has. `p` is at it; returns what is behind it.
const char* skipLineEnd(const char* p, const char* end) {
    return *p == '\r' && p + 1 < end && p[1] == '\n' ? p + 2 : p + 1;
}

/// One to three octal digits; what does not fit into a byte is cut off (table 3).
const char* unescapeOctal(const char* p, const char* end, text::ByteBuffer& out) {
    const char* const last = p + std::min<std::ptrdiff_t>(3, end - p);
    int value = 0;
    for (; p < last && isOctal(*p); ++p)
        value = value * 8 + (*p - '0');
    out.append(static_cast<char>(value));
    return p;
}

/// `p` is behind a backslash (table 3). Returns what is behind the escape.
const char* unescapeOne(const char* p, const char* end, text::ByteBuffer& out) {
    if (text::isLineEnd(*p)) return skipLineEnd(p, end);
    if (isOctal(*p)) return unescapeOctal(p, end, out);
    switch (*p) {
    case 'n': out.append('\n'); break;
    case 'r': out.append('\r'); break;
    case 't': out.append('\t'); break;
    case 'b': out.append('\b'); break;
    case 'f': out.append('\f'); break;
    default: out.append(*p);
    }
    return p + 1;
}

void unescapeLiteral(std::string_view raw, text::ByteBuffer& out) {
    const char* p = raw.data();
    const char* const end = p + raw.size();
    while (p < end) {
        const char* const special = std::find_if(p, end, [](char byte) { return byte == '\\' || byte == '\r'; });
        out.append({p, static_cast<std::size_t>(special - p)});
        if (special == end) return;
        if (*special == '\\') {
            if (special + 1 == end) return;
            p = unescapeOne(special + 1, end, out);
        } else {
            out.append('\n');
            p = skipLineEnd(special, end);
        }
    }
}

/// The digits of a number, before and behind its point.
struct Digits {
    std::uint64_t value = 0;
    std::size_t count = 0;   ///< of those in `value` from the first that is not 0 on
    std::size_t dropped = 0; ///< before the point, beyond those that `value` holds
    std::size_t behind = 0;  ///< of those in `value`, behind the point
};

const char* readDigits(const char* p, const char* end, bool isBehindPoint, Digits& digits) {
    for (; p < end && text::isDigit(*p); ++p) {
        if (digits.count == kExactDigits) {
            digits.dropped += isBehindPoint ? 0 : 1;
            continue;
        }
        digits.value = digits.value * 10 + static_cast<std::uint64_t>(*p - '0');
        digits.count += digits.value != 0 ? 1 : 0;
        digits.behind += isBehindPoint ? 1 : 0;
    }
    return p;
}

double valueOf(const Digits& digits) {
    auto value = static_cast<double>(digits.value);
    for (std::size_t rest = std::min(digits.dropped, kLargestExponent - kExactDigits); rest > 0;) {
        const std::size_t step = std::min(rest, kExactDigits);
        value *= kPowersOfTen[step];
        rest -= step;
    }
    for (std::size_t rest = std::min(digits.behind, kLargestExponent); rest > 0;) {
        const std::size_t step = std::min(rest, kExactDigits);
        value /= kPowersOfTen[step];
        rest -= step;
    }
    return value;
}

} // namespace

// clang-format off
const std::array<ByteClass, 256> kByteClasses = [] {
    std::array<ByteClass, 256> classes{};
    for (const char byte : {'\0', '\t', '\n', '\f', '\r', ' '}) classes[static_cast<std::uint8_t>(byte)] = ByteClass::whiteSpace;
    for (const char byte : {'(', ')', '<', '>', '[', ']', '{', '}', '/', '%'}) classes[static_cast<std::uint8_t>(byte)] = ByteClass::delimiter;
    return classes;
}();
// clang-format on

const char* skipWhiteSpace(const char* p, const char* end) {
    for (; p < end; ++p) {
        if (isWhiteSpace(*p)) continue;
        if (*p != '%') return p;
        p = std::find_if(p, end, text::isLineEnd);
        if (p == end) return end;
    }
    return end;
}

NumberToken readNumber(const char* p, const char* end) {
    const char* const begin = p;
    bool isNegative = false;
    for (; p < end && (*p == '-' || *p == '+'); ++p)
        isNegative = isNegative || *p == '-';
    Digits digits;
    p = readDigits(p, end, false, digits);
    const bool isInteger = p == end || *p != '.';
    if (!isInteger) p = readDigits(p + 1, end, true, digits);
    // The rest of "1.2.3" and "4-5" is dropped, as most readers do.
    while (p < end && p != begin && (text::isDigit(*p) || isOneOf(*p, ".+-")))
        ++p;
    const double value = valueOf(digits);
    return {isNegative ? -value : value, isInteger, p};
}

StringToken readString(const char* p, const char* end) {
    return *p == '(' ? readLiteral(p, end) : readHexadecimal(p, end);
}

void unescapeString(std::string_view raw, char opening, text::ByteBuffer& out) {
    if (opening == '(') return unescapeLiteral(raw, out);
    unescapeHexadecimal(raw, out);
}

std::string_view readRawName(const char* p, const char* end) {
    const char* const behind = std::find_if_not(p, end, isRegular);
    return {p, static_cast<std::size_t>(behind - p)};
}

} // namespace quillow::pdf
