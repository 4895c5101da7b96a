#include "engines/rtf/Scanner.h"

#include "text/Ascii.h"
#include "text/CodePage.h"
#include "text/Utf8.h"

#include <algorithm>

namespace quillow::rtf {

Keyword Scanner::readNameSlowly() {
    if (!text::isLetter(peek(1))) return {Action::notAWord, 0};
    const char* name = ++p_;
    while (p_ != end_ && text::isLetter(*p_))
        ++p_;
    return findKeyword(std::string_view(name, static_cast<std::size_t>(p_ - name)));
}

Scanner::Completeness Scanner::skipBinary(std::int32_t length) {
    const std::size_t wanted = length > 0 ? static_cast<std::size_t>(length) : 0;
    const std::size_t taken = std::min(wanted, remaining());
    p_ += taken;
    return taken == wanted ? Completeness::whole : Completeness::cutShort;
}

namespace {

/// The first backslash or brace in [p, end) that is not the trail byte of a raw pair.
const char* findSyntaxOutsidePairs(const char* p, const char* end, const text::CodePage& pairs) {
    while (true) {
        const char* syntax = findSyntax(p, end);
        while (p < syntax) {
            p = findHighByte(p, syntax);
            if (p == syntax) break;
            const auto lead = static_cast<std::uint8_t>(*p++);
            if (p == end || !pairs.isLeadByte(lead)) continue;
            if (pairs.decodePair(lead, static_cast<std::uint8_t>(*p)) != text::kReplacementCharacter) ++p;
        }
        if (p == syntax) return syntax;
    }
}

} // namespace

Scanner::Completeness Scanner::skipGroup(const text::CodePage* rawPairs) {
    std::size_t depth = 1;
    while (true) {
        p_ = rawPairs == nullptr ? findSyntax(p_, end_) : findSyntaxOutsidePairs(p_, end_, *rawPairs);
        if (p_ == end_) return Completeness::cutShort;
        if (*p_ == '{') {
            ++depth;
            ++p_;
        } else if (*p_ == '}') {
            ++p_;
            if (--depth == 0) return Completeness::whole;
        } else if (remaining() >= 4 && p_[1] == 'b' && p_[2] == 'i' && p_[3] == 'n' && !text::isLetter(peek(4))) {
            if (const ControlWord word = readWord(); skipBinary(word.parameter) == Completeness::cutShort)
                return Completeness::cutShort;
        } else {
            p_ += std::min<std::size_t>(2, remaining());
        }
    }
}

Token Scanner::nextToken() {
    while (true) {
        skipLineEnds();
        if (p_ == end_) return {};
        const char c = *p_;
        if (c == '\\') {
            if (atWord()) {
                const ControlWord word = readWord();
                if (word.action() == Action::binary) {
                    (void)skipBinary(word.parameter);
                    continue;
                }
                return {Token::Kind::word, 0, word};
            }
            if (const std::optional<std::uint8_t> byte = hexByteAt(p_)) {
                p_ += 4;
                return {Token::Kind::byte, static_cast<char>(*byte), {}};
            }
            const char symbol = peek(1);
            p_ += std::min<std::size_t>(2, remaining());
            const Token::Kind kind = isSyntax(symbol) ? Token::Kind::byte : Token::Kind::symbol;
            return {kind, symbol, {}};
        }
        ++p_;
        if (c == '{') return {Token::Kind::open, c, {}};
        if (c == '}') return {Token::Kind::close, c, {}};
        return {Token::Kind::byte, c, {}};
    }
}

} // namespace quillow::rtf
