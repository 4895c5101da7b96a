// What layout finds on a page: its text, and the rows that the text consists of, each with its place. A plain value, so
// that what is done with pages afterwards needs neither runs nor glyphs.
#pragma once

#include "engines/pdf/layout/Evidence.h"
#include "engines/pdf/layout/Span.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// The text of one writing direction of a page.
struct TextOrientation {
    Frame frame; ///< the places of its rows are those of this frame
    bool isVertical = false;
    bool isFromTheRight = false; ///< columns and lines are read from the right
};

/// One line of the text: a line of the page, several side by side, or a row of a table.
struct TextRow {
    std::uint32_t textBegin = 0; ///< offset in PageLayout::text
    std::uint32_t textEnd = 0;   ///< without the line end
    float left = 0;
    float right = 0;
    float bottom = 0;
    float top = 0;
    float baseline = 0;
    float size = 0;                ///< of the largest font, in points
    std::uint16_t orientation = 0; ///< index in PageLayout::orientations
    bool isTableRow = false;       ///< TABs separate its cells
    bool continuesTable = false;   ///< it is not the first row of its table
    /// The page shows a break before it. The first row of an orientation has none.
    bool beginsParagraph = false;
    bool beginsLine = false;       ///< the line end before it is meant: a further word had room there
    bool endsInSoftHyphen = false; ///< U+00AD, written as a hyphen
    bool isMonospaced = false;     ///< all its letters have one width
    float room = 0;                ///< how far it ends before the margin of its column, in points
    float indent = 0;              ///< how far it begins behind the margin of its column, in points

    [[nodiscard]] float width() const { return right - left; }
    [[nodiscard]] float height() const { return top - bottom; }
};

struct PageLayout {
    /// The rows in reading order, each with a line end behind it, and blank lines between paragraphs.
    std::u32string text;
    std::vector<TextRow> rows;
    std::vector<TextOrientation> orientations; ///< the one with the most glyphs first

    void clear() {
        text.clear();
        rows.clear();
        orientations.clear();
    }
    [[nodiscard]] std::u32string_view textOf(const TextRow& row) const {
        return std::u32string_view(text).substr(row.textBegin, row.textEnd - row.textBegin);
    }
};

/// Lays a page out. `layout` is emptied first; its memory is used again. What is found on the way, and why, is added to
/// `evidence`.
void layOut(const Page& page, PageLayout& layout, Evidence* evidence = nullptr);

} // namespace quillow::pdf
