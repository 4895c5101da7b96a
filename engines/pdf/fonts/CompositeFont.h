// A Type 0 font, whose codes have one to four bytes and select glyphs by CIDs (ISO 32000-2, 9.7).
#pragma once

#include "engines/pdf/fonts/CidWidths.h"
#include "engines/pdf/fonts/CompositeCharacters.h"
#include "engines/pdf/fonts/CompositeEncoding.h"
#include "engines/pdf/fonts/Font.h"
#include "engines/pdf/fonts/FontFacts.h"

#include <cstdint>
#include <optional>
#include <string>

namespace quillow::pdf {

class CompositeFont final : public Font {
public:
    CompositeFont(FontResources& resources, const FontFacts& facts, std::uint32_t number);

private:
    [[nodiscard]] const FontGlyph& makeGlyph(std::uint32_t code) override;
    [[nodiscard]] double widthOf(std::uint32_t cid);
    void setMetrics(std::uint32_t cid, FontGlyph& glyph);

    FontResources& resources_;
    FontFacts facts_;
    CompositeEncoding encoding_;
    CompositeCharacters characters_;
    std::optional<CidWidths> widths_; ///< read when the first glyph needs them
    std::u32string text_;             ///< of the glyph that is being made
};

} // namespace quillow::pdf
