// Fonts in the Compact Font Format, version 1 (Adobe Technical Note 5176), bare or as a table of an OpenType font.
#pragma once

#include "engines/pdf/fonts/fontfiles/CffEncoding.h"
#include "engines/pdf/fonts/fontfiles/CffIndex.h"
#include "engines/pdf/fonts/fontfiles/CffWidths.h"
#include "engines/pdf/fonts/fontfiles/EmbeddedFont.h"
#include "engines/pdf/fonts/fontfiles/NameIndex.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quillow::pdf {

class CffFile final : public EmbeddedFont {
public:
    /// Whether the bytes are such a font. A few bytes of junk before it are allowed.
    [[nodiscard]] static bool isOne(std::string_view bytes);
    explicit CffFile(std::string_view bytes);

    [[nodiscard]] std::uint32_t glyphCount() override { return glyphCount_; }
    [[nodiscard]] GlyphIndex glyphOfCode(std::uint8_t code) override;
    [[nodiscard]] GlyphIndex glyphOfCid(std::uint32_t cid) override;
    [[nodiscard]] GlyphIndex glyphOfName(std::string_view name) override;
    [[nodiscard]] std::string_view nameOfCode(std::uint8_t code) override;
    [[nodiscard]] std::string_view nameOfGlyph(GlyphIndex glyph) override;
    [[nodiscard]] bool isCidKeyed() override { return isCidKeyed_; }
    [[nodiscard]] std::string_view ordering() override { return ordering_; }
    [[nodiscard]] std::optional<float> width(GlyphIndex glyph) override;
    [[nodiscard]] std::optional<float> ascent() override;
    [[nodiscard]] std::optional<float> descent() override;

private:
    void readTopDict(std::string_view dict);
    [[nodiscard]] const CffCharset& charset();
    [[nodiscard]] const CffEncoding& encoding();
    [[nodiscard]] std::string_view stringOf(std::size_t id) const;
    void listGlyphsOfCids();

    std::string_view font_; ///< from its header on: offsets count from there
    CffIndex strings_;
    CffIndex charStrings_;
    CffWidthSources widthSources_;
    std::uint32_t glyphCount_ = 0;
    bool isCidKeyed_ = false;
    std::string_view ordering_;
    std::size_t charsetOffset_ = 0;
    std::size_t encodingOffset_ = 0;
    double lowest_ = 0;
    double highest_ = 0;

    std::optional<CffCharset> charset_;
    std::optional<CffEncoding> encoding_;
    std::optional<NameIndex> glyphs_;
    std::optional<CffWidths> widths_;
    std::vector<GlyphIndex> glyphsOfCids_;
};

} // namespace quillow::pdf
