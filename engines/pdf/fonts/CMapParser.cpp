#include "engines/pdf/fonts/CMapParser.h"

#include "engines/pdf/fonts/GlyphNames.h"
#include "text/Ascii.h"
#include "text/Unicode.h"

namespace quillow::pdf {

using Kind = CMapToken::Kind;

CMap CMap::parse(std::string_view bytes) {
    CMap map;
    CMapParser(bytes, map).parse();
    map.close();
    return map;
}

void CMapParser::parse() {
    std::string_view name; // the last one before an operator
    advance();
    while (token_.kind != Kind::end) {
        const CMapToken token = token_;
        advance();
        if (token.kind == Kind::name) {
            readDefinition(token.text);
            name = token.text;
        } else if (token.kind == Kind::word) {
            if (token.text == "usecmap") map_.base_ = name;
            readSection(token.text);
        }
    }
}

void CMapParser::readDefinition(std::string_view name) {
    if (name == "WMode" && token_.kind == Kind::integer) map_.isVertical_ = token_.value == 1;
}

void CMapParser::readSection(std::string_view word) {
    if (word == "begincodespacerange") return readCodespace();
    if (word == "beginbfchar") return readCharacters();
    if (word == "beginbfrange") return readCharacterRanges();
    if (word == "begincidchar") return readCids();
    if (word == "begincidrange") return readCidRanges();
}

bool CMapParser::inSection() const {
    return token_.kind != Kind::end && token_.kind != Kind::word;
}

/// Operands that are no code are skipped.
std::optional<CMapToken> CMapParser::takeCode() {
    while (inSection()) {
        const CMapToken token = token_;
        advance();
        if (token.kind == Kind::code && token.digits > 0) return token;
    }
    return std::nullopt;
}

std::optional<CMapParser::Codes> CMapParser::takeCodes() {
    const std::optional<CMapToken> low = takeCode();
    if (!low) return std::nullopt;
    const std::optional<CMapToken> high = takeCode();
    if (!high) return std::nullopt;
    return Codes{*low, *high};
}

std::optional<std::uint32_t> CMapParser::takeInteger() {
    if (token_.kind != Kind::integer) return std::nullopt;
    const std::uint32_t value = token_.value;
    advance();
    return value;
}

/// Also takes a character's number or the name of its glyph, which some producers write. False if none of them is
/// there.
bool CMapParser::takeDestination() {
    characters_.clear();
    if (token_.kind == Kind::code)
        readUtf16(token_, characters_);
    else if (token_.kind == Kind::integer)
        characters_ = static_cast<char32_t>(token_.value);
    else if (token_.kind == Kind::name)
        characters_ = unicodeOfGlyphName(token_.text).view();
    else
        return false;
    advance();
    return true;
}

void CMapParser::readCodespace() {
    while (const auto codes = takeCodes()) {
        const int bytes = (codes->high.digits + 1) / 2;
        if (bytes > static_cast<int>(kMaxBytesOfCode)) continue;
        if (map_.codespace_.size() < CMap::kMaximumCodespaceRanges)
            map_.codespace_.push_back({codes->low.value, codes->high.value, static_cast<std::uint8_t>(bytes)});
    }
}

void CMapParser::readCharacters() {
    while (const auto code = takeCode())
        if (takeDestination()) map_.addCharacters(code->value, code->value, characters_);
}

void CMapParser::readCharacterRanges() {
    while (const auto codes = takeCodes()) {
        if (token_.kind == Kind::arrayStart)
            readArray(*codes);
        else if (takeDestination())
            map_.addCharacters(codes->low.value, codes->high.value, characters_);
    }
}

/// One destination a code. More than the range has codes are skipped.
void CMapParser::readArray(const Codes& codes) {
    advance();
    std::uint64_t code = codes.low.value;
    while (inSection() && token_.kind != Kind::arrayEnd) {
        if (!takeDestination()) {
            advance();
            continue;
        }
        const auto narrow = static_cast<std::uint32_t>(code);
        if (code <= codes.high.value) map_.addCharacters(narrow, narrow, characters_);
        ++code;
    }
    if (token_.kind == Kind::arrayEnd) advance();
}

void CMapParser::readCids() {
    while (const auto code = takeCode())
        if (const auto cid = takeInteger()) map_.cids_.add({code->value, code->value, *cid});
}

void CMapParser::readCidRanges() {
    while (const auto codes = takeCodes())
        if (const auto cid = takeInteger()) map_.cids_.add({codes->low.value, codes->high.value, *cid});
}

namespace {

/// The numbers of up to four hexadecimal digits each in a code's text.
class HexUnits {
public:
    explicit HexUnits(std::string_view digits)
        : digits_(digits) {}

    /// False at the end.
    bool next(char32_t& unit) {
        unit = 0;
        int count = 0;
        for (; at_ < digits_.size() && count < 4; ++at_) {
            const int digit = text::hexValue(digits_[at_]);
            if (digit < 0) continue;
            unit = unit << 4 | static_cast<char32_t>(digit);
            ++count;
        }
        return count > 0;
    }

private:
    std::string_view digits_;
    std::size_t at_ = 0;
};

/// Whether digits that are no sequence of UTF-16 units are the number of a character. Eight digits are two units unless
/// the first would be U+0000 to U+0003, which no text has.
bool isCharacterNumber(const CMapToken& code) {
    if (code.digits == 8) return code.value < 0x40000;
    return code.digits > 0 && code.digits < 8 && code.digits != 4 && code.value <= text::kLastCodePoint;
}

} // namespace

void readUtf16(const CMapToken& code, std::u32string& out) {
    out.clear();
    if (isCharacterNumber(code)) {
        out = static_cast<char32_t>(code.value);
        return;
    }
    HexUnits units(code.text);
    char32_t high = 0;
    for (char32_t unit = 0; units.next(unit);) {
        if (text::isLowSurrogate(unit) && high != 0) out.push_back(text::combineSurrogates(high, unit));
        high = text::isHighSurrogate(unit) ? unit : 0;
        if (!text::isSurrogate(unit)) out.push_back(unit);
    }
}

} // namespace quillow::pdf
