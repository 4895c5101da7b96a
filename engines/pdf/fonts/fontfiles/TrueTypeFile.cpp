#include "engines/pdf/fonts/fontfiles/TrueTypeFile.h"

#include "text/Bytes.h"

#include <algorithm>

namespace quillow::pdf {
namespace {

using text::ByteCursor;

// Places in the tables.
constexpr std::size_t kUnitsPerEm = 18;          // head
constexpr std::size_t kGlyphCount = 4;           // maxp
constexpr std::size_t kAscender = 4;             // hhea
constexpr std::size_t kDescender = 6;            // hhea
constexpr std::size_t kMetricCount = 34;         // hhea
constexpr std::size_t kTypographicAscender = 68; // OS/2
constexpr std::size_t kTypographicDescender = 70;
constexpr std::size_t kBytesAMetric = 4; // hmtx

constexpr std::uint32_t kMostGlyphs = 0xFFFF;

} // namespace

TrueTypeFile::TrueTypeFile(std::string_view bytes)
    : EmbeddedFont(Kind::trueType)
    , directory_(bytes)
    , unitsPerEm_(ByteCursor(directory_.table("head")).at(kUnitsPerEm).u16()) {
    const std::string_view outlines = directory_.table("CFF ");
    if (CffFile::isOne(outlines)) outlines_.emplace(outlines);
    glyphCount_ =
        std::min(claimedGlyphs(), static_cast<std::uint32_t>(std::min<std::size_t>(bytes.size(), kMostGlyphs)));
}

/// Without the table that has their number, as many as there may be.
std::uint32_t TrueTypeFile::claimedGlyphs() {
    if (outlines_) return outlines_->glyphCount();
    const std::uint32_t count = ByteCursor(directory_.table("maxp")).at(kGlyphCount).u16();
    return count != 0 ? count : kMostGlyphs;
}

const CharacterMaps& TrueTypeFile::characterMaps() {
    if (!characterMaps_) characterMaps_.emplace(directory_.table("cmap"));
    return *characterMaps_;
}

PostNames& TrueTypeFile::postNames() {
    if (!postNames_) postNames_.emplace(directory_.table("post"));
    return *postNames_;
}

GlyphIndex TrueTypeFile::glyphOfCode(std::uint8_t code) {
    const GlyphIndex glyph = outlines_ ? outlines_->glyphOfCode(code) : GlyphIndex{0};
    return glyph != 0 ? glyph : characterMaps().glyphOfCode(code);
}

GlyphIndex TrueTypeFile::glyphOfUnicode(char32_t character) {
    return characterMaps().glyphOfUnicode(character);
}

GlyphIndex TrueTypeFile::glyphOfCid(std::uint32_t cid) {
    return outlines_ ? outlines_->glyphOfCid(cid) : EmbeddedFont::glyphOfCid(cid);
}

GlyphIndex TrueTypeFile::glyphOfName(std::string_view name) {
    return outlines_ ? outlines_->glyphOfName(name) : postNames().find(name);
}

std::string_view TrueTypeFile::nameOfCode(std::uint8_t code) {
    const std::string_view name = outlines_ ? outlines_->nameOfCode(code) : std::string_view();
    if (!name.empty()) return name;
    const GlyphIndex glyph = glyphOfCode(code);
    return glyph != 0 ? nameOfGlyph(glyph) : std::string_view();
}

std::string_view TrueTypeFile::nameOfGlyph(GlyphIndex glyph) {
    return outlines_ ? outlines_->nameOfGlyph(glyph) : postNames().nameOf(glyph);
}

std::string_view TrueTypeFile::ordering() {
    return outlines_ ? outlines_->ordering() : std::string_view();
}

std::u32string_view TrueTypeFile::charactersOfGlyph(GlyphIndex glyph) {
    if (!characters_) {
        characters_.emplace(glyphCount_);
        characterMaps().addCharacters(*characters_, glyphCount_);
    }
    return characters_->of(glyph);
}

std::optional<float> TrueTypeFile::scaled(int length) const {
    if (unitsPerEm_ == 0) return {};
    return static_cast<float>(length) / static_cast<float>(unitsPerEm_);
}

/// Glyphs behind the last full metric have its width.
std::optional<float> TrueTypeFile::width(GlyphIndex glyph) {
    const std::string_view metrics = directory_.table("hmtx");
    const std::size_t claimed = ByteCursor(directory_.table("hhea")).at(kMetricCount).u16();
    const std::size_t count = std::min(claimed, metrics.size() / kBytesAMetric);
    if (glyph >= glyphCount_) return {};
    if (count == 0) return outlines_ ? outlines_->width(glyph) : std::nullopt;
    return scaled(ByteCursor(metrics).at(std::min<std::size_t>(glyph, count - 1) * kBytesAMetric).u16());
}

std::optional<float> TrueTypeFile::lineMetric(std::size_t inHorizontalHeader, std::size_t inWindowsMetrics) const {
    const int inHeader = ByteCursor(directory_.table("hhea")).at(inHorizontalHeader).i16();
    if (inHeader != 0) return scaled(inHeader);
    const int inMetrics = ByteCursor(directory_.table("OS/2")).at(inWindowsMetrics).i16();
    return inMetrics != 0 ? scaled(inMetrics) : std::nullopt;
}

std::optional<float> TrueTypeFile::ascent() {
    return lineMetric(kAscender, kTypographicAscender);
}

std::optional<float> TrueTypeFile::descent() {
    return lineMetric(kDescender, kTypographicDescender);
}

} // namespace quillow::pdf
