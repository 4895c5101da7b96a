// The characters of a plain line: its letters are drawn from the left to the right, and none of them has to be moved,
// dropped, composed or turned. Nearly all lines are plain, so this is the part of layout that speed depends on.
#pragma once

#include "engines/pdf/layout/Spacing.h"
#include "engines/pdf/layout/Span.h"

#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <vector>

namespace quillow::pdf {

/// Writes what LineWriter writes for such lines. Keeps its memory from line to line.
class PlainLineWriter {
public:
    PlainLineWriter(const Page& page, const Orientation& orientation)
        : page_(page)
        , orientation_(orientation) {}

    /// Appends the text of a line with those spans, without a line end. Returns false, and appends nothing, if the line
    /// may not be plain.
    [[nodiscard]] bool append(std::span<const std::uint32_t> spans, std::u32string& out);

private:
    /// What is before the next letter, and where that one is written to.
    struct Pen {
        float left = std::numeric_limits<float>::lowest(); ///< of the last glyph, which may be a blank
        float right = std::numeric_limits<float>::lowest();
        float letterRight = 0; ///< of the last letter that is no blank
        float letterSize = 0;
        bool isBehindBlank = false;
        bool mayHaveGaps = false; ///< whether one of the gaps is wide enough for a blank in some lines
        float drawnBlank = 0;     ///< the widest one so far, in ems
        char32_t* character = nullptr;
        std::size_t gap = 0; ///< how many gaps there are
    };

    enum class Outcome { added, notPlain, hasGap };

    [[nodiscard]] bool mayHaveGaps(std::span<const std::uint32_t> spans) const;
    void makeRoom(std::span<const std::uint32_t> spans);
    template <bool notesGaps>
    [[nodiscard]] Outcome addSpan(const Span& span, Pen& pen);
    template <bool notesGaps>
    [[nodiscard]] Outcome addGlyphs(const Span& span, std::size_t count, Pen& before);
    void addPlain(const Span& span, std::size_t first, Pen& pen);
    void addGaps(const Span& span, std::size_t first, Pen& pen);
    template <bool notesGaps>
    [[nodiscard]] Outcome addLine(std::span<const std::uint32_t> spans, Pen& pen);
    void appendWithBlanks(const Pen& pen, std::u32string& out);

    const Page& page_;
    const Orientation& orientation_;
    // The first ones of these are those of the line.
    std::vector<char32_t> characters_; ///< with the drawn blanks
    std::vector<float> gapWidths_;     ///< where no blank is drawn
    std::vector<std::uint8_t> gapsAreBetweenLetters_;
    std::vector<std::uint32_t> places_; ///< for each gap, the index of the character behind it
    bool hadGaps_ = false; ///< whether the last line had gaps that may be blanks: the next one is likely to have some
};

} // namespace quillow::pdf
