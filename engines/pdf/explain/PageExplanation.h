// Explains one page of a PDF: how layout reads it, as a picture.
#pragma once

#include "engines/Extraction.h"

#include <cstddef>
#include <span>

namespace quillow::pdf {

/// Draws the page with that number, counted from 1, as an SVG file, which is the text of the extraction. The password
/// of the options opens a document that the empty one does not open. Throws std::bad_alloc only.
[[nodiscard]] Extraction explainPage(std::span<const std::byte> bytes, std::size_t number, const Options& options);

} // namespace quillow::pdf
