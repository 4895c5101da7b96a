#include "engines/html/css/CssTokenizer.h"

#include "text/Ascii.h"
#include "text/Utf8.h"

#include <charconv>

namespace quillow::html {

namespace {

bool isNameStart(char c) {
    return text::isLetter(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

bool isNameCharacter(char c) {
    return isNameStart(c) || text::isDigit(c) || c == '-';
}

CssTokenType punctuation(char c) {
    switch (c) {
    case ':': return CssTokenType::colon;
    case ';': return CssTokenType::semicolon;
    case ',': return CssTokenType::comma;
    case '[': return CssTokenType::openSquare;
    case ']': return CssTokenType::closeSquare;
    case '(': return CssTokenType::openParenthesis;
    case ')': return CssTokenType::closeParenthesis;
    case '{': return CssTokenType::openCurly;
    case '}': return CssTokenType::closeCurly;
    default: return CssTokenType::delimiter;
    }
}

} // namespace

bool CssTokenizer::isEscape(std::size_t offset) const {
    return at(offset) == '\\' && position_ + offset + 1 < input_.size() && at(offset + 1) != '\n';
}

bool CssTokenizer::startsName(std::size_t offset) const {
    if (at(offset) == '-') return isNameStart(at(offset + 1)) || at(offset + 1) == '-' || isEscape(offset + 1);
    return isNameStart(at(offset)) || isEscape(offset);
}

bool CssTokenizer::startsNumber() const {
    const std::size_t sign = at(0) == '+' || at(0) == '-' ? 1 : 0;
    return text::isDigit(at(sign)) || (at(sign) == '.' && text::isDigit(at(sign + 1)));
}

void CssTokenizer::skipComments() {
    while (at(0) == '/' && at(1) == '*') {
        const std::size_t end = input_.find("*/", position_ + 2);
        position_ = end == std::string_view::npos ? input_.size() : end + 2;
    }
}

/// 4.3.1 Consume a token.
CssToken CssTokenizer::next() {
    skipComments();
    CssToken token;
    token.start = position_;
    if (position_ >= input_.size()) return token;
    const char c = input_[position_];
    if (text::isBlank(c)) {
        while (position_ < input_.size() && text::isBlank(input_[position_]))
            ++position_;
        token.type = CssTokenType::whiteSpace;
    } else if (c == '"' || c == '\'') {
        ++position_;
        token.type = CssTokenType::string;
        token.text = consumeString(c);
    } else if (c == '#' && (isNameCharacter(at(1)) || isEscape(1))) {
        ++position_;
        token.type = CssTokenType::hash;
        token.text = consumeName();
    } else if (c == '@' && startsName(1)) {
        ++position_;
        token.type = CssTokenType::atKeyword;
        token.text = consumeName();
    } else if (startsNumber()) {
        token = consumeNumeric();
    } else if (input_.substr(position_, 3) == "-->") {
        position_ += 3; // CDC and CDO have no meaning in a style element
        token.type = CssTokenType::whiteSpace;
    } else if (input_.substr(position_, 4) == "<!--") {
        position_ += 4;
        token.type = CssTokenType::whiteSpace;
    } else if (startsName(0)) {
        token = consumeIdentLike();
    } else {
        ++position_;
        token.type = punctuation(c);
        token.delimiter = c;
    }
    return token;
}

/// 4.3.12 Consume a name. Returns a slice of the input if the name contains no escape.
std::string_view CssTokenizer::consumeName() {
    const std::size_t start = position_;
    while (position_ < input_.size() && isNameCharacter(input_[position_]))
        ++position_;
    if (!isEscape(0)) return input_.substr(start, position_ - start);
    std::string& name = strings_->emplace_back(input_.substr(start, position_ - start));
    while (position_ < input_.size()) {
        if (isNameCharacter(input_[position_])) {
            name.push_back(input_[position_++]);
        } else if (isEscape(0)) {
            ++position_;
            consumeEscape(name);
        } else {
            break;
        }
    }
    return name;
}

/// 4.3.7 Consume an escaped code point. The backslash has been consumed already.
void CssTokenizer::consumeEscape(std::string& out) {
    if (text::hexValue(at(0)) < 0) {
        out.push_back(input_[position_++]);
        return;
    }
    char32_t codePoint = 0;
    for (int digits = 0; digits < 6 && text::hexValue(at(0)) >= 0; ++digits)
        codePoint = codePoint * 16 + static_cast<char32_t>(text::hexValue(input_[position_++]));
    if (text::isBlank(at(0)) && position_ < input_.size()) ++position_;
    text::appendUtf8(out, codePoint == 0 ? text::kReplacementCharacter : codePoint);
}

/// 4.3.5 Consume a string token; an unescaped line end closes a bad string.
std::string_view CssTokenizer::consumeString(char quote) {
    const std::size_t start = position_;
    while (position_ < input_.size() && input_[position_] != quote && input_[position_] != '\\' &&
           input_[position_] != '\n')
        ++position_;
    if (at(0) != '\\') {
        const std::string_view text = input_.substr(start, position_ - start);
        if (at(0) == quote) ++position_;
        return text;
    }
    std::string& text = strings_->emplace_back(input_.substr(start, position_ - start));
    while (position_ < input_.size() && input_[position_] != quote && input_[position_] != '\n') {
        if (input_[position_] != '\\') {
            text.push_back(input_[position_++]);
            continue;
        }
        ++position_;
        if (at(0) == '\n') {
            ++position_;
        } else if (position_ < input_.size()) {
            consumeEscape(text);
        }
    }
    if (at(0) == quote) ++position_;
    return text;
}

double CssTokenizer::consumeNumber() {
    if (at(0) == '+') ++position_;
    double value = 0;
    const char* const begin = input_.data() + position_;
    const auto [end, error] = std::from_chars(begin, input_.data() + input_.size(), value);
    position_ += static_cast<std::size_t>(end - begin);
    return error == std::errc() ? value : 0;
}

/// 4.3.3 Consume a numeric token.
CssToken CssTokenizer::consumeNumeric() {
    CssToken token;
    token.start = position_;
    token.number = consumeNumber();
    if (at(0) == '%') {
        ++position_;
        token.type = CssTokenType::percentage;
    } else if (startsName(0)) {
        token.type = CssTokenType::dimension;
        token.text = consumeName();
    } else {
        token.type = CssTokenType::number;
    }
    return token;
}

/// 4.3.4 Consume an ident-like token.
CssToken CssTokenizer::consumeIdentLike() {
    CssToken token;
    token.start = position_;
    token.text = consumeName();
    token.type = CssTokenType::ident;
    if (at(0) != '(') return token;
    ++position_;
    token.type = CssTokenType::function;
    if (!text::equalsIgnoringCase(token.text, "url")) return token;
    std::size_t first = position_;
    while (first < input_.size() && text::isBlank(input_[first]))
        ++first;
    if (first < input_.size() && (input_[first] == '"' || input_[first] == '\'')) return token;
    CssToken url = consumeUrl();
    url.start = token.start;
    return url;
}

/// 4.3.6 Consume a url token. Its text is not needed here.
CssToken CssTokenizer::consumeUrl() {
    CssToken token;
    token.type = CssTokenType::url;
    while (position_ < input_.size() && input_[position_] != ')')
        position_ += isEscape(0) ? 2 : 1;
    if (position_ < input_.size()) ++position_;
    return token;
}

} // namespace quillow::html
