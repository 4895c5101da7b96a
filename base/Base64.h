// Base64 decoding (RFC 4648, section 4: the standard alphabet, with padding).
#pragma once

#include <QByteArray>

#include <optional>

namespace quillow {

/// The white space that may be anywhere in the text.
enum class Base64Space {
    lineEnds, ///< CR and LF
    all       ///< these, blanks and tabs: the white space of XML
};

/// The bytes that the text encodes. Any other text that is not canonical gives std::nullopt, so that damage is
/// detected: a character outside the alphabet, missing or misplaced padding, and set bits among the unused ones
/// (RFC 4648, sections 3.2, 3.3 and 3.5). To encode, use QByteArray::toBase64().
[[nodiscard]] std::optional<QByteArray> bytesFromBase64(const QByteArray& text, Base64Space space); // selector: none

} // namespace quillow
