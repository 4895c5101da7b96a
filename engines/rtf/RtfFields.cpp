#include "engines/rtf/RtfFields.h"

#include "engines/rtf/RtfBytes.h"
#include "text/CodePage.h"
#include "text/SymbolFonts.h"
#include "text/Utf8.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace quillow::rtf {

namespace {

constexpr std::string_view kBlanks = " \t\n";

bool equalsIgnoringCase(std::string_view text, std::string_view lower) {
    if (text.size() != lower.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i] >= 'A' && text[i] <= 'Z' ? static_cast<char>(text[i] + 0x20) : text[i];
        if (c != lower[i]) return false;
    }
    return true;
}

/// Takes the next word off an instruction: up to a blank, or a quoted string without its quotes.
struct Argument {
    std::string text;
    bool isSwitch = false;
};

bool takeArgument(std::string_view& rest, Argument& argument) {
    const std::size_t start = rest.find_first_not_of(kBlanks);
    if (start == std::string_view::npos) return false;
    rest.remove_prefix(start);
    argument = {};
    if (rest.front() != '"') {
        const std::size_t end = std::min(rest.find_first_of(kBlanks), rest.size());
        argument.text = rest.substr(0, end);
        argument.isSwitch = rest.front() == '\\';
        rest.remove_prefix(end);
        return true;
    }
    rest.remove_prefix(1);
    while (!rest.empty() && rest.front() != '"') {
        // Inside quotes a backslash escapes a quote or a backslash.
        if (rest.size() > 1 && rest[0] == '\\' && (rest[1] == '"' || rest[1] == '\\')) rest.remove_prefix(1);
        argument.text.push_back(rest.front());
        rest.remove_prefix(1);
    }
    if (!rest.empty()) rest.remove_prefix(1);
    return true;
}

/// SYMBOL number [\f "font"] [\u | \a | \j] ...
FieldInstruction readSymbol(std::string_view rest) {
    Argument argument;
    if (!takeArgument(rest, argument)) return {};
    std::uint32_t code = 0;
    std::string_view digits = argument.text;
    int base = 10;
    if (digits.size() > 2 && digits[0] == '0' && (digits[1] | 0x20) == 'x') {
        digits.remove_prefix(2);
        base = 16;
    }
    const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), code, base);
    if (parsed.ec != std::errc{} || parsed.ptr != digits.data() + digits.size() || code == 0) return {};

    std::string font;
    bool isUnicode = code > 0xFF;
    while (takeArgument(rest, argument)) {
        if (!argument.isSwitch) continue;
        if (equalsIgnoringCase(argument.text, "\\u")) isUnicode = true;
        if (equalsIgnoringCase(argument.text, "\\f") && takeArgument(rest, argument)) font = argument.text;
    }
    const bool isSign = code >= 0xF020 && code <= 0xF0FF;
    text::SymbolFontDecoder symbols = text::symbolFontDecoder(font);
    if (symbols == nullptr && isSign) symbols = text::symbolToUnicode;
    char32_t c = code;
    if (symbols != nullptr && (isSign || code <= 0xFF)) {
        c = symbols(static_cast<std::uint8_t>(code & 0xFF));
    } else if (!isUnicode) {
        if (const text::CodePage* latin = text::CodePage::forNumber(1252))
            c = latin->decodeByte(static_cast<std::uint8_t>(code));
    }
    FieldInstruction symbol{FieldInstruction::Kind::character, {}};
    text::appendUtf8(symbol.text, c);
    return symbol;
}

/// EQ ... \o [\ad ...] (reading, base): the last argument that is not raised or lowered.
FieldInstruction readEquation(std::string_view rest) {
    std::size_t start = 0;
    do {
        start = rest.find('\\', start);
        if (start == std::string_view::npos || start + 1 >= rest.size()) return {};
        ++start;
    } while ((rest[start] | 0x20) != 'o' || (start + 1 < rest.size() && isLetter(rest[start + 1])));
    const std::size_t open = rest.find('(', start);
    if (open == std::string_view::npos) return {};

    std::string_view base;
    std::size_t depth = 0;
    std::size_t argument = open + 1;
    for (std::size_t i = open + 1; i < rest.size(); ++i) {
        const char c = rest[i];
        if (c == '\\') {
            ++i; // an escaped parenthesis or comma, or a switch's letter
            continue;
        }
        const bool ends = depth == 0 && (c == ',' || c == ';' || c == ')');
        if (ends) {
            std::string_view text = rest.substr(argument, i - argument);
            const std::size_t first = text.find_first_not_of(kBlanks);
            const bool isRaised = first != std::string_view::npos && text.size() > first + 1 && text[first] == '\\' &&
                                  (text[first + 1] | 0x20) == 's';
            if (!isRaised && !text.empty()) base = text;
            argument = i + 1;
            if (c == ')') break;
        }
        if (c == '(') ++depth;
        if (c == ')' && depth > 0) --depth;
    }
    FieldInstruction equation{FieldInstruction::Kind::base, {}};
    for (std::size_t i = 0; i < base.size(); ++i) {
        if (base[i] == '\\' && i + 1 < base.size()) ++i;
        equation.text.push_back(base[i]);
    }
    if (equation.text.empty()) return {};
    return equation;
}

/// HYPERLINK "address" [\l "place"] [\o "tip"] [\t "frame"] ...
FieldInstruction readLink(std::string_view rest) {
    FieldInstruction link{FieldInstruction::Kind::link, {}};
    std::string place;
    Argument argument;
    while (takeArgument(rest, argument)) {
        if (!argument.isSwitch) {
            if (link.text.empty()) link.text = argument.text;
        } else if (equalsIgnoringCase(argument.text, "\\l")) {
            if (takeArgument(rest, argument)) place = argument.text;
        } else if (equalsIgnoringCase(argument.text, "\\o") || equalsIgnoringCase(argument.text, "\\t") ||
                   equalsIgnoringCase(argument.text, "\\s")) {
            (void)takeArgument(rest, argument);
        }
    }
    if (!place.empty()) {
        link.text += '#';
        link.text += place;
    }
    return link.text.empty() ? FieldInstruction{} : link;
}

} // namespace

FieldInstruction readFieldInstruction(std::string_view instruction) {
    Argument name;
    if (!takeArgument(instruction, name)) return {};
    if (equalsIgnoringCase(name.text, "symbol")) return readSymbol(instruction);
    if (equalsIgnoringCase(name.text, "eq")) return readEquation(instruction);
    if (equalsIgnoringCase(name.text, "hyperlink")) return readLink(instruction);
    return {};
}

} // namespace quillow::rtf
