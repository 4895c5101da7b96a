// Which characters a code of a composite font shows (ISO 32000-2, 9.10.2).
#pragma once

#include "engines/pdf/fonts/Characters.h"
#include "engines/pdf/fonts/CompositeEncoding.h"
#include "engines/pdf/fonts/FontFacts.h"
#include "engines/pdf/fonts/FontResources.h"
#include "text/ByteBuffer.h"

#include <cstdint>
#include <optional>
#include <string>

namespace quillow::pdf {

/// Nothing is read before the first code needs it, and the font program only if nothing else knows a code.
class CompositeCharacters {
public:
    CompositeCharacters(FontResources& resources, const FontFacts& facts, const CompositeEncoding& encoding);

    /// Replaces `out` by the characters of a code that selects that CID.
    [[nodiscard]] CharacterEvidence find(std::uint32_t code, std::uint32_t cid, std::u32string& out);
    /// The embedded font program; null if there is none that can be read.
    [[nodiscard]] EmbeddedFont* program();
    /// The glyph of a CID in the font program. 0 without a font program.
    [[nodiscard]] GlyphIndex glyphOf(std::uint32_t cid);

private:
    void readToUnicode();
    [[nodiscard]] CharacterEvidence byToUnicode(std::uint32_t code, std::uint32_t cid, std::u32string& out);
    [[nodiscard]] bool byEncoding(std::uint32_t code, std::uint32_t cid, std::u32string& out);
    [[nodiscard]] bool byProgram(std::uint32_t cid, std::u32string& out);
    [[nodiscard]] bool byGlyphOrder(std::uint32_t cid, std::u32string& out) const;
    [[nodiscard]] CharacterCollection collectionOfFont() const;

    FontResources& resources_;
    const FontFacts& facts_;
    const CompositeEncoding& encoding_;
    CharacterCollection collection_;
    std::optional<EmbeddedFont*> program_;

    bool hasReadToUnicode_ = false;
    const CMap* toUnicode_ = nullptr;
    bool isIdentity_ = false; ///< ToUnicode is a name that says of every code that it is its own character
    bool isDoubtful_ = false; ///< see CMap
    CharacterCollection toUnicodeCollection_ = CharacterCollection::Unknown; ///< ToUnicode is that collection's CMap

    bool hasReadGlyphMap_ = false;
    text::ByteBuffer glyphMapBuffer_;
    std::optional<std::string_view> glyphMap_; ///< /CIDToGIDMap: two bytes a CID
};

} // namespace quillow::pdf
