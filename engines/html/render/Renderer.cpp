#include "engines/html/render/Renderer.h"

#include "engines/html/css/StyleResolver.h"
#include "engines/html/render/ElementRules.h"
#include "engines/html/render/Frame.h"
#include "engines/html/render/ListText.h"
#include "engines/html/render/TableText.h"
#include "engines/html/render/TextCollector.h"
#include "engines/html/tree/TagSet.h"
#include "text/Ascii.h"
#include "text/ByteScan.h"

#include <utility>

namespace quillow::html {

namespace {

/// Whether a link target is useful outside of the page: not a script, and not a place in the page itself.
bool isReadableTarget(std::string_view target) {
    target = text::trimBlanks(target);
    constexpr std::string_view kScript = "javascript:";
    return !target.empty() && target.front() != '#' &&
           !text::equalsIgnoringCase(target.substr(0, kScript.size()), kScript);
}

constexpr TagSet kLists{Tag::ol, Tag::ul, Tag::menu, Tag::dir};

class Renderer {
public:
    Renderer(const Tree& tree, const Options& options, AuthorStyles authorStyles)
        : tree_(tree)
        , options_(options)
        , styles_(tree, authorStyles == AuthorStyles::apply)
        // Few texts become longer than their source. Reserved bytes that are never used cost no memory.
        , collector_(tree.source().size())
        , tables_(collector_, options.cells)
        , lists_(tree, collector_) {}

    RenderedText render();

private:
    enum class Entered { yes, no };
    static constexpr std::size_t kUsualDepth = 64;

    void walk(NodeId root);
    Entered enterElement(NodeId element);
    Entered enterElement(NodeId element, Frame& parent, Frame& frame);
    void leave(NodeId element);
    void enterText(NodeId node);

    void styleFrame(NodeId element, Frame& parent, Frame& frame);
    void drawReplaced(const Frame& frame);
    void generateContent(const Node& node, Frame& frame);
    void drawGenerated(const GeneratedContent& generated, const Frame& frame);
    void openBox(const Node& node, Frame& parent, Frame& frame);
    void requireLineBreaks(const Frame& frame);
    /// The nearest frame with a box, usually the same one.
    [[nodiscard]] Frame& boxOf(Frame& frame) { return frame.boxIndex == frame.index ? frame : frames_[frame.boxIndex]; }
    [[nodiscard]] bool isVisible(const Frame& frame) const { return frame.style.visibility == Visibility::visible; }

    const Tree& tree_;
    const Options& options_;
    StyleResolver styles_;
    TextCollector collector_;
    TableText tables_;
    ListText lists_;
    std::vector<Frame> frames_;
    std::vector<NodeId> path_; ///< the ancestors of the current node of the walk
};

RenderedText Renderer::render() {
    frames_.reserve(kUsualDepth);
    frames_.emplace_back();
    const NodeId html = tree_.firstChild(Tree::kDocument);
    Frame outside;
    styleFrame(html, outside, frames_.back());
    styles_.enter(html);
    frames_.back().style.display = blockified(frames_.back().style.display); // CSS Display 3, section 2.7
    const bool shown = frames_.back().style.display != Display::none;
    tables_.enter(frames_.back().style.display, frames_.back().style.visibility);
    for (NodeId child = tree_.firstChild(html); shown && child != kNoNode; child = tree_.next(child)) {
        if (tree_.node(child).tag != Tag::head) {
            walk(child);
        } else {
            Frame head;
            styleFrame(child, frames_.back(), head);
        }
    }
    return {std::move(collector_).finish(), styles_.authorStylesApplied()};
}

/// Visits a subtree in document order, without recursion.
void Renderer::walk(NodeId root) {
    NodeId node = root;
    for (;;) {
        NodeId text = kNoNode;
        NodeId entered = kNoNode;
        if (tree_.node(node).kind == NodeKind::text) {
            text = node;
        } else if (enterElement(node) == Entered::yes) {
            entered = node;
            if (const NodeId child = tree_.firstChild(node); child != kNoNode) {
                // Usually the only child is a text, which needs no further step.
                if (tree_.node(child).kind != NodeKind::text || !tree_.node(child).isLast()) {
                    path_.push_back(node);
                    styles_.enter(node);
                    node = child;
                    continue;
                }
                text = child;
            }
        }
        if (text != kNoNode) enterText(text);
        if (entered != kNoNode) leave(entered);
        for (;;) {
            if (node == root) return;
            if (const NodeId next = tree_.next(node); next != kNoNode) {
                node = next;
                break;
            }
            node = path_.back();
            path_.pop_back();
            styles_.leave();
            leave(node);
        }
    }
}

void Renderer::enterText(NodeId node) {
    Frame& frame = frames_.back();
    if (frame.textRole == TextRole::suppressed) return;
    const std::string_view text = tree_.characters(node);
    if (frame.dropsWhiteSpace && !boxOf(frame).endsInText) {
        if (text::skipBlanks(text, 0) == text.size()) return;
        boxOf(frame).endsInText = true;
    }
    tables_.beforeText(text, frame.style.whiteSpace);
    collector_.text(text, frame.style.whiteSpace, frame.style.visibility);
}

void Renderer::styleFrame(NodeId element, Frame& parent, Frame& frame) {
    Style& style = frame.style;
    styles_.resolve(element, parent.style, parent.isSemantics && std::exchange(parent.hadFirstElement, true), style);
    if (options_.hiddenText == HiddenText::on) {
        style.visibility = Visibility::visible;
        if (style.display == Display::none && !isMachinery(tree_.node(element)))
            style.display = defaultDisplay(tree_.node(element));
    }
    if (kRuled.contains(tree_.node(element).tag)) applyImportantRules(tree_, element, parent, style);
    if (isOutOfFlow(style) || parent.blockifiesChildren) style.display = blockified(style.display);
}

Renderer::Entered Renderer::enterElement(NodeId id) {
    Frame& frame = frames_.emplace_back();
    const Entered entered = enterElement(id, *(frames_.end() - 2), frame);
    if (entered == Entered::no) frames_.pop_back();
    return entered;
}

Renderer::Entered Renderer::enterElement(NodeId id, Frame& parent, Frame& frame) {
    const Node node = tree_.node(id);
    styleFrame(id, parent, frame);
    if (frame.style.display == Display::none || frame.style.display == Display::tableColumn) return Entered::no;
    if (node.tag == Tag::br && node.space == Namespace::html) {
        if (frame.style.display == Display::contents) return Entered::no;
        collector_.endLine();
        if (isVisible(frame) && parent.textRole != TextRole::suppressed) collector_.literal('\n');
        return Entered::no;
    }
    if (node.tag == Tag::wbr && node.space == Namespace::html) {
        if (frame.style.display != Display::contents) collector_.breakOpportunity();
        return Entered::no;
    }
    if (parent.textRole == TextRole::flattened) frame.style.display = Display::inline_;
    // CSS Flexible Box Layout 1, section 4: contiguous text is an item of its own. Any box ends it, even
    // one out of the flow.
    const bool isItem = parent.blockifiesChildren || (parent.isWebkitBox && isOutOfFlow(frame.style));
    if (isItem && frame.style.display != Display::contents) collector_.endLine();
    if (isReplaced(tree_, id)) {
        drawReplaced(frame);
        return Entered::no;
    }
    frame.textRole = parent.textRole;
    if (node.space == Namespace::html) {
        frame.isInSelect = parent.isInSelect;
        frame.tag = node.tag;
        if ((node.tag == Tag::select || parent.isInSelect) && !applySelectRules(node, parent, frame))
            return Entered::no;
    } else if (node.space == Namespace::svg) {
        applySvgRules(node, frame);
    } else {
        frame.isSemantics = node.tag == Tag::semantics;
    }
    frame.index = parent.index + 1;
    if (frame.style.display == Display::contents) {
        frame.boxIndex = parent.boxIndex;
        frame.dropsWhiteSpace = parent.dropsWhiteSpace;
        frame.blockifiesChildren = parent.blockifiesChildren;
        frame.isWebkitBox = parent.isWebkitBox;
    } else {
        frame.boxIndex = frame.index;
        boxOf(parent).endsInText = false;
        tables_.enter(frame.style.display, frame.style.visibility);
        openBox(node, parent, frame);
    }
    if (node.space == Namespace::html) {
        frame.isList = kLists.contains(node.tag);
        if (frame.isList) lists_.openList(id);
        const bool mayBeItem = node.tag == Tag::li || frame.style.display == Display::listItem;
        if (mayBeItem && options_.listMarkers == ListMarkers::on) frame.hasMarker = lists_.openItem(id, frame.style);
    }
    if (isQuotation(node)) collector_.atomicBox();
    if (frame.style.generatesContent) generateContent(node, frame);
    frame.sizeBefore = collector_.written();
    return Entered::yes;
}

void Renderer::drawReplaced(const Frame& frame) {
    // CSS Display 3, appendix B: `display: contents` hides replaced elements.
    if (frame.style.display == Display::contents) return;
    if (blockified(frame.style.display) != frame.style.display) {
        collector_.atomicBox();
        return;
    }
    LineState outer;
    if (isOutOfFlow(frame.style)) outer = collector_.enterOutOfFlow();
    const std::size_t breaks = isVisible(frame) ? 1 : 0;
    collector_.requireLineBreaks(breaks);
    collector_.endLine();
    collector_.requireLineBreaks(breaks);
    if (isOutOfFlow(frame.style)) collector_.leaveContent(outer);
}

/// CSS Pseudo-Elements 4, section 4.1. Generated content is not text of the document and is not written, but it is
/// part of the line. So it keeps the space beside it, unless that space collapses with a generated one.
void Renderer::generateContent(const Node& node, Frame& frame) {
    if (frame.textRole != TextRole::shown || node.space != Namespace::html) return;
    const GeneratedContent before = styles_.generated(PseudoElement::before, frame.style);
    frame.generatedAfter = styles_.generated(PseudoElement::after, frame.style);
    if (before.content != 0) drawGenerated(before, frame);
}

void Renderer::drawGenerated(const GeneratedContent& generated, const Frame& frame) {
    if (generated.display == Display::none) return;
    if (generated.flow == Flow::outOfFlow) {
        if (frame.isWebkitBox) collector_.endLine();
        collector_.leaveContent(collector_.enterOutOfFlow());
        return;
    }
    const bool inLine = generated.display == Display::inline_ || generated.display == Display::contents;
    if (frame.blockifiesChildren || (!inLine && blockified(generated.display) == generated.display)) {
        collector_.endLine();
    } else if (!inLine) {
        collector_.atomicBox();
    } else {
        const auto space = [&](std::uint8_t part) {
            if ((generated.content & part) != 0) collector_.text(" ", generated.whiteSpace, Visibility::hidden);
        };
        space(generated::kSpaceBefore);
        if ((generated.content & generated::kText) != 0) collector_.atomicBox();
        space(generated::kSpaceAfter);
    }
}

/// Opens the box that the display type makes, and requires the line breaks before it.
void Renderer::openBox(const Node& node, Frame& parent, Frame& frame) {
    switch (frame.style.display) {
    case Display::inlineBlock:
    case Display::inlineFlex:
    case Display::inlineBox:
    case Display::inlineTable:
        frame.hasOwnLines = true;
        frame.outerLine = collector_.enterContent();
        break;
    case Display::block:
    case Display::listItem:
    case Display::flex:
    case Display::box:
    case Display::table:
    case Display::tableCaption:
        if (isOutOfFlow(frame.style)) {
            frame.hasOwnLines = true;
            frame.outerLine = collector_.enterOutOfFlow();
        }
        frame.breaksLine = true;
        frame.requiredLineBreaks = 1;
        break;
    case Display::tableCell:
    case Display::tableRow:
    case Display::tableRowGroup:
        // CSS 2, 17.2.1: a part without a table gets an anonymous table, which is an inline table
        // among inline boxes.
        frame.hasOwnLines = boxOf(parent).style.display == Display::inline_;
        if (frame.hasOwnLines) frame.outerLine = collector_.enterContent();
        frame.breaksLine = true;
        break;
    default: break;
    }
    switch (frame.style.display) {
    case Display::flex:
    case Display::inlineFlex:
        frame.blockifiesChildren = true;
        frame.dropsWhiteSpace = true;
        break;
    case Display::box:
    case Display::inlineBox:
        frame.isWebkitBox = node.space != Namespace::html || !kHoldsBlock.contains(node.tag);
        frame.dropsWhiteSpace = frame.isWebkitBox;
        break;
    case Display::table:
    case Display::inlineTable:
    case Display::tableRowGroup:
    case Display::tableRow: frame.dropsWhiteSpace = true; break;
    default: break;
    }
    // 3.2.7: "If node is a p element, then append 2 (a required line break count) at the beginning and end of
    // items." As in browsers, this does not apply to a p that is part of a table.
    const bool isTablePart = frame.style.display == Display::tableCell || frame.style.display == Display::tableRow;
    if (node.tag == Tag::p && node.space == Namespace::html && !isTablePart) frame.requiredLineBreaks = 2;
    if (!isVisible(frame)) frame.requiredLineBreaks = 0;
    requireLineBreaks(frame);
    if (frame.breaksLine) collector_.endLine();
}

/// Requires the line breaks before or after an element. If its box is part of a line, as that of an inline
/// paragraph, the pending space is written first.
void Renderer::requireLineBreaks(const Frame& frame) {
    if (frame.requiredLineBreaks > 0 && !frame.breaksLine) collector_.writePending();
    collector_.requireLineBreaks(frame.requiredLineBreaks);
}

void Renderer::leave(NodeId id) {
    const Node& node = tree_.node(id);
    const Frame& frame = frames_.back();
    if (options_.links == LinkTargets::afterText && node.tag == Tag::a && collector_.written() > frame.sizeBefore) {
        const auto target = tree_.attribute(id, AttributeName::href);
        if (target && isReadableTarget(*target)) collector_.insert(" <" + std::string(*target) + ">");
    }
    if (frame.generatedAfter.content != 0) drawGenerated(frame.generatedAfter, frame);
    if (isQuotation(node)) collector_.atomicBox();
    if (frame.hasMarker) lists_.closeItem();
    if (frame.isList) lists_.closeList();
    if (frame.breaksLine || frame.hasOwnLines) collector_.endLine();
    requireLineBreaks(frame);
    if (frame.hasOwnLines) collector_.leaveContent(frame.outerLine);
    if (frame.style.display != Display::contents) tables_.leave();
    frames_.pop_back();
}

} // namespace

RenderedText renderText(const Tree& tree, const Options& options, AuthorStyles authorStyles) {
    return Renderer(tree, options, authorStyles).render();
}

} // namespace quillow::html
