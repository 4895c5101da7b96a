// The only entry point to the engines: takes bytes and a kind, returns a text or the reason why there is none.
#pragma once

#include "engines/DocumentKind.h"
#include "engines/Extraction.h"

#include <cstddef>
#include <span>

namespace quillow {

/// Reads one document that is completely in memory. Content that plainly is of another kind is `wrongType`. Never
/// throws: if memory runs out, the document is `outOfMemory`. Opens no socket, and no file except the cipher library
/// for the first encrypted PDF. Keeps nothing else between calls. May be called from several threads at once. For
/// DocumentKind::rtfd the bytes are those of the RTF file in the bundle.
[[nodiscard]] Extraction extract(std::span<const std::byte> bytes, DocumentKind kind, const Options& options = {},
                                 const BytesDone& bytesDone = {});

/// Loads the libraries that extract() would load for certain documents. Call it in a process that will not be able to
/// open files any more.
void loadLibraries();

} // namespace quillow
