// HTML: the entry of the HTML engine.
#pragma once

#include "engines/Extract.h"

namespace quillow::html {

/// The bytes are done when the document has to be written otherwise first: in UTF-8, or without U+000D.
[[nodiscard]] Extraction readHtml(std::span<const std::byte> bytes, const Options& options,
                                  const BytesDone& bytesDone = {});

} // namespace quillow::html
