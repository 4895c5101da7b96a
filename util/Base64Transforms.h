// Transforms between bytes and Base64 (RFC 4648, section 4: the standard alphabet, with padding).
#pragma once

#include "platform/SecTransform.h"

#include <memory>

namespace quillow {

/// Encodes bytes as Base64 in one line. Fails only if it has no input.
[[nodiscard]] std::unique_ptr<SecTransform> makeBase64EncodeTransform(); // selector: none

/// Decodes Base64 as bytesFromBase64 (base/Base64.h) does, with line ends anywhere.
[[nodiscard]] std::unique_ptr<SecTransform> makeBase64DecodeTransform(); // selector: none

} // namespace quillow
