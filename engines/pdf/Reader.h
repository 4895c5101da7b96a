// PDF: the entry of the PDF engine.
#pragma once

#include "engines/Extract.h"
#include "engines/pdf/Module.h"

namespace quillow::pdf {

/// The text of a document. Where the module that reads pages is missing: `unreadable`.
[[nodiscard]] Extraction readPdf(std::span<const std::byte> bytes, const Options& options,
                                 const Module& module = Module::installed());

/// The same for pages that have been opened, or not. Throws std::bad_alloc where memory ended in the module too.
[[nodiscard]] Extraction readPages(const PageSource& pages, const Options& options);

} // namespace quillow::pdf
