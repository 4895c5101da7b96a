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

struct Style {
    Display display = Display::inline_;
    Visibility visibility = Visibility::visible;
    WhiteSpace whiteSpace = WhiteSpace::normal;
    ListStyle listStyle = ListStyle::bullet;
    Flow floating = Flow::inFlow;   ///< the `float` property
    Flow positioned = Flow::inFlow; ///< the `position` property: absolute or fixed
};

} // namespace quillow::html
