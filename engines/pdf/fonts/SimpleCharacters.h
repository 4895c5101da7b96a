// Which characters a code of a simple font shows (ISO 32000-2, 9.10.2 and 9.6.5).
#pragma once

#include "engines/pdf/fonts/Characters.h"
#include "engines/pdf/fonts/FontFacts.h"
#include "engines/pdf/fonts/FontResources.h"
#include "engines/pdf/fonts/GlyphNames.h"
#include "engines/pdf/fonts/SimpleEncoding.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillow::pdf {

/// Nothing is read before the first code needs it, and the font program only if nothing else knows a code.
class SimpleCharacters {
public:
    SimpleCharacters(FontResources& resources, const FontFacts& facts);

    /// Replaces `out` by the characters of a code; by nothing if it shows no character.
    [[nodiscard]] CharacterEvidence find(std::uint8_t code, std::u32string& out);

    /// The name of a code's glyph by the font's encoding; empty if the encoding is the font program's own.
    [[nodiscard]] std::string_view nameOf(std::uint8_t code);
    /// The glyph of a code in the font program. 0 without a font program.
    [[nodiscard]] GlyphIndex glyphOf(std::uint8_t code);
    /// The embedded font program; null if there is none that can be read.
    [[nodiscard]] EmbeddedFont* program();

private:
    [[nodiscard]] const SimpleEncoding& encoding();
    [[nodiscard]] CharacterEvidence byToUnicode(std::uint8_t code, std::u32string& out);
    [[nodiscard]] bool byDifferences(std::uint8_t code, std::u32string& out);
    [[nodiscard]] bool byBaseEncoding(std::uint8_t code, std::u32string& out);
    [[nodiscard]] bool byProgram(std::uint8_t code, std::u32string& out);
    [[nodiscard]] bool byKnownFont(std::uint8_t code, std::u32string& out);
    [[nodiscard]] bool byCodeName(std::string_view name, std::uint8_t code, std::u32string& out);
    [[nodiscard]] bool hasCodesOfText(std::uint8_t code);
    [[nodiscard]] bool isBlankName(std::uint8_t code);
    [[nodiscard]] bool isWithoutGlyph(std::uint8_t code);
    [[nodiscard]] Encoding impliedEncoding() const;

    FontResources& resources_;
    const FontFacts& facts_;
    std::optional<Encoding> texEncoding_;
    GlyphNameTable nameTable_ = GlyphNameTable::Adobe;
    std::optional<SimpleEncoding> encoding_;
    std::optional<SimpleEncoding::CodeNames> codeNames_;
    std::optional<const CMap*> toUnicode_;
    std::optional<EmbeddedFont*> program_;
};

} // namespace quillow::pdf
