// The characters that names of glyphs mean (ISO 32000-2, 9.10.2: the Adobe Glyph List and its rules), and names that
// are numbers.
#pragma once

#include "engines/pdf/fonts/GlyphText.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillow::pdf {

/// Whose names they are likely to be. A name that the first list does not have is looked up in the others.
enum class GlyphNameTable : std::uint8_t {
    Adobe,        ///< the Adobe Glyph List, then TeX's names
    Tex,          ///< TeX's names, then the Adobe Glyph List
    ZapfDingbats, ///< a1 to a206, then the Adobe Glyph List
};

/// Empty if the name has no meaning. Names of the lists, uniXXXX, uXXXX to uXXXXXX, components joined by "_", what is
/// before the first dot ("a.sc", "one.oldstyle"). Never private use: small capitals and old style figures give the
/// plain letters and digits. A name that is a number gives nothing: see below.
[[nodiscard]] GlyphText unicodeOfGlyphName(std::string_view name, GlyphNameTable table = GlyphNameTable::Adobe);

/// The index of a glyph in its font file: g12, glyph12, gid12, index12, cid12 (a CID), cid_12, cid:12.
[[nodiscard]] std::optional<std::uint32_t> glyphIndexOfName(std::string_view name);

/// The code that names of Type 3 fonts and of old producers say: a65, C65, c65, G41 and x41 (hexadecimal). Below 256.
/// Judge whole fonts by it, not one name: "a1" is also a name of ZapfDingbats, and "C" or "a" alone are letters.
[[nodiscard]] std::optional<std::uint32_t> codeOfName(std::string_view name);

} // namespace quillow::pdf
