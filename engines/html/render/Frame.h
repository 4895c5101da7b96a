// The state that the renderer keeps for each open element.
#pragma once

#include "engines/html/css/Style.h"
#include "engines/html/render/TextCollector.h"
#include "engines/html/tree/Tags.h"

#include <cstddef>
#include <cstdint>

namespace quillow::html {

/// How the text nodes of an element are shown.
enum class TextRole : std::uint8_t {
    shown,
    suppressed, ///< between the options of a select, or in SVG outside of its text elements: they make no box
    flattened,  ///< in an option: shown, but no element inside breaks the line
};

struct Frame {
    Style style;
    TextRole textRole = TextRole::shown;
    bool isSemantics = false;     ///< MathML's "semantics": only its first element is shown
    bool hadFirstElement = false; ///< whether the semantics element has had its first child element
    bool dropsWhiteSpace = false; ///< text of only white space makes no box here, except after other text
    bool endsInText = false;      ///< for dropsWhiteSpace: other text came last
    bool blockifiesChildren = false;
    bool isWebkitBox = false; ///< `-webkit-box`: boxes out of the flow are items; the rest is laid out as in a block
    bool breaksLine = false;  ///< ends the line before and after it, as a block does
    bool isInSelect = false;
    bool hasOwnLines = false; ///< `outerLine` is the line around it
    bool isList = false;
    bool hasMarker = false;
    std::uint8_t requiredLineBreaks = 0;
    Tag tag = Tag::unknown; ///< HTML elements only
    GeneratedContent generatedAfter;
    std::uint32_t index = 0;    ///< index of this frame in the renderer's stack
    std::uint32_t boxIndex = 0; ///< index of the nearest frame with a box; other than `index` for `display: contents`
    std::size_t sizeBefore = 0; ///< for links: size of the text before its content
    LineState outerLine;
};

} // namespace quillow::html
