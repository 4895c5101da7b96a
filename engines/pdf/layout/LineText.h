// The characters of a line in reading order, with blanks where the page shows them.
#pragma once

#include "engines/pdf/layout/Letter.h"
#include "engines/pdf/layout/MixedLine.h"
#include "engines/pdf/layout/Spacing.h"
#include "engines/pdf/layout/Span.h"

#include <span>
#include <string>
#include <vector>

namespace quillow::pdf {

/// Writes lines of one orientation of a page. Keeps its memory from line to line.
class LineWriter {
public:
    LineWriter(const Page& page, const Orientation& orientation)
        : page_(page)
        , orientation_(orientation)
        , mixed_(page) {}

    /// Appends the text of a line with those spans, without a line end.
    void append(std::span<const std::uint32_t> spans, std::u32string& out);

private:
    void collect(std::span<const std::uint32_t> spans);
    void collectSpan(const Span& span);
    static void extendOver(float left, float right, float size, Letter& letter);
    void sortLetters();
    void dropRepeated();
    [[nodiscard]] bool compose(const Letter& before, const Letter& letter, std::u32string& out) const;
    void writeFromTheLeft(std::u32string& out);
    [[nodiscard]] float thresholdOfLetters();

    const Page& page_;
    const Orientation& orientation_;
    std::vector<Letter> letters_;
    std::vector<Gap> gaps_;
    MixedLine mixed_;
    bool hasRightToLeft_ = false;
    bool overlaps_ = false;
    bool inOrder_ = true;
};

} // namespace quillow::pdf
