// The computed style of an element, as far as it decides what text is seen and where its lines break.
#pragma once

#include <cstdint>

namespace quillow::html {

enum class Display : std::uint8_t {
    none,
    contents,
    inline_,
    block,
    listItem,
    inlineBlock,
    flex,
    inlineFlex,
    box, ///< the flexible box of 2009, "-webkit-box"
    inlineBox,
    table,
    inlineTable,
    tableRowGroup,
    tableRow,
    tableCell,
    tableCaption,
    tableColumn,
};
enum class Visibility : std::uint8_t { visible, hidden };
enum class WhiteSpace : std::uint8_t { normal, preserve, preserveBreaks };
enum class ListStyle : std::uint8_t { none, bullet, decimal, lowerAlpha, upperAlpha, lowerRoman, upperRoman };
enum class Flow : std::uint8_t { inFlow, outOfFlow };
enum class BoxOrient : std::uint8_t { horizontal, vertical };
enum class LineClamp : std::uint8_t { none, some };

/// What the `content` property puts into a line: a set of these bits. 0 if it generates nothing.
namespace generated {
inline constexpr std::uint8_t kBox = 1;         ///< there is a box, even if it is empty
inline constexpr std::uint8_t kSpaceBefore = 2; ///< it begins with collapsible white space
inline constexpr std::uint8_t kText = 4;        ///< it contains something visible
inline constexpr std::uint8_t kSpaceAfter = 8;  ///< it ends with collapsible white space
} // namespace generated

/// Generated content: `::before` or `::after`.
struct GeneratedContent {
    std::uint8_t content = 0;
    Display display = Display::inline_;
    WhiteSpace whiteSpace = WhiteSpace::normal;
    Flow flow = Flow::inFlow;
};

struct Style {
    Display display = Display::inline_;
    Visibility visibility = Visibility::visible;
    WhiteSpace whiteSpace = WhiteSpace::normal;
    ListStyle listStyle = ListStyle::bullet;
    Flow floating = Flow::inFlow;                ///< the `float` property
    Flow positioned = Flow::inFlow;              ///< the `position` property: absolute or fixed
    BoxOrient boxOrient = BoxOrient::horizontal; ///< the `-webkit-box-orient` property
    LineClamp lineClamp = LineClamp::none;       ///< the `-webkit-line-clamp` property
    bool generatesContent = false;               ///< a rule matches its `::before` or `::after`
};

} // namespace quillow::html
