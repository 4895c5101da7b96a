// PDF: the entry of the PDF engine.
#pragma once

#include "engines/Extract.h"

namespace quillow::pdf {

[[nodiscard]] Extraction readPdf(std::span<const std::byte> bytes, const Options& options);

} // namespace quillow::pdf
