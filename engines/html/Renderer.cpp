#include "engines/html/Renderer.h"

#include "engines/html/Ascii.h"
#include "engines/html/ListMarkers.h"
#include "engines/html/StyleResolver.h"
#include "engines/html/TagSet.h"
#include "engines/html/TextCollector.h"
#include "text/ByteScan.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace quillow::html {

namespace {

constexpr std::size_t kIndentPerLevel = 2;
/// Lists nested deeper are indented no further.
constexpr std::size_t kMaxIndentLevels = 16;

/// What text nodes of an element are to be.
enum class TextRole : std::uint8_t {
    shown,
    suppressed, ///< between the options of a select, or in SVG outside of its text elements: no box is made of it
    flattened,  ///< in an option: shown, and no element inside breaks the line
};
enum class Neighbour : std::uint8_t { none, visible, hidden };

/// An open element.
struct Frame {
    Style style;
    TextRole textRole = TextRole::shown;
    Neighbour previousCell = Neighbour::none; ///< the cell before in this row
    Neighbour previousRow = Neighbour::none;  ///< the row before in this table
    bool isSemantics = false;                 ///< MathML's "semantics": only its first element is shown
    bool sawElement = false;                  ///< of that
    bool dropsWhiteSpace = false; ///< text of nothing but white space makes no box here but after other text
    bool afterText = false;       ///< of those: other text is what came last
    bool blockifiesChildren = false;
    bool isBox = false;      ///< of 2009: boxes out of the flow are items there, all else is as in a block
    bool breaksLine = false; ///< a block: ends the line before and after
    bool inSelect = false;
    bool ownContent = false; ///< has lines of its own: `outer` is the line around it
    std::uint8_t requiredLineBreaks = 0;
    bool isListItem = false;
    std::int8_t numberStep = 1; ///< of a list
    Tag tag = Tag::unknown;     ///< of an element of HTML
    GeneratedContent after;
    std::uint32_t index = 0;      ///< its own number
    std::uint32_t rowOwner = 0;   ///< the frame that counts this one's child cells
    std::uint32_t tableOwner = 0; ///< the frame that counts this one's child rows
    std::uint32_t listOwner = 0;  ///< the frame of the list around, or 0
    std::uint32_t listDepth = 0;
    std::int64_t nextNumber = 1;   ///< of a list
    std::size_t markersBefore = 0; ///< of a list item
    std::size_t writtenBefore = 0; ///< of a link
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

/// Of a table, or one of its parts that hold others.
bool isInsideTable(Display display) {
    return display == Display::table || display == Display::inlineTable || display == Display::tableRowGroup ||
           display == Display::tableRow;
}

bool isOutOfFlow(const Style& style) {
    return style.floating == Flow::outOfFlow || style.positioned == Flow::outOfFlow;
}

/// HTML, 15.3.5: quotation marks are drawn around it. They are no text, but like any other they keep the space beside them.
bool isQuotation(const Node& node) {
    return node.tag == Tag::q && node.space == Namespace::html;
}

/// A target that means something outside of the page: no script, and not a place in the page itself.
bool isReadableTarget(std::string_view target) {
    target = trimWhiteSpace(target);
    constexpr std::string_view kScript = "javascript:";
    return !target.empty() && target.front() != '#' && !equalsIgnoringCase(target.substr(0, kScript.size()), kScript);
}

std::optional<std::int64_t> integerAttribute(const HtmlTree& tree, NodeId element, AttributeName name) {
    const auto value = tree.attribute(element, name);
    if (!value) return std::nullopt;
    return parseInteger(*value);
}

/// HTML, 15.3.13 and 15.5, and CSS Display 3, appendix B: inside they are drawn in a way of their own, whatever their display type says.
constexpr TagSet kDrawnAsAWhole{Tag::select, Tag::button, Tag::fieldset, Tag::svg};
constexpr TagSet kNoContents{Tag::select, Tag::object, Tag::canvas, Tag::svg};
/// Of which there is something that style cannot change: these, and what may never be shown.
constexpr TagSet kRuled{Tag::select, Tag::button, Tag::fieldset, Tag::legend, Tag::svg,     Tag::object,
                        Tag::canvas, Tag::audio,  Tag::form,     Tag::input,  Tag::noembed, Tag::template_};
/// As in browsers, their content stands in a block inside of the box that they are.
constexpr TagSet kHoldsBlock{Tag::button, Tag::fieldset, Tag::details, Tag::option};
constexpr TagSet kLists{Tag::ol, Tag::ul, Tag::menu, Tag::dir};

class Renderer {
public:
    Renderer(const HtmlTree& tree, const Options& options, AuthorStyles authorStyles)
        : tree_(tree)
        , options_(options)
        , styles_(tree, authorStyles == AuthorStyles::apply)
        // Few texts outgrow their source, and what is reserved and not used costs no memory.
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
    /// The frame, most often itself, that counts the cells in a frame, or the rows; it need be no row, and no table.
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

    const HtmlTree& tree_;
    const Options& options_;
    StyleResolver styles_;
    TextCollector collector_;
    std::vector<Frame> frames_;
    std::vector<NodeId> path_; ///< the elements around the node that the walk is at
};

RenderedText Renderer::render() {
    frames_.reserve(64);
    frames_.emplace_back();
    const NodeId html = tree_.firstChild(HtmlTree::kDocument);
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
                // Most often there is nothing but a text.
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

/// What style cannot change.
void Renderer::applyImportantRules(NodeId element, const Frame& parent, Style& style) const {
    const Node& node = tree_.node(element);
    if (isNeverShown(tree_, element, parent.tag)) style.display = Display::none;
    if (style.display == Display::inline_ && kDrawnAsAWhole.contains(node.tag)) style.display = Display::inlineBlock;
    if (style.display == Display::contents && kNoContents.contains(node.tag)) style.display = Display::none;
    // HTML, 15.3.13; as in browsers, outside of a fieldset too.
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
    // CSS Flexible Box Layout 1, section 4: text that stands together is an item, which ends even at a box out of the flow.
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

/// HTML, 3.2.7: a select shows its options and groups only, each a block of its own; an option shows its label, one line. The
/// copy of the chosen option is no second one.
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

/// SVG 2, 11.1: text is drawn inside of "text" elements, and inside of "foreignObject" as the content's own language has it.
void Renderer::applySvgRules(const Node& node, Frame& frame) const {
    if (node.tag == Tag::svg) frame.textRole = TextRole::suppressed;
    if (node.tag == Tag::text || node.tag == Tag::foreignObject) {
        frame.textRole = TextRole::shown;
        frame.style.display = Display::block;
    }
}

void Renderer::drawReplaced(const Frame& frame) {
    // CSS Display 3, appendix B: of what is drawn in an unusual way, no contents are left.
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

/// CSS Pseudo-Elements 4, section 4.1. Generated content is no text of the document, but it stands in the line: the space beside it
/// is seen, or not seen where the generated one is.
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

/// The box that the display type makes, and the line breaks before it.
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
        // CSS 2, 17.2.1: the table that it is put into is an inline one among inline boxes.
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
    // 3.2.7: "If node is a p element, then append 2 (a required line break count) at the beginning and end of items." As in
    // browsers, not where it is a part of a table.
    const bool isTablePart = frame.style.display == Display::tableCell || frame.style.display == Display::tableRow;
    if (node.tag == Tag::p && node.space == Namespace::html && !isTablePart) frame.requiredLineBreaks = 2;
    if (!isVisible(frame)) frame.requiredLineBreaks = 0;
    requireLineBreaks(frame);
    if (frame.breaksLine) collector_.endLine();
}

/// Those before and after an element. Where its box is a part of the line, as of a paragraph in a row of others, so is the space.
void Renderer::requireLineBreaks(const Frame& frame) {
    if (frame.requiredLineBreaks > 0 && !frame.breaksLine) collector_.writePending();
    collector_.requireLineBreaks(frame.requiredLineBreaks);
}

/// What a box means to the cells, rows and other text before it.
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

/// 3.2.7: a TAB after each cell but the last of its row; written when the next cell comes.
void Renderer::openCell(Frame& row, const Frame& frame) {
    Neighbour& previous = row.previousCell;
    if (previous != Neighbour::none) collector_.endLine();
    if (previous == Neighbour::visible) collector_.literal(options_.cells == CellSeparator::tab ? '\t' : '\n');
    previous = isVisible(frame) ? Neighbour::visible : Neighbour::hidden;
}

/// CSS 2, 17.2.1: what is no cell is put into one that has no element; as in browsers, the cell before is not the last then.
/// Outside of a table it parts two tables.
void Renderer::leaveCells(Frame& row) {
    if (isInsideTable(row.style.display) && row.previousCell == Neighbour::visible)
        collector_.literal(options_.cells == CellSeparator::tab ? '\t' : '\n');
    row.previousCell = Neighbour::none;
}

/// 3.2.7: a line end after each row but the last of its table; written when the next row comes.
void Renderer::openRow(Frame& table, const Frame& frame) {
    Neighbour& previous = table.previousRow;
    if (previous != Neighbour::none) collector_.endLine();
    if (previous == Neighbour::visible) collector_.literal('\n');
    previous = isVisible(frame) ? Neighbour::visible : Neighbour::hidden;
}

/// The same for rows.
void Renderer::leaveRows(Frame& table) {
    if (isInsideTable(table.style.display) && table.style.display != Display::tableRow &&
        table.previousRow == Neighbour::visible)
        collector_.literal('\n');
    table.previousRow = Neighbour::none;
}

/// HTML, 4.4.5: where the numbers of a list begin, and which way they run.
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

RenderedText renderText(const HtmlTree& tree, const Options& options, AuthorStyles authorStyles) {
    return Renderer(tree, options, authorStyles).render();
}

} // namespace quillow::html
