#include "engines/pdf/fonts/CMapLexer.h"

#include "engines/pdf/syntax/Lexer.h"
#include "text/Ascii.h"

#include <cstddef>

namespace quillow::pdf {

using Kind = CMapToken::Kind;

namespace {

std::string_view between(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

} // namespace

void CMapLexer::skipBlanks() {
    p_ = skipWhiteSpace(p_, end_);
}

CMapToken CMapLexer::next() {
    while (true) {
        skipBlanks();
        if (p_ == end_) return {};
        switch (*p_) {
        case '<':
            if (p_ + 1 != end_ && p_[1] == '<') break;
            return code();
        case '(': return string();
        case '/': return name();
        case '[': return ++p_, CMapToken{Kind::arrayStart, 0, 0, {}};
        case ']': return ++p_, CMapToken{Kind::arrayEnd, 0, 0, {}};
        default:
            if (isRegular(*p_)) return numberOrWord();
            break;
        }
        p_ += *p_ == '<' ? 2 : 1; // brackets of dictionaries and procedures say nothing here
    }
}

/// `<` and hexadecimal digits. White space is allowed; any other byte ends the code, because the bracket may be
/// missing.
CMapToken CMapLexer::code() {
    const char* const begin = ++p_;
    CMapToken token{Kind::code, 0, 0, {}};
    for (; p_ != end_; ++p_) {
        const int digit = text::hexValue(*p_);
        if (digit >= 0) {
            token.value = token.value << 4 | static_cast<std::uint32_t>(digit);
            ++token.digits;
        } else if (!isWhiteSpace(*p_)) {
            break;
        }
    }
    token.text = between(begin, p_);
    if (p_ != end_ && *p_ == '>') ++p_;
    return token;
}

CMapToken CMapLexer::string() {
    const StringToken string = readString(p_, end_);
    p_ = string.end;
    return {Kind::string, 0, 0, string.raw};
}

CMapToken CMapLexer::name() {
    const char* const begin = ++p_;
    while (p_ != end_ && isRegular(*p_))
        ++p_;
    return {Kind::name, 0, 0, between(begin, p_)};
}

CMapToken CMapLexer::numberOrWord() {
    constexpr std::uint32_t kMost = 0x7FFFFFFF;
    const char* const begin = p_;
    std::uint64_t value = 0;
    bool isNumber = true;
    for (; p_ != end_ && isRegular(*p_); ++p_) {
        isNumber = isNumber && text::isDigit(*p_);
        if (value <= kMost) value = value * 10 + static_cast<std::uint64_t>(*p_ - '0');
    }
    if (!isNumber) return {Kind::word, 0, 0, between(begin, p_)};
    return {Kind::integer, 0, value <= kMost ? static_cast<std::uint32_t>(value) : kMost, between(begin, p_)};
}

} // namespace quillow::pdf
