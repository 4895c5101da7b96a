#include "engines/pdf/fonts/FontDescriptor.h"

#include <cmath>

namespace quillow::pdf {

namespace {

// An em is the distance between lines that are set solid. Fonts with tall accents or deep ornaments reach twice as far;
// boxes that go further are those of a single sign or of no glyph at all.
constexpr double kLowestAscent = 0.2;
constexpr double kHighestAscent = 2;
constexpr double kDeepestDescent = 1;

} // namespace

std::optional<VerticalExtent> saneExtent(double ascent, double descent) {
    ascent = std::abs(ascent);
    descent = std::abs(descent);
    if (ascent < kLowestAscent || ascent > kHighestAscent || descent > kDeepestDescent) return std::nullopt;
    return VerticalExtent{static_cast<float>(ascent), static_cast<float>(descent)};
}

FontDescriptor::FontDescriptor(Document& document, const Dictionary& font) {
    const Dictionary descriptor = document.get(font, "FontDescriptor").dictionary();
    if (descriptor.empty()) return;
    flags_ = document.get(descriptor, "Flags").integerOr(0);
    missingWidth_ = document.get(descriptor, "MissingWidth").numberOr(0);
    for (const char* const key : {"FontFile2", "FontFile3", "FontFile"})
        if (program_.isNull()) program_ = descriptor.find(key);
    readExtent(document, descriptor);
}

/// Ascent and Descent, else the font's box (table 120).
void FontDescriptor::readExtent(Document& document, const Dictionary& descriptor) {
    const double ascent = document.get(descriptor, "Ascent").numberOr(0);
    const double descent = document.get(descriptor, "Descent").numberOr(0);
    extent_ = saneExtent(ascent / 1000, descent / 1000);
    const std::span<const Object> box = document.get(descriptor, "FontBBox").array();
    if (extent_ || box.size() < 4) return;
    extent_ = saneExtent(document.resolve(box[3]).numberOr(0) / 1000, document.resolve(box[1]).numberOr(0) / 1000);
}

} // namespace quillow::pdf
