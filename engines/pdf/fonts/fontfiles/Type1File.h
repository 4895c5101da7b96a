// Type 1 fonts, as PFA, PFB or the three sections that documents embed (Adobe Type 1 Font Format 1.1).
#pragma once

#include "engines/pdf/fonts/fontfiles/EmbeddedFont.h"
#include "engines/pdf/fonts/fontfiles/NameIndex.h"
#include "engines/pdf/fonts/fontfiles/Type1Encoding.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// Glyphs are numbered in the order of the dictionary CharStrings, from 1; ".notdef" is 0. The encrypted part is
/// decrypted when the clear text does not answer a question: it has the encoding as a rule.
class Type1File final : public EmbeddedFont {
public:
    /// Whether the bytes look like such a font.
    [[nodiscard]] static bool isOne(std::string_view bytes);
    explicit Type1File(std::string_view bytes);

    [[nodiscard]] std::uint32_t glyphCount() override;
    [[nodiscard]] GlyphIndex glyphOfCode(std::uint8_t code) override;
    [[nodiscard]] GlyphIndex glyphOfName(std::string_view name) override;
    [[nodiscard]] std::string_view nameOfCode(std::uint8_t code) override;
    [[nodiscard]] std::string_view nameOfGlyph(GlyphIndex glyph) override;
    [[nodiscard]] std::optional<float> width(GlyphIndex glyph) override;
    [[nodiscard]] std::optional<float> ascent() override;
    [[nodiscard]] std::optional<float> descent() override;

private:
    struct Glyph {
        std::string_view name;
        std::string_view charstring; ///< encrypted
    };

    [[nodiscard]] const std::string& decrypted();
    [[nodiscard]] const Type1Encoding& encoding();
    [[nodiscard]] const std::vector<Glyph>& glyphs();
    [[nodiscard]] double scale();
    [[nodiscard]] int randomBytes();
    [[nodiscard]] std::optional<float> boxEdge(std::size_t index);

    std::string joined_; ///< of a PFB file: the font without segment headers
    std::string_view font_;
    std::optional<std::string> decrypted_;
    std::optional<Type1Encoding> encoding_;
    std::vector<Glyph> glyphs_; ///< empty if not read yet
    std::optional<NameIndex> glyphsByName_;
    std::optional<double> scale_;
    std::optional<int> randomBytes_;
};

} // namespace quillow::pdf
