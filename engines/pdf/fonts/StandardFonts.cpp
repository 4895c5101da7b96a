#include "engines/pdf/fonts/StandardFonts.h"

#include "engines/pdf/fonts/StandardFontsTables.h"
#include "text/Ascii.h"

#include <array>
#include <cstddef>

namespace quillow::pdf {

namespace {

/// A family's name without blanks and punctuation, in lower case.
struct NamedFamily {
    std::string_view name;
    StandardFont regular;
};

// The names of the standard, those of the metric-compatible fonts of Windows, and of the free versions of both.
constexpr NamedFamily kFamilies[] = {
    {"courier", StandardFont::Courier},
    {"couriernew", StandardFont::Courier},
    {"couriernewps", StandardFont::Courier},
    {"couriernewpsmt", StandardFont::Courier},
    {"courierstd", StandardFont::Courier},
    {"nimbusmonl", StandardFont::Courier},
    {"nimbusmonops", StandardFont::Courier},
    {"liberationmono", StandardFont::Courier},
    {"cousine", StandardFont::Courier},
    {"freemono", StandardFont::Courier},
    {"helvetica", StandardFont::Helvetica},
    {"arial", StandardFont::Helvetica},
    {"arialmt", StandardFont::Helvetica},
    {"arialunicodems", StandardFont::Helvetica},
    {"nimbussanl", StandardFont::Helvetica},
    {"nimbussans", StandardFont::Helvetica},
    {"liberationsans", StandardFont::Helvetica},
    {"arimo", StandardFont::Helvetica},
    {"freesans", StandardFont::Helvetica},
    {"times", StandardFont::TimesRoman},
    {"timesnewroman", StandardFont::TimesRoman},
    {"timesnewromanmt", StandardFont::TimesRoman},
    {"timesnewromanps", StandardFont::TimesRoman},
    {"timesnewromanpsmt", StandardFont::TimesRoman},
    {"nimbusromno9l", StandardFont::TimesRoman},
    {"nimbusroman", StandardFont::TimesRoman},
    {"liberationserif", StandardFont::TimesRoman},
    {"tinos", StandardFont::TimesRoman},
    {"freeserif", StandardFont::TimesRoman},
    {"symbol", StandardFont::Symbol},
    {"symbolmt", StandardFont::Symbol},
    {"standardsymbolsl", StandardFont::Symbol},
    {"standardsymbolsps", StandardFont::Symbol},
    {"symbolneu", StandardFont::Symbol},
    {"zapfdingbats", StandardFont::ZapfDingbats},
    {"itczapfdingbats", StandardFont::ZapfDingbats},
    {"zapfdingbatsitc", StandardFont::ZapfDingbats},
    {"dingbats", StandardFont::ZapfDingbats},
    {"d050000l", StandardFont::ZapfDingbats},
};

struct StyleWord {
    std::string_view word;
    bool isBold;
    bool isItalic;
};

// What may follow a family's name; the longest that fits counts. "Medi" is the bold of the Nimbus fonts.
constexpr StyleWord kStyleWords[] = {
    {"regular", false, false}, {"roman", false, false}, {"normal", false, false},  {"medi", true, false},
    {"book", false, false},    {"bold", true, false},   {"demi", true, false},     {"italic", false, true},
    {"oblique", false, true},  {"regu", false, false},  {"reguital", false, true}, {"ital", false, true},
    {"obli", false, true},     {"mt", false, false},    {"ps", false, false},
};

constexpr std::size_t kMaxName = 48; ///< longer than any name that is known

/// The letters and digits of a name in lower case.
class PlainName {
public:
    explicit PlainName(std::string_view name) {
        for (const char c : name) {
            if (!text::isLetter(c) && !text::isDigit(c)) continue;
            if (size_ == kMaxName) return;
            letters_[size_++] = text::toLower(c);
        }
    }
    [[nodiscard]] std::string_view view() const { return {letters_.data(), size_}; }

private:
    std::array<char, kMaxName> letters_{};
    std::size_t size_ = 0;
};

/// The style that words such as "bolditalicmt" say; nothing if there are others.
std::optional<StyleWord> styleOf(std::string_view words) {
    StyleWord style{words, false, false};
    while (!words.empty()) {
        const StyleWord* found = nullptr;
        for (const StyleWord& word : kStyleWords) {
            if (words.starts_with(word.word) && (!found || word.word.size() > found->word.size())) found = &word;
        }
        if (!found) return std::nullopt;
        style.isBold |= found->isBold;
        style.isItalic |= found->isItalic;
        words.remove_prefix(found->word.size());
    }
    return style;
}

const StandardFontTable& tableOf(StandardFont font) {
    return kStandardFonts[static_cast<std::size_t>(font)];
}

} // namespace

std::optional<StandardFont> standardFontOfName(std::string_view name) {
    const PlainName plain(name);
    for (const NamedFamily& family : kFamilies) {
        if (!plain.view().starts_with(family.name)) continue;
        const auto style = styleOf(plain.view().substr(family.name.size()));
        if (!style) continue;
        if (family.regular >= StandardFont::Symbol) return family.regular;
        const int offset = (style->isBold ? 1 : 0) + (style->isItalic ? 2 : 0);
        return static_cast<StandardFont>(static_cast<int>(family.regular) + offset);
    }
    return std::nullopt;
}

Encoding builtInEncodingOf(StandardFont font) {
    if (font == StandardFont::Symbol) return Encoding::Symbol;
    if (font == StandardFont::ZapfDingbats) return Encoding::ZapfDingbats;
    return Encoding::Standard;
}

std::optional<std::uint16_t> widthOfGlyph(StandardFont font, std::string_view glyphName) {
    const StandardFontTable& table = tableOf(font);
    const auto index = table.glyphs.find(glyphName);
    if (!index) return std::nullopt;
    return table.widths[*index];
}

StandardFontMetrics metricsOf(StandardFont font) {
    return tableOf(font).metrics;
}

} // namespace quillow::pdf
