// Reconstructing the active formatting elements (13.2.4.3) and the adoption agency algorithm (13.2.6.4.7).
#include "engines/html/parser/TreeBuilder.h"

#include <algorithm>
#include <utility>

namespace quillow::html {

namespace {

constexpr std::size_t kNotListed = ActiveFormattingElements::kNotListed;
constexpr std::size_t kNotOpen = OpenElements::kNotOpen;
/// The adoption agency algorithm, step 4.1: how often its outer loop runs at most.
constexpr int kMaxAdoptions = 8;
/// Step 4.13.4: how many nodes the inner loop keeps in the list of active formatting elements.
constexpr int kMostNodesKept = 3;

} // namespace

void TreeBuilder::openFormattingAgain() {
    // Rewind to the entry after the last marker or open element.
    std::size_t first = formatting_.size();
    while (first > 0 && !formatting_[first - 1].isMarker() && !open_.isOpen(formatting_[first - 1].id))
        --first;
    if (first == formatting_.size()) return;
    reconstructions_ += formatting_.size() - first;
    if (reconstructions_ > kReconstructionAllowance + kReconstructionsPerTag * startTags_) {
        formatting_.truncate(first);
        return;
    }
    for (; first < formatting_.size(); ++first) {
        const NodeId original = formatting_[first].id;
        const InsertionPlace place = inserter_.appropriatePlace();
        OpenElement copy{kNoNode, formatting_[first].tag, Namespace::html, place.parent(), place.previous()};
        if (place.isBeforeTable()) {
            copy.id = tree_.createClone(original, true);
            copy = inserter_.insert(place, copy);
        } else {
            copy.id = tree_.appendClone(copy.parent, copy.previous, original);
            place.fill(copy.id);
        }
        open_.push(copy);
        formatting_.replace(first, copy.id);
    }
}

/// The adoption agency algorithm with its outer loop.
void TreeBuilder::adoptionAgency(const Token& token) {
    // 2. A current node of that name that is not an active formatting element is just popped.
    if (open_.currentIs(token.tag) && formatting_.find(open_.current().id) == kNotListed) {
        open_.pop();
        return;
    }
    // 4.3 If there is no such formatting element, the token is handled as any other end tag.
    if (formatting_.findLast(token.tag) == kNotListed) {
        anyOtherEndTag(token);
        return;
    }
    // 4.1 The outer loop.
    for (int outer = 0; outer < kMaxAdoptions; ++outer)
        if (!adoptOnce(token.tag)) return;
}

/// Steps 4.3 to 4.19. Returns false if the algorithm is finished.
bool TreeBuilder::adoptOnce(Tag tag) {
    // 4.3 The formatting element.
    const std::size_t formattingAt = formatting_.findLast(tag);
    if (formattingAt == kNotListed) return false;
    const NodeId formattingElement = formatting_[formattingAt].id;
    // 4.4 to 4.8 in the usual case: the formatting element is the current node.
    if (formattingElement == open_.current().id) {
        open_.pop();
        formatting_.removeAt(formattingAt);
        return false;
    }
    // 4.4 Not in the stack: remove it from the list.
    const std::size_t stackAt = open_.find(formattingElement);
    if (stackAt == kNotOpen) {
        formatting_.removeAt(formattingAt);
        return false;
    }
    // 4.5 In the stack but not in scope: ignore the token.
    if (!open_.isInScope(stackAt)) return false;
    // 4.7 The furthest block.
    const std::size_t furthestAt = open_.furthestBlock(stackAt);
    // 4.8 If there is none: pop up to and including the formatting element.
    if (furthestAt == kNotOpen) {
        open_.popTo(stackAt);
        formatting_.removeAt(formattingAt);
        return false;
    }
    adopt(formattingAt, stackAt, furthestAt);
    return true;
}

/// Removes an open element from its parent.
void TreeBuilder::takeOut(OpenElement& element) {
    if (element.parent == kNoNode) return;
    tree_.remove(element.parent, element.previous, element.id);
    open_.unlink(element);
    element.parent = element.previous = kNoNode;
}

/// Steps 4.9 to 4.19.
void TreeBuilder::adopt(std::size_t formattingAt, std::size_t stackAt, std::size_t furthestAt) {
    const NodeId formattingElement = open_[stackAt].id;
    const NodeId furthestBlock = open_[furthestAt].id;
    // 4.9 to 4.11 The common ancestor, which is above the formatting element in the stack, and the bookmark.
    std::size_t bookmark = formattingAt;
    std::size_t lastAt = furthestAt; // index of the last node in the stack
    takeOut(open_[furthestAt]);
    // 4.13 The inner loop walks up from the furthest block to the formatting element.
    int inner = 0;
    for (std::size_t i = furthestAt; i-- > stackAt + 1;) {
        ++inner;
        const NodeId node = open_[i].id;
        std::size_t listed = formatting_.find(node);
        // 4.13.4 and 4.13.5 From the fourth node on, remove it from the list. Remove a node that is not in the
        // list from the stack.
        if (inner > kMostNodesKept && listed != kNotListed) {
            formatting_.removeAt(listed);
            if (listed < bookmark) --bookmark;
            listed = kNotListed;
        }
        if (listed == kNotListed) {
            open_.removeAt(i);
            --lastAt;
            continue;
        }
        // 4.13.6 A clone takes the node's place in both lists.
        OpenElement& copy = open_[i];
        copy.id = tree_.createClone(node, false);
        formatting_.replace(listed, copy.id);
        // 4.13.7 Right after the furthest block, move the bookmark behind the clone.
        if (open_[lastAt].id == furthestBlock) bookmark = listed + 1;
        // 4.13.8 and 4.13.9 The last node is not in the tree.
        copy = {copy.id, copy.tag, copy.space};
        open_[lastAt] = inserter_.insert(InsertionPlace::endOf(copy), open_[lastAt]);
        lastAt = i;
    }
    // 4.14 Insert the last node, with the common ancestor as override target.
    open_[lastAt] = inserter_.insert(inserter_.fosterPlace(open_[stackAt - 1]), open_[lastAt]);
    // 4.15 to 4.17 A clone of the formatting element takes over the furthest block's children.
    OpenElement copy;
    copy.id = tree_.createClone(formattingElement, false);
    tree_.moveChildren(furthestBlock, copy.id);
    // 4.18 and 4.19 The clone replaces the formatting element: in the list at the bookmark, in the stack below
    // the furthest block.
    const std::size_t old = formatting_.find(formattingElement);
    copy.tag = formatting_[old].tag;
    formatting_.removeAt(old);
    if (old < bookmark) --bookmark;
    formatting_.insert(std::min(bookmark, formatting_.size()), {copy.id, copy.tag});
    open_.remove(formattingElement);
    const std::size_t below = open_.find(furthestBlock) + 1;
    OpenElement& furthest = open_[below - 1];
    copy.lastChild = std::exchange(furthest.lastChild, kNoNode);
    open_.changeParent(below, furthestBlock, copy.id);
    open_.insert(below, inserter_.insert(InsertionPlace::endOf(furthest), copy));
}

/// 13.2.6.4.7 "Any other end tag".
void TreeBuilder::anyOtherEndTag(const Token& token) {
    for (std::size_t i = open_.size(); i-- > 0;) {
        ++steps_;
        const OpenElement element = open_[i];
        if (element.space == Namespace::html && element.tag == token.tag &&
            (token.tag != Tag::unknown || tree_.text(element.id) == token.name)) {
            open_.generateImpliedEndTags(token.tag == Tag::unknown ? Tag::unknown : token.tag);
            open_.popTo(std::max<std::size_t>(i, 1));
            return;
        }
        if (isSpecial(element)) return;
    }
}

} // namespace quillow::html
