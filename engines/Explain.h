// The second entry point to the engines: shows how the PDF engine reads a page, for those who change its heuristics.
#pragma once

#include "engines/DocumentKind.h"
#include "engines/Extraction.h"

#include <cstddef>
#include <span>

namespace quillow {

/// Draws the page with that number, counted from 1. The text of the extraction is an SVG file. Documents of other kinds
/// are `wrongType`; a page that the document does not have is `unreadable`. Otherwise the same contract as extract().
[[nodiscard]] Extraction explain(std::span<const std::byte> bytes, DocumentKind kind, std::size_t page,
                                 const Options& options = {});

} // namespace quillow
