// Rendering rules for certain elements and display types, apart from the style sheets.
#pragma once

#include "engines/html/render/Frame.h"
#include "engines/html/tree/TagSet.h"
#include "engines/html/tree/Tree.h"

namespace quillow::html {

/// CSS Display 3, section 2.7: the block-level display type for a display type.
[[nodiscard]] constexpr Display blockified(Display display) {
    switch (display) {
    case Display::none:
    case Display::contents:
    case Display::block:
    case Display::listItem:
    case Display::flex:
    case Display::box:
    case Display::table: return display;
    case Display::inlineFlex: return Display::flex;
    case Display::inlineBox: return Display::box;
    case Display::inlineTable: return Display::table;
    default: return Display::block;
    }
}

[[nodiscard]] inline bool isOutOfFlow(const Style& style) {
    return style.floating == Flow::outOfFlow || style.positioned == Flow::outOfFlow;
}

/// HTML, 15.3.5: whether an element has generated quotation marks around it. They are not written, but they keep
/// the space beside them as letters do.
[[nodiscard]] inline bool isQuotation(const Node& node) {
    return node.tag == Tag::q && node.space == Namespace::html;
}

/// Elements with parts that style sheets cannot change, and elements that may never be shown.
inline constexpr TagSet kRuled{Tag::select, Tag::button, Tag::fieldset, Tag::legend, Tag::svg,     Tag::object,
                               Tag::canvas, Tag::audio,  Tag::form,     Tag::input,  Tag::noembed, Tag::template_};
/// As in browsers, their content is in a block inside of the box that they are.
inline constexpr TagSet kHoldsBlock{Tag::button, Tag::fieldset, Tag::details, Tag::option};

/// Applies the rules that style sheets cannot change to the style of one of kRuled.
void applyImportantRules(const Tree& tree, NodeId element, const Frame& parent, Style& style);

/// HTML, 3.2.7: a select shows only its options and groups, each as a block of its own. An option shows its label
/// in one line. The copy of the selected option is not shown again. Returns whether the element, a select or in a
/// select, is shown.
[[nodiscard]] bool applySelectRules(const Node& node, const Frame& parent, Frame& frame);

/// SVG 2, 11.1: text is drawn only inside of "text" elements, and inside of "foreignObject" by the rules of the
/// content's own language.
void applySvgRules(const Node& node, Frame& frame);

} // namespace quillow::html
