// The text of lines that have letters from the right.
#pragma once

#include "engines/pdf/layout/Bidi.h"
#include "engines/pdf/layout/Letter.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace quillow::pdf {

/// Writes such lines of one orientation of a page, one after another: how marks and brackets are drawn is learnt from
/// the lines before. Keeps its memory from line to line.
class MixedLine {
public:
    /// `isPageFromTheRight`: whether the page is mostly text from the right. Then lines without such letters may be
    /// read from the right, too.
    MixedLine(const Page& page, bool isPageFromTheRight)
        : page_(page)
        , isPageFromTheRight_(isPageFromTheRight) {}

    /// Gives marks the place of the letter that they belong to, so that they are behind it when letters are sorted.
    /// Text that is shaped for the right and drawn from the left has a mark before its letter; other producers draw it
    /// afterwards. `letters` are in the order of the stream.
    void attachMarks(std::span<Letter> letters);

    [[nodiscard]] bool isPageFromTheRight() const { return isPageFromTheRight_; }

    /// Appends the text of letters that are sorted from left to right. `threshold`: see `blankThreshold`.
    void write(std::span<const Letter> letters, float threshold, std::u32string& out);

private:
    void joinSignsToNumbers(std::span<const Letter> letters);
    void countBrackets(std::span<const Letter> letters);

    const Page& page_;
    bool isPageFromTheRight_;
    std::vector<Cluster> clusters_;
    std::uint64_t marksBefore_ = 0; ///< marks that the stream draws just before their letter, so far
    std::uint64_t marksBehind_ = 0;
    std::uint64_t seenBrackets_ = 0;    ///< pairs whose characters are what is seen, so far
    std::uint64_t logicalBrackets_ = 0; ///< pairs whose characters are those of the text
};

} // namespace quillow::pdf
