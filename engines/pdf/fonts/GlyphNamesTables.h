// The generated lists of names of glyphs.
#pragma once

#include "engines/pdf/fonts/NameTable.h"

namespace quillow::pdf {

/// Values that are surrogates are not characters, but the number of a sequence plus kFirstSurrogate.
struct GlyphNameList {
    NameTable names;
    const char16_t* values;         ///< 0: the name has no meaning for everybody
    const std::uint16_t* sequences; ///< the place in sequencePool; above kSequenceOffsetBits the length
    const char32_t* sequencePool;
};

inline constexpr unsigned kSequenceOffsetBits = 13;

extern const GlyphNameList kAdobeNames;
extern const GlyphNameList kTexNames;
extern const GlyphNameList kDingbatNames;

} // namespace quillow::pdf
