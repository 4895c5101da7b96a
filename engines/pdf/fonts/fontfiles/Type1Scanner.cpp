#include "engines/pdf/fonts/fontfiles/Type1Scanner.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace quillow::pdf {
namespace {

constexpr std::string_view kBlanks{" \t\r\n\f\0", 6};
constexpr std::string_view kDelimiters = "()<>[]{}/%";

bool isBlank(char c) {
    return kBlanks.find(c) != std::string_view::npos;
}

bool isRegular(char c) {
    return !isBlank(c) && kDelimiters.find(c) == std::string_view::npos;
}

std::optional<int> integerOf(std::string_view digits, int radix) {
    int value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, radix);
    if (error != std::errc() || end != digits.data() + digits.size()) return {};
    return value;
}

} // namespace

Type1Scanner Type1Scanner::behind(std::string_view text, std::string_view name) {
    for (std::size_t at = text.find(name); at != std::string_view::npos; at = text.find(name, at + 1)) {
        const std::string_view rest = text.substr(at + name.size());
        if (rest.empty() || !isRegular(rest.front())) return Type1Scanner(rest);
    }
    return {};
}

void Type1Scanner::skipBlanksAndComments() {
    while (!text_.empty() && (isBlank(text_.front()) || text_.front() == '%')) {
        if (text_.front() == '%')
            text_.remove_prefix(std::min(text_.find_first_of("\r\n"), text_.size()));
        else
            text_.remove_prefix(1);
    }
}

std::string_view Type1Scanner::next() {
    skipBlanksAndComments();
    if (text_.empty()) return {};
    const bool isPunctuation = !isRegular(text_.front()) && text_.front() != '/';
    std::size_t length = 1;
    while (!isPunctuation && length < text_.size() && isRegular(text_[length]))
        ++length;
    const std::string_view token = text_.substr(0, length);
    text_.remove_prefix(length);
    return token;
}

std::string_view Type1Scanner::takeBinary(std::size_t count) {
    if (text_.empty() || count > text_.size() - 1) {
        text_ = {};
        return {};
    }
    const std::string_view bytes = text_.substr(1, count);
    text_.remove_prefix(1 + count);
    return bytes;
}

std::optional<int> type1Integer(std::string_view token) {
    const std::size_t mark = token.find('#');
    if (mark == std::string_view::npos) return integerOf(token, 10);
    const std::optional<int> radix = integerOf(token.substr(0, mark), 10);
    if (!radix || *radix < 2 || *radix > 36) return {};
    return integerOf(token.substr(mark + 1), *radix);
}

double type1Number(std::string_view token) {
    double value = 0;
    const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), value);
    return error == std::errc() && std::isfinite(value) ? value : 0;
}

} // namespace quillow::pdf
