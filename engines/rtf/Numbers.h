// List numbers in words, letters and digits: the number formats of \levelnfc (RTF 1.9.1, "List Levels"), which are
// those of ISO 29500-1, 17.18.59, in the order of MS-OSHARED 2.2.1.3; their signs are told by MS-DOCX 2.4.
#pragma once

#include <cstdint>
#include <string>

namespace quillow::rtf {

inline constexpr int kFormatArabic = 0;
inline constexpr int kFormatBullet = 23;
inline constexpr int kFormatNone = 255;

/// Appends `value` in that format. Formats without letters for so large a value, and formats not known, give digits; bullets
/// and \levelnfc255 give nothing. At most kMaxNumberLength characters are written.
void appendNumber(std::u32string& out, int format, std::uint32_t value);

inline constexpr std::size_t kMaxNumberLength = 64;

} // namespace quillow::rtf
