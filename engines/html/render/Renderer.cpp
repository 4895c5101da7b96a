#include "engines/html/render/Renderer.h"

#include "engines/html/css/StyleResolver.h"
#include "engines/html/render/ListMarkers.h"
#include "engines/html/render/TextCollector.h"
#include "engines/html/tree/ParseInteger.h"
#include "engines/html/tree/TagSet.h"
#include "text/Ascii.h"
#include "text/ByteScan.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace quillow::html {

namespace {

constexpr std::size_t kIndentPerLevel = 2;
/// Lists that are nested deeper are not indented any further.
constexpr std::size_t kMaxIndentLevels = 16;

/// How the text nodes of an element are shown.
enum class TextRole : std::uint8_t {
    shown,
    suppressed, ///< between the options of a select, or in SVG outside of its text elements: they make no box
    flattened,  ///< in an option: shown, but no element inside breaks the line
};
enum class Neighbour : std::uint8_t { none, visible, hidden };

/// The state of an open element.
struct Frame {
    Style style;
    TextRole textRole = TextRole::shown;
    Neighbour previousCell = Neighbour::none; ///< the previous cell in this row
    Neighbour previousRow = Neighbour::none;  ///< the previous row in this table
    bool isSemantics = false;                 ///< MathML's "semantics": only its first element is shown
    bool sawElement = false;                  ///< whether the semantics element has had its first child element
    bool dropsWhiteSpace = false;             ///< text of only white space makes no box here, except after other text
    bool afterText = false;                   ///< for dropsWhiteSpace: other text came last
    bool blockifiesChildren = false;
    bool isBox = false; ///< `-webkit-box`: boxes out of the flow are items there; the rest is laid out as in a block
    bool breaksLine = false; ///< ends the line before and after it, as a block does
    bool inSelect = false;
    bool ownContent = false; ///< has lines of its own; `outer` is the line around it
    std::uint8_t requiredLineBreaks = 0;
    bool isListItem = false;
    std::int8_t numberStep = 1; ///< for lists: the step from one number to the next
    Tag tag = Tag::unknown;     ///< HTML elements only
    GeneratedContent after;
    std::uint32_t index = 0;      ///< index of this frame in `frames_`
    std::uint32_t rowOwner = 0;   ///< index of the frame that keeps track of this element's child cells
    std::uint32_t tableOwner = 0; ///< index of the frame that keeps track of this element's child rows
    std::uint32_t listOwner = 0;  ///< index of the frame of the list around it, or 0
    std::uint32_t listDepth = 0;
    std::int64_t nextNumber = 1;   ///< for lists: the number of the next item
    std::size_t markersBefore = 0; ///< for list items: bytes of the markers held before its own
    std::size_t writtenBefore = 0; ///< for links: size of the text before its content
    LineState outer;
};

Display blockified(Display display) {
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

/// Whether a display type is that of a table or of a table part that contains other parts.
bool isInsideTable(Display display) {
    return display == Display::table || display == Display::inlineTable || display == Display::tableRowGroup ||
           display == Display::tableRow;
}

bool isOutOfFlow(const Style& style) {
    return style.floating == Flow::outOfFlow || style.positioned == Flow::outOfFlow;
}

/// HTML, 15.3.5: whether an element has generated quotation marks around it. They are not written, but they keep
/// the space beside them as letters do.
bool isQuotation(const Node& node) {
    return node.tag == Tag::q && node.space == Namespace::html;
}

/// Whether a link target is useful outside of the page: not a script, and not a place in the page itself.
bool isReadableTarget(std::string_view target) {
    target = text::trimBlanks(target);
    constexpr std::string_view kScript = "javascript:";
    return !target.empty() && target.front() != '#' &&
           !text::equalsIgnoringCase(target.substr(0, kScript.size()), kScript);
}

std::optional<std::int64_t> integerAttribute(const Tree& tree, NodeId element, AttributeName name) {
    const auto value = tree.attribute(element, name);
    if (!value) return std::nullopt;
    return parseInteger(*value);
}

/// HTML, 15.3.13 and 15.5, and CSS Display 3, appendix B: elements with a layout of their own, whatever their
/// display type. In a line they are one box.
constexpr TagSet kDrawnAsAWhole{Tag::select, Tag::button, Tag::fieldset, Tag::svg};
/// CSS Display 3, appendix B: elements that `display: contents` hides.
constexpr TagSet kNoContents{Tag::select, Tag::object, Tag::canvas, Tag::svg};
/// Elements with parts that style sheets cannot change, and elements that may never be shown.
constexpr TagSet kRuled{Tag::select, Tag::button, Tag::fieldset, Tag::legend, Tag::svg,     Tag::object,
                        Tag::canvas, Tag::audio,  Tag::form,     Tag::input,  Tag::noembed, Tag::template_};
/// As in browsers, their content stands in a block inside of the box that they are.
constexpr TagSet kHoldsBlock{Tag::button, Tag::fieldset, Tag::details, Tag::option};
constexpr TagSet kLists{Tag::ol, Tag::ul, Tag::menu, Tag::dir};

class Renderer {
public:
    Renderer(const Tree& tree, const Options& options, AuthorStyles authorStyles)
        : tree_(tree)
        , options_(options)
        , styles_(tree, authorStyles == AuthorStyles::apply)
        // Few texts become longer than their source. Reserved bytes that are never used cost no memory.
        , collector_(tree.source().size()) {}

    RenderedText render();

private:
    enum class Entered { yes, no };

    void walk(NodeId root);
    Entered enterElement(NodeId element);
    Entered enterElement(NodeId element, Frame& parent, Frame& frame);
    void leave(NodeId element);
    void enterText(NodeId node);

    void styleFrame(NodeId element, Frame& parent, Frame& frame);
    void applyImportantRules(NodeId element, const Frame& parent, Style& style) const;
    Entered applySelectRules(const Node& node, const Frame& parent, Frame& frame) const;
    void applySvgRules(const Node& node, Frame& frame) const;
    void drawReplaced(const Frame& frame);
    void generateContent(const Node& node, Frame& frame);
    void drawGenerated(const GeneratedContent& generated, const Frame& frame);
    void openBox(const Node& node, Frame& parent, Frame& frame);
    void requireLineBreaks(const Frame& frame);
    void followSiblings(Frame& parent, const Frame& frame);
    /// The frame, usually the same one, that keeps track of the cells or the rows in a frame. It need not be
    /// a row or a table.
    [[nodiscard]] Frame& rowOf(Frame& frame) { return frame.rowOwner == frame.index ? frame : frames_[frame.rowOwner]; }
    [[nodiscard]] Frame& tableOf(Frame& frame) {
        return frame.tableOwner == frame.index ? frame : frames_[frame.tableOwner];
    }
    void openCell(Frame& row, const Frame& frame);
    void leaveCells(Frame& row);
    void leaveRows(Frame& table);
    void openRow(Frame& table, const Frame& frame);
    void openList(NodeId element, Frame& frame);
    void openListItem(NodeId element, Frame& frame);
    [[nodiscard]] bool isVisible(const Frame& frame) const { return frame.style.visibility == Visibility::visible; }

    const Tree& tree_;
    const Options& options_;
    StyleResolver styles_;
    TextCollector collector_;
    std::vector<Frame> frames_;
    std::vector<NodeId> path_; ///< the ancestors of the current node of the walk
};

RenderedText Renderer::render() {
    frames_.reserve(64);
    frames_.emplace_back();
    const NodeId html = tree_.firstChild(Tree::kDocument);
    Frame outside;
    styleFrame(html, outside, frames_.back());
    styles_.enter(html);
    frames_.back().style.display = blockified(frames_.back().style.display); // CSS Display 3, section 2.7
    const bool shown = frames_.back().style.display != Display::none;
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
    Frame& row = rowOf(frame);
    Frame& table = tableOf(frame);
    if (frame.dropsWhiteSpace && !row.afterText) {
        if (text::skipBlanks(text, 0) == text.size()) return;
        row.afterText = true;
    }
    const bool followsPart = row.previousCell != Neighbour::none || table.previousRow != Neighbour::none;
    if (followsPart && (frame.style.whiteSpace != WhiteSpace::normal || text::skipBlanks(text, 0) < text.size())) {
        leaveCells(row);
        leaveRows(table);
    }
    collector_.text(text, frame.style.whiteSpace, frame.style.visibility);
}

void Renderer::styleFrame(NodeId element, Frame& parent, Frame& frame) {
    Style& style = frame.style;
    styles_.resolve(element, parent.style, parent.isSemantics && std::exchange(parent.sawElement, true), style);
    if (options_.hiddenText == HiddenText::on) {
        style.visibility = Visibility::visible;
        if (style.display == Display::none && !isMachinery(tree_.node(element)))
            style.display = defaultDisplay(tree_.node(element));
    }
    if (kRuled.contains(tree_.node(element).tag)) applyImportantRules(element, parent, style);
    if (isOutOfFlow(style) || parent.blockifiesChildren) style.display = blockified(style.display);
}

/// Applies the rules that style sheets cannot change.
void Renderer::applyImportantRules(NodeId element, const Frame& parent, Style& style) const {
    const Node& node = tree_.node(element);
    if (isNeverShown(tree_, element, parent.tag)) style.display = Display::none;
    if (style.display == Display::inline_ && kDrawnAsAWhole.contains(node.tag)) style.display = Display::inlineBlock;
    if (style.display == Display::contents && kNoContents.contains(node.tag)) style.display = Display::none;
    // HTML, 15.3.13. As in browsers, this also applies outside of a fieldset.
    if (node.tag == Tag::legend) style.display = blockified(style.display);
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
    const bool isItem = parent.blockifiesChildren || (parent.isBox && isOutOfFlow(frame.style));
    if (isItem && frame.style.display != Display::contents) collector_.endLine();
    if (isReplaced(tree_, id)) {
        drawReplaced(frame);
        return Entered::no;
    }
    frame.textRole = parent.textRole;
    if (node.space == Namespace::html) {
        frame.inSelect = parent.inSelect;
        frame.tag = node.tag;
        if ((node.tag == Tag::select || parent.inSelect) && applySelectRules(node, parent, frame) == Entered::no)
            return Entered::no;
    } else if (node.space == Namespace::svg) {
        applySvgRules(node, frame);
    } else {
        frame.isSemantics = node.tag == Tag::semantics;
    }
    frame.listOwner = parent.listOwner;
    frame.listDepth = parent.listDepth;
    frame.index = parent.index + 1;
    const bool passesThrough = frame.style.display == Display::contents;
    frame.rowOwner = passesThrough ? parent.rowOwner : frame.index;
    frame.tableOwner = passesThrough || frame.style.display == Display::tableRowGroup ? parent.tableOwner : frame.index;
    if (passesThrough) {
        frame.dropsWhiteSpace = parent.dropsWhiteSpace;
        frame.blockifiesChildren = parent.blockifiesChildren;
        frame.isBox = parent.isBox;
    } else {
        followSiblings(parent, frame);
        openBox(node, parent, frame);
    }
    if (node.space == Namespace::html) {
        if (kLists.contains(node.tag)) openList(id, frame);
        const bool mayBeItem = node.tag == Tag::li || frame.style.display == Display::listItem;
        if (mayBeItem && options_.listMarkers == ListMarkers::on) openListItem(id, frame);
    }
    if (isQuotation(node)) collector_.atomicBox();
    if (frame.style.generatesContent) generateContent(node, frame);
    frame.writtenBefore = collector_.written();
    return Entered::yes;
}

/// HTML, 3.2.7: a select shows only its options and groups, each as a block of its own. An option shows its label
/// in one line. The copy of the selected option is not shown again.
Renderer::Entered Renderer::applySelectRules(const Node& node, const Frame& parent, Frame& frame) const {
    if (node.tag == Tag::selectedcontent) return Entered::no;
    if (node.tag == Tag::select) {
        frame.textRole = TextRole::suppressed;
        frame.inSelect = true;
        return Entered::yes;
    }
    if (parent.textRole != TextRole::suppressed) return Entered::yes;
    if (frame.style.display == Display::inline_) frame.style.display = Display::block;
    if (node.tag == Tag::option) {
        frame.textRole = TextRole::flattened;
    } else if (node.tag != Tag::optgroup) {
        frame.style.display = Display::contents;
    }
    return Entered::yes;
}

/// SVG 2, 11.1: text is drawn only inside of "text" elements, and inside of "foreignObject" by the rules of the
/// content's own language.
void Renderer::applySvgRules(const Node& node, Frame& frame) const {
    if (node.tag == Tag::svg) frame.textRole = TextRole::suppressed;
    if (node.tag == Tag::text || node.tag == Tag::foreignObject) {
        frame.textRole = TextRole::shown;
        frame.style.display = Display::block;
    }
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
    frame.after = styles_.generated(PseudoElement::after, frame.style);
    if (before.content != 0) drawGenerated(before, frame);
}

void Renderer::drawGenerated(const GeneratedContent& generated, const Frame& frame) {
    if (generated.display == Display::none) return;
    if (generated.flow == Flow::outOfFlow) {
        if (frame.isBox) collector_.endLine();
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
        frame.ownContent = true;
        frame.outer = collector_.enterContent();
        break;
    case Display::block:
    case Display::listItem:
    case Display::flex:
    case Display::box:
    case Display::table:
    case Display::tableCaption:
        if (isOutOfFlow(frame.style)) {
            frame.ownContent = true;
            frame.outer = collector_.enterOutOfFlow();
        }
        frame.breaksLine = true;
        frame.requiredLineBreaks = 1;
        break;
    case Display::tableCell:
    case Display::tableRow:
    case Display::tableRowGroup:
        // CSS 2, 17.2.1: a part without a table gets an anonymous table, which is an inline table
        // among inline boxes.
        frame.ownContent = rowOf(parent).style.display == Display::inline_;
        if (frame.ownContent) frame.outer = collector_.enterContent();
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
        frame.isBox = node.space != Namespace::html || !kHoldsBlock.contains(node.tag);
        frame.dropsWhiteSpace = frame.isBox;
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

/// Updates the state of the cells, rows and other text before a box, and writes the separators that are due.
void Renderer::followSiblings(Frame& parent, const Frame& frame) {
    Frame& row = rowOf(parent);
    Frame& table = tableOf(parent);
    row.afterText = false;
    if (frame.style.display == Display::tableCell) {
        openCell(row, frame);
    } else if (row.previousCell != Neighbour::none) {
        leaveCells(row);
    }
    if (frame.style.display == Display::tableRow) {
        openRow(table, frame);
    } else if (table.previousRow != Neighbour::none) {
        if (frame.style.display == Display::tableRowGroup) {
            collector_.endLine();
        } else if (frame.style.display != Display::tableCaption) {
            leaveRows(table);
        }
    }
}

/// 3.2.7: a TAB after each cell except the last of its row. It is written when the next cell comes.
void Renderer::openCell(Frame& row, const Frame& frame) {
    Neighbour& previous = row.previousCell;
    if (previous != Neighbour::none) collector_.endLine();
    if (previous == Neighbour::visible) collector_.literal(options_.cells == CellSeparator::tab ? '\t' : '\n');
    previous = isVisible(frame) ? Neighbour::visible : Neighbour::hidden;
}

/// CSS 2, 17.2.1: content that is not a cell gets an anonymous cell. As in browsers, the cell before it is then not
/// the last one. Outside of a table such content separates two tables.
void Renderer::leaveCells(Frame& row) {
    if (isInsideTable(row.style.display) && row.previousCell == Neighbour::visible)
        collector_.literal(options_.cells == CellSeparator::tab ? '\t' : '\n');
    row.previousCell = Neighbour::none;
}

/// 3.2.7: a line end after each row except the last of its table. It is written when the next row comes.
void Renderer::openRow(Frame& table, const Frame& frame) {
    Neighbour& previous = table.previousRow;
    if (previous != Neighbour::none) collector_.endLine();
    if (previous == Neighbour::visible) collector_.literal('\n');
    previous = isVisible(frame) ? Neighbour::visible : Neighbour::hidden;
}

/// The same for content that is not a row.
void Renderer::leaveRows(Frame& table) {
    if (isInsideTable(table.style.display) && table.style.display != Display::tableRow &&
        table.previousRow == Neighbour::visible)
        collector_.literal('\n');
    table.previousRow = Neighbour::none;
}

/// HTML, 4.4.5: the first number of a list, and the direction of its numbers.
void Renderer::openList(NodeId id, Frame& frame) {
    const Node& node = tree_.node(id);
    frame.listOwner = frame.index;
    ++frame.listDepth;
    if (node.tag != Tag::ol) return;
    const auto start = integerAttribute(tree_, id, AttributeName::start);
    if (tree_.attribute(id, AttributeName::reversed)) {
        frame.numberStep = -1;
        frame.nextNumber = 0;
        for (NodeId child = tree_.firstChild(id); !start && child != kNoNode; child = tree_.next(child))
            if (tree_.node(child).tag == Tag::li) ++frame.nextNumber;
    }
    if (start) frame.nextNumber = *start;
}

void Renderer::openListItem(NodeId id, Frame& frame) {
    const bool isItem = tree_.node(id).tag == Tag::li;
    std::int64_t number = 1;
    if (isItem && frame.listOwner != 0) {
        Frame& list = frames_[frame.listOwner];
        if (const auto value = integerAttribute(tree_, id, AttributeName::value)) list.nextNumber = *value;
        number = list.nextNumber;
        list.nextNumber += list.numberStep;
    }
    if (frame.style.display != Display::listItem || !isVisible(frame)) return;
    const std::string marker = listMarker(frame.style.listStyle, number);
    if (marker.empty()) return;
    frame.isListItem = true;
    frame.markersBefore = collector_.heldMarkerBytes();
    if (frame.markersBefore == 0 && frame.listDepth > 1)
        collector_.holdMarker(
            std::string(kIndentPerLevel * std::min<std::size_t>(frame.listDepth - 1, kMaxIndentLevels), ' '));
    collector_.holdMarker(marker);
}

void Renderer::leave(NodeId id) {
    const Node& node = tree_.node(id);
    const Frame& frame = frames_.back();
    if (options_.links == LinkTargets::afterText && node.tag == Tag::a && collector_.written() > frame.writtenBefore) {
        const auto target = tree_.attribute(id, AttributeName::href);
        if (target && isReadableTarget(*target)) collector_.insert(" <" + std::string(*target) + ">");
    }
    if (frame.after.content != 0) drawGenerated(frame.after, frame);
    if (isQuotation(node)) collector_.atomicBox();
    if (frame.isListItem) collector_.dropMarker(frame.markersBefore);
    if (frame.breaksLine || frame.ownContent) collector_.endLine();
    requireLineBreaks(frame);
    if (frame.ownContent) collector_.leaveContent(frame.outer);
    frames_.pop_back();
}

} // namespace

RenderedText renderText(const Tree& tree, const Options& options, AuthorStyles authorStyles) {
    return Renderer(tree, options, authorStyles).render();
}

} // namespace quillow::html
