#include "engines/html/css/CssValues.h"

#include "engines/html/css/CssStructure.h"
#include "text/Ascii.h"

#include <array>
#include <span>

namespace quillow::html {

namespace {

/// No value of these properties has more words.
constexpr std::size_t kMaxWords = 8;

struct Keyword {
    std::string_view name;
    std::uint8_t value;
};

template <typename Enumeration>
constexpr std::uint8_t number(Enumeration value) {
    return static_cast<std::uint8_t>(value);
}

constexpr Keyword kWide[] = {
    {"inherit", kInherit}, {"initial", kInitial}, {"unset", kUnset}, {"revert", kRevert}, {"revert-layer", kRevert}};

constexpr Keyword kDisplay[] = {
    {"none", number(Display::none)},
    {"block", number(Display::block)},
    {"inline", number(Display::inline_)},
    {"inline-block", number(Display::inlineBlock)},
    {"flex", number(Display::flex)},
    {"inline-flex", number(Display::inlineFlex)},
    {"grid", number(Display::flex)},
    {"inline-grid", number(Display::inlineFlex)},
    {"table", number(Display::table)},
    {"inline-table", number(Display::inlineTable)},
    {"table-row", number(Display::tableRow)},
    {"table-cell", number(Display::tableCell)},
    {"table-row-group", number(Display::tableRowGroup)},
    {"table-header-group", number(Display::tableRowGroup)},
    {"table-footer-group", number(Display::tableRowGroup)},
    {"table-caption", number(Display::tableCaption)},
    {"table-column", number(Display::tableColumn)},
    {"table-column-group", number(Display::tableColumn)},
    {"list-item", number(Display::listItem)},
    {"contents", number(Display::contents)},
    {"flow-root", number(Display::block)},
    {"flow", number(Display::block)},
    {"math", number(Display::inlineBlock)},
    {"ruby", number(Display::inline_)},
    {"ruby-text", number(Display::inline_)},
    {"-webkit-box", number(Display::box)},
    {"-webkit-flex", number(Display::flex)},
    {"-webkit-inline-box", number(Display::inlineBox)},
    {"-webkit-inline-flex", number(Display::inlineFlex)},
};

constexpr Keyword kVisibility[] = {
    {"visible", number(Visibility::visible)},
    {"hidden", number(Visibility::hidden)},
    {"collapse", number(Visibility::hidden)},
};

constexpr Keyword kWhiteSpace[] = {
    {"normal", number(WhiteSpace::normal)},
    {"nowrap", number(WhiteSpace::normal)},
    {"collapse", number(WhiteSpace::normal)},
    {"pre", number(WhiteSpace::preserve)},
    {"pre-wrap", number(WhiteSpace::preserve)},
    {"break-spaces", number(WhiteSpace::preserve)},
    {"wrap", number(WhiteSpace::normal)},
    {"preserve", number(WhiteSpace::preserve)},
    {"-moz-pre-wrap", number(WhiteSpace::preserve)},
    {"pre-line", number(WhiteSpace::preserveBreaks)},
    {"preserve-breaks", number(WhiteSpace::preserveBreaks)},
};

constexpr Keyword kListStyle[] = {
    {"none", number(ListStyle::none)},
    {"disc", number(ListStyle::bullet)},
    {"circle", number(ListStyle::bullet)},
    {"square", number(ListStyle::bullet)},
    {"decimal", number(ListStyle::decimal)},
    {"decimal-leading-zero", number(ListStyle::decimal)},
    {"lower-alpha", number(ListStyle::lowerAlpha)},
    {"lower-latin", number(ListStyle::lowerAlpha)},
    {"upper-alpha", number(ListStyle::upperAlpha)},
    {"upper-latin", number(ListStyle::upperAlpha)},
    {"lower-roman", number(ListStyle::lowerRoman)},
    {"upper-roman", number(ListStyle::upperRoman)},
};

constexpr Keyword kFloat[] = {
    {"none", number(Flow::inFlow)},          {"left", number(Flow::outOfFlow)},
    {"right", number(Flow::outOfFlow)},      {"inline-start", number(Flow::outOfFlow)},
    {"inline-end", number(Flow::outOfFlow)},
};

constexpr Keyword kPosition[] = {
    {"static", number(Flow::inFlow)},         {"relative", number(Flow::inFlow)},    {"sticky", number(Flow::inFlow)},
    {"-webkit-sticky", number(Flow::inFlow)}, {"absolute", number(Flow::outOfFlow)}, {"fixed", number(Flow::outOfFlow)},
};

constexpr Keyword kBoxOrient[] = {
    {"horizontal", number(BoxOrient::horizontal)},
    {"inline-axis", number(BoxOrient::horizontal)},
    {"vertical", number(BoxOrient::vertical)},
    {"block-axis", number(BoxOrient::vertical)},
};
/// "auto" is not a number of lines, but it clamps in browsers.
constexpr Keyword kLineClamp[] = {
    {"none", number(LineClamp::none)},
    {"auto", number(LineClamp::some)},
};
/// The values of `content` that are single words. ContentReader reads the others.
constexpr Keyword kContent[] = {
    {"none", 0},
    {"normal", 0},
    {"open-quote", generated::kBox | generated::kText},
    {"close-quote", generated::kBox | generated::kText},
};

struct Property {
    std::string_view name;
    CssProperty property;
    const Keyword* first;
    std::size_t count;
};

template <std::size_t n>
constexpr Property property(std::string_view name, CssProperty id, const Keyword (&keywords)[n]) {
    return {name, id, keywords, n};
}

constexpr std::array kProperties = {
    property("display", CssProperty::display, kDisplay),
    property("visibility", CssProperty::visibility, kVisibility),
    property("white-space", CssProperty::whiteSpace, kWhiteSpace),
    property("white-space-collapse", CssProperty::whiteSpace, kWhiteSpace),
    property("list-style", CssProperty::listStyle, kListStyle),
    property("list-style-type", CssProperty::listStyle, kListStyle),
    property("float", CssProperty::floating, kFloat),
    property("position", CssProperty::position, kPosition),
    property("content", CssProperty::content, kContent),
    property("-webkit-box-orient", CssProperty::boxOrient, kBoxOrient),
    property("-webkit-line-clamp", CssProperty::lineClamp, kLineClamp),
    property("all", CssProperty::all, kWide),
};

const Property* findProperty(std::string_view name) {
    for (const Property& candidate : kProperties)
        if (text::equalsIgnoringCase(candidate.name, name)) return &candidate;
    return nullptr;
}

template <typename Keywords>
std::optional<std::uint8_t> findKeyword(const Keywords& keywords, std::string_view name) {
    for (const Keyword& keyword : keywords)
        if (text::equalsIgnoringCase(keyword.name, name)) return keyword.value;
    return std::nullopt;
}

/// The two-keyword syntax of CSS Display 3, section 2: an outer ("block", "inline") and an inner display type
/// ("flow", "flex", ...).
std::optional<std::uint8_t> combinedDisplay(std::string_view first, std::string_view second) {
    const auto is = [&](std::string_view name) {
        return text::equalsIgnoringCase(first, name) || text::equalsIgnoringCase(second, name);
    };
    if (!findKeyword(kDisplay, first) || !findKeyword(kDisplay, second)) return std::nullopt;
    if (first.front() == '-' || second.front() == '-') return std::nullopt;
    const bool inlineOutside = is("inline");
    if (!inlineOutside && !is("block") && !is("list-item")) return std::nullopt;
    if (is("flex") || is("grid")) return number(inlineOutside ? Display::inlineFlex : Display::flex);
    if (is("table")) return number(inlineOutside ? Display::inlineTable : Display::table);
    if (is("flow-root")) return number(inlineOutside ? Display::inlineBlock : Display::block);
    if (is("list-item")) return number(inlineOutside ? Display::inline_ : Display::listItem);
    return number(inlineOutside ? Display::inline_ : Display::block);
}

/// The value that a property gets from its words. The shorthands `list-style` and `white-space` may contain words
/// of other properties.
std::optional<std::uint8_t> valueOf(const Property& property, std::span<const std::string_view> words) {
    if (words.empty()) return std::nullopt;
    if (words.size() == 1) {
        if (const auto wide = findKeyword(kWide, words[0])) return wide;
    }
    const auto keyword = [&](std::string_view name) {
        return findKeyword(std::span(property.first, property.count), name);
    };
    if (property.property == CssProperty::listStyle || property.property == CssProperty::whiteSpace) {
        // A word of value 0 gives way to other words: in list-style "none" may be the list's image, in white-space
        // a word such as "nowrap" leaves the collapsing at its initial value.
        std::optional<std::uint8_t> found;
        for (const std::string_view word : words) {
            const auto value = keyword(word);
            if (value && (!found || *value != 0)) found = value;
            // In list-style, an unknown word may be a counter style of the author's.
            if (!value && property.property == CssProperty::whiteSpace) return std::nullopt;
        }
        return found;
    }
    if (property.property == CssProperty::display && words.size() == 2) return combinedDisplay(words[0], words[1]);
    return words.size() == 1 ? keyword(words[0]) : std::nullopt;
}

/// Reads the values of `content`: CSS Generated Content 3, section 2. Strings give text; functions and URLs
/// generate text or pictures.
class ContentReader {
public:
    void add(const CssToken& token) {
        switch (token.type) {
        case CssTokenType::string: addString(token.text); break;
        case CssTokenType::function:
        case CssTokenType::url: parts_ |= generated::kBox | generated::kText; break;
        default: break; // keywords, the arguments of a function, the slash before the alternative text
        }
    }
    /// std::nullopt if only keywords were read.
    [[nodiscard]] std::optional<std::uint8_t> value() const {
        return parts_ == 0 ? std::nullopt : std::optional(parts_);
    }

private:
    void addString(std::string_view text) {
        parts_ |= generated::kBox;
        if (text.empty()) return;
        const bool visible = !text::trimBlanks(text).empty();
        if (text::isBlank(text.front()) && (parts_ & generated::kText) == 0) parts_ |= generated::kSpaceBefore;
        if (visible) parts_ = (parts_ | generated::kText) & static_cast<std::uint8_t>(~generated::kSpaceAfter);
        if (text::isBlank(text.back()) && (parts_ & generated::kText) != 0) parts_ |= generated::kSpaceAfter;
    }

    std::uint8_t parts_ = 0;
};

/// CSS Overflow 4, section 4.1: a whole number of lines over 0, or a function that gives one; what it gives is not
/// computed.
class ClampReader {
public:
    /// False where the token makes the declaration invalid.
    bool add(const CssToken& token, std::string_view written) {
        if (isFunction_) return true;
        isFunction_ = token.type == CssTokenType::function;
        const bool isCount = token.type == CssTokenType::number && token.number > 0 &&
                             written.find_first_of(".eE") == std::string_view::npos;
        ++values_;
        return isFunction_ || isCount;
    }
    /// Nothing where only keywords have been read.
    [[nodiscard]] std::optional<std::uint8_t> value() const {
        return values_ == 0 ? std::nullopt : std::optional(number(LineClamp::some));
    }
    /// Of `words` keywords there may be one, and no number then; those in a function are its own.
    [[nodiscard]] bool isValid(std::size_t words) const { return isFunction_ || values_ + words <= 1; }

private:
    bool isFunction_ = false;
    std::size_t values_ = 0;
};

} // namespace

std::optional<CssDeclaration> parseDeclaration(std::string_view declaration, CssStrings& strings) {
    CssTokenizer tokens(declaration, strings);
    CssToken token = tokens.next();
    while (token.type == CssTokenType::whiteSpace)
        token = tokens.next();
    if (token.type != CssTokenType::ident) return std::nullopt;
    const Property* const property = findProperty(token.text);
    if (property == nullptr) return std::nullopt;
    token = tokens.next();
    while (token.type == CssTokenType::whiteSpace)
        token = tokens.next();
    if (token.type != CssTokenType::colon) return std::nullopt;
    CssDeclaration result;
    result.property = property->property;
    std::array<std::string_view, kMaxWords> words;
    std::size_t count = 0;
    bool afterBang = false;
    ContentReader content;
    ClampReader clamp;
    const bool isContent = property->property == CssProperty::content;
    const bool isClamp = property->property == CssProperty::lineClamp;
    for (token = tokens.next(); token.type != CssTokenType::end; token = tokens.next()) {
        if (token.type == CssTokenType::whiteSpace) continue;
        if (token.type == CssTokenType::delimiter && token.delimiter == '!') {
            afterBang = true;
        } else if (afterBang && token.type == CssTokenType::ident &&
                   text::equalsIgnoringCase(token.text, "important")) {
            result.importance = Importance::important;
        } else if (token.type == CssTokenType::ident && !afterBang) {
            if (count == kMaxWords) return std::nullopt;
            words[count++] = token.text;
        } else if (isContent) {
            content.add(token);
        } else if (isClamp) {
            const std::string_view written = declaration.substr(token.start, tokens.position() - token.start);
            if (!clamp.add(token, written)) return std::nullopt;
        } else if (property->name != "list-style") {
            return std::nullopt; // a function, a number or a broken value: no valid value of these properties has one
        }
    }
    if (isClamp && !clamp.isValid(count)) return std::nullopt;
    auto value = isClamp ? clamp.value() : content.value();
    if (!value) value = valueOf(*property, std::span(words).first(count));
    if (!value) return std::nullopt;
    result.value = *value;
    return result;
}

bool isKnownProperty(std::string_view name) {
    return findProperty(text::trimBlanks(name)) != nullptr;
}

std::vector<CssDeclaration> parseStyleAttribute(std::string_view style) {
    std::vector<CssDeclaration> result;
    CssStrings strings;
    CssStructure structure(style, strings);
    std::size_t start = structure.skipBlank();
    std::size_t depth = 0;
    for (;;) {
        const char c = structure.next();
        if (c == '\0' || (c == ';' && depth == 0)) {
            const std::string_view text = style.substr(start, structure.position() - start);
            if (mayBeRelevant(text))
                if (const auto declaration = parseDeclaration(text, strings)) result.push_back(*declaration);
            if (c == '\0') return result;
            start = structure.skipBlank();
        } else if (c == '(' || c == '[' || c == '{') {
            ++depth;
        } else if (c != ';' && depth > 0) {
            --depth;
        }
    }
}

bool mayBeRelevant(std::string_view declaration) {
    if (declaration.size() < 3) return false;
    const auto packed = [](char a, char b, char c) {
        return static_cast<unsigned>(a) << 16 | static_cast<unsigned>(b) << 8 | static_cast<unsigned>(c);
    };
    const auto starts = [packed](const char* name) { return packed(name[0], name[1], name[2]); };
    const std::string_view start = declaration.substr(0, 3);
    if (start.find('\\') != std::string_view::npos) return true; // an escape may hide a name
    const unsigned letters = packed(text::toLower(start[0]), text::toLower(start[1]), text::toLower(start[2]));
    constexpr std::size_t kShortest = std::string_view("-webkit-box-orient").size();
    if (letters == starts("-we")) {
        // Many properties begin so. The two of interest, `-webkit-box-orient` and `-webkit-line-clamp`, are equally
        // long and differ from most others in one character.
        constexpr std::size_t kTelling = std::string_view("-webkit-box-").size();
        if (declaration.size() <= kShortest) return false;
        return text::toLower(declaration[kTelling]) == 'o' || declaration[kTelling] == '-';
    }
    return letters == starts("all") || letters == starts("con") || letters == starts("dis") ||
           letters == starts("flo") || letters == starts("lis") || letters == starts("pos") ||
           letters == starts("vis") || letters == starts("whi");
}

} // namespace quillow::html
