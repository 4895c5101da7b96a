#include "engines/pdf/fonts/fontfiles/CffWidths.h"

#include "engines/pdf/fonts/fontfiles/CffDict.h"
#include "engines/pdf/fonts/fontfiles/CharstringWidth.h"
#include "text/Bytes.h"

#include <cmath>
#include <limits>

namespace quillow::pdf {
namespace {

using text::ByteCursor;

constexpr double kUsualScale = 0.001;
/// A larger one is senseless.
constexpr double kLargestWidth = 100;
constexpr std::size_t kBytesARange = 3;
/// FDSelect has their numbers in one byte.
constexpr std::size_t kFontDictsWithANumber = std::size_t{std::numeric_limits<std::uint8_t>::max()} + 1;

} // namespace

CffWidths::CffWidths(const CffWidthSources& sources)
    : sources_(sources) {
    if (sources.fontDicts == 0) {
        parts_.push_back(partOf(sources.privateDict, sources.privateDictSize, 0));
        return;
    }
    ByteCursor cursor = ByteCursor(sources.font).at(sources.fontDicts);
    const CffIndex dicts(cursor);
    for (std::size_t i = 0; i < dicts.count() && i < kFontDictsWithANumber; ++i)
        parts_.push_back(partOf(dicts[i]));
}

CffWidths::Part CffWidths::partOf(std::string_view fontDict) const {
    std::size_t offset = 0;
    std::size_t size = 0;
    double scale = 0;
    CffDictReader dict(fontDict);
    while (dict.next()) {
        if (dict.operation() == CffOperator::fontMatrix) scale = dict.operand(0);
        if (dict.operation() != CffOperator::privateDict) continue;
        size = dict.offset(0);
        offset = dict.offset(1);
    }
    return partOf(offset, size, scale);
}

/// The matrices of a CID-keyed font and of its part are multiplied; each may be missing.
CffWidths::Part CffWidths::partOf(std::size_t privateDict, std::size_t size, double scale) const {
    Part part;
    if (scale != 0 && sources_.scale != 0)
        part.scale = scale * sources_.scale;
    else
        part.scale = scale + sources_.scale;
    if (part.scale == 0) part.scale = kUsualScale;

    CffDictReader dict(ByteCursor(sources_.font).at(privateDict).take(size));
    while (dict.next()) {
        if (dict.operation() == CffOperator::defaultWidthX)
            part.defaultWidth = dict.operand(0);
        else if (dict.operation() == CffOperator::nominalWidthX)
            part.nominalWidth = dict.operand(0);
        else if (dict.operation() == CffOperator::subroutines && dict.offset(0) != 0) {
            ByteCursor cursor = ByteCursor(sources_.font).at(privateDict + dict.offset(0));
            part.subroutines = CffIndex(cursor);
        }
    }
    return part;
}

/// FDSelect (Technical Note 5176, 19), formats 0 and 3.
std::size_t CffWidths::partNumber(GlyphIndex glyph) const {
    if (sources_.fontDictSelect == 0) return 0;
    ByteCursor cursor = ByteCursor(sources_.font).at(sources_.fontDictSelect);
    const std::uint8_t format = cursor.u8();
    if (format == 0) {
        cursor.skip(glyph);
        return cursor.u8();
    }
    // Ranges are sorted by their first glyphs.
    std::size_t low = 0;
    std::size_t high = cursor.u16();
    const std::size_t ranges = cursor.position();
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        if (ByteCursor(sources_.font).at(ranges + middle * kBytesARange).u16() <= glyph)
            low = middle + 1;
        else
            high = middle;
    }
    const std::size_t last = low == 0 ? 0 : low - 1;
    return ByteCursor(sources_.font).at(ranges + last * kBytesARange + sizeof(std::uint16_t)).u8();
}

std::optional<float> CffWidths::of(GlyphIndex glyph) const {
    const std::size_t number = partNumber(glyph);
    if (number >= parts_.size() || glyph >= sources_.charStrings.count()) return {};
    const Part& part = parts_[number];
    const CharstringWidth found =
        widthOfCharstring(sources_.charStrings[glyph], sources_.globalSubroutines, part.subroutines);
    if (found.kind == CharstringWidth::Kind::unknown) return {};
    const bool isUsual = found.kind == CharstringWidth::Kind::usual;
    const double width = (isUsual ? part.defaultWidth : part.nominalWidth + found.difference) * part.scale;
    if (!(std::abs(width) <= kLargestWidth)) return {};
    return static_cast<float>(width);
}

} // namespace quillow::pdf
