// Transforms between bytes and Base64 (RFC 4648, section 4: the standard alphabet, with padding).
#pragma once

#include "platform/SecTransform.h"

#include <memory>

namespace quillow {

/// Encodes bytes as Base64 in one line. Fails only if it has no input.
[[nodiscard]] std::unique_ptr<SecTransform> makeBase64EncodeTransform(); // selector: none

/// Decodes Base64. Line ends (CR and LF) may be anywhere. Any other input that is not canonical gives
/// std::nullopt, so that damage is detected: a character outside the alphabet (blanks included), missing or
/// misplaced padding, and set bits among the unused ones (RFC 4648, sections 3.2, 3.3 and 3.5).
[[nodiscard]] std::unique_ptr<SecTransform> makeBase64DecodeTransform(); // selector: none

} // namespace quillow
