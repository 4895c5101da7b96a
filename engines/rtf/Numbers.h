// List numbers in words, letters and digits: the number formats of \levelnfc (RTF 1.9.1, "List Levels"). They are
// those of ISO 29500-1, 17.18.59, numbered as in MS-OSHARED 2.2.1.3. MS-DOCX 2.4 gives their characters.
#pragma once

#include <cstdint>
#include <string>

namespace quillow::rtf {

inline constexpr int kFormatArabic = 0;
inline constexpr int kFormatBullet = 23;
inline constexpr int kFormatNone = 255;

/// Appends `value` in the number format `format`, at most kMaxNumberLength characters. Unknown formats, and values
/// that a format cannot write, are written in digits. kFormatBullet and kFormatNone append nothing.
void appendNumber(std::u32string& out, int format, std::uint32_t value);

inline constexpr std::size_t kMaxNumberLength = 64;

} // namespace quillow::rtf
