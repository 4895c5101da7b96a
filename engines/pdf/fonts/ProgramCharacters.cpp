#include "engines/pdf/fonts/ProgramCharacters.h"

namespace quillow::pdf {

CharacterEvidence charactersOfGlyph(EmbeddedFont& program, GlyphIndex glyph, GlyphNameTable names,
                                    text::SymbolFontDecoder symbols, std::u32string& out) {
    out.clear();
    if (glyph == 0) return CharacterEvidence::none;
    out = program.charactersOfGlyph(glyph);
    const CharacterEvidence evidence = keepUsable(out, symbols);
    if (evidence == CharacterEvidence::characters) return evidence;
    out = unicodeOfGlyphName(program.nameOfGlyph(glyph), names).view();
    return out.empty() ? evidence : keepUsable(out, symbols);
}

} // namespace quillow::pdf
