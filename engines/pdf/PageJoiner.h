// Joins the texts of pages to the text of a document.
#pragma once

#include "engines/Extraction.h"
#include "engines/pdf/Limits.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace quillow::pdf {

/// What became of one page.
struct PageOutcome {
    std::string text; ///< in UTF-8; ends with a line end, or is empty
    LossAccount loss;
};

class PageJoiner {
public:
    /// `longestText` is in bytes.
    explicit PageJoiner(PageMarks marks, std::size_t longestText = kMaximumText)
        : marks_(marks)
        , longestText_(longestText) {}

    /// Adds the next page. Returns false, and adds nothing, if the text is too long already.
    bool add(const PageOutcome& page);

    /// Counts what is not there: pages that cannot be found, and those beyond a limit.
    void leaveOut(std::size_t pages, std::string_view why);

    /// The outcome of a document with that number of pages.
    [[nodiscard]] Extraction finish(std::uint64_t pages) &&;

private:
    PageMarks marks_;
    std::size_t longestText_;
    std::string text_;
    std::string why_;
    LossAccount loss_;
    std::uint64_t pagesRead_ = 0;
    std::uint64_t pagesWithText_ = 0;
};

} // namespace quillow::pdf
