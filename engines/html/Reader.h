// The entry of the HTML engine.
#pragma once

#include "engines/Extraction.h"

#include <cstddef>
#include <span>

namespace quillow::html {

/// Reads a document and returns its text. `bytesDone` is called only if the document must be copied first: into
/// UTF-8, or without U+000D.
[[nodiscard]] Extraction readHtml(std::span<const std::byte> bytes, const Options& options,
                                  const BytesDone& bytesDone = {});

} // namespace quillow::html
