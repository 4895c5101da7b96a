// Converts one planned document to its text.
#pragma once

#include "cli/DocumentReader.h"
#include "cli/OutputFolder.h"
#include "cli/PasswordPrompt.h"
#include "cli/Plan.h"
#include "cli/Result.h"

namespace quillow::cli {

/// Reads the document and extracts its text. With an output folder the text is written there, otherwise the result
/// contains it. The prompt gives the password of a document that needs one. Does not throw if memory runs out. May be
/// called from several threads at once.
[[nodiscard]] Result convert(const PlannedDocument& document, const Arguments& arguments, DocumentReader& reader,
                             PasswordPrompt& prompt, const OutputFolder* outputFolder);

} // namespace quillow::cli
