// A font whose codes are single bytes: Type 1, TrueType, Type 3 (ISO 32000-2, 9.6).
#pragma once

#include "engines/pdf/fonts/Font.h"
#include "engines/pdf/fonts/FontFacts.h"
#include "engines/pdf/fonts/SimpleCharacters.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace quillow::pdf {

class SimpleFont final : public Font {
public:
    SimpleFont(FontResources& resources, const FontFacts& facts, std::uint32_t number);

private:
    [[nodiscard]] const FontGlyph& makeGlyph(std::uint32_t code) override;

    void readWidths();
    void readExtent();
    void readType3Extent(std::span<const Object> matrix);
    [[nodiscard]] float widthOf(std::uint8_t code);
    [[nodiscard]] double undeclaredWidthOf(std::uint8_t code);

    FontResources& resources_;
    FontFacts facts_;
    SimpleCharacters characters_;
    std::span<const Object> widths_;
    std::int64_t firstChar_ = 0;
    double unit_ = 0.001; ///< of widths; Type 3 fonts have their own (9.6.4)
    std::u32string text_; ///< of the glyph that is being made
};

} // namespace quillow::pdf
