// RTF and RTFD: the entry of the RTF engine.
#pragma once

#include "engines/Extract.h"

namespace quillow::rtf {

/// Reads an RTF file, or the RTF file inside an RTFD bundle. Attachment groups and their placeholders are dropped
/// in both.
[[nodiscard]] Extraction readRtf(std::span<const std::byte> bytes, const Options& options);

} // namespace quillow::rtf
