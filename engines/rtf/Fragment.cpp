#include "engines/rtf/Fragment.h"

#include "engines/rtf/Scanner.h"

#include <algorithm>
#include <cstdint>

namespace quillow::rtf {

namespace {

/// The bytes after a word with other meanings too in which further control words are examined.
constexpr std::size_t kWindow = 4096;

constexpr std::string_view kBlanks = " \t\r\n";

/// Words that only RTF has.
constexpr std::string_view kOfRtfAlone[] = {
    "colortbl",    "dbch",       "fldinst",
    "fldrslt",     "fonttbl",    "hich",
    "intbl",       "ldblquote",  "listoverridetable",
    "listtable",   "listtext",   "loch",
    "lquote",      "ltrch",      "ltrpar",
    "NeXTGraphic", "nonshppict", "nowidctlpar",
    "pard",        "plain",      "pntext",
    "qc",          "qj",         "ql",
    "qr",          "rdblquote",  "rquote",
    "rtlch",       "rtlpar",     "sectd",
    "shppict",     "stylesheet", "trowd",
    "ulnone",      "widctlpar",
};

/// Words that only RTF has with a number after them: no control word of TeX contains digits.
constexpr std::string_view kOfRtfWithNumber[] = {
    "af",        "afs",          "ansicpg", "b",       "cb", "cf",  "cs", "deff",
    "deflang",   "deftab",       "expnd",   "expndtw", "f",  "fi",  "fs", "i",
    "highlight", "lang",         "langfe",  "langnp",  "li", "lin", "ls", "margl",
    "margr",     "outlinelevel", "paperh",  "paperw",  "ri", "rin", "s",  "sa",
    "sb",        "sl",           "slmult",  "tx",      "uc", "ul",  "up", "viewkind",
};

/// Toggles of character properties, which mean nothing to the reader.
constexpr std::string_view kToggles[] = {"b",      "caps", "i",     "outl", "scaps", "shad",
                                         "strike", "sub",  "super", "ul",   "v"};

template <std::size_t n>
bool holds(const std::string_view (&names)[n], std::string_view name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

/// What a control word says about the text that contains it.
struct Word {
    enum class Sign : std::uint8_t {
        foreign,  ///< not a control word of RTF, or not in this form
        possible, ///< a control word of RTF; other formats may have it too
        mark,     ///< the same, and a break, a character or a toggle: it may be the only control word of the text
        certain,  ///< only RTF has it
    };
    Sign sign = Sign::foreign;
    bool isToggle = false;
    bool isBreak = false;
    bool opensGroups = false; ///< a destination, with a group directly after it
    char delimiter = '\0';    ///< the character after it; NUL at the end
};

/// Reads the control word at the backslash that `text` begins with.
Word readWord(std::string_view& text) {
    std::size_t at = 1;
    while (at < text.size() && text::isLetter(text[at]))
        ++at;
    const std::string_view name = text.substr(1, at - 1);
    const std::size_t digits = at < text.size() && text[at] == '-' ? at + 1 : at;
    std::size_t end = digits;
    while (end < text.size() && text::isDigit(text[end]))
        ++end;
    const bool hasNumber = end > digits;
    if (!hasNumber) end = at;
    const bool hasLeadingZero = end > digits + 1 && text[digits] == '0';
    Word word;
    if (end < text.size()) word.delimiter = text[end];
    text.remove_prefix(end);
    const Action action = findKeyword(name).action;
    word.isToggle = holds(kToggles, name);
    word.isBreak = isBreak(action) && action != Action::column; // TeX has \column too
    word.opensGroups = action == Action::destination && text.starts_with("{\\");
    const bool isDelimited = std::string_view("\0 \t\r\n\\}", 7).find(word.delimiter) != std::string_view::npos;
    if (holds(kOfRtfAlone, name) || (hasNumber && !hasLeadingZero && holds(kOfRtfWithNumber, name))) {
        word.sign = Word::Sign::certain;
    } else if (!isDelimited || hasLeadingZero) {
        word.sign = Word::Sign::foreign;
    } else if (word.isToggle || word.isBreak || action == Action::character || action == Action::unicode) {
        word.sign = Word::Sign::mark;
    } else if (action != Action::none) {
        word.sign = Word::Sign::possible;
    }
    return word;
}

/// What the control words after the first one say about it.
struct Company {
    bool hasForeign = false;
    bool confirms = false; ///< there is a certain word or a break, and RTF has at least half of the words
};

Company companyOf(std::string_view text) {
    text = text.substr(0, kWindow);
    Company company;
    std::size_t known = 0;
    std::size_t foreign = 0;
    bool hasSign = false;
    for (std::size_t at = text.find('\\'); at != std::string_view::npos; at = text.find('\\')) {
        text.remove_prefix(at);
        if (text.size() < 2 || !text::isLetter(text[1])) {
            text.remove_prefix(std::min<std::size_t>(2, text.size()));
            continue;
        }
        const Word word = readWord(text);
        word.sign == Word::Sign::foreign ? ++foreign : ++known;
        hasSign = hasSign || word.sign == Word::Sign::certain || (word.isBreak && word.sign == Word::Sign::mark);
    }
    company.hasForeign = foreign > 0;
    company.confirms = hasSign && known >= foreign;
    return company;
}

} // namespace

bool beginsLikeBody(std::string_view text) {
    const auto skipBlanks = [&text] { text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size())); };
    bool isInGroup = false;
    for (skipBlanks(); text.starts_with('{'); skipBlanks()) {
        text.remove_prefix(1);
        isInGroup = true;
    }
    if (isInGroup && text.starts_with("\\*")) {
        text.remove_prefix(2);
        skipBlanks();
        return text.size() >= 2 && text[0] == '\\' && text::isLetter(text[1]);
    }
    if (text.size() < 2 || text[0] != '\\' || !text::isLetter(text[1])) return false;
    const Word first = readWord(text);
    if (first.sign == Word::Sign::certain) return true;
    if (first.sign == Word::Sign::foreign && !(isInGroup && first.opensGroups)) return false;
    const Company company = companyOf(text);
    if (company.confirms) return true;
    const bool mayBeAlone = first.sign == Word::Sign::mark && !company.hasForeign &&
                            kBlanks.find(first.delimiter) != std::string_view::npos;
    if (!mayBeAlone) return false;
    // TeX has accents of these names: {\b o}, {\i}, {\v s}.
    constexpr std::size_t kLongestAccented = 3;
    return !isInGroup || !first.isToggle || text.find('}') > kLongestAccented;
}

} // namespace quillow::rtf
