// The list of active formatting elements (13.2.4.3) and the adoption agency algorithm (13.2.6.4.7).
#include "engines/html/parser/TreeBuilder.h"

#include <algorithm>
#include <utility>

namespace quillow::html {

namespace {

constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

constexpr TagSet kSpecial{
    Tag::address, Tag::applet,     Tag::area,      Tag::article,    Tag::aside,     Tag::base,     Tag::basefont,
    Tag::bgsound, Tag::blockquote, Tag::body,      Tag::br,         Tag::button,    Tag::caption,  Tag::center,
    Tag::col,     Tag::colgroup,   Tag::dd,        Tag::details,    Tag::dir,       Tag::div,      Tag::dl,
    Tag::dt,      Tag::embed,      Tag::fieldset,  Tag::figcaption, Tag::figure,    Tag::footer,   Tag::form,
    Tag::frame,   Tag::frameset,   Tag::h1,        Tag::h2,         Tag::h3,        Tag::h4,       Tag::h5,
    Tag::h6,      Tag::head,       Tag::header,    Tag::hgroup,     Tag::hr,        Tag::html,     Tag::iframe,
    Tag::img,     Tag::input,      Tag::keygen,    Tag::li,         Tag::link,      Tag::listing,  Tag::main,
    Tag::marquee, Tag::menu,       Tag::meta,      Tag::nav,        Tag::noembed,   Tag::noframes, Tag::noscript,
    Tag::object,  Tag::ol,         Tag::p,         Tag::param,      Tag::plaintext, Tag::pre,      Tag::script,
    Tag::search,  Tag::section,    Tag::select,    Tag::source,     Tag::style,     Tag::summary,  Tag::table,
    Tag::tbody,   Tag::td,         Tag::template_, Tag::textarea,   Tag::tfoot,     Tag::th,       Tag::thead,
    Tag::title,   Tag::tr,         Tag::track,     Tag::ul,         Tag::wbr,       Tag::xmp};
constexpr TagSet kSpecialMath{Tag::mi, Tag::mo, Tag::mn, Tag::ms, Tag::mtext, Tag::annotationXml};
constexpr TagSet kSpecialSvg{Tag::foreignObject, Tag::desc, Tag::title};

} // namespace

bool isSpecial(Tag tag, Namespace space) {
    if (space == Namespace::html) return kSpecial.contains(tag);
    return (space == Namespace::svg ? kSpecialSvg : kSpecialMath).contains(tag);
}

/// Whether two formatting elements count as equal for the Noah's Ark clause: same name and same attributes. (All
/// are HTML elements.) If there are many attributes, their order must be the same too.
bool TreeBuilder::sameElement(NodeId a, NodeId b) const {
    a = tree_.resolved(a);
    b = tree_.resolved(b);
    const auto left = tree_.attributes(a);
    const auto right = tree_.attributes(b);
    if (tree_.text(a) != tree_.text(b) || left.size() != right.size()) return false;
    const auto same = [this](const Attribute& x, const Attribute& y) {
        ++steps_;
        return x.hasNameOf(y) && x.value() == y.value();
    };
    if (left.size() > kMaxUnorderedAttributes) return std::equal(left.begin(), left.end(), right.begin(), same);
    return std::is_permutation(left.begin(), left.end(), right.begin(), same);
}

/// "Push onto the list of active formatting elements", with the Noah's Ark clause and the bound
/// kMaxActiveFormatting.
void TreeBuilder::pushFormatting(NodeId element) {
    std::size_t same = 0;
    std::size_t earliestSame = kNowhere;
    std::size_t sinceMarker = 0;
    for (std::size_t i = formatting_.size(); i-- > 0 && !formatting_[i].isMarker();) {
        ++sinceMarker;
        if (!sameElement(formatting_[i].id, element)) continue;
        ++same;
        earliestSame = i;
    }
    if (same >= 3) {
        formatting_.erase(formatting_.begin() + static_cast<std::ptrdiff_t>(earliestSame));
    } else if (sinceMarker >= kMaxActiveFormatting) {
        formatting_.erase(formatting_.end() - static_cast<std::ptrdiff_t>(sinceMarker));
    }
    steps_ += sinceMarker;
    formatting_.push_back({element, tree_.node(tree_.resolved(element)).tag});
}

void TreeBuilder::openFormattingAgain() {
    // Rewind to the entry after the last marker or open element.
    std::size_t first = formatting_.size();
    while (first > 0 && !formatting_[first - 1].isMarker() && !isInStack(formatting_[first - 1].id))
        --first;
    if (first == formatting_.size()) return;
    reconstructions_ += formatting_.size() - first;
    if (reconstructions_ > kReconstructionAllowance + kReconstructionsPerTag * startTags_) {
        formatting_.resize(first);
        return;
    }
    for (; first < formatting_.size(); ++first) {
        const NodeId original = formatting_[first].id;
        const Place place = appropriatePlace();
        OpenElement copy{kNoNode, formatting_[first].tag, Namespace::html, place.parentId(), place.previous()};
        if (place.table != nullptr) {
            copy.id = tree_.createClone(original, true);
            copy = insertAt(place, copy);
        } else {
            copy.id = tree_.appendClone(copy.parent, copy.previous, original);
            place.fill(copy.id);
        }
        push(copy);
        formatting_[first].id = copy.id;
    }
}

void TreeBuilder::clearFormattingToMarker() {
    while (!formatting_.empty()) {
        const bool marker = formatting_.back().isMarker();
        formatting_.pop_back();
        if (marker) return;
    }
}

std::size_t TreeBuilder::formattingIndex(NodeId id) const {
    for (std::size_t i = formatting_.size(); i-- > 0; ++steps_)
        if (formatting_[i].id == id) return i;
    return kNowhere;
}

std::size_t TreeBuilder::lastFormatting(Tag tag) const {
    for (std::size_t i = formatting_.size(); i-- > 0 && !formatting_[i].isMarker(); ++steps_)
        if (formatting_[i].tag == tag) return i;
    return kNowhere;
}

void TreeBuilder::removeFormatting(NodeId id) {
    const std::size_t index = formattingIndex(id);
    if (index != kNowhere) formatting_.erase(formatting_.begin() + static_cast<std::ptrdiff_t>(index));
}

/// The adoption agency algorithm with its outer loop.
void TreeBuilder::adoptionAgency(const Token& token) {
    // 2. A current node of that name that is not an active formatting element is just popped.
    if (currentIs(token.tag) && formattingIndex(current().id) == kNowhere) {
        pop();
        return;
    }
    // 4.3 If there is no such formatting element, the token is handled as any other end tag.
    if (lastFormatting(token.tag) == kNowhere) {
        anyOtherEndTag(token);
        return;
    }
    // 4.1 The outer loop runs eight times at most.
    for (int outer = 0; outer < 8; ++outer)
        if (!adoptOnce(token.tag)) return;
}

/// Steps 4.3 to 4.19. Returns false if the algorithm is finished.
bool TreeBuilder::adoptOnce(Tag tag) {
    // 4.3 The formatting element.
    const std::size_t formattingAt = lastFormatting(tag);
    if (formattingAt == kNowhere) return false;
    const NodeId formattingElement = formatting_[formattingAt].id;
    // 4.4 Not in the stack: remove it from the list.
    std::size_t stackAt = open_.size();
    while (stackAt > 0 && open_[stackAt - 1].id != formattingElement)
        --stackAt;
    steps_ += open_.size() - stackAt;
    if (stackAt == 0) {
        removeFormatting(formattingElement);
        return false;
    }
    --stackAt;
    // 4.5 In the stack but not in scope: ignore the token.
    for (std::size_t i = open_.size(); i-- > stackAt;) {
        if (i == stackAt) break;
        if (endsScope(open_[i], Scope::standard)) return false;
    }
    // 4.7 The furthest block: the topmost special element below the formatting element.
    std::size_t furthestAt = stackAt + 1;
    while (furthestAt < open_.size() && !isSpecial(open_[furthestAt].tag, open_[furthestAt].space))
        ++furthestAt;
    // 4.8 If there is none: pop up to and including the formatting element.
    if (furthestAt == open_.size()) {
        while (open_.size() > stackAt)
            pop();
        removeFormatting(formattingElement);
        return false;
    }
    adopt(formattingAt, stackAt, furthestAt);
    return true;
}

/// Removes an open element from its parent.
void TreeBuilder::takeOut(OpenElement& element) {
    if (element.parent == kNoNode) return;
    tree_.remove(element.parent, element.previous, element.id);
    for (OpenElement& other : open_) {
        if (other.id == element.parent && other.lastChild == element.id) other.lastChild = element.previous;
        if (other.previous == element.id) other.previous = element.previous;
    }
    steps_ += open_.size();
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
        std::size_t listed = formattingIndex(node);
        // 4.13.4 and 4.13.5 From the fourth node on, remove it from the list. Remove a node that is not in the
        // list from the stack.
        if (inner > 3 && listed != kNowhere) {
            formatting_.erase(formatting_.begin() + static_cast<std::ptrdiff_t>(listed));
            if (listed < bookmark) --bookmark;
            listed = kNowhere;
        }
        if (listed == kNowhere) {
            removeFromStack(node);
            --lastAt;
            continue;
        }
        // 4.13.6 A clone takes the node's place in both lists.
        OpenElement& copy = open_[i];
        copy.id = tree_.createClone(node, false);
        formatting_[listed].id = copy.id;
        // 4.13.7 Right after the furthest block, move the bookmark behind the clone.
        if (open_[lastAt].id == furthestBlock) bookmark = listed + 1;
        // 4.13.8 and 4.13.9 The last node is not in the tree.
        copy = {copy.id, copy.tag, copy.space};
        open_[lastAt] = insertAt({&copy}, open_[lastAt]);
        lastAt = i;
    }
    // 4.14 Insert the last node, with the common ancestor as override target.
    const bool fostering = fosterParenting_;
    fosterParenting_ = true;
    open_[lastAt] = insertAt(appropriatePlace(open_[stackAt - 1]), open_[lastAt]);
    fosterParenting_ = fostering;
    // 4.15 to 4.17 A clone of the formatting element takes over the furthest block's children.
    OpenElement copy;
    copy.id = tree_.createClone(formattingElement, false);
    tree_.moveChildren(furthestBlock, copy.id);
    // 4.18 and 4.19 The clone replaces the formatting element: in the list at the bookmark, in the stack below
    // the furthest block.
    const std::size_t old = formattingIndex(formattingElement);
    copy.tag = formatting_[old].tag;
    formatting_.erase(formatting_.begin() + static_cast<std::ptrdiff_t>(old));
    if (old < bookmark) --bookmark;
    bookmark = std::min(bookmark, formatting_.size());
    formatting_.insert(formatting_.begin() + static_cast<std::ptrdiff_t>(bookmark), {copy.id, copy.tag});
    removeFromStack(formattingElement);
    std::size_t below = open_.size();
    while (below > 0 && open_[below - 1].id != furthestBlock)
        --below;
    OpenElement& furthest = open_[below - 1];
    copy.lastChild = std::exchange(furthest.lastChild, kNoNode);
    for (std::size_t i = below; i < open_.size(); ++i)
        if (open_[i].parent == furthestBlock) open_[i].parent = copy.id;
    steps_ += open_.size() - below;
    open_.insert(open_.begin() + static_cast<std::ptrdiff_t>(below), insertAt({&furthest}, copy));
}

/// 13.2.6.4.7 "Any other end tag".
void TreeBuilder::anyOtherEndTag(const Token& token) {
    for (std::size_t i = open_.size(); i-- > 0;) {
        ++steps_;
        const OpenElement element = open_[i];
        if (element.space == Namespace::html && element.tag == token.tag &&
            (token.tag != Tag::unknown || tree_.text(element.id) == token.name)) {
            generateImpliedEndTags(token.tag == Tag::unknown ? Tag::unknown : token.tag);
            while (open_.size() > std::max<std::size_t>(i, 1))
                pop();
            return;
        }
        if (isSpecial(element.tag, element.space)) return;
    }
}

} // namespace quillow::html
