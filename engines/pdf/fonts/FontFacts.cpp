#include "engines/pdf/fonts/FontFacts.h"

#include "text/Ascii.h"

#include <algorithm>
#include <string>

namespace quillow::pdf {

namespace {

constexpr std::size_t kLongestSymbolName = 20;

FontSubtype subtypeOf(Document& document, const Dictionary& dictionary) {
    const Object subtype = document.get(dictionary, "Subtype");
    if (subtype.isName("Type0") || !document.get(dictionary, "DescendantFonts").isNull()) return FontSubtype::composite;
    if (subtype.isName("TrueType")) return FontSubtype::trueType;
    if (subtype.isName("Type3") || !document.get(dictionary, "CharProcs").isNull()) return FontSubtype::type3;
    return FontSubtype::type1;
}

/// An array of one font as a rule; some producers write the font itself.
Dictionary descendantOf(Document& document, const Dictionary& dictionary) {
    const Object fonts = document.get(dictionary, "DescendantFonts");
    if (fonts.array().empty()) return fonts.dictionary();
    return document.resolve(fonts.array().front()).dictionary();
}

/// Six capital letters and a plus sign mark a subset (9.9.2).
std::string_view withoutSubsetPrefix(std::string_view name) {
    constexpr std::size_t kPrefix = 7;
    const auto isCapital = [](char c) { return c >= 'A' && c <= 'Z'; };
    const bool isSubset =
        name.size() > kPrefix && name[kPrefix - 1] == '+' && std::all_of(name.begin(), name.begin() + 6, isCapital);
    return isSubset ? name.substr(kPrefix) : name;
}

std::string_view nameOf(Document& document, const Dictionary& dictionary) {
    const std::string_view base = document.get(dictionary, "BaseFont").name();
    return withoutSubsetPrefix(base.empty() ? document.get(dictionary, "Name").name() : base);
}

/// The lower-case letters and the digits of a name.
std::string plainName(std::string_view name) {
    std::string plain;
    for (const char c : name)
        if (text::isLetter(c) || text::isDigit(c)) plain.push_back(text::toLower(c));
    return plain;
}

text::SymbolFontDecoder symbolsOf(std::string_view name, std::optional<StandardFont> standardFont) {
    if (standardFont == StandardFont::Symbol) return text::symbolToUnicode;
    if (standardFont == StandardFont::ZapfDingbats) return text::zapfDingbatsToUnicode;
    const std::string plain = plainName(name.substr(0, kLongestSymbolName));
    const auto begins = [&](std::string_view start) { return plain.starts_with(start); };
    if (begins("wingdings2")) return text::wingdings2ToUnicode;
    if (begins("wingdings3")) return text::wingdings3ToUnicode;
    if (begins("wingdings")) return text::wingdingsToUnicode;
    if (begins("webdings")) return text::webdingsToUnicode;
    if (begins("monotypesorts")) return text::zapfDingbatsToUnicode;
    return plain == "symbolmt" ? text::symbolToUnicode : nullptr;
}

} // namespace

FontFacts::FontFacts(Document& document, const Dictionary& fontDictionary)
    : dictionary(fontDictionary)
    , subtype(subtypeOf(document, fontDictionary))
    , descendant(subtype == FontSubtype::composite ? descendantOf(document, fontDictionary) : Dictionary())
    , name(nameOf(document, fontDictionary))
    , descriptor(document, subtype == FontSubtype::composite ? descendant : fontDictionary)
    , standardFont(standardFontOfName(name))
    , symbols(symbolsOf(name, standardFont)) {}

} // namespace quillow::pdf
