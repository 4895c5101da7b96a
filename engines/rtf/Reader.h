// RTF and RTFD: the entry of the RTF engine.
#pragma once

#include "engines/Extraction.h"

#include <cstddef>
#include <span>

namespace quillow::rtf {

/// Reads an RTF file, or the RTF file inside an RTFD bundle. Attachment groups and their placeholders are dropped in
/// both. A file without RTF is read as plain text. `bytesDone` is called only if the file is in UTF-16, which is copied
/// first. Throws std::bad_alloc.
[[nodiscard]] Extraction readRtf(std::span<const std::byte> bytes, const Options& options,
                                 const BytesDone& bytesDone = {});

} // namespace quillow::rtf
