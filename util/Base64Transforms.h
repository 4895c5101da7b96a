// The transforms between bytes and Base64 (RFC 4648, section 4: the standard alphabet, with padding).
#pragma once

#include "platform/SecTransform.h"

#include <memory>

namespace quillow {

/// From bytes to Base64 in one line. Never fails once it has its input.
[[nodiscard]] std::unique_ptr<SecTransform> makeBase64EncodeTransform(); // selector: none

/// From Base64 to bytes. Line ends (CR and LF) may stand anywhere. Everything else that is not canonical gives nothing, so that
/// damage shows: a character outside the alphabet, blanks included, missing or misplaced padding, and set bits that no byte
/// takes up (RFC 4648, sections 3.2, 3.3 and 3.5).
[[nodiscard]] std::unique_ptr<SecTransform> makeBase64DecodeTransform(); // selector: none

} // namespace quillow
