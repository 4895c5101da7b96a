// The characters of a line in reading order, with blanks where the page shows them.
#pragma once

#include "engines/pdf/layout/Bidi.h"
#include "engines/pdf/layout/Evidence.h"
#include "engines/pdf/layout/Spacing.h"
#include "engines/pdf/layout/Span.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quillow::pdf {

/// Writes lines of one orientation of a page. Keeps its memory from line to line.
class LineWriter {
public:
    /// The words of the lines and the gaps between them are added to `evidence`.
    LineWriter(const Page& page, const Orientation& orientation, Evidence* evidence = nullptr)
        : page_(page)
        , orientation_(orientation)
        , evidence_(evidence) {}

    /// Appends the text of a line with those spans, without a line end.
    void append(std::span<const std::uint32_t> spans, std::u32string& out);

private:
    /// A glyph with its place in the line.
    struct Letter {
        float left = 0;
        float right = 0;
        float place = 0; ///< by which letters are sorted
        float size = 0;
        std::uint32_t textBegin = 0;
        std::uint32_t textEnd = 0;
        std::uint8_t rank = 0; ///< of a mark among those with the place of its letter
        bool isBlank = false;
        bool isFromAnnotation = false;

        [[nodiscard]] float middle() const { return (left + right) / 2; }
    };

    void collect(std::span<const std::uint32_t> spans);
    void collectSpan(const Span& span);
    static void extendOver(float left, float right, float size, Letter& letter);
    void sortLetters();
    void dropRepeated();
    [[nodiscard]] bool compose(const Letter& before, const Letter& letter, std::u32string& out) const;
    void writeFromTheLeft(std::u32string& out);
    void writeMixed(std::u32string& out);
    void attachMarks();
    [[nodiscard]] bool beginsWithItsEnd();
    void joinSignsToNumbers();
    void countBrackets();
    [[nodiscard]] bool isPageFromTheRight();
    [[nodiscard]] float thresholdOfLetters();
    [[nodiscard]] bool isBlankBetween(const Letter& before, const Letter& after, float threshold) const;
    void appendLetter(const Letter& letter, std::u32string& out) const;
    void showWords(std::span<const std::uint32_t> spans, Evidence& evidence);

    const Page& page_;
    const Orientation& orientation_;
    Evidence* evidence_;
    std::vector<Letter> letters_;
    std::vector<Cluster> clusters_;
    std::vector<Gap> gaps_;
    std::uint64_t marksBefore_ = 0; ///< marks that the stream draws just before their letter, so far
    std::uint64_t marksBehind_ = 0;
    std::uint64_t seenBrackets_ = 0;    ///< pairs whose characters are what is seen, so far
    std::uint64_t logicalBrackets_ = 0; ///< pairs whose characters are those of the text
    std::optional<bool> isPageFromTheRight_;
    bool hasRightToLeft_ = false;
    bool overlaps_ = false;
    bool inOrder_ = true;
    std::size_t repeated_ = 0; ///< letters that were dropped
};

} // namespace quillow::pdf
