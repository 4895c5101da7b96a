// The characters of a line in reading order, with blanks where the page shows them.
#pragma once

#include "engines/pdf/layout/Evidence.h"
#include "engines/pdf/layout/Letter.h"
#include "engines/pdf/layout/MixedLine.h"
#include "engines/pdf/layout/PlainLine.h"
#include "engines/pdf/layout/Spacing.h"
#include "engines/pdf/layout/Span.h"
#include "engines/pdf/layout/Underscores.h"

#include <span>
#include <string>
#include <vector>

namespace quillow::pdf {

/// Writes lines of one orientation of a page. Keeps its memory from line to line.
class LineWriter {
public:
    /// `isPageFromTheRight`: whether the page is mostly text from the right. What is found in the lines is added to
    /// `evidence`.
    LineWriter(const Page& page, const Orientation& orientation, bool isPageFromTheRight, Evidence* evidence = nullptr)
        : page_(page)
        , orientation_(orientation)
        , evidence_(evidence)
        , plain_(page, orientation)
        , underscores_(page, orientation.frame)
        , mixed_(page, isPageFromTheRight) {}

    /// Appends the text of a line with those spans, without a line end.
    void append(std::span<const std::uint32_t> spans, std::u32string& out);

private:
    void collect(std::span<const std::uint32_t> spans);
    void collectSpan(const Span& span);
    static void extendOver(float left, float right, float size, Letter& letter);
    void sortLetters();
    [[nodiscard]] std::span<Letter> lettersOf(std::size_t span);
    [[nodiscard]] bool areTwins(const Letter& first, const Letter& letter) const;
    [[nodiscard]] bool isOver(std::span<const Letter> run, std::span<const Letter> earlier) const;
    void findRuns(std::span<const std::uint32_t> spans);
    void keepRunsWhole(std::span<const std::uint32_t> spans);
    void dropRepeated();
    [[nodiscard]] bool compose(const Letter& before, const Letter& letter, std::u32string& out) const;
    [[nodiscard]] bool composeOverlay(const Letter& mark, const Letter& letter, std::u32string& out) const;
    void writeFromTheLeft(std::u32string& out);
    [[nodiscard]] float thresholdOfLetters();
    [[nodiscard]] bool mayBePlain() const;
    void showWords(std::span<const std::uint32_t> spans, std::size_t repeated, Evidence& evidence);

    const Page& page_;
    const Orientation& orientation_;
    Evidence* evidence_;
    PlainLineWriter plain_;
    std::vector<Letter> letters_;
    std::vector<std::size_t> firstLetters_; ///< of each span of the line, as findRuns() found it
    std::vector<float> gapWidths_;
    std::vector<std::uint8_t> gapsAreBetweenLetters_;
    Underscores underscores_;
    MixedLine mixed_;
    bool hasRightToLeft_ = false;
    bool overlaps_ = false;
    bool inOrder_ = true;
};

} // namespace quillow::pdf
