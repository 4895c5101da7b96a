// The sections of a Type 1 font program: clear text, and behind the word "eexec" an encrypted part (Adobe Type 1 Font
// Format 1.1, 7.2). The lengths that a document or the file itself gives them are often wrong and never used.
#pragma once

#include <string>
#include <string_view>

namespace quillow::pdf {

/// The font without the segment headers of a PFB file (Technical Note 5040, 3.3). Headers that do not fit end them.
[[nodiscard]] std::string withoutSegmentHeaders(std::string_view bytes);
[[nodiscard]] bool hasSegmentHeaders(std::string_view bytes);

/// The text up to the encrypted part; all of it if there is none.
[[nodiscard]] std::string_view clearText(std::string_view font);
/// The decrypted part. If nothing is encrypted it is what follows the clear text, or the clear text again.
[[nodiscard]] std::string decryptedText(std::string_view font);

} // namespace quillow::pdf
