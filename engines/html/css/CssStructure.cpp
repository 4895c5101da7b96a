#include "engines/html/css/CssStructure.h"

#include "text/Ascii.h"
#include "text/ByteScan.h"

namespace quillow::html {

namespace {

/// The next byte that needs a look: one of { } [ ] ( ) ; " ' \ or /. The SSE2 search also stops at |, which is
/// harmless: its comparison cannot tell | from the brackets.
std::size_t findNotable(std::string_view css, std::size_t from) {
#ifdef __SSE2__
    // Finds one of three adjacent characters: { | } if bit 5 is set, or ' ( ).
    const auto within = [](__m128i block, char first) {
        const __m128i distance = _mm_sub_epi8(block, _mm_set1_epi8(first));
        return _mm_cmpeq_epi8(_mm_min_epu8(distance, _mm_set1_epi8(2)), distance);
    };
    for (; css.size() - from >= text::kBlock; from += text::kBlock) {
        const __m128i block = text::loadBlock(css.data() + from);
        const __m128i brackets = within(_mm_or_si128(block, _mm_set1_epi8(0x20)), '{');
        const __m128i parentheses = within(block, '\'');
        const unsigned others = text::maskOf<'"', ';', '/'>(block);
        const unsigned found = others | static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(brackets, parentheses)));
        if (found != 0) return from + static_cast<std::size_t>(std::countr_zero(found));
    }
#endif
    return text::findFirstOfPortable<'{', '}', '(', ')', '[', ']', ';', '"', '\'', '\\', '/'>(css, from);
}

bool isNameByte(char c) {
    return text::isLetter(c) || text::isDigit(c) || c == '-' || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

} // namespace

char CssStructure::next() {
    for (;;) {
        at_ = findNotable(css_, at_);
        position_ = at_;
        if (at_ >= css_.size()) return '\0';
        const char c = css_[at_];
        switch (c) {
        case '"':
        case '\'': skipString(c); break;
        case '\\': skipEscape(); break;
        case '/': skipComment(); break;
        case '|': ++at_; break;
        case '(':
            if (skipUrl()) break;
            [[fallthrough]];
        default: return take();
        }
    }
}

char CssStructure::take() {
    const char c = css_[at_++];
    boundary_ = at_;
    sawEscape_ = false;
    return c;
}

std::size_t CssStructure::skipBlank() {
    for (;;) {
        if (at_ >= css_.size()) return at_;
        if (text::isBlank(css_[at_])) {
            ++at_;
        } else if (startsWith("/*")) {
            skipComment();
        } else if (startsWith("<!--")) {
            at_ += 4;
        } else if (startsWith("-->")) {
            at_ += 3;
        } else {
            return at_;
        }
    }
}

void CssStructure::skipComment() {
    if (!startsWith("/*")) {
        ++at_;
        return;
    }
    const std::size_t end = css_.find("*/", at_ + 2);
    at_ = boundary_ = end == std::string_view::npos ? css_.size() : end + 2;
    sawEscape_ = false;
}

void CssStructure::skipString(char quote) {
    std::size_t end = quote == '"' ? text::findFirstOf<'"', '\\', '\n'>(css_, at_ + 1)
                                   : text::findFirstOf<'\'', '\\', '\n'>(css_, at_ + 1);
    if (end < css_.size() && css_[end] == '\\') {
        CssTokenizer tokens(css_, *strings_, at_);
        static_cast<void>(tokens.next());
        end = tokens.position();
    } else if (end < css_.size() && css_[end] == quote) {
        ++end;
    }
    at_ = boundary_ = end;
    sawEscape_ = false;
}

/// CSS Syntax 3, section 4.3.8. The further digits of an escape are not structural characters and
/// need not be skipped.
void CssStructure::skipEscape() {
    const bool valid = at_ + 1 < css_.size() && css_[at_ + 1] != '\n';
    at_ += valid ? 2 : 1;
    sawEscape_ = true;
}

/// CSS Syntax 3, section 4.3.4, at a "(". If it belongs to an unquoted URL, skips the URL and returns true.
bool CssStructure::skipUrl() {
    if (sawEscape_) return skipUrlByTokens();
    const std::string_view before = css_.substr(boundary_, at_ - boundary_);
    if (before.size() < 3 || !text::equalsIgnoringCase(before.substr(before.size() - 3), "url")) return false;
    if (before.size() > 3) {
        const char c = before[before.size() - 4];
        if (isNameByte(c) || c == '#' || c == '@') return false;
    }
    boundary_ = at_ - 3;
    return skipUrlByTokens();
}

bool CssStructure::skipUrlByTokens() {
    CssTokenizer tokens(css_, *strings_, boundary_);
    CssToken token;
    while (tokens.position() <= at_)
        token = tokens.next();
    if (token.type != CssTokenType::url) return false;
    at_ = boundary_ = tokens.position();
    sawEscape_ = false;
    return true;
}

} // namespace quillow::html
