// The entries of a font dictionary that several parts of a font need (ISO 32000-2, 9.6 to 9.8).
#pragma once

#include "engines/pdf/fonts/FontDescriptor.h"
#include "engines/pdf/fonts/StandardFonts.h"
#include "engines/pdf/syntax/Document.h"
#include "text/SymbolFonts.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillow::pdf {

enum class FontSubtype : std::uint8_t { type1, trueType, type3, composite };

struct FontFacts {
    /// `dictionary` may be empty, as for an entry that is not a font.
    FontFacts(Document& document, const Dictionary& dictionary);

    Dictionary dictionary;
    FontSubtype subtype = FontSubtype::type1;
    Dictionary descendant; ///< of a composite font (9.7.6.1)
    std::string_view name; ///< without a subset's prefix
    FontDescriptor descriptor;
    std::optional<StandardFont> standardFont;
    text::SymbolFontDecoder symbols = nullptr; ///< if the codes of fonts of this name are signs
    bool isForDrawing = false;                 ///< glyphs are pieces of lines and arrows, which are no characters
};

} // namespace quillow::pdf
