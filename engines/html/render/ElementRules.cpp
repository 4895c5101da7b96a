#include "engines/html/render/ElementRules.h"

#include "engines/html/css/UserAgentStyle.h"

namespace quillow::html {

namespace {

/// HTML, 15.3.13 and 15.5, and CSS Display 3, appendix B: elements with a layout of their own, whatever their
/// display type. In a line they are one box.
constexpr TagSet kDrawnAsAWhole{Tag::select, Tag::button, Tag::fieldset, Tag::svg};
/// CSS Display 3, appendix B: elements that `display: contents` hides.
constexpr TagSet kNoContents{Tag::select, Tag::object, Tag::canvas, Tag::svg};

} // namespace

void applyImportantRules(const Tree& tree, NodeId element, const Frame& parent, Style& style) {
    const Node& node = tree.node(element);
    if (isNeverShown(tree, element, parent.tag)) style.display = Display::none;
    if (style.display == Display::inline_ && kDrawnAsAWhole.contains(node.tag)) style.display = Display::inlineBlock;
    if (style.display == Display::contents && kNoContents.contains(node.tag)) style.display = Display::none;
    // HTML, 15.3.13. As in browsers, this also applies outside of a fieldset.
    if (node.tag == Tag::legend) style.display = blockified(style.display);
}

bool applySelectRules(const Node& node, const Frame& parent, Frame& frame) {
    if (node.tag == Tag::selectedcontent) return false;
    if (node.tag == Tag::select) {
        frame.textRole = TextRole::suppressed;
        frame.isInSelect = true;
        return true;
    }
    if (parent.textRole != TextRole::suppressed) return true;
    if (frame.style.display == Display::inline_) frame.style.display = Display::block;
    if (node.tag == Tag::option) {
        frame.textRole = TextRole::flattened;
    } else if (node.tag != Tag::optgroup) {
        frame.style.display = Display::contents;
    }
    return true;
}

void applySvgRules(const Node& node, Frame& frame) {
    if (node.tag == Tag::svg) frame.textRole = TextRole::suppressed;
    if (node.tag == Tag::text || node.tag == Tag::foreignObject) {
        frame.textRole = TextRole::shown;
        frame.style.display = Display::block;
    }
}

} // namespace quillow::html
