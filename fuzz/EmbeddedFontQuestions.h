// Asks an embedded font everything, and checks what holds for any bytes.
#pragma once

#include "engines/pdf/fonts/fontfiles/EmbeddedFont.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

namespace quillow::pdf {

class EmbeddedFontQuestions {
public:
    explicit EmbeddedFontQuestions(EmbeddedFont& font)
        : font_(font) {}

    void askAll() {
        for (unsigned code = 0; code < 256; ++code)
            askCode(static_cast<std::uint8_t>(code));
        for (std::uint32_t glyph = 0; glyph < font_.glyphCount() && glyph < kMostGlyphs; ++glyph)
            askGlyph(static_cast<GlyphIndex>(glyph));
        for (const std::uint32_t glyph : {font_.glyphCount(), 0xFFFFU})
            askGlyph(static_cast<GlyphIndex>(glyph));
        for (const std::uint32_t code : {0U, 1U, 0xFFFFU, 0x10000U, 0x10FFFFU, 0xFFFFFFFFU}) {
            require(font_.glyphOfCid(code) == 0 || font_.glyphOfCid(code) < font_.glyphCount());
            (void)font_.glyphOfUnicode(code);
        }
        (void)font_.isCidKeyed();
        requireShort(font_.ordering());
        requireFinite(font_.ascent());
        requireFinite(font_.descent());
    }

private:
    static constexpr std::uint32_t kMostGlyphs = 512;
    static constexpr std::size_t kLongestName = 127;

    static void require(bool holds) {
        if (!holds) std::abort();
    }
    /// Copies the name, so that a view of memory that is gone shows.
    static void requireShort(std::string_view name) { require(std::string(name).size() <= kLongestName); }
    static void requireFinite(std::optional<float> length) { require(std::isfinite(length.value_or(0))); }

    void askCode(std::uint8_t code) {
        requireShort(font_.nameOfCode(code));
        require(font_.nameOfCode(code) != ".notdef");
        (void)font_.glyphOfCode(code);
    }

    void askGlyph(GlyphIndex glyph) {
        const std::string_view name = font_.nameOfGlyph(glyph);
        requireShort(name);
        const GlyphIndex found = font_.glyphOfName(name);
        require(name.empty() ? found == 0 : found <= glyph);
        require(name.empty() || found == 0 || font_.nameOfGlyph(found) == name);
        require(font_.charactersOfGlyph(glyph).size() <= 1);
        requireFinite(font_.width(glyph));
    }

    EmbeddedFont& font_;
};

} // namespace quillow::pdf
