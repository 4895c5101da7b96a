// The seam between content and layout: a page as the runs of characters and the ruling lines that its content stream
// draws, in that order and each with its place. Content writes it, layout reads it; neither knows more of the other.
//
// Coordinates are those of the page as it is displayed: in points, y upwards, (0, 0) at the lower left corner of the
// crop box, with /Rotate and /UserUnit applied (ISO 32000-2, 8.3.2.3, 14.11.2).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::pdf {

struct Point {
    float x = 0;
    float y = 0;

    friend bool operator==(const Point&, const Point&) = default;
};

/// An upright rectangle.
struct Box {
    float left = 0;
    float bottom = 0;
    float right = 0;
    float top = 0;

    [[nodiscard]] float width() const { return right - left; }
    [[nodiscard]] float height() const { return top - bottom; }
    [[nodiscard]] bool contains(Point p) const { return p.x >= left && p.x <= right && p.y >= bottom && p.y <= top; }
    /// Makes the box as large as is needed to contain the point.
    void extendTo(Point p);

    friend bool operator==(const Box&, const Box&) = default;
};

/// One glyph of a run.
struct Glyph {
    std::uint32_t text = 0; ///< offset of its characters in Page::text; they end where those of the next glyph begin
    float offset = 0;       ///< where it begins, from the run's origin along the run's direction
    float width = 0;        ///< its own width along the direction, without character and word spacing (9.3.2, 9.3.3)
};

/// What is known of a run from the marked content around it and the graphics state (14.6, 14.8.2.2, 9.3.6).
enum RunFlag : std::uint8_t {
    kInvisible = 1,       ///< text rendering mode 3, as in the text layer of a scan
    kRunning = 2,         ///< in an artifact that is said to be a running head, a foot or a page number (14.8.2.2.2)
    kActualText = 4,      ///< its characters are an ActualText (14.9.4): in logical order, whatever the glyphs are
    kVertical = 8,        ///< writing mode 1 (9.2.4): glyphs follow one another downwards, lines from right to left
    kFromAnnotation = 16, ///< drawn by the appearance of a form field or an annotation (12.5.5)
};

/// Glyphs of one font in a straight line, with the same state. Its numbers are those of the page: the text matrix, the
/// transformation matrix and the font size are multiplied in (9.4.4).
struct Run {
    static constexpr std::int32_t kNoMark = -1;
    static constexpr std::uint32_t kNoFont = 0xFFFF'FFFF; ///< of text that no font of the document shows

    std::uint32_t firstGlyph = 0; ///< index in Page::glyphs
    std::uint32_t glyphCount = 0;
    Point origin;       ///< the first glyph's origin
    Point direction;    ///< of writing: a vector of length 1
    float fontSize = 0; ///< the height of an em, always positive
    /// How far the glyphs reach to the left of the direction and to the right of it. In upright horizontal text these
    /// are the font's ascent and its descent, both positive as a rule.
    float ascent = 0;
    float descent = 0;
    std::uint32_t font = 0;               ///< runs of one font of the document have the same number, or kNoFont
    std::int32_t markedContent = kNoMark; ///< the MCID that ties the run to the structure tree (14.7.5), or kNoMark
    std::uint8_t flags = 0;               ///< RunFlag
};

/// A horizontal or vertical line, or a filled or outlined upright rectangle (8.5.2): a table's ruling, an underline, a
/// frame. Other paths say nothing about text and are left out.
struct Rule {
    enum class Kind : std::uint8_t { line, rectangle };
    Kind kind = Kind::line;
    Box box; ///< of a line: without height or without width
};

/// The cell of a table that the structure tree puts marked content into (14.8.4.8.3).
struct CellMark {
    static constexpr std::uint32_t kNoTable = 0xFFFF'FFFF;

    std::uint32_t table = kNoTable; ///< tables of one document have different numbers
    std::uint32_t row = 0;          ///< from the top of the table
    std::uint32_t column = 0;       ///< the first one that the cell reaches over
};

struct Page {
    Box cropBox; ///< its lower left corner is (0, 0)
    std::u32string text;
    std::vector<Glyph> glyphs;
    std::vector<Run> runs;                      ///< in the order of the content stream
    std::vector<Rule> rules;                    ///< in the order of the content stream
    std::vector<CellMark> cells;                ///< for each Run::markedContent; empty if the page has no tagged table
    std::uint64_t charactersWithoutUnicode = 0; ///< how many U+FFFD are in `text`

    /// The characters of one glyph: none, one, or several as in a ligature.
    [[nodiscard]] std::u32string_view textOf(const Glyph& glyph) const;
    /// The characters of a run in the order of its glyphs.
    [[nodiscard]] std::u32string_view textOf(const Run& run) const;
};

/// The smallest upright box around the glyphs of a run.
[[nodiscard]] Box boundsOf(const Page& page, const Run& run);

} // namespace quillow::pdf
