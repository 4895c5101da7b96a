// What an embedded font program says of the characters of a glyph (ISO 32000-2, 9.10.2).
#pragma once

#include "engines/pdf/fonts/Characters.h"
#include "engines/pdf/fonts/GlyphNames.h"
#include "engines/pdf/fonts/fontfiles/EmbeddedFont.h"

#include <string>

namespace quillow::pdf {

/// Replaces `out` by the usable characters of a glyph: by the Unicode character map, else by the glyph's name.
[[nodiscard]] CharacterEvidence charactersOfGlyph(EmbeddedFont& program, GlyphIndex glyph, GlyphNameTable names,
                                                  text::SymbolFontDecoder symbols, std::u32string& out);

} // namespace quillow::pdf
