#include "engines/pdf/fonts/GlyphNames.h"

#include "engines/pdf/fonts/GlyphNamesTables.h"
#include "text/Ascii.h"
#include "text/Unicode.h"

namespace quillow::pdf {

namespace {

constexpr std::uint32_t kLastGlyphIndex = 0xFFFF;
constexpr std::uint32_t kLastCode = 0xFF;
constexpr std::size_t kDigitsOfUnit = 4; ///< of "uni" names
constexpr std::size_t kMinStem = 3; ///< of "Gamma1": shorter stems with a number ("g1", "a1") are numbers of glyphs

/// What variants of a glyph add to its name without the dot.
constexpr std::string_view kVariants[] = {"taboldstyle", "oldstyle", "fitted", "superior", "inferior", "swash", "alt"};

struct ListOrder {
    const GlyphNameList* first;
    const GlyphNameList* second;
};

ListOrder orderOf(GlyphNameTable table) {
    switch (table) {
    case GlyphNameTable::Tex: return {&kTexNames, &kAdobeNames};
    case GlyphNameTable::ZapfDingbats: return {&kDingbatNames, &kAdobeNames};
    case GlyphNameTable::Adobe: break;
    }
    return {&kAdobeNames, &kTexNames};
}

GlyphText textOf(const GlyphNameList& list, char16_t value) {
    if (value == 0) return {};
    if (!text::isSurrogate(value)) return GlyphText(value);
    const std::uint16_t place = list.sequences[value - text::kFirstSurrogate];
    constexpr std::size_t kOffsetMask = (std::size_t{1} << kSequenceOffsetBits) - 1;
    GlyphText result;
    result.append({list.sequencePool + (place & kOffsetMask), static_cast<std::size_t>(place >> kSequenceOffsetBits)});
    return result;
}

/// Nothing if no list has the name. A name that is known to have no meaning gives an empty text.
std::optional<GlyphText> listed(const ListOrder& order, std::string_view name) {
    for (const GlyphNameList* list : {order.first, order.second}) {
        if (const auto index = list->names.find(name)) return textOf(*list, list->values[*index]);
    }
    return std::nullopt;
}

/// Hexadecimal digits, all of them; nothing if there is another character. At most eight.
std::optional<char32_t> hexNumber(std::string_view digits) {
    char32_t number = 0;
    for (const char c : digits) {
        const int value = text::hexValue(c);
        if (value < 0) return std::nullopt;
        number = number << 4 | static_cast<char32_t>(value);
    }
    return number;
}

GlyphText ofCodePoint(std::optional<char32_t> c) {
    constexpr char32_t kFirstPrintable = 0x20;
    if (!c || *c < kFirstPrintable || !text::isInterchangeable(*c)) return {};
    return GlyphText(*c);
}

/// "0041" or "D83DDE00": UTF-16, although the list's rules know no pairs.
GlyphText ofUnits(std::string_view digits) {
    GlyphText result;
    char32_t high = 0;
    for (std::size_t i = 0; i < digits.size(); i += kDigitsOfUnit) {
        const auto unit = hexNumber(digits.substr(i, kDigitsOfUnit));
        if (!unit) return {};
        if (text::isHighSurrogate(*unit)) {
            high = *unit;
            continue;
        }
        const GlyphText one =
            ofCodePoint(high != 0 && text::isLowSurrogate(*unit) ? text::combineSurrogates(high, *unit) : *unit);
        if (one.isEmpty()) return {};
        result.append(one);
        high = 0;
    }
    return result;
}

/// uniXXXX, and uXXXX to uXXXXXX. Digits may be small, and "uni" may have five or six, although the list's rules are
/// strict.
GlyphText ofNumberedName(std::string_view name) {
    constexpr std::string_view kUnits = "uni";
    if (name.starts_with(kUnits)) {
        const std::string_view digits = name.substr(kUnits.size());
        if (!digits.empty() && digits.size() % kDigitsOfUnit == 0) return ofUnits(digits);
        if (digits.size() == 5 || digits.size() == 6) return ofCodePoint(hexNumber(digits));
        return {};
    }
    if (name.starts_with('u') && name.size() >= 5 && name.size() <= 7) return ofCodePoint(hexNumber(name.substr(1)));
    return {};
}

/// "Gamma1" and "sevenoldstyle" without what they add.
std::string_view withoutVariant(std::string_view name) {
    for (const std::string_view variant : kVariants) {
        if (name.size() > variant.size() && name.ends_with(variant))
            return name.substr(0, name.size() - variant.size());
    }
    std::size_t end = name.size();
    while (end > 0 && text::isDigit(name[end - 1]))
        --end;
    return end < kMinStem ? name : name.substr(0, end);
}

GlyphText ofComponent(const ListOrder& order, std::string_view name) {
    if (const auto found = listed(order, name)) return *found;
    const GlyphText numbered = ofNumberedName(name);
    if (!numbered.isEmpty()) return numbered;
    const std::string_view stem = withoutVariant(name);
    if (stem.size() < name.size()) return listed(order, stem).value_or(GlyphText{});
    return {};
}

/// All digits of a decimal number up to `last`.
std::optional<std::uint32_t> decimal(std::string_view digits, std::uint32_t last) {
    if (digits.empty()) return std::nullopt;
    std::uint32_t number = 0;
    for (const char c : digits) {
        if (!text::isDigit(c)) return std::nullopt;
        number = number * 10 + static_cast<std::uint32_t>(c - '0');
        if (number > last) return std::nullopt;
    }
    return number;
}

} // namespace

GlyphText unicodeOfGlyphName(std::string_view name, GlyphNameTable table) {
    const ListOrder order = orderOf(table);
    name = name.substr(0, name.find('.'));
    GlyphText result;
    while (!name.empty()) {
        const std::size_t end = name.find('_');
        const GlyphText component = ofComponent(order, name.substr(0, end));
        if (component.isEmpty()) return {}; // deliberate: half a meaning is worse than the next evidence
        result.append(component);
        name = end == std::string_view::npos ? std::string_view{} : name.substr(end + 1);
    }
    return result;
}

std::optional<std::uint32_t> glyphIndexOfName(std::string_view name) {
    for (const std::string_view prefix : {"glyph", "index", "gid", "cid", "g"}) {
        const bool fits = prefix.size() == 1 ? name.starts_with(prefix) : text::startsWithIgnoringCase(name, prefix);
        if (!fits || name.size() == prefix.size()) continue;
        std::string_view digits = name.substr(prefix.size());
        if (digits.front() == '_' || digits.front() == ':' || digits.front() == '+') digits.remove_prefix(1);
        return decimal(digits, kLastGlyphIndex);
    }
    return std::nullopt;
}

std::optional<std::uint32_t> codeOfName(std::string_view name) {
    constexpr std::size_t kHexName = 3;
    if (name.size() < 2) return std::nullopt;
    const std::string_view digits = name.substr(1);
    switch (name.front()) {
    case 'a':
    case 'c':
    case 'C': return decimal(digits, kLastCode);
    case 'G':
    case 'x':
        if (name.size() != kHexName) return std::nullopt;
        return hexNumber(digits);
    default: return std::nullopt;
    }
}

} // namespace quillow::pdf
