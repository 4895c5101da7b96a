// The character collections whose numbers (CIDs) have a known meaning (ISO 32000-2, 9.7.3).
#pragma once

#include "engines/pdf/fonts/GlyphText.h"

#include <cstdint>
#include <string_view>

namespace quillow::pdf {

enum class CharacterCollection : std::uint8_t {
    Unknown, ///< Adobe-Identity and private ones: a CID has no meaning outside its font
    Cns1,    ///< traditional Chinese
    Gb1,     ///< simplified Chinese
    Japan1,  ///< Japanese
    Japan2,  ///< Japanese, the supplementary kanji of JIS X 0212
    Korea1,  ///< Korean
    Kr,      ///< Korean, the newer collection
};

/// The collection of a CIDSystemInfo dictionary: "Adobe" and "Japan1", for example.
[[nodiscard]] CharacterCollection collectionOf(std::string_view registry, std::string_view ordering);

/// The characters of a CID. Half-width, proportional, rotated and vertical forms give the plain character, if it has
/// no code point of its own in the legacy sets. Never private use; empty for CID 0, for unknown CIDs, and for glyphs
/// without characters.
[[nodiscard]] GlyphText unicodeOfCid(CharacterCollection collection, std::uint32_t cid);

} // namespace quillow::pdf
