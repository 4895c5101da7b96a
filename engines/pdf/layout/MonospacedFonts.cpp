#include "engines/pdf/layout/MonospacedFonts.h"

#include <cmath>

namespace quillow::pdf {

namespace {

/// What the letters of one font have shown so far.
struct Widths {
    std::uint32_t font = 0;
    float width = 0; ///< in ems
    bool isOneWidth = true;
    std::uint32_t letters = 0; ///< a bit for each of the letters that were seen
    std::uint64_t glyphs = 0;  ///< of all its runs
};

/// Letters of these widths differ in every other font; digits do not.
constexpr bool isLatin(char32_t c) {
    return (c | 0x20U) >= 'a' && (c | 0x20U) <= 'z';
}

int countOf(std::uint32_t bits) {
    int count = 0;
    for (; bits != 0; bits &= bits - 1)
        ++count;
    return count;
}

} // namespace

MonospacedFonts::MonospacedFonts(const Page& page) {
    constexpr std::size_t kMostFonts = 32;      // pages with more are not looked at further
    constexpr std::uint32_t kLettersOfARun = 6; // are looked at: a page has many runs
    constexpr float kSameWidth = 0.02F;         // of an em
    constexpr int kLeastLetters = 4;            // different ones: fewer may be of one width in any font
    constexpr double kTypewriterShare = 0.8;    // a page with more is typewritten: its text is not code
    std::vector<Widths> all;
    std::size_t last = 0;
    for (const Run& run : page.runs) {
        if (run.fontSize <= 0 || run.font == Run::kNoFont) continue;
        if (last >= all.size() || all[last].font != run.font) {
            last = 0;
            while (last < all.size() && all[last].font != run.font)
                ++last;
            if (last == all.size()) {
                if (all.size() == kMostFonts) continue;
                all.push_back({run.font});
            }
        }
        Widths& widths = all[last];
        widths.glyphs += run.glyphCount;
        const std::uint32_t end = run.firstGlyph + std::min(run.glyphCount, kLettersOfARun);
        for (std::uint32_t i = run.firstGlyph; widths.isOneWidth && i < end; ++i) {
            const Glyph& glyph = page.glyphs[i];
            if (glyph.text >= page.text.size() || !isLatin(page.text[glyph.text])) continue;
            const float width = glyph.width / run.fontSize;
            if (widths.letters == 0) widths.width = width;
            if (std::abs(width - widths.width) > kSameWidth) widths.isOneWidth = false;
            widths.letters |= 1U << ((page.text[glyph.text] | 0x20U) - 'a');
        }
    }
    std::uint64_t glyphs = 0;
    std::uint64_t monospaced = 0;
    for (const Widths& widths : all) {
        glyphs += widths.glyphs;
        if (!widths.isOneWidth || countOf(widths.letters) < kLeastLetters) continue;
        fonts_.push_back(widths.font);
        monospaced += widths.glyphs;
    }
    if (static_cast<double>(monospaced) > kTypewriterShare * static_cast<double>(glyphs)) fonts_.clear();
}

} // namespace quillow::pdf
