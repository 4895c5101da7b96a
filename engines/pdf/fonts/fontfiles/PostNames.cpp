#include "engines/pdf/fonts/fontfiles/PostNames.h"

#include "engines/pdf/fonts/fontfiles/StandardNames.h"
#include "text/Bytes.h"

#include <algorithm>
#include <limits>

namespace quillow::pdf {
namespace {

using text::ByteCursor;

constexpr std::uint32_t kVersion1 = 0x00010000;
constexpr std::uint32_t kVersion2 = 0x00020000;
constexpr std::uint32_t kVersion25 = 0x00025000;
/// How 2.5 would be written as a fixed-point number; both are in use.
constexpr std::uint32_t kVersion25Fixed = 0x00028000;

constexpr std::size_t kGlyphCount = 32;
constexpr std::size_t kEntries = 34;
/// Entries are numbers of 16 bits.
constexpr std::size_t kStringsWithANumber =
    std::size_t{std::numeric_limits<std::uint16_t>::max()} + 1 - kMacintoshGlyphs;

} // namespace

PostNames::PostNames(std::string_view table)
    : table_(table)
    , version_(ByteCursor(table).u32()) {
    if (version_ == kVersion25Fixed) version_ = kVersion25;
    if (version_ == kVersion1) glyphCount_ = kMacintoshGlyphs;
    if (version_ != kVersion2 && version_ != kVersion25) return;
    glyphCount_ = ByteCursor(table).at(kGlyphCount).u16();
    if (version_ == kVersion2) readStrings(kEntries + glyphCount_ * sizeof(std::uint16_t));
}

void PostNames::readStrings(std::size_t start) {
    ByteCursor cursor = ByteCursor(table_).at(start);
    while (!cursor.atEnd() && strings_.size() < kStringsWithANumber) {
        strings_.push_back(soundGlyphName(cursor.take(cursor.u8())));
    }
}

/// The number of a glyph's name in the standard Macintosh order, which the table's own strings continue.
std::size_t PostNames::placeInOrder(GlyphIndex glyph) const {
    constexpr auto kNone = static_cast<std::size_t>(-1);
    if (version_ == kVersion1) return glyph;
    if (version_ == kVersion2) {
        ByteCursor entry = ByteCursor(table_).at(kEntries + glyph * sizeof(std::uint16_t));
        const std::size_t place = entry.u16();
        return entry.ok() ? place : kNone;
    }
    ByteCursor entry = ByteCursor(table_).at(kEntries + glyph);
    const int difference = entry.i8();
    return entry.ok() && glyph + difference >= 0 ? static_cast<std::size_t>(glyph + difference) : kNone;
}

std::string_view PostNames::nameOf(GlyphIndex glyph) const {
    if (glyph >= glyphCount_) return {};
    const std::size_t place = placeInOrder(glyph);
    if (place == 0 && glyph != 0) return {}; // ".notdef"
    if (place < kMacintoshGlyphs) return macintoshGlyphName(place);
    return place - kMacintoshGlyphs < strings_.size() ? strings_[place - kMacintoshGlyphs] : std::string_view();
}

GlyphIndex PostNames::find(std::string_view name) {
    if (!glyphs_) glyphs_.emplace(glyphCount_, [this](GlyphIndex glyph) { return nameOf(glyph); });
    return glyphs_->find(name);
}

} // namespace quillow::pdf
