#include "engines/pdf/fonts/FontFacts.h"

#include "text/Ascii.h"

#include <algorithm>
#include <string>

namespace quillow::pdf {

namespace {

constexpr std::size_t kLongestKnownName = 20;

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

text::SymbolFontDecoder symbolsOf(std::string_view plain, std::optional<StandardFont> standardFont) {
    if (standardFont == StandardFont::Symbol) return text::symbolToUnicode;
    if (standardFont == StandardFont::ZapfDingbats) return text::zapfDingbatsToUnicode;
    if (plain.starts_with("wingdings2")) return text::wingdings2ToUnicode;
    if (plain.starts_with("wingdings3")) return text::wingdings3ToUnicode;
    if (plain.starts_with("wingdings")) return text::wingdingsToUnicode;
    if (plain.starts_with("webdings")) return text::webdingsToUnicode;
    if (plain.starts_with("monotypesorts")) return text::zapfDingbatsToUnicode;
    return plain == "symbolmt" ? text::symbolToUnicode : nullptr;
}

/// LaTeX's picture fonts, and those of Xy-pic.
bool isDrawingFont(std::string_view plain) {
    for (const std::string_view name : {"line10", "linew10", "lcircle10", "lcirclew10"})
        if (plain == name) return true;
    for (const std::string_view start :
         {"xyatip", "xybtip", "xybsql", "xycirc", "xydash", "xyline", "xyluat", "xymisc"})
        if (plain.starts_with(start)) return true;
    return false;
}

} // namespace

FontFacts::FontFacts(Document& document, const Dictionary& fontDictionary)
    : dictionary(fontDictionary)
    , subtype(subtypeOf(document, fontDictionary))
    , descendant(subtype == FontSubtype::composite ? descendantOf(document, fontDictionary) : Dictionary())
    , name(nameOf(document, fontDictionary))
    , descriptor(document, subtype == FontSubtype::composite ? descendant : fontDictionary)
    , standardFont(standardFontOfName(name)) {
    const std::string plain = plainName(name.substr(0, kLongestKnownName));
    symbols = symbolsOf(plain, standardFont);
    isForDrawing = isDrawingFont(plain);
}

} // namespace quillow::pdf
