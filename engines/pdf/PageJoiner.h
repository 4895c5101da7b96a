// Joins the texts of pages to the text of a document.
#pragma once

#include "engines/Extraction.h"
#include "engines/pdf/Limits.h"
#include "engines/pdf/PageOutcome.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::pdf {

class PageJoiner {
public:
    /// `longestText` is in bytes. With Reflow::joinLines, pages need their rows.
    explicit PageJoiner(PageMarks marks, Reflow reflow = Reflow::off, std::size_t longestText = kMaximumText)
        : marks_(marks)
        , reflow_(reflow)
        , longestText_(longestText) {}

    /// So many pages will be added. Memory for the text is taken at once when the first of them show how long it is.
    void expect(std::size_t pages) { expected_ = pages; }

    /// Adds the next page. Returns false, and adds nothing, if the text is too long already.
    bool add(PageOutcome page);

    /// Counts what is not there: pages that cannot be found, and those beyond a limit.
    void leaveOut(std::size_t pages, std::string_view why);

    /// The outcome of a document with that number of pages.
    [[nodiscard]] Extraction finish(std::uint64_t pages) &&;

private:
    PageMarks marks_;
    Reflow reflow_;
    std::size_t longestText_;
    void reserve();

    std::size_t expected_ = 0;
    std::string text_;
    std::vector<PageOutcome> pages_; ///< if lines are to be joined
    std::size_t length_ = 0;         ///< of the texts of all pages
    std::string why_;
    LossAccount loss_;
    std::uint64_t pagesRead_ = 0;
    std::uint64_t pagesWithText_ = 0;
};

} // namespace quillow::pdf
