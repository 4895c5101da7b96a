#include "engines/rtf/CharacterDecoder.h"

#include "text/Ascii.h"
#include "text/Unicode.h"
#include "text/Utf8.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace quillow::rtf {

namespace {

constexpr std::ptrdiff_t kHexByte = 4; // the length of \'hh

/// Words that are never part of the fallback after \u, because they carry the structure of the text.
constexpr bool endsFallback(Action action) {
    return isBreak(action) || action == Action::unicode;
}

} // namespace

/// Copies a run of \'hh that are one printable character each.
inline void CharacterDecoder::copyHex(const Charset& charset, Output& output) {
    const char* p = scanner_.position();
    const char* end = scanner_.end();
    while (end - p >= kHexByte && p[0] == '\\' && p[1] == '\'') {
        const int value = text::hexValue(p[2]) * 16 | text::hexValue(p[3]);
        if (value < 0) break;
        const Charset::Single single = charset.single(static_cast<std::uint8_t>(value));
        if (single.length == 0) break;
        output.appendPacked(single.utf8, single.length);
        p += kHexByte;
    }
    scanner_.moveTo(p);
}

bool CharacterDecoder::copyBytes(const Charset& charset, Output& output) {
    while (true) {
        copyHex(charset, output);
        if (scanner_.atEnd()) return false;
        const char c = scanner_.current();
        if (!isHigh(c)) return c == '\\' && scanner_.peek(1) == '\'';
        if (rawIsUtf8()) return true;
        const Charset::Single single = charset.single(static_cast<std::uint8_t>(c));
        if (single.length == 0) return true;
        output.appendPacked(single.utf8, single.length);
        scanner_.advance();
    }
}

std::optional<char32_t> CharacterDecoder::takeByte(const Charset& charset) {
    if (scanner_.atEnd()) return std::nullopt;
    const char* p = scanner_.position();
    const bool isRaw = isHigh(*p);
    if (isRaw && rawIsUtf8()) return takeRawUtf8();
    const std::optional<std::uint8_t> hex = scanner_.hexByteAt(p);
    if (!isRaw && !hex) return std::nullopt;
    const std::uint8_t byte = isRaw ? static_cast<std::uint8_t>(*p) : *hex;
    scanner_.moveTo(p + (isRaw ? 1 : kHexByte));
    if (byte == '\r') {
        if (scanner_.hexByteAt(scanner_.position()) == std::uint8_t{'\n'})
            scanner_.moveTo(scanner_.position() + kHexByte);
        return U'\n';
    }
    if (byte < 0x20) return char32_t{byte};
    if (charset.isUtf8() && byte >= 0x80) return takeUtf8Sequence(byte);
    const text::CodePage* pairs = charset.pairs();
    if (pairs != nullptr && pairs->isLeadByte(byte)) return takePair(*pairs, byte, isRaw);
    return charset.decodeByte(byte);
}

/// Reads the trail byte of a pair: \'hh, plain ASCII or a raw byte. After a raw lead byte, a backslash or a brace
/// can be the trail byte too if the code page has that pair; \'hh is tried first. After \'hh, only an escaped
/// backslash or brace can be. Line ends between the two are ignored.
char32_t CharacterDecoder::takePair(const text::CodePage& pairs, std::uint8_t lead, bool isRaw) {
    scanner_.skipLineEnds();
    const char* p = scanner_.position();
    char32_t c = text::kReplacementCharacter;
    if (const std::optional<std::uint8_t> trail = scanner_.hexByteAt(p)) {
        c = pairs.decodePair(lead, *trail);
        // An undefined pair consumes its trail byte only if that is not ASCII.
        if (c != text::kReplacementCharacter || *trail >= 0x80) scanner_.moveTo(p + kHexByte);
    } else if (!scanner_.atEnd() && (isRaw || !isSyntax(*p))) {
        c = pairs.decodePair(lead, static_cast<std::uint8_t>(*p));
        if (c != text::kReplacementCharacter || isHigh(*p)) scanner_.advance();
    } else if (!scanner_.atEnd() && *p == '\\' && isSyntax(scanner_.peek(1))) {
        c = pairs.decodePair(lead, static_cast<std::uint8_t>(p[1]));
        if (c != text::kReplacementCharacter) scanner_.moveTo(p + 2);
    }
    return c;
}

/// Reads the rest of a UTF-8 sequence that is written as \'hh, raw bytes or both.
char32_t CharacterDecoder::takeUtf8Sequence(std::uint8_t lead) {
    std::string sequence(1, static_cast<char>(lead));
    text::DecodedCodePoint decoded = text::decodeUtf8(sequence);
    // While the bytes so far are an incomplete sequence, the next byte belongs to it.
    while (!decoded.wellFormed && decoded.length == sequence.size() && lead >= 0xC2 && lead <= 0xF4) {
        scanner_.skipLineEnds();
        const char* p = scanner_.position();
        const std::optional<std::uint8_t> hex = scanner_.hexByteAt(p);
        const auto byte = hex ? *hex : static_cast<std::uint8_t>(scanner_.peek(0));
        sequence.push_back(static_cast<char>(byte));
        decoded = text::decodeUtf8(sequence);
        if (decoded.length < sequence.size() || byte < 0x80) break;
        scanner_.moveTo(p + (hex ? kHexByte : 1));
    }
    return decoded.codePoint;
}

char32_t CharacterDecoder::takeRawUtf8() {
    const text::DecodedCodePoint decoded = text::decodeUtf8(scanner_.rest());
    scanner_.moveTo(scanner_.position() + decoded.length);
    return decoded.codePoint;
}

void CharacterDecoder::copyUnicode(Output& output) {
    constexpr std::ptrdiff_t kName = 2; // the length of \u
    constexpr std::ptrdiff_t kMostDigits = 5;
    constexpr std::ptrdiff_t kLongestWord = kName + kMostDigits + 2; // with its blank and its fallback
    constexpr std::uint32_t kFirstPrintable = 0xA0;                  // after ASCII and the control characters
    const char* p = scanner_.position();
    const char* end = scanner_.end();
    while (end - p >= kLongestWord && p[0] == '\\' && p[1] == 'u' && text::isDigit(p[2])) {
        const char* q = p + kName;
        std::uint32_t value = 0;
        for (; text::isDigit(*q) && q != p + kName + kMostDigits; ++q)
            value = value * 10 + static_cast<std::uint32_t>(*q - '0');
        const bool isUsual = value >= kFirstPrintable && value < text::kFirstSurrogate && (value | 1) != 0x2029;
        if (text::isDigit(*q) || !isUsual) break;
        if (*q == ' ') ++q;
        if (!isPlainText(*q)) break;
        output.appendCodePoint(value);
        p = q + 1;
        ++work_;
    }
    scanner_.moveTo(p);
}

std::optional<std::int32_t> CharacterDecoder::readUnicode() {
    if (!text::isDigit(scanner_.peek(2)) && scanner_.peek(2) != '-') return std::nullopt;
    const char* before = scanner_.position();
    scanner_.moveTo(before + 2);
    const ControlWord word = scanner_.readParameter({Action::unicode, 0});
    if (word.hasParameter) return word.parameter;
    scanner_.moveTo(before);
    return std::nullopt;
}

Scanner::Completeness CharacterDecoder::skipAnyFallback(unsigned length) {
    Scanner::Completeness completeness = Scanner::Completeness::whole;
    for (unsigned left = length; left > 0 && !scanner_.atEnd();) {
        const char* p = scanner_.position();
        if (isPlainText(*p)) {
            --left;
            scanner_.advance();
            continue;
        }
        if (text::isLineEnd(*p)) {
            scanner_.advance();
            continue;
        }
        if (*p == '{' || *p == '}') break;
        --left;
        if (*p != '\\') {
            scanner_.advance();
        } else if (text::isLetter(scanner_.peek(1))) {
            const ControlWord word = scanner_.readWord();
            if (endsFallback(word.action())) {
                scanner_.moveTo(p);
                break;
            }
            if (word.action() == Action::binary) completeness = scanner_.skipBinary(word.parameter);
        } else if (scanner_.hexByteAt(p)) {
            scanner_.moveTo(p + kHexByte);
        } else if (text::isLineEnd(scanner_.peek(1))) {
            break; // an escaped line end is \par
        } else {
            const bool isBrokenHex = scanner_.peek(1) == '\'';
            scanner_.moveTo(p + std::min<std::size_t>(2, scanner_.remaining()));
            for (int digits = isBrokenHex ? 2 : 0; digits > 0 && isPlainText(scanner_.peek(0)); --digits)
                scanner_.advance();
        }
    }
    return completeness;
}

bool CharacterDecoder::rawIsUtf8() {
    if (rawBytes_ == RawBytes::unknown) rawBytes_ = scanRawBytes() ? RawBytes::utf8 : RawBytes::byFont;
    return rawBytes_ == RawBytes::utf8;
}

/// Looks at all bytes over 0x7F outside binary data. Returns whether they are well-formed UTF-8.
bool CharacterDecoder::scanRawBytes() {
    const std::string_view input = scanner_.input();
    work_ += input.size();
    const char* end = input.data() + input.size();
    std::size_t from = 0;
    while (from < input.size()) {
        constexpr std::string_view kBinary = "\\bin";
        const std::size_t binary = std::min(input.find(kBinary, from), input.size());
        for (const char* p = findHighByte(input.data() + from, input.data() + binary); p != input.data() + binary;
             p = findHighByte(p, input.data() + binary)) {
            const text::DecodedCodePoint decoded =
                text::decodeUtf8(std::string_view(p, static_cast<std::size_t>(input.data() + binary - p)));
            if (!decoded.wellFormed) return false;
            p += decoded.length;
        }
        if (binary == input.size()) break;
        // After an odd number of backslashes, the one before "bin" is escaped: this is text.
        std::size_t backslashes = 0;
        while (backslashes < binary - from && input[binary - 1 - backslashes] == '\\')
            ++backslashes;
        const char* afterName = input.data() + binary + kBinary.size();
        from = binary + kBinary.size();
        if (backslashes % 2 != 0 || afterName == end || text::isLetter(*afterName)) continue;
        Scanner data(input.substr(binary));
        const ControlWord word = data.readWord();
        (void)data.skipBinary(word.parameter);
        from = static_cast<std::size_t>(data.position() - input.data());
    }
    return true;
}

const text::CodePage* CharacterDecoder::rawPairs(const Charset& charset) {
    const text::CodePage* pairs = charset.pairs();
    return pairs == nullptr || rawIsUtf8() ? nullptr : pairs;
}

} // namespace quillow::rtf
