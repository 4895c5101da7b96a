#include "engines/rtf/Fields.h"

#include "engines/rtf/Bytes.h"
#include "text/Ascii.h"
#include "text/CodePage.h"
#include "text/SymbolFonts.h"
#include "text/Utf8.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace quillow::rtf {

namespace {

constexpr std::string_view kBlanks = " \t\n";

struct Argument {
    std::string text;
    bool isSwitch = false;
};

/// Removes the next argument from `rest`: a word up to a blank, or a quoted string without its quotes. Returns false if
/// there is none.
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
        if (text::equalsIgnoringCase(argument.text, "\\u")) isUnicode = true;
        if (text::equalsIgnoringCase(argument.text, "\\f") && takeArgument(rest, argument)) font = argument.text;
    }
    const bool isSign = text::isSymbolSign(code);
    text::SymbolFontDecoder symbols = text::symbolFontDecoder(font);
    if (symbols == nullptr && isSign) symbols = text::symbolToUnicode;
    char32_t c = code;
    if (symbols != nullptr && (isSign || code <= 0xFF)) {
        c = symbols(static_cast<std::uint8_t>(code & 0xFF));
    } else if (!isUnicode) {
        if (const text::CodePage* latin = text::CodePage::forNumber(text::kWindowsLatin))
            c = latin->decodeByte(static_cast<std::uint8_t>(code));
    }
    FieldInstruction symbol{FieldInstruction::Kind::character, {}};
    text::appendUtf8(symbol.text, c);
    return symbol;
}

/// The base of an equation's overstrike, \o(...): the last element that is not raised or lowered. The other
/// elements are drawn over it. `elements` starts at the opening parenthesis.
std::string baseOfOverstrike(std::string_view elements) {
    std::string_view base;
    std::size_t depth = 0;
    std::size_t element = 1;
    for (std::size_t i = 1; i < elements.size(); ++i) {
        const char c = elements[i];
        if (c == '\\') {
            ++i; // an escaped parenthesis or comma, or a switch's letter
            continue;
        }
        const bool ends = depth == 0 && (c == ',' || c == ';' || c == ')');
        if (ends) {
            std::string_view text = elements.substr(element, i - element);
            const std::size_t first = text.find_first_not_of(kBlanks);
            const bool isRaised = first != std::string_view::npos && text.size() > first + 1 && text[first] == '\\' &&
                                  (text[first + 1] | 0x20) == 's';
            if (!isRaised && !text.empty()) base = text;
            element = i + 1;
            if (c == ')') break;
        }
        if (c == '(') ++depth;
        if (c == ')' && depth > 0) --depth;
    }
    std::string text;
    for (std::size_t i = 0; i < base.size(); ++i) {
        if (base[i] == '\\' && i + 1 < base.size()) ++i;
        text.push_back(base[i]);
    }
    return text;
}

/// Removes the equation switch at the start of `rest` (its backslash) and returns its letters in lower case. Also
/// removes the argument of an option (a number, or a backslash and the bracket to draw) and the blanks after it.
std::string takeEquationSwitch(std::string_view& rest) {
    rest.remove_prefix(1);
    std::string name;
    for (; !rest.empty() && text::isLetter(rest.front()); rest.remove_prefix(1))
        name.push_back(static_cast<char>(rest.front() | 0x20));
    const bool drawsBracket = name.size() == 2 && name[1] == 'c' && name != "ac";
    if (drawsBracket && rest.size() >= 2 && rest.front() == '\\') {
        rest.remove_prefix(1);
        rest.remove_prefix(text::decodeUtf8(rest).length);
    }
    while (!rest.empty() && (text::isDigit(rest.front()) || rest.front() == '-' || rest.front() == ' '))
        rest.remove_prefix(1);
    return name;
}

/// EQ switch[options](element, ...)...: the text of the elements in order. A slash joins the two elements of a
/// fraction; a list keeps its separators. Anything outside elements is part of the instruction and is dropped.
std::string elementsOfEquation(std::string_view rest) {
    std::string text;
    std::string open; // for each open parenthesis, the letter of its switch, or '(' if it has no switch
    char latest = 0;  // the switch that the next parenthesis belongs to
    while (!rest.empty()) {
        const char c = rest.front();
        if (c == '\\' && rest.size() >= 2 && text::isLetter(rest[1])) {
            const std::string name = takeEquationSwitch(rest);
            if (name.size() == 1) latest = name.front();
            continue;
        }
        rest.remove_prefix(1);
        if (c == '(') {
            open.push_back(latest != 0 ? latest : c);
            latest = 0;
            if (open.back() == c) text.push_back(c);
        } else if (open.empty()) {
            continue;
        } else if (c == ')') {
            if (open.back() == '(') text.push_back(c);
            open.pop_back();
        } else if (c == '\\') {
            if (!rest.empty()) {
                text.push_back(rest.front());
                rest.remove_prefix(1);
            }
        } else if (c != ',' && c != ';') {
            text.push_back(c);
        } else if (open.back() == 'f') {
            text.push_back('/');
        } else if (open.back() == 'l' || open.back() == '(') {
            text.push_back(c);
        }
    }
    return text;
}

FieldInstruction readEquation(std::string_view rest) {
    FieldInstruction equation{FieldInstruction::Kind::text, {}};
    for (std::size_t at = rest.find('\\'); at != std::string_view::npos && at + 1 < rest.size();
         at = rest.find('\\', at + 1)) {
        const bool isOverstrike =
            (rest[at + 1] | 0x20) == 'o' && (at + 2 == rest.size() || !text::isLetter(rest[at + 2]));
        if (!isOverstrike) continue;
        const std::size_t open = rest.find('(', at);
        if (open == std::string_view::npos) return {};
        equation.text = baseOfOverstrike(rest.substr(open));
        break;
    }
    if (equation.text.empty()) equation.text = elementsOfEquation(rest);
    return equation.text.find_first_not_of(kBlanks) == std::string::npos ? FieldInstruction{} : equation;
}

/// GOTOBUTTON place text, MACROBUTTON macro text: the text is displayed. A general switch, \*, may follow it.
FieldInstruction readButton(std::string_view rest) {
    Argument target;
    if (!takeArgument(rest, target) || target.isSwitch) return {};
    rest = rest.substr(0, rest.find("\\*"));
    const std::size_t first = rest.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    rest = rest.substr(first, rest.find_last_not_of(kBlanks) - first + 1);
    return {FieldInstruction::Kind::text, std::string(rest)};
}

/// HYPERLINK "address" [\l "place"] [\o "tip"] [\t "frame"] ...
FieldInstruction readLink(std::string_view rest) {
    FieldInstruction link{FieldInstruction::Kind::link, {}};
    std::string place;
    Argument argument;
    while (takeArgument(rest, argument)) {
        if (!argument.isSwitch) {
            if (link.text.empty()) link.text = argument.text;
        } else if (text::equalsIgnoringCase(argument.text, "\\l")) {
            if (takeArgument(rest, argument)) place = argument.text;
        } else if (text::equalsIgnoringCase(argument.text, "\\o") || text::equalsIgnoringCase(argument.text, "\\t") ||
                   text::equalsIgnoringCase(argument.text, "\\s")) {
            (void)takeArgument(rest, argument);
        }
    }
    if (!place.empty()) {
        link.text += '#';
        link.text += place;
    }
    return link.text.empty() ? FieldInstruction{} : link;
}

bool isButton(std::string_view name) {
    return text::equalsIgnoringCase(name, "gotobutton") || text::equalsIgnoringCase(name, "macrobutton");
}

} // namespace

bool endsWithButtonTarget(std::string_view instruction) {
    Argument argument;
    if (!takeArgument(instruction, argument) || !isButton(argument.text)) return false;
    return takeArgument(instruction, argument) && instruction.empty();
}

FieldInstruction readFieldInstruction(std::string_view instruction) {
    Argument name;
    if (!takeArgument(instruction, name)) return {};
    if (text::equalsIgnoringCase(name.text, "symbol")) return readSymbol(instruction);
    if (text::equalsIgnoringCase(name.text, "eq")) return readEquation(instruction);
    if (isButton(name.text)) return readButton(instruction);
    if (text::equalsIgnoringCase(name.text, "hyperlink")) return readLink(instruction);
    return {};
}

} // namespace quillow::rtf
