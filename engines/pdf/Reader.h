// PDF: the entry of the PDF engine.
#pragma once

#include "engines/Extraction.h"

#include <cstddef>
#include <span>

namespace quillow::pdf {

/// Reads a PDF document. The password of the options opens a document that the empty one does not open. Throws
/// std::bad_alloc only.
[[nodiscard]] Extraction readPdf(std::span<const std::byte> bytes, const Options& options,
                                 const BytesDone& bytesDone = {});

} // namespace quillow::pdf
