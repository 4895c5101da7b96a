// The text of a PDF document, read by the stages of this engine.
#pragma once

#include "engines/Extraction.h"

#include <cstddef>
#include <span>

namespace quillow::pdf {

/// Reads a PDF document. Throws std::bad_alloc only.
[[nodiscard]] Extraction readDocument(std::span<const std::byte> bytes, const Options& options);

} // namespace quillow::pdf
