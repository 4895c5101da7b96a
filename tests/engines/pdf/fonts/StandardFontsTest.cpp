#include "engines/pdf/fonts/StandardFonts.h"

#include "engines/pdf/fonts/StandardFontsTables.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

struct FontCase {
    std::string_view name;
    std::optional<StandardFont> font;
};

TEST(StandardFonts, usualNamesAreAliases) {
    constexpr FontCase kCases[] = {
        {"Courier", StandardFont::Courier},
        {"Courier-BoldOblique", StandardFont::CourierBoldOblique},
        {"CourierNew,Bold", StandardFont::CourierBold},
        {"CourierNewPS-ItalicMT", StandardFont::CourierOblique},
        {"Helvetica", StandardFont::Helvetica},
        {"Helvetica-Oblique", StandardFont::HelveticaOblique},
        {"Arial", StandardFont::Helvetica},
        {"ArialMT", StandardFont::Helvetica},
        {"Arial,BoldItalic", StandardFont::HelveticaBoldOblique},
        {"Arial-BoldMT", StandardFont::HelveticaBold},
        {"Arial-BoldItalicMT", StandardFont::HelveticaBoldOblique},
        {"Times-Roman", StandardFont::TimesRoman},
        {"Times-Bold", StandardFont::TimesBold},
        {"TimesNewRoman", StandardFont::TimesRoman},
        {"Times New Roman", StandardFont::TimesRoman},
        {"TimesNewRomanPSMT", StandardFont::TimesRoman},
        {"TimesNewRomanPS-BoldItalicMT", StandardFont::TimesBoldItalic},
        {"NimbusRomNo9L-ReguItal", StandardFont::TimesItalic},
        {"NimbusRomNo9L-MediItal", StandardFont::TimesBoldItalic},
        {"NimbusSanL-Regu", StandardFont::Helvetica},
        {"Symbol", StandardFont::Symbol},
        {"Symbol,Bold", StandardFont::Symbol},
        {"ZapfDingbats", StandardFont::ZapfDingbats},
        {"ITC Zapf Dingbats", StandardFont::ZapfDingbats},
        {"ArialNarrow", std::nullopt},
        {"Arial-Black", std::nullopt},
        {"Helvetica-Condensed", std::nullopt},
        {"TimesTen-Roman", std::nullopt},
        {"SymbolTiger", std::nullopt},
        {"", std::nullopt},
    };
    for (const FontCase& c : kCases)
        EXPECT_EQ(standardFontOfName(c.name), c.font) << c.name;
    EXPECT_EQ(standardFontOfName(std::string(1000, 'x')), std::nullopt);
}

struct WidthCase {
    StandardFont font;
    std::string_view glyph;
    std::optional<std::uint16_t> width;
};

TEST(StandardFonts, glyphsHaveTheWidthsOfTheFont) {
    constexpr WidthCase kCases[] = {
        {StandardFont::Courier, "A", 600},
        {StandardFont::CourierBoldOblique, "emdash", 600},
        {StandardFont::Helvetica, "space", 278},
        {StandardFont::Helvetica, "A", 667},
        {StandardFont::HelveticaBold, "A", 722},
        {StandardFont::HelveticaOblique, "Euro", 556},
        {StandardFont::TimesRoman, "A", 722},
        {StandardFont::TimesBold, "W", 1000},
        {StandardFont::TimesItalic, "germandbls", 500},
        {StandardFont::TimesBoldItalic, "at", 832},
        {StandardFont::Symbol, "alpha", 631},
        {StandardFont::ZapfDingbats, "a1", 974},
        {StandardFont::Helvetica, "alpha", std::nullopt},
        {StandardFont::Symbol, "A", std::nullopt},
        {StandardFont::Courier, "", std::nullopt},
    };
    for (const WidthCase& c : kCases)
        EXPECT_EQ(widthOfGlyph(c.font, c.glyph), c.width) << c.glyph;
}

TEST(StandardFonts, likenessFollowsTheDescription) {
    EXPECT_EQ(standardFontLike(true, true, true, false), StandardFont::CourierBold);
    EXPECT_EQ(standardFontLike(false, true, false, true), StandardFont::TimesItalic);
    EXPECT_EQ(standardFontLike(false, false, true, true), StandardFont::HelveticaBoldOblique);
    EXPECT_EQ(standardFontLike(false, false, false, false), StandardFont::Helvetica);
}

TEST(StandardFonts, everyGlyphOfTheBuiltInEncodingHasAWidth) {
    for (std::size_t i = 0; i < kStandardFontCount; ++i) {
        const auto font = static_cast<StandardFont>(i);
        for (unsigned code = 0; code < 256; ++code) {
            const std::string_view name = glyphNameOf(builtInEncodingOf(font), static_cast<std::uint8_t>(code));
            if (name.empty()) continue;
            EXPECT_TRUE(widthOfGlyph(font, name)) << i << ' ' << name;
        }
    }
}

TEST(StandardFonts, namesOfGlyphsAreSorted) {
    for (const StandardFontTable& table : kStandardFonts) {
        for (std::size_t i = 1; i < table.glyphs.count; ++i)
            EXPECT_LT(table.glyphs[i - 1], table.glyphs[i]);
    }
}

TEST(StandardFonts, heightsAreThoseOfTheMetrics) {
    EXPECT_EQ(metricsOf(StandardFont::Helvetica).ascent, 718);
    EXPECT_EQ(metricsOf(StandardFont::Helvetica).descent, -207);
    EXPECT_EQ(metricsOf(StandardFont::Symbol).ascent, 1010);
}

} // namespace
} // namespace quillow::pdf
