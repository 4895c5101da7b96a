// Running heads, feet and page numbers that a tagged document marks as artifacts: not part of its own text
// (ISO 32000-2, 14.8.2.2).
#pragma once

#include "engines/pdf/content/Page.h"
#include "engines/pdf/syntax/Document.h"

namespace quillow::pdf {

/// Whether the document says that its marks tell text from artifacts (14.7.1, /MarkInfo).
[[nodiscard]] bool isTagged(Document& document);

/// Removes running artifacts (kRunning) that are above or below all other text of the page. Their characters stay in
/// `page.text`.
///
/// deliberate: all other artifacts stay. Producers mark line numbers, text of forms and stamps as artifacts, and put
/// numbers of lines into the head; a reader needs them, and a wrong mark loses nothing inside a page.
void dropRunningArtifacts(Page& page);

} // namespace quillow::pdf
