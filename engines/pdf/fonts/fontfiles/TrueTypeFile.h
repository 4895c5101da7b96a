// TrueType and OpenType fonts and collections of them (OpenType 1.9), as far as text needs them: character maps, glyph
// names and widths.
#pragma once

#include "engines/pdf/fonts/fontfiles/CffFile.h"
#include "engines/pdf/fonts/fontfiles/CharacterMaps.h"
#include "engines/pdf/fonts/fontfiles/EmbeddedFont.h"
#include "engines/pdf/fonts/fontfiles/GlyphCharacters.h"
#include "engines/pdf/fonts/fontfiles/PostNames.h"
#include "engines/pdf/fonts/fontfiles/TableDirectory.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillow::pdf {

class TrueTypeFile final : public EmbeddedFont {
public:
    explicit TrueTypeFile(std::string_view bytes);

    [[nodiscard]] std::uint32_t glyphCount() override { return glyphCount_; }
    [[nodiscard]] GlyphIndex glyphOfCode(std::uint8_t code) override;
    [[nodiscard]] GlyphIndex glyphOfUnicode(char32_t character) override;
    [[nodiscard]] GlyphIndex glyphOfCid(std::uint32_t cid) override;
    [[nodiscard]] GlyphIndex glyphOfName(std::string_view name) override;
    [[nodiscard]] std::string_view nameOfCode(std::uint8_t code) override;
    [[nodiscard]] std::string_view nameOfGlyph(GlyphIndex glyph) override;
    [[nodiscard]] std::u32string_view charactersOfGlyph(GlyphIndex glyph) override;
    [[nodiscard]] bool isCidKeyed() override { return outlines_ && outlines_->isCidKeyed(); }
    [[nodiscard]] std::string_view ordering() override;
    [[nodiscard]] std::optional<float> width(GlyphIndex glyph) override;
    [[nodiscard]] std::optional<float> ascent() override;
    [[nodiscard]] std::optional<float> descent() override;

private:
    [[nodiscard]] const CharacterMaps& characterMaps();
    [[nodiscard]] PostNames& postNames();
    [[nodiscard]] std::uint32_t claimedGlyphs();
    [[nodiscard]] std::optional<float> scaled(int length) const;
    [[nodiscard]] std::optional<float> lineMetric(std::size_t inHorizontalHeader, std::size_t inWindowsMetrics) const;

    TableDirectory directory_;
    std::optional<CffFile> outlines_; ///< has names and codes of its own
    std::uint32_t glyphCount_ = 0;
    int unitsPerEm_;
    std::optional<CharacterMaps> characterMaps_;
    std::optional<PostNames> postNames_;
    std::optional<GlyphCharacters> characters_;
};

} // namespace quillow::pdf
