#include "engines/html/parser/CharacterReferences.h"

#include "text/Ascii.h"
#include "text/Utf8.h"

#include <cstdint>

namespace quillow::html {

namespace {

/// 13.2.5.80 Numeric character reference end state: the replacements of 0x80 to 0x9F; 0 keeps the number.
constexpr char16_t kC1Replacements[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                          0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                          0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                          0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char32_t numericReference(std::uint32_t number) {
    if (number == 0 || number > 0x10FFFF || (number >= 0xD800 && number <= 0xDFFF)) return text::kReplacementCharacter;
    if (number >= 0x80 && number <= 0x9F && kC1Replacements[number - 0x80] != 0) return kC1Replacements[number - 0x80];
    return number;
}

/// Appends the numeric reference that `rest`, the text after "&#", begins with. Returns the number of bytes
/// consumed, or 0 if there is no reference.
std::size_t appendNumeric(std::string& out, std::string_view rest) {
    std::size_t at = 0;
    const bool hexadecimal = !rest.empty() && (rest[0] | 0x20) == 'x';
    if (hexadecimal) ++at;
    const std::size_t digits = at;
    std::uint32_t number = 0;
    for (; at < rest.size() && (hexadecimal ? text::hexValue(rest[at]) >= 0 : text::isDigit(rest[at])); ++at)
        number = std::min<std::uint32_t>(
            number * (hexadecimal ? 16 : 10) + static_cast<std::uint32_t>(text::hexValue(rest[at])), 0x110000);
    if (at == digits) return 0;
    if (at < rest.size() && rest[at] == ';') ++at;
    text::appendUtf8(out, numericReference(number));
    return at;
}

struct ReferenceRange {
    const NamedReference* low;
    const NamedReference* high;
};

/// The names that begin with this character.
ReferenceRange referencesOf(char first) {
    if (first < kFirstReferenceCharacter || first > kLastReferenceCharacter) return {nullptr, nullptr};
    const auto index = static_cast<std::size_t>(first - kFirstReferenceCharacter);
    return {kNamedReferences + kNamedReferenceStarts[index], kNamedReferences + kNamedReferenceStarts[index + 1]};
}

/// The name with its semicolon that `rest` begins with, or nullptr. Names end at a semicolon, so no
/// longer name can match.
const NamedReference* wholeMatch(std::string_view rest) {
    std::size_t length = 0;
    while (length < rest.size() && (text::isLetter(rest[length]) || text::isDigit(rest[length])))
        ++length;
    if (length == rest.size() || rest[length] != ';') return nullptr;
    const std::string_view name = rest.substr(0, length + 1);
    const ReferenceRange range = referencesOf(rest[0]);
    const NamedReference* const found = std::partition_point(
        range.low, range.high, [name](const NamedReference& reference) { return reference.name < name; });
    return found != range.high && found->name == name ? found : nullptr;
}

/// The longest name of the table that `rest` begins with, or nullptr. Narrows the sorted table
/// character by character.
const NamedReference* longestMatch(std::string_view rest) {
    auto [low, high] = referencesOf(rest[0]);
    const NamedReference* found = nullptr;
    for (std::size_t at = 1; at < rest.size() && low < high; ++at) {
        const char wanted = rest[at];
        const auto characterAt = [at](const NamedReference& reference) {
            return at < reference.name.size() ? reference.name[at] : '\0';
        };
        low = std::partition_point(low, high, [&](const NamedReference& r) { return characterAt(r) < wanted; });
        high = std::partition_point(low, high, [&](const NamedReference& r) { return characterAt(r) <= wanted; });
        if (low < high && low->name.size() == at + 1) found = low;
    }
    return found;
}

/// Appends one of the most frequent references. Returns the number of bytes consumed, or 0.
std::size_t appendCommon(std::string& out, std::string_view rest) {
    if (rest.starts_with("amp;")) return out.push_back('&'), 4;
    if (rest.starts_with("nbsp;")) return out.append("\u00A0"), 5;
    if (rest.starts_with("quot;")) return out.push_back('"'), 5;
    return 0;
}

/// Appends the named reference that `rest`, the text after "&", begins with. Returns the number of bytes consumed,
/// or 0 if there is no reference.
std::size_t appendNamed(std::string& out, std::string_view rest, ReferencePlace place) {
    if (rest.empty() || !text::isLetter(rest[0])) return 0;
    if (const std::size_t taken = appendCommon(out, rest); taken > 0) return taken;
    const NamedReference* reference = wholeMatch(rest);
    if (reference == nullptr) reference = longestMatch(rest);
    if (reference == nullptr) return 0;
    const std::size_t length = reference->name.size();
    if (place == ReferencePlace::attribute && reference->name.back() != ';' && length < rest.size() &&
        (rest[length] == '=' || text::isLetter(rest[length]) || text::isDigit(rest[length])))
        return 0; // for historical reasons: "?a=1&copy=2" has no reference
    text::appendUtf8(out, reference->first);
    if (reference->second != 0) text::appendUtf8(out, reference->second);
    return length;
}

} // namespace

void appendResolvingReferences(std::string& out, std::string_view text, ReferencePlace place) {
    while (!text.empty()) {
        const std::size_t ampersand = text.find('&');
        out.append(text.substr(0, ampersand));
        if (ampersand == std::string_view::npos) return;
        text.remove_prefix(ampersand + 1);
        std::size_t taken = 0;
        if (text.starts_with("#")) {
            taken = appendNumeric(out, text.substr(1));
            if (taken > 0) ++taken;
        } else {
            taken = appendNamed(out, text, place);
        }
        if (taken == 0) out.push_back('&');
        text.remove_prefix(taken);
    }
}

} // namespace quillow::html
