#include "engines/pdf/fonts/Encodings.h"

#include "engines/pdf/fonts/EncodingsTables.h"
#include "text/Ascii.h"

#include <cstddef>

namespace quillow::pdf {

namespace {

struct NamedEncoding {
    std::string_view name;
    Encoding encoding;
};

constexpr NamedEncoding kNamedEncodings[] = {
    {"Standard", Encoding::Standard},         {"AdobeStandard", Encoding::Standard}, {"WinAnsi", Encoding::WinAnsi},
    {"MacRoman", Encoding::MacRoman},         {"MacExpert", Encoding::MacExpert},    {"Symbol", Encoding::Symbol},
    {"ZapfDingbats", Encoding::ZapfDingbats},
};

// The names of TeX's fonts without their sizes.
constexpr NamedEncoding kTexFamilies[] = {
    {"cmr", Encoding::TexText},           {"cmb", Encoding::TexText},           {"cmbx", Encoding::TexText},
    {"cmbxsl", Encoding::TexText},        {"cmsl", Encoding::TexText},          {"cmss", Encoding::TexText},
    {"cmssi", Encoding::TexText},         {"cmssbx", Encoding::TexText},        {"cmssdc", Encoding::TexText},
    {"cmssq", Encoding::TexText},         {"cmssqi", Encoding::TexText},        {"cmdunh", Encoding::TexText},
    {"cmff", Encoding::TexText},          {"cmfib", Encoding::TexText},         {"cmvtt", Encoding::TexText},
    {"rm-lmr", Encoding::TexText},        {"cmti", Encoding::TexItalic},        {"cmbxti", Encoding::TexItalic},
    {"cmu", Encoding::TexItalic},         {"cmfi", Encoding::TexItalic},        {"cmtt", Encoding::TexTypewriter},
    {"cmsltt", Encoding::TexTypewriter},  {"cmitt", Encoding::TexTypewriter},   {"cmtex", Encoding::TexTypewriter},
    {"cmcsc", Encoding::TexSmallCaps},    {"cmtcsc", Encoding::TexSmallCaps},   {"cmmi", Encoding::TexMathItalic},
    {"cmmib", Encoding::TexMathItalic},   {"lmmi", Encoding::TexMathItalic},    {"cmsy", Encoding::TexMathSymbols},
    {"cmbsy", Encoding::TexMathSymbols},  {"lmsy", Encoding::TexMathSymbols},   {"cmex", Encoding::TexMathExtension},
    {"lmex", Encoding::TexMathExtension}, {"msam", Encoding::TexSymbolsA},      {"msbm", Encoding::TexSymbolsB},
    {"lasy", Encoding::TexLatexSymbols},  {"lasyb", Encoding::TexLatexSymbols}, {"wasy", Encoding::TexWasy},
    {"wasyb", Encoding::TexWasy},
};

// The families of the EC fonts and of their Type 1 versions: two letters for the encoding, then the style.
constexpr std::string_view kCorkPrefixes[] = {"ec", "sf", "dc"};
constexpr std::string_view kCorkStyles[] = {"rm", "bx", "rb", "ti", "bi", "sl",  "bl", "cc", "xc", "sc", "oc",
                                            "tt", "st", "it", "tc", "vt", "vi",  "ss", "si", "sx", "so", "ui",
                                            "dh", "fb", "fs", "ff", "fi", "ltt", "qi", "lq", "li", "lb", "lo"};
constexpr std::string_view kCompanionPrefix = "tc";
constexpr std::string_view kCompanionStyles[] = {"rm", "bx", "rb", "ti", "bi", "sl", "bl", "tt",
                                                 "st", "it", "vt", "ss", "si", "sx", "so", "ui"};

template <std::size_t N>
std::optional<Encoding> named(const NamedEncoding (&list)[N], std::string_view name) {
    for (const NamedEncoding& entry : list) {
        if (text::equalsIgnoringCase(entry.name, name)) return entry.encoding;
    }
    return std::nullopt;
}

template <std::size_t N>
bool isPrefixAndStyle(std::string_view family, std::string_view prefix, const std::string_view (&styles)[N]) {
    if (!text::startsWithIgnoringCase(family, prefix)) return false;
    for (const std::string_view style : styles) {
        if (text::equalsIgnoringCase(family.substr(prefix.size()), style)) return true;
    }
    return false;
}

/// "CMR10" and "cmr10-2" without what follows the letters.
std::string_view familyOf(std::string_view fontName) {
    std::size_t end = fontName.size();
    for (std::size_t i = 0; i < end; ++i) {
        if (text::isDigit(fontName[i])) end = i;
    }
    return fontName.substr(0, end);
}

} // namespace

std::string_view glyphNameOf(Encoding encoding, std::uint8_t code) {
    return kEncodingNames[kEncodingNameIndexes[static_cast<std::size_t>(encoding)][code]];
}

std::u32string_view charactersOf(Encoding encoding, std::uint8_t code) {
    const std::uint16_t place = kEncodingTextPlaces[static_cast<std::size_t>(encoding)][code];
    constexpr std::size_t kOffsetMask = (std::size_t{1} << kEncodingTextOffsetBits) - 1;
    return {kEncodingTexts + (place & kOffsetMask), static_cast<std::size_t>(place >> kEncodingTextOffsetBits)};
}

std::optional<Encoding> encodingOfName(std::string_view name) {
    constexpr std::string_view kSuffix = "Encoding";
    if (name.ends_with(kSuffix)) name.remove_suffix(kSuffix.size());
    return named(kNamedEncodings, name);
}

std::optional<Encoding> texEncodingOfFont(std::string_view fontName) {
    const std::string_view family = familyOf(fontName);
    if (family.size() == fontName.size()) return std::nullopt; // TeX's fonts have their size in their names
    if (const auto encoding = named(kTexFamilies, family)) return encoding;
    for (const std::string_view prefix : kCorkPrefixes) {
        if (isPrefixAndStyle(family, prefix, kCorkStyles)) return Encoding::TexCork;
    }
    if (isPrefixAndStyle(family, kCompanionPrefix, kCompanionStyles)) return Encoding::TexCompanion;
    return std::nullopt;
}

} // namespace quillow::pdf
