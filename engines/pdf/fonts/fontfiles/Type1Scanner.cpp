#include "engines/pdf/fonts/fontfiles/Type1Scanner.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace quillow::pdf {
namespace {

enum class Class : std::uint8_t { regular, blank, delimiter };

constexpr std::array<Class, 256> kClasses = [] {
    std::array<Class, 256> classes{};
    for (const char c : std::string_view(" \t\r\n\f\0", 6))
        classes[static_cast<std::uint8_t>(c)] = Class::blank;
    for (const char c : std::string_view("()<>[]{}/%"))
        classes[static_cast<std::uint8_t>(c)] = Class::delimiter;
    return classes;
}();

bool isBlank(char c) {
    return kClasses[static_cast<std::uint8_t>(c)] == Class::blank;
}

bool isRegular(char c) {
    return kClasses[static_cast<std::uint8_t>(c)] == Class::regular;
}

std::optional<int> integerOf(std::string_view digits, int radix) {
    int value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, radix);
    if (error != std::errc() || end != digits.data() + digits.size()) return {};
    return value;
}

} // namespace

bool Type1Scanner::skipBehind(std::string_view name) {
    for (std::size_t at = text_.find(name); at != std::string_view::npos; at = text_.find(name)) {
        text_.remove_prefix(at + name.size());
        if (text_.empty() || !isRegular(text_.front())) return true;
    }
    text_ = {};
    return false;
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
