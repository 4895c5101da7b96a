#include "engines/pdf/fonts/CompositeFont.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

/// Thousandths of an em; keeps sums finite.
constexpr double kLongest = 1e6;

float toEms(double thousandths) {
    return static_cast<float>(std::clamp(thousandths, -kLongest, kLongest) / 1000);
}

} // namespace

CompositeFont::CompositeFont(FontResources& resources, const FontFacts& facts, std::uint32_t number)
    : resources_(resources)
    , facts_(facts)
    , encoding_(resources, facts.dictionary.find("Encoding"))
    , characters_(resources, facts_, encoding_) {
    isSimple_ = false;
    isVertical_ = encoding_.isVertical();
    number_ = number;
    name_ = facts_.name;
    reader_ = encoding_.reader();
    const VerticalExtent extent = facts_.descriptor.extent().value_or(VerticalExtent{});
    ascent_ = extent.ascent;
    descent_ = extent.descent;
}

const FontGlyph& CompositeFont::makeGlyph(std::uint32_t code) {
    const std::uint32_t cid = encoding_.cidOf(code);
    FontGlyph glyph;
    glyph.isWordSpace = code == ' ' && reader_.isSingleByte(' ');
    setMetrics(cid, glyph);
    setCharacters(characters_.find(code, cid, text_), text_, glyph);
    return glyphs_.add(code, glyph);
}

void CompositeFont::setMetrics(std::uint32_t cid, FontGlyph& glyph) {
    if (!widths_) widths_.emplace(resources_.document(), facts_.descendant);
    const double width = widthOf(cid);
    glyph.width = toEms(width);
    if (!isVertical_) return;
    const VerticalMetrics metrics = widths_->verticalOf(cid, width);
    glyph.verticalAdvance = toEms(metrics.advance);
    glyph.verticalX = toEms(-metrics.x);
    glyph.verticalY = toEms(-metrics.y);
}

/// A font without any width is one whose producer forgot them: the font program then knows them better than the
/// default.
double CompositeFont::widthOf(std::uint32_t cid) {
    if (!widths_->isDeclared())
        if (EmbeddedFont* const program = characters_.program())
            if (const auto width = program->width(characters_.glyphOf(cid))) return *width * 1000.0;
    return widths_->widthOf(cid);
}

} // namespace quillow::pdf
