// PDF: the entry of the PDF engine.
#pragma once

#include "engines/Extract.h"
#include "engines/pdf/Module.h"

namespace quillow::pdf {

/// Reads a PDF document. Reason::unreadable if the module that reads pages is missing.
[[nodiscard]] Extraction readPdf(std::span<const std::byte> bytes, const Options& options,
                                 const Module& module = Module::installed());

/// The same for a document that the module has opened or has failed to open. Throws std::bad_alloc if memory ran
/// out, also inside the module.
[[nodiscard]] Extraction readPages(const PageSource& pages, const Options& options);

} // namespace quillow::pdf
