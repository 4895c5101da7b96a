// Reads pages of a document: from the content to the text.
#pragma once

#include "engines/pdf/PageJoiner.h"
#include "engines/pdf/content/PageReader.h"
#include "engines/pdf/layout/PageLayout.h"
#include "text/TextSink.h"

namespace quillow::pdf {

/// Keeps fonts and memory from page to page. Not safe for use from several threads.
class PageTexts {
public:
    /// The document must outlive the object.
    PageTexts(Document& document, Reflow reflow)
        : reflow_(reflow)
        , fonts_(document)
        , reader_(document, fonts_) {}

    [[nodiscard]] PageOutcome read(const PageNode& node);

private:
    Reflow reflow_; ///< with joinLines, outcomes have rows
    FontCache fonts_;
    PageReader reader_;
    Page page_;
    PageLayout layout_;
    text::TextSink text_;
};

} // namespace quillow::pdf
