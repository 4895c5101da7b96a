// Characters (RTF 1.9.1, "Character Set", "Unicode RTF"): raw bytes, \'hh, \u with its fallback, and list labels.
#include "engines/rtf/Interpreter.h"
#include "text/Ascii.h"
#include "text/Utf8.h"

#include <algorithm>

namespace quillow::rtf {

namespace {

/// \u writes a character of a symbol font as U+F000 plus its byte.
constexpr bool isSymbolSign(char32_t c) {
    return c >= 0xF020 && c <= 0xF0FF;
}

constexpr bool isPrivateUse(char32_t c) {
    return (c >= 0xE000 && c <= 0xF8FF) || c >= 0xF0000;
}

constexpr bool isNoncharacter(char32_t c) {
    return (c & 0xFFFE) == 0xFFFE || (c >= 0xFDD0 && c <= 0xFDEF);
}

std::uint64_t countReplacements(std::string_view text) {
    constexpr std::string_view kReplacement = "\uFFFD";
    std::uint64_t count = 0;
    for (std::size_t at = text.find(kReplacement); at != std::string_view::npos; at = text.find(kReplacement, at + 1))
        ++count;
    return count;
}

/// Words that are never part of the fallback after \u, because they carry the structure of the text.
constexpr bool endsFallback(Action action) {
    switch (action) {
    case Action::paragraph:
    case Action::line:
    case Action::tab:
    case Action::cell:
    case Action::row:
    case Action::page:
    case Action::section:
    case Action::column:
    case Action::unicode: return true;
    default: return false;
    }
}

} // namespace

void Interpreter::takePlainText() {
    const char* p = scanner_.position();
    if ((state_.flags | pending_) == 0) {
        // Line ends in the source have no meaning.
        while (true) {
            p = output_.copyText(p, scanner_.end());
            scanner_.moveTo(p);
            if (scanner_.atEnd() || !text::isLineEnd(*p)) return;
            scanner_.skipLineEnds();
            p = scanner_.position();
        }
    }
    const char* textEnd = findTextEnd(p, scanner_.end());
    scanner_.moveTo(textEnd);
    if (!prepareText()) return;
    if ((state_.flags & kSymbolFont) == 0) {
        output_.append(std::string_view(p, static_cast<std::size_t>(textEnd - p)));
        return;
    }
    for (; p != textEnd; ++p)
        writeCodePoint(state_.charset->decodeByte(static_cast<std::uint8_t>(*p)));
}

/// Reads a run of \'hh that are one printable character each.
void Interpreter::takeUsualHex() {
    const char* p = scanner_.position();
    const char* end = scanner_.end();
    const Charset& charset = *state_.charset;
    while (end - p >= 4 && p[0] == '\\' && p[1] == '\'') {
        const int value = text::hexValue(p[2]) * 16 | text::hexValue(p[3]);
        if (value < 0) break;
        const Charset::Single single = charset.single(static_cast<std::uint8_t>(value));
        if (single.length == 0) break;
        output_.appendPacked(single.utf8, single.length);
        p += 4;
    }
    scanner_.moveTo(p);
}

void Interpreter::takeBytes() {
    const bool isShown = (state_.flags & kSuppressed) == 0;
    const std::size_t mark = output_.size();
    const std::uint64_t lost = loss_.charactersWithoutUnicode;
    while (true) {
        if (pending_ == 0) takeUsualHex();
        if (scanner_.atEnd()) break;
        const char* p = scanner_.position();
        const bool isRaw = isHigh(*p);
        std::uint8_t byte = 0;
        const char* next = nullptr;
        if (isRaw) {
            if (rawIsUtf8()) {
                takeRawUtf8();
                continue;
            }
            byte = static_cast<std::uint8_t>(*p);
            next = p + 1;
        } else {
            const std::optional<std::uint8_t> hex = scanner_.hexByteAt(p);
            if (!hex) break;
            byte = *hex;
            next = p + 4;
        }
        const Charset::Single single = state_.charset->single(byte);
        if (single.length != 0) {
            if (pending_ != 0) (void)prepareText();
            output_.appendPacked(single.utf8, single.length);
            scanner_.moveTo(next);
        } else {
            takeUnusualByte(byte, isRaw, next);
        }
    }
    if (isShown) return;
    output_.truncate(mark);
    loss_.charactersWithoutUnicode = lost;
}

/// Reads a byte that is not a printable character by itself: a control character, the start of a longer sequence,
/// or a byte without a character in the charset.
void Interpreter::takeUnusualByte(std::uint8_t byte, bool isRaw, const char* next) {
    if (byte < 0x20) {
        scanner_.moveTo(next);
        if (byte == '\t') {
            writeTab();
        } else if (byte == '\n') {
            endParagraph();
        } else if (byte == '\r') {
            if (scanner_.hexByteAt(next) == std::uint8_t{'\n'}) scanner_.moveTo(next + 4);
            endParagraph();
        }
        return;
    }
    const Charset& charset = *state_.charset;
    if (charset.isUtf8() && byte >= 0x80) return takeUtf8Sequence(byte, next);
    const text::CodePage* pairs = charset.pairs();
    if (pairs != nullptr && pairs->isLeadByte(byte)) return takePair(*pairs, byte, isRaw, next);
    scanner_.moveTo(next);
    writeCodePoint(charset.decodeByte(byte));
}

/// Reads the trail byte of a pair: \'hh, plain ASCII or a raw byte. After a raw lead byte, a backslash or a brace
/// can be the trail byte too if the code page has that pair; \'hh is tried first. After \'hh, only an escaped
/// backslash or brace can be. Line ends between the two are ignored.
void Interpreter::takePair(const text::CodePage& pairs, std::uint8_t lead, bool isRaw, const char* next) {
    scanner_.moveTo(next);
    scanner_.skipLineEnds();
    const char* p = scanner_.position();
    char32_t c = text::kReplacementCharacter;
    if (const std::optional<std::uint8_t> trail = scanner_.hexByteAt(p)) {
        c = pairs.decodePair(lead, *trail);
        // An undefined pair consumes its trail byte only if that is not ASCII.
        if (c != text::kReplacementCharacter || *trail >= 0x80) scanner_.moveTo(p + 4);
    } else if (!scanner_.atEnd() && (isRaw || !isSyntax(*p))) {
        c = pairs.decodePair(lead, static_cast<std::uint8_t>(*p));
        if (c != text::kReplacementCharacter || isHigh(*p)) scanner_.advance();
    } else if (!scanner_.atEnd() && *p == '\\' && isSyntax(scanner_.peek(1))) {
        c = pairs.decodePair(lead, static_cast<std::uint8_t>(p[1]));
        if (c != text::kReplacementCharacter) scanner_.moveTo(p + 2);
    }
    writeCodePoint(c);
}

/// Reads a UTF-8 sequence that is written as \'hh, raw bytes or both.
void Interpreter::takeUtf8Sequence(std::uint8_t lead, const char* next) {
    std::string sequence(1, static_cast<char>(lead));
    text::DecodedCodePoint decoded = text::decodeUtf8(sequence);
    scanner_.moveTo(next);
    // While the bytes so far are an incomplete sequence, the next byte belongs to it.
    while (!decoded.wellFormed && decoded.length == sequence.size() && lead >= 0xC2 && lead <= 0xF4) {
        scanner_.skipLineEnds();
        const char* p = scanner_.position();
        const std::optional<std::uint8_t> hex = scanner_.hexByteAt(p);
        const auto byte = hex ? *hex : static_cast<std::uint8_t>(scanner_.peek(0));
        sequence.push_back(static_cast<char>(byte));
        decoded = text::decodeUtf8(sequence);
        if (decoded.length < sequence.size() || byte < 0x80) break;
        scanner_.moveTo(p + (hex ? 4 : 1));
    }
    writeCodePoint(decoded.codePoint);
}

void Interpreter::takeRawUtf8() {
    const text::DecodedCodePoint decoded = text::decodeUtf8(scanner_.rest());
    scanner_.moveTo(scanner_.position() + decoded.length);
    writeCodePoint(decoded.codePoint);
}

/// Reads a run of \uN that are printable characters, each with a fallback of one plain character.
void Interpreter::takeUsualUnicode() {
    if (state_.unicodeSkip != 1 || ((state_.flags & kSuppressed) | pending_) != 0) return;
    constexpr std::ptrdiff_t kLongest = 12; // enough for a backslash, u, five digits, blank and fallback
    constexpr std::uint32_t kFirstLetter = 0xA0;
    constexpr std::uint32_t kFirstSurrogate = 0xD800;
    const char* p = scanner_.position();
    const char* end = scanner_.end();
    while (end - p >= kLongest && p[0] == '\\' && p[1] == 'u' && text::isDigit(p[2])) {
        const char* q = p + 2;
        std::uint32_t value = 0;
        for (; text::isDigit(*q) && q != p + 7; ++q)
            value = value * 10 + static_cast<std::uint32_t>(*q - '0');
        if (text::isDigit(*q) || value < kFirstLetter || value >= kFirstSurrogate || (value | 1) == 0x2029) break;
        if (*q == ' ') ++q;
        if (!isPlainText(*q)) break;
        output_.appendCodePoint(value);
        p = q + 1;
        ++work_;
    }
    scanner_.moveTo(p);
}

/// Reads \uN and every \uN that directly follows its fallback.
void Interpreter::takeUnicode(std::int32_t number) {
    while (true) {
        const std::int32_t shifted = number < 0 ? number + 0x10000 : number;
        if (shifted < 0) {
            writeCodePoint(text::kReplacementCharacter);
        } else if (shifted > 0) {
            writeCodePoint(static_cast<char32_t>(shifted));
        }
        skipFallback();
        takeUsualUnicode();
        if (scanner_.peek(0) != '\\' || scanner_.peek(1) != 'u') return;
        if (!text::isDigit(scanner_.peek(2)) && scanner_.peek(2) != '-') return;
        const char* before = scanner_.position();
        scanner_.moveTo(before + 2);
        const ControlWord word = scanner_.readParameter({Action::unicode, 0});
        if (!word.hasParameter) return scanner_.moveTo(before);
        number = word.parameter;
    }
}

/// Skips the text after \u that is meant for readers without Unicode. \uc gives its length: a byte, a \'hh (even
/// without valid digits), a control word, a control symbol, and \bin with its data count as one each. A brace, an
/// escaped line end or a word of endsFallback() ends it early.
void Interpreter::skipFallback() {
    for (unsigned left = state_.unicodeSkip; left > 0 && !scanner_.atEnd();) {
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
        if (*p == '{' || *p == '}') return;
        --left;
        if (*p != '\\') {
            scanner_.advance();
        } else if (text::isLetter(scanner_.peek(1))) {
            const ControlWord word = scanner_.readWord();
            if (endsFallback(word.action())) return scanner_.moveTo(p);
            if (word.action() == Action::binary) skipBinary(word.parameter);
        } else if (scanner_.hexByteAt(p)) {
            scanner_.moveTo(p + 4);
        } else if (text::isLineEnd(scanner_.peek(1))) {
            return; // an escaped line end is \par
        } else {
            const bool isBrokenHex = scanner_.peek(1) == '\'';
            scanner_.moveTo(p + std::min<std::size_t>(2, scanner_.remaining()));
            for (int digits = isBrokenHex ? 2 : 0; digits > 0 && isPlainText(scanner_.peek(0)); --digits)
                scanner_.advance();
        }
    }
}

/// Call before text is written. Returns false if the text is hidden. Otherwise writes what is pending before the
/// text: a lone surrogate, a list label.
bool Interpreter::prepareText() {
    if ((state_.flags & kSuppressed) != 0) return false;
    if (pending_ == 0) return true;
    if ((pending_ & kSurrogate) != 0) writeReplacement();
    pending_ &= static_cast<std::uint8_t>(~kSurrogate);
    if ((pending_ & kLabel) != 0) writeLabel();
    return true;
}

/// An empty paragraph in a list gets its label too, without the tab.
void Interpreter::settlePending() {
    const bool isEmpty = (pending_ & kLabel) != 0;
    (void)prepareText();
    if (isEmpty && output_.size() > paragraph_.start && output_.back() == '\t') output_.truncate(output_.size() - 1);
}

void Interpreter::writeReplacement() {
    ++loss_.charactersWithoutUnicode;
    output_.appendCodePoint(text::kReplacementCharacter);
}

void Interpreter::writeCodePoint(char32_t c) {
    if (c >= 0xD800 && c <= 0xDFFF) return writeSurrogate(c);
    if (((state_.flags & kSuppressed) | pending_) != 0 && !prepareText()) return;
    if (c >= 0x20 && c < 0x7F) return output_.append(static_cast<char>(c));
    if (c < 0xA0) {
        if (c == '\t') output_.append('\t');
        if (c == '\n' || c == '\r') endParagraph();
        return; // no other control character is text
    }
    if (isSymbolSign(c)) {
        const text::SymbolFontDecoder symbols =
            state_.charset->isSymbolFont() ? state_.charset->symbols() : text::symbolToUnicode;
        c = symbols(static_cast<std::uint8_t>(c & 0xFF));
    }
    if (c == 0x2028 || c == 0x2029) return output_.append('\n'); // line and paragraph separator
    if (c == 0xFEFF && output_.empty()) return;
    if (c == text::kReplacementCharacter || isPrivateUse(c) || isNoncharacter(c)) return writeReplacement();
    output_.appendCodePoint(c);
}

/// The halves of a surrogate pair may be in different groups. Text between them breaks the pair.
void Interpreter::writeSurrogate(char32_t c) {
    if ((state_.flags & kSuppressed) != 0) return;
    const bool isLow = c >= 0xDC00;
    if (isLow && (pending_ & kSurrogate) != 0) {
        pending_ &= static_cast<std::uint8_t>(~kSurrogate);
        return writeCodePoint(0x10000 + ((highSurrogate_ - 0xD800) << 10) + (c - 0xDC00));
    }
    if (isLow) return writeCodePoint(text::kReplacementCharacter);
    if ((pending_ & kSurrogate) != 0) (void)prepareText();
    highSurrogate_ = c;
    pending_ |= kSurrogate;
}

void Interpreter::writeLabel() {
    pending_ &= static_cast<std::uint8_t>(~kLabel);
    if (options_.listMarkers == ListMarkers::off || labelBudget_ == 0) return;
    std::u32string label;
    if (lists_.knows(state_.listOverride)) {
        label = lists_.nextLabel(state_.listOverride, state_.listLevel);
    } else if (state_.hasOldNumbering) {
        label = lists_.nextLabel(oldNumbering_);
        countsOldNumbers_ = true;
        paragraph_.keepsOldNumbers = true;
    }
    constexpr std::size_t kBytesPerCharacter = 4;
    const std::size_t cost = label.size() * kBytesPerCharacter;
    if (paragraph_.labelled || label.empty()) return;
    if (cost > labelBudget_) {
        labelBudget_ = 0;
        ++loss_.partsSkipped;
        return;
    }
    labelBudget_ -= cost;
    if (output_.size() == paragraph_.start && label.find_first_not_of(U" \t") != std::u32string::npos) {
        loss_.charactersWithoutUnicode -= countReplacements(output_.view(paragraph_.listText));
        output_.truncate(paragraph_.listText);
        paragraph_.start = paragraph_.listText;
    }
    for (const char32_t c : label) {
        if (c == '\t') {
            output_.append('\t');
        } else {
            writeCodePoint(c);
        }
    }
    if ((pending_ & kSurrogate) != 0) (void)prepareText();
}

/// True if all bytes over 0x7F in the file, except binary data, are well-formed UTF-8. Raw bytes are then UTF-8,
/// whatever the fonts say. Computed at the first call.
bool Interpreter::rawIsUtf8() {
    if (rawIsUtf8_ != Answer::unknown) return rawIsUtf8_ == Answer::yes;
    rawIsUtf8_ = Answer::no;
    const std::string_view input = scanner_.input();
    work_ += input.size();
    const char* end = input.data() + input.size();
    std::size_t from = 0;
    while (from < input.size()) {
        constexpr std::string_view kBinary = "\\bin";
        std::size_t binary = std::min(input.find(kBinary, from), input.size());
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
    rawIsUtf8_ = Answer::yes;
    return true;
}

const text::CodePage* Interpreter::rawPairs() {
    const text::CodePage* pairs = state_.charset->pairs();
    return pairs == nullptr || rawIsUtf8() ? nullptr : pairs;
}

} // namespace quillow::rtf
