// Walks the content of a page and collects what it shows.
#pragma once

#include "engines/pdf/content/ContentLimits.h"
#include "engines/pdf/content/Page.h"
#include "engines/pdf/fonts/FontCache.h"
#include "engines/pdf/syntax/PageTree.h"

#include <memory>

namespace quillow::pdf {

/// What was not read of a page.
struct PageLoss {
    std::uint64_t partsSkipped = 0; ///< streams that were cut or damaged, and what a limit left out
};

/// Reads the pages of one document. Keeps buffers, and forms that several pages use, from one page to the next.
class PageReader {
public:
    /// The document and the fonts must outlive the reader.
    PageReader(Document& document, FontCache& fonts, const ContentLimits& limits = {});
    ~PageReader();
    PageReader(const PageReader&) = delete;
    PageReader& operator=(const PageReader&) = delete;

    /// Reads a page into `page`, whose memory is used again. Never fails but by std::bad_alloc: what is damaged is left
    /// out and counted.
    PageLoss read(const PageNode& node, Page& page);

    /// How much of the limits of a document has been used, at least: forms that are still there count as if they had
    /// been decoded again.
    [[nodiscard]] double usedShare() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace quillow::pdf
