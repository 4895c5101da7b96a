// A font as the content of a page uses it: codes in, characters and widths out (ISO 32000-2, 9.5 to 9.10).
#pragma once

#include "engines/pdf/fonts/CodeReader.h"
#include "engines/pdf/fonts/FontGlyph.h"
#include "engines/pdf/fonts/GlyphStore.h"

#include <cstdint>
#include <string_view>

namespace quillow::pdf {

/// Made by FontCache, which owns it. Not safe for use from several threads: glyphs are looked up when they are first
/// used.
class Font {
public:
    virtual ~Font() = default;
    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;

    /// How strings are cut into codes.
    enum class Codes { bytes, pairs, mixed };
    [[nodiscard]] Codes codes() const {
        return isSimple_ ? Codes::bytes : reader_.hasPairsOnly() ? Codes::pairs : Codes::mixed;
    }

    /// The glyph of the code that begins at `p`, and moves `p` behind it. `p` must not be the end. The glyph stays
    /// valid and in its place as long as the font.
    [[nodiscard]] const FontGlyph& next(const char*& p, const char* end) {
        return isSimple_ ? next<Codes::bytes>(p, end) : next<Codes::mixed>(p, end);
    }
    /// The same if `codes` are those of the font, or mixed and the font is not simple.
    template <Codes codes>
    [[nodiscard]] const FontGlyph& next(const char*& p, const char* end) {
        std::uint32_t code = 0;
        const FontGlyph* glyph = nullptr;
        if constexpr (codes == Codes::bytes) {
            code = static_cast<std::uint8_t>(*p++);
            glyph = glyphs_.findByte(code);
        } else if (codes == Codes::pairs && end - p >= 2) {
            code = static_cast<std::uint32_t>(static_cast<std::uint8_t>(p[0]) << 8 | static_cast<std::uint8_t>(p[1]));
            p += 2;
            glyph = glyphs_.findPair(code);
        } else {
            code = reader_.next(p, end);
            glyph = glyphs_.find(code);
        }
        return glyph != nullptr ? *glyph : makeGlyph(code);
    }

    [[nodiscard]] bool isVertical() const { return isVertical_; }
    /// How far glyphs reach above and below the baseline for a font size of 1; both positive as a rule, never
    /// senseless.
    [[nodiscard]] float ascent() const { return ascent_; }
    [[nodiscard]] float descent() const { return descent_; }
    /// The fonts of a document are numbered from 0.
    [[nodiscard]] std::uint32_t number() const { return number_; }
    /// The name of the font without a subset's prefix ("ABCDEF+"), for tests and for debugging.
    [[nodiscard]] std::string_view name() const { return name_; }

protected:
    Font() = default;
    /// Makes the glyph of a code that is used for the first time, and adds it to `glyphs_`.
    [[nodiscard]] virtual const FontGlyph& makeGlyph(std::uint32_t code) = 0;

    bool isSimple_ = true; ///< all codes are single bytes
    bool isVertical_ = false;
    float ascent_ = 0.75F;
    float descent_ = 0.25F;
    std::uint32_t number_ = 0;
    std::string_view name_;
    CodeReader reader_; ///< of a font that is not simple
    GlyphStore glyphs_;
};

} // namespace quillow::pdf
