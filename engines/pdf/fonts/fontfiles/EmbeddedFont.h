// A font program that is embedded in a document: what its own tables say about its codes and glyphs (ISO 32000-2, 9.9).
// It is opened only if the document itself does not say what a code means, so everything in it is read when it is first
// asked for. The meaning of a glyph's name is not decided here.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace quillow::pdf {

/// The number of a glyph in its font program. 0 is the glyph ".notdef"; as a result it also means that there is no
/// glyph.
using GlyphIndex = std::uint16_t;

/// Not safe for use from several threads: tables are read when they are first asked for. Names and characters that it
/// returns are valid as long as the font and the bytes from which it was opened. Any argument is allowed; what the font
/// does not know gives 0, an empty view or an empty optional.
class EmbeddedFont {
public:
    enum class Kind : std::uint8_t {
        trueType, ///< TrueType, and OpenType with either kind of outlines
        cff,      ///< Compact Font Format without a wrapper
        type1
    };

    virtual ~EmbeddedFont() = default;
    EmbeddedFont(const EmbeddedFont&) = delete;
    EmbeddedFont& operator=(const EmbeddedFont&) = delete;

    [[nodiscard]] Kind kind() const { return kind_; }
    [[nodiscard]] virtual std::uint32_t glyphCount() = 0;

    /// The glyph of a code of a simple font by the font's built-in encoding. TrueType: the character map (3,0), with
    /// the code itself or with F000, F100 or F200 added, else (1,0), else the code as a Unicode character (9.6.5.4).
    [[nodiscard]] virtual GlyphIndex glyphOfCode(std::uint8_t code) = 0;
    /// The glyph of a character by the font's Unicode character map. Only TrueType and OpenType have one.
    [[nodiscard]] virtual GlyphIndex glyphOfUnicode(char32_t) { return 0; }
    /// The glyph of a CID without regard to a CIDToGIDMap: the charset of a CID-keyed font; else the CID itself
    /// (9.7.4.2) if there is such a glyph.
    [[nodiscard]] virtual GlyphIndex glyphOfCid(std::uint32_t cid);
    [[nodiscard]] virtual GlyphIndex glyphOfName(std::string_view name) = 0;

    /// The name that the built-in encoding gives a code; empty for ".notdef". It may be one for which the font has no
    /// glyph.
    [[nodiscard]] virtual std::string_view nameOfCode(std::uint8_t code) = 0;
    /// CID-keyed fonts have no names, nor do many TrueType fonts. Only glyph 0 can be ".notdef".
    [[nodiscard]] virtual std::string_view nameOfGlyph(GlyphIndex glyph) = 0;
    /// What the font shows with a glyph: the lowest character that its Unicode character maps map to it. Control
    /// characters, radicals of ideographs and characters of the private use areas count only if there is no other.
    /// Never from names.
    [[nodiscard]] virtual std::u32string_view charactersOfGlyph(GlyphIndex) { return {}; }

    /// Whether glyphs have CIDs instead of names, and the character collection that the font itself names: "Japan1" of
    /// "Adobe-Japan1", "Identity" mostly.
    [[nodiscard]] virtual bool isCidKeyed() { return false; }
    [[nodiscard]] virtual std::string_view ordering() { return {}; }

    /// Lengths are for a font size of 1.
    [[nodiscard]] virtual std::optional<float> width(GlyphIndex glyph) = 0;
    /// How far the font reaches above and below the baseline, as its tables or else its bounding box say; the
    /// descent is negative as a rule.
    [[nodiscard]] virtual std::optional<float> ascent() { return {}; }
    [[nodiscard]] virtual std::optional<float> descent() { return {}; }

protected:
    explicit EmbeddedFont(Kind kind)
        : kind_(kind) {}

private:
    Kind kind_;
};

/// Opens a font program by what it contains; the key and the subtype under which documents embed fonts are often wrong.
/// The bytes must outlive it. Returns null if they are no font program.
[[nodiscard]] std::unique_ptr<EmbeddedFont> openEmbeddedFont(std::string_view bytes);

} // namespace quillow::pdf
