// The private-use characters that older versions of the Adobe Glyph List gave to glyphs, and which producers still
// write.
#pragma once

namespace quillow::pdf {

/// The character that such a code point means; other characters stay. Small capitals and old style figures are plain
/// letters and digits.
[[nodiscard]] char32_t withoutAdobePrivateUse(char32_t c);

} // namespace quillow::pdf
