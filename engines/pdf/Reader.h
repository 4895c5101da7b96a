// PDF: the entry of the PDF engine.
#pragma once

#include "engines/Extraction.h"
#include "engines/pdf/Module.h"

namespace quillow::pdf {

/// Reads a PDF document. Reason::unreadable if the module that reads pages is missing.
[[nodiscard]] Extraction readPdf(std::span<const std::byte> bytes, const Options& options,
                                 const BytesDone& bytesDone = {});

/// The same with another module.
[[nodiscard]] Extraction readWith(const Module& module, std::span<const std::byte> bytes, const Options& options);

/// The same for a document that the module has opened or has failed to open. Throws std::bad_alloc if memory ran
/// out, also inside the module.
[[nodiscard]] Extraction readPages(const PageSource& pages, const Options& options);

} // namespace quillow::pdf
