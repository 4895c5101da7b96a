// RTF and RTFD: the entry of the RTF engine.
#pragma once

#include "engines/Extract.h"

namespace quillow::rtf {

/// Where the bytes come from: in an RTFD bundle's inner file the attachment groups and their placeholders leave nothing.
/// (An ordinary RTF file that carries such groups is treated the same way.)
[[nodiscard]] Extraction readRtf(std::span<const std::byte> bytes, const Options& options);

} // namespace quillow::rtf
