// A font as the content of a page uses it: codes in, characters and widths out (ISO 32000-2, 9.5 to 9.10).
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace quillow::pdf {

/// What a code of a font shows. Lengths are for a font size of 1.
struct FontGlyph {
    std::u32string_view text;   ///< one character or several (a ligature); U+FFFD if nothing says which; may be empty
    float width = 0;            ///< advance in horizontal writing
    float verticalAdvance = -1; ///< advance in vertical writing, downwards negative (9.7.4.3)
    float verticalX = 0;        ///< from the vertical writing's origin to the horizontal one
    float verticalY = 0;
    bool isWordSpace = false; ///< word spacing applies: a one-byte code 32 (9.3.3)
    bool isKnown = true;      ///< false if `text` is U+FFFD for want of evidence
};

/// Made by FontCache, which owns it. Not safe for use from several threads: glyphs of composite fonts are looked up when
/// they are first used.
class Font {
public:
    virtual ~Font() = default;
    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;

    /// The glyph of the code that begins at `p`, and moves `p` behind it. `p` must not be the end. The glyph stays valid
    /// and in its place as long as the font.
    [[nodiscard]] const FontGlyph& next(const char*& p, const char* end) {
        if (bytesACode_ == 1) return *glyphs_[static_cast<std::uint8_t>(*p++)];
        return nextOfComposite(p, end);
    }

    [[nodiscard]] bool isVertical() const { return isVertical_; }
    /// How far glyphs reach above and below the baseline for a font size of 1; both positive as a rule, never senseless.
    [[nodiscard]] float ascent() const { return ascent_; }
    [[nodiscard]] float descent() const { return descent_; }
    /// The fonts of a document are numbered from 0.
    [[nodiscard]] std::uint32_t number() const { return number_; }
    /// The name of the font without a subset's prefix ("ABCDEF+"), for tests and for debugging.
    [[nodiscard]] std::string_view name() const { return name_; }

protected:
    Font() = default;
    [[nodiscard]] virtual const FontGlyph& nextOfComposite(const char*& p, const char* end) = 0;

    int bytesACode_ = 1;                         ///< 0 for a composite font: its CMap says how many
    std::array<const FontGlyph*, 256> glyphs_{}; ///< of a simple font; never null there
    bool isVertical_ = false;
    float ascent_ = 0.75F;
    float descent_ = 0.25F;
    std::uint32_t number_ = 0;
    std::string_view name_;
};

} // namespace quillow::pdf
