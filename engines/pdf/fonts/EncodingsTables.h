// The generated tables of encodings.
#pragma once

#include "engines/pdf/fonts/Encodings.h"
#include "engines/pdf/fonts/NameTable.h"

namespace quillow::pdf {

extern const NameTable kEncodingNames;
extern const char32_t* const kEncodingTexts;
extern const std::uint16_t kEncodingNameIndexes[kEncodingCount][256]; ///< in kEncodingNames
/// Places in kEncodingTexts; above kEncodingTextOffsetBits the length.
extern const std::uint16_t kEncodingTextPlaces[kEncodingCount][256];
inline constexpr unsigned kEncodingTextOffsetBits = 13;

} // namespace quillow::pdf
