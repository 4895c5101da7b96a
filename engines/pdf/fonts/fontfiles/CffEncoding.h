// Charsets and encodings of the Compact Font Format (Technical Note 5176, 12 and 13).
#pragma once

#include "engines/pdf/fonts/fontfiles/EmbeddedFont.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// By glyph: the number of its name's string, or the CID. Glyphs that the charset does not reach have 0.
using CffCharset = std::vector<std::uint16_t>;

/// The charset of a font with names; the offsets 0, 1 and 2 are the predefined charsets.
[[nodiscard]] CffCharset readCffCharset(std::string_view font, std::size_t offset, std::size_t glyphCount);
/// The charset of a CID-keyed font. Without one of its own the CIDs are the glyphs.
[[nodiscard]] CffCharset readCffCidCharset(std::string_view font, std::size_t offset, std::size_t glyphCount);

struct CffEncoding {
    std::array<GlyphIndex, 256> glyphs{};
    std::array<std::uint16_t, 256>
        stringIds{}; ///< the name that the encoding itself gives the code; 0 if it gives a glyph
};

/// The offsets 0 and 1 are the predefined encodings.
[[nodiscard]] CffEncoding readCffEncoding(std::string_view font, std::size_t offset, const CffCharset& charset);

} // namespace quillow::pdf
