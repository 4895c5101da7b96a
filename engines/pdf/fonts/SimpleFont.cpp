#include "engines/pdf/fonts/SimpleFont.h"

#include <algorithm>
#include <cmath>

namespace quillow::pdf {

namespace {

/// Ems. Widths are kept as the document has them, because its positions count on them; this only keeps sums finite.
constexpr double kWidestGlyph = 1000;

} // namespace

SimpleFont::SimpleFont(FontResources& resources, const FontFacts& facts, std::uint32_t number)
    : resources_(resources)
    , facts_(facts)
    , characters_(resources, facts_) {
    number_ = number;
    name_ = facts_.name;
    readWidths();
    readExtent();
}

void SimpleFont::readWidths() {
    Document& document = resources_.document();
    widths_ = document.get(facts_.dictionary, "Widths").array();
    firstChar_ = document.get(facts_.dictionary, "FirstChar").integerOr(0);
}

void SimpleFont::readExtent() {
    if (facts_.subtype == FontSubtype::type3)
        return readType3Extent(resources_.document().get(facts_.dictionary, "FontMatrix").array());
    VerticalExtent extent;
    if (facts_.descriptor.extent()) {
        extent = *facts_.descriptor.extent();
    } else if (facts_.standardFont) {
        const StandardFontMetrics metrics = metricsOf(*facts_.standardFont);
        extent = saneExtent(metrics.ascent / 1000.0, metrics.descent / 1000.0).value_or(extent);
    }
    ascent_ = extent.ascent;
    descent_ = extent.descent;
}

/// A Type 3 font's glyphs are in units of its own matrix, and its em may be any number of them. Its box says how large
/// glyphs are; in bitmap fonts, whose box is empty as a rule, the matrix makes an em of 1 (9.6.4, table 110).
void SimpleFont::readType3Extent(std::span<const Object> matrix) {
    Document& document = resources_.document();
    double height = 0.001;
    if (matrix.size() >= 4) {
        unit_ = document.resolve(matrix[0]).numberOr(0.001);
        height = document.resolve(matrix[3]).numberOr(0.001);
    }
    const std::span<const Object> box = document.get(facts_.dictionary, "FontBBox").array();
    if (box.size() < 4) return;
    const double bottom = document.resolve(box[1]).numberOr(0) * height;
    const double top = document.resolve(box[3]).numberOr(0) * height;
    const double ascent = std::max(bottom, top);
    const double descent = std::max(0.0, -std::min(bottom, top));
    if (!(ascent > 0) || ascent + descent > kWidestGlyph) return;
    ascent_ = static_cast<float>(ascent);
    descent_ = static_cast<float>(descent);
}

const FontGlyph& SimpleFont::makeGlyph(std::uint32_t code) {
    const auto byte = static_cast<std::uint8_t>(code);
    FontGlyph glyph;
    glyph.width = widthOf(byte);
    glyph.isWordSpace = byte == ' ';
    setCharacters(characters_.find(byte, text_), text_, glyph);
    return glyphs_.add(code, glyph);
}

float SimpleFont::widthOf(std::uint8_t code) {
    const std::int64_t index = code - firstChar_;
    double width = 0;
    if (widths_.empty())
        width = undeclaredWidthOf(code);
    else if (index < 0 || index >= static_cast<std::int64_t>(widths_.size()))
        width = facts_.descriptor.missingWidth();
    else
        width = resources_.document().resolve(widths_[static_cast<std::size_t>(index)]).numberOr(0);
    return static_cast<float>(std::clamp(width * unit_, -kWidestGlyph, kWidestGlyph));
}

/// Fonts without /Widths: the embedded font program, else the standard font of the name or the one most like it
/// (9.6.2.2).
double SimpleFont::undeclaredWidthOf(std::uint8_t code) {
    if (facts_.subtype == FontSubtype::type3) return 0;
    if (EmbeddedFont* const program = characters_.program())
        if (const auto width = program->width(characters_.glyphOf(code))) return *width * 1000.0;
    const FontDescriptor& d = facts_.descriptor;
    const StandardFont font =
        facts_.standardFont.value_or(standardFontLike(d.isFixedPitch(), d.isSerif(), d.isBold(), d.isItalic()));
    std::string_view name = characters_.nameOf(code);
    if (name.empty()) name = glyphNameOf(builtInEncodingOf(font), code);
    return widthOfGlyph(font, name).value_or(d.missingWidth());
}

} // namespace quillow::pdf
