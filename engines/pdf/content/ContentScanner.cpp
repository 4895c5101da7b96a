#include "engines/pdf/content/ContentScanner.h"

#include "engines/pdf/content/HexString.h"
#include "engines/pdf/syntax/Lexer.h"

#include <array>

namespace quillow::pdf {

namespace {

/// What a byte begins.
enum class Start : std::uint8_t { word, blank, number, name, string, angle, array, comment, close };

constexpr std::array<Start, 256> kStarts = [] {
    std::array<Start, 256> starts{};
    for (const char byte : {'\0', '\t', '\n', '\f', '\r', ' '})
        starts[static_cast<std::uint8_t>(byte)] = Start::blank;
    for (const char byte : {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9', '+', '-', '.'})
        starts[static_cast<std::uint8_t>(byte)] = Start::number;
    for (const char byte : {')', ']', '{', '}', '>'})
        starts[static_cast<std::uint8_t>(byte)] = Start::close;
    starts['/'] = Start::name;
    starts['('] = Start::string;
    starts['<'] = Start::angle;
    starts['['] = Start::array;
    starts['%'] = Start::comment;
    return starts;
}();

Start startOf(char byte) {
    return kStarts[static_cast<std::uint8_t>(byte)];
}

/// Digits that a number of 64 bits always holds.
constexpr std::ptrdiff_t kSafeDigits = 18;

constexpr std::array<double, kSafeDigits + 1> kTenths = [] {
    std::array<double, kSafeDigits + 1> tenths{};
    double power = 1;
    for (double& tenth : tenths) {
        tenth = 1 / power;
        power *= 10;
    }
    return tenths;
}();

/// The value of a digit; 10 or more for other bytes.
unsigned digitOf(char byte) {
    return static_cast<std::uint8_t>(byte) - unsigned{'0'};
}

bool isDigit(char byte) {
    return digitOf(byte) < 10;
}

/// A number with more digits, signs or points than a number should have. No number is so long that it gets infinite.
const char* scanOddNumber(const char* p, double& value) {
    constexpr double kLargest = 1e30;
    const bool negative = *p == '-';
    double result = 0;
    double unit = 1;
    bool hasPoint = false;
    for (; startOf(*p) == Start::number; ++p) {
        if (*p == '.') hasPoint = true;
        if (!isDigit(*p)) continue;
        if (hasPoint) {
            unit /= 10;
            result += unit * (*p - '0');
        } else if (result < kLargest) {
            result = result * 10 + (*p - '0');
        }
    }
    value = negative ? -result : result;
    return p;
}

/// Reads the number at `p`, which is a digit, a sign or a point, and returns the place behind it. A byte that no number
/// has must follow somewhere. Signs and points too many are ignored.
inline const char* scanNumber(const char* p, double& value) {
    const char* const start = p;
    const bool negative = *p == '-';
    if (negative || *p == '+') ++p;
    std::uint64_t digits = 0;
    for (unsigned digit = digitOf(*p); digit < 10; digit = digitOf(*++p))
        digits = digits * 10 + digit;
    std::ptrdiff_t places = 0;
    if (*p == '.') {
        const char* const point = p++;
        for (unsigned digit = digitOf(*p); digit < 10; digit = digitOf(*++p))
            digits = digits * 10 + digit;
        places = p - point - 1;
    }
    if (p - start > kSafeDigits || startOf(*p) == Start::number) [[unlikely]]
        return scanOddNumber(start, value);
    const double size =
        static_cast<double>(static_cast<std::int64_t>(digits)) * kTenths[static_cast<std::size_t>(places)];
    value = negative ? -size : size;
    return p;
}

/// Behind the word that begins at `p`.
const char* scanWord(const char* p, Operator& word) {
    Operator bytes = 0;
    do
        bytes = bytes << 8 | static_cast<std::uint8_t>(*p++);
    while (isRegular(*p));
    word = bytes;
    return p;
}

const char* skipComment(const char* p) {
    while (*p != '\n' && *p != '\r')
        ++p;
    return p;
}

/// Words that are operands, not operators. The number of a long word has its last bytes only.
bool isOperandWord(Operator word, std::ptrdiff_t length) {
    return (length == 4 && (word == operatorOf("true") || word == operatorOf("null"))) ||
           (length == 5 && word == operatorOf("false"));
}

bool endsArrays(Operator word) {
    return word == operatorOf("TJ") || word == operatorOf("d") || word == operatorOf("ET") || word == operatorOf("BT");
}

/// Whether a byte of a literal string is more than itself.
constexpr std::array<bool, 256> kStringStops = [] {
    std::array<bool, 256> stops{};
    for (const char byte : {'(', ')', '\\', '\r'})
        stops[static_cast<std::uint8_t>(byte)] = true;
    return stops;
}();

/// The closing parenthesis of the string whose bytes begin at `p`, or the end of the content.
const char* endOfLiteral(const char* p, const char* end, bool& plain) {
    int depth = 1;
    for (;; ++p) {
        while (!kStringStops[static_cast<std::uint8_t>(*p)])
            ++p;
        if (p >= end) return end;
        switch (*p) {
        case '(': ++depth; break;
        case ')':
            if (--depth == 0) return p;
            break;
        case '\\':
            plain = false;
            if (++p >= end) return end;
            break;
        default: plain = false;
        }
    }
}

/// Most hexadecimal strings are too short for a search by blocks to pay.
const char* endOfHex(const char* p, const char* end) {
    while (*p != '>')
        ++p;
    return p < end ? p : end;
}

std::string_view between(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

} // namespace

const char* endOfDictionary(const char* p, const char* end) {
    bool plain = true;
    int depth = 1;
    while (p < end) {
        switch (*p) {
        case '(':
            p = endOfLiteral(p + 1, end, plain);
            if (p < end) ++p;
            break;
        case '%': p = skipComment(p); break;
        case '<':
            if (p[1] == '<') {
                ++depth;
                p += 2;
            } else {
                p = endOfHex(p, end);
                if (p < end) ++p;
            }
            break;
        case '>':
            if (p[1] != '>') {
                ++p;
            } else if (--depth == 0) {
                return p;
            } else {
                p += 2;
            }
            break;
        default: ++p;
        }
    }
    return nullptr;
}

/// Moves `p` behind the string that begins there, and adds its size to `bytes`.
inline Operand ContentScanner::scanLiteral(const char*& p, std::size_t& bytes) const {
    bool plain = true;
    const char* const begin = p + 1;
    const char* const close = endOfLiteral(begin, end_, plain);
    p = close < end_ ? close + 1 : end_;
    bytes += static_cast<std::size_t>(close - begin);
    return Operand::ofBytes(plain ? Operand::Kind::plainString : Operand::Kind::escapedString, between(begin, close));
}

/// The same. Decodes the string into the room at `to`, and moves `to` behind it.
inline Operand ContentScanner::scanHex(const char*& p, std::size_t& bytes, char*& to) const {
    const char* const begin = p + 1;
    const char* const decoded = to;
    const char* const close = decodeHexString(begin, end_, to);
    p = close < end_ ? close + 1 : end_;
    bytes += static_cast<std::size_t>(close - begin);
    return Operand::ofBytes(Operand::Kind::plainString, between(decoded, to));
}

/// No operator has strings of more decoded bytes than half of the content that is left.
char* ContentScanner::roomForDecoded(const char* p, Operands& operands) const {
    return operands.roomForDecoded(static_cast<std::size_t>(end_ - p) / 2 + 1 + kHexOverhang);
}

const char* ContentScanner::pushDictionary(const char* p, Operands& operands) {
    const char* const close = dictionariesEnd_ ? endOfDictionary(p, end_) : nullptr;
    if (close == nullptr) {
        dictionariesEnd_ = false;
        return p;
    }
    operands.push(Operand::ofBytes(Operand::Kind::dictionary, between(p, close)));
    return close + 2;
}

/// An array ends at its bracket, or at an operator that takes an array or ends the text: then its bracket is missing.
/// Other operators are ignored, because a producer writes Tc inside the arrays of TJ.
///
/// Some producers write a string for each letter, so everything that the loop changes is a variable of its own.
const char* ContentScanner::pushArray(const char* p, Operands& operands) {
    const std::size_t first = operands.itemCount();
    std::size_t bytes = 0;
    char* decoded = roomForDecoded(p, operands);
    const auto room = operands.itemRoom();
    Operand* item = room.next;
    Operand* itemsEnd = room.end;
    const auto add = [&](const Operand& operand) {
        if (item == itemsEnd) [[unlikely]] {
            const auto [next, end] = operands.moreItemRoom(item);
            item = next;
            itemsEnd = end;
        }
        *item++ = operand;
    };
    for (bool open = true; open;) {
        switch (startOf(*p)) {
        case Start::blank:
        case Start::array: ++p; break; // the items of an inner array become items of the outer one
        case Start::number: {
            double value = 0;
            p = scanNumber(p, value);
            add(Operand::ofNumber(value));
            break;
        }
        case Start::string: add(scanLiteral(p, bytes)); break;
        case Start::angle:
            if (p[1] == '<')
                p += 2;
            else
                add(scanHex(p, bytes, decoded));
            break;
        case Start::name: {
            const char* const name = ++p;
            while (isRegular(*p))
                ++p;
            add(Operand::ofBytes(Operand::Kind::name, between(name, p)));
            break;
        }
        case Start::comment: p = skipComment(p); break;
        case Start::close:
            open = *p != ']' && p < end_;
            if (p < end_) ++p;
            break;
        case Start::word: {
            Operator word = kNoOperator;
            const char* const behind = scanWord(p, word);
            open = !endsArrays(word);
            if (open) p = behind;
            break;
        }
        }
    }
    operands.setItemsEnd(item);
    operands.setDecodedEnd(decoded);
    operands.addStringBytes(bytes);
    operands.push(Operand::ofArray(first, operands.itemCount() - first));
    return p;
}

const char* ContentScanner::pushString(const char* p, Operands& operands) {
    std::size_t bytes = 0;
    if (*p == '(') {
        operands.push(scanLiteral(p, bytes));
    } else {
        char* decoded = roomForDecoded(p, operands);
        operands.push(scanHex(p, bytes, decoded));
        operands.setDecodedEnd(decoded);
    }
    operands.addStringBytes(bytes);
    return p;
}

Operator ContentScanner::next(Operands& operands) {
    const char* p = p_;
    for (;;) {
        while (startOf(*p) == Start::blank)
            ++p;
        switch (startOf(*p)) {
        case Start::blank: break;
        case Start::number: {
            double value = 0;
            p = scanNumber(p, value);
            operands.push(Operand::ofNumber(value));
            break;
        }
        case Start::word: {
            Operator word = kNoOperator;
            const char* const start = p;
            p = scanWord(p, word);
            if (isOperandWord(word, p - start)) [[unlikely]] {
                operands.push(Operand{});
                break;
            }
            p_ = p;
            return word;
        }
        case Start::name: {
            const char* const name = ++p;
            while (isRegular(*p))
                ++p;
            operands.push(Operand::ofBytes(Operand::Kind::name, between(name, p)));
            break;
        }
        case Start::string: p = pushString(p, operands); break;
        case Start::angle: p = p[1] == '<' ? pushDictionary(p + 2, operands) : pushString(p, operands); break;
        case Start::array: p = pushArray(p + 1, operands); break;
        case Start::comment: p = skipComment(p); break;
        case Start::close:
            if (p >= end_) {
                p_ = end_;
                return kNoOperator;
            }
            ++p;
            break;
        }
    }
}

} // namespace quillow::pdf
