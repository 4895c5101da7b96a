// Reads pages of a document: from the content to the text.
#pragma once

#include "engines/pdf/PageJoiner.h"
#include "engines/pdf/content/PageReader.h"
#include "engines/pdf/layout/PageLayout.h"
#include "engines/pdf/structure/RunningArtifacts.h"
#include "engines/pdf/structure/TableCells.h"
#include "text/TextSink.h"

namespace quillow::pdf {

/// Keeps fonts and memory from page to page. Not safe for use from several threads.
class PageTexts {
public:
    /// The document must outlive the object. With Reflow::joinLines, pages get their rows.
    PageTexts(Document& document, const Options& options)
        : document_(document)
        , reflow_(options.reflow)
        , dropsArtifacts_(options.headersFooters == HeadersFooters::off && isTagged(document))
        , fonts_(document)
        , reader_(document, fonts_)
        , tableCells_(document) {}

    [[nodiscard]] PageOutcome read(const PageNode& node);

    /// See PageSource.
    [[nodiscard]] double usedShare() const { return document_.usedShare() + fonts_.usedShare() + reader_.usedShare(); }

private:
    Document& document_;
    Reflow reflow_;
    bool dropsArtifacts_;
    FontCache fonts_;
    PageReader reader_;
    TableCells tableCells_;
    Page page_;
    PageLayout layout_;
    text::TextSink text_;
};

} // namespace quillow::pdf
