#include "engines/html/tree/Tree.h"

#include "engines/html/tree/TagSet.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <limits>
#include <new>

namespace quillow::html {

namespace {

/// An estimate. Pages with few tags need fewer words; reserved words that are never used cost nothing.
constexpr std::size_t kSourceBytesPerWord = 4;

/// Elements that always get all their words, so that they never move: those with a name of their own, those whose
/// numbers are kept, and those whose first child is often created late.
constexpr TagSet kNeverMoved{Tag::unknown,  Tag::html,  Tag::head,   Tag::body,   Tag::frameset,
                             Tag::noframes, Tag::style, Tag::select, Tag::option, Tag::selectedcontent};
/// Elements that have no children.
constexpr TagSet kEmpty{Tag::br, Tag::hr, Tag::wbr};

} // namespace

NodeId Node::target() const {
    return static_cast<NodeId>(space) | static_cast<NodeId>(next_) << 2 | static_cast<NodeId>(firstChild_) << 4 |
           static_cast<NodeId>(tag) << 6 | static_cast<NodeId>(form_) << 14 | static_cast<NodeId>(offset_) << 16 |
           static_cast<NodeId>(count_) << 18;
}

void Node::moveTo(NodeId id) {
    kind = NodeKind::moved;
    space = static_cast<Namespace>(id & 3);
    next_ = static_cast<Link>(id >> 2 & 3);
    firstChild_ = static_cast<Link>(id >> 4 & 3);
    tag = static_cast<Tag>(id >> 6 & 0xFF);
    form_ = static_cast<Form>(id >> 14 & 3);
    offset_ = id >> 16 & 3;
    count_ = id >> 18 & kCountMask;
}

void WordBlock::grow(std::size_t more) {
    constexpr std::size_t kMost = Node::kMostTarget;
    if (more > kMost - size_) throw std::bad_alloc();
    const std::size_t capacity = std::min(std::max<std::size_t>(size_ + more, 2 * std::size_t{capacity_}), kMost);
    void* const moved = std::realloc(static_cast<void*>(words_.get()), capacity * sizeof(std::uint32_t));
    if (moved == nullptr) throw std::bad_alloc();
    static_cast<void>(words_.release()); // std::realloc has freed it already
    words_.reset(static_cast<std::uint32_t*>(moved));
    capacity_ = static_cast<NodeId>(capacity);
}

Attribute AttributeList::Iterator::operator*() const {
    return tree_->attributeAt(word_);
}

AttributeList::Iterator& AttributeList::Iterator::operator++() {
    word_ += Tree::wordsOf(AttributeHead(tree_->words_[word_]));
    --left_;
    return *this;
}

Tree::Tree(std::string_view source)
    : source_(source) {
    std::uint32_t* const end = words_.reserve(source_.size() / kSourceBytesPerWord + kMostNodeWords);
    Node& document = *std::construct_at(reinterpret_cast<Node*>(end));
    document.kind = NodeKind::document;
    document.form_ = Node::Form::wide;
    words_.setEnd(end + kMostNodeWords);
}

Tree::Tree(std::string source)
    : Tree(std::string_view()) {
    ownSource_ = std::move(source);
    source_ = ownSource_;
}

std::string_view Tree::unknownName(NodeId id) const {
    if (node(id).kind == NodeKind::document) return {};
    const NodeId attributes = words_[id + kAttributesWord];
    return textAt(words_[attributes - 2], words_[attributes - 1]);
}

Attribute Tree::attributeAt(NodeId word) const {
    const AttributeHead head(words_[word]);
    if (head.isKnown()) return {head.known(), attributeName(head.known()), valueAt(word)};
    return {head.known(), textAt(words_[word + wordsOf(head) - 1], head.nameSize()), valueAt(word)};
}

std::optional<std::string_view> Tree::attribute(NodeId id, std::string_view name) const {
    if (const AttributeName known = attributeNameForKey(keyOf(name)); known != AttributeName::unknown)
        return attribute(id, known);
    if (!has(id, AttributeName::unknown)) return std::nullopt;
    for (const Attribute& attribute : attributes(id))
        if (attribute.known() == AttributeName::unknown && attribute.name() == name) return attribute.value();
    return std::nullopt;
}

std::uint32_t* Tree::writeAttributes(std::span<const Attribute> attributes, std::uint32_t* end) {
    std::uint32_t* const knownWord = end++;
    AttributeNames known;
    for (const Attribute& attribute : attributes) {
        const AttributeHead head = attribute.head();
        known.add(head.known());
        *end++ = head.word();
        *end++ = locate(attribute.value());
        if (head.hasLongValue()) *end++ = static_cast<std::uint32_t>(attribute.value().size());
        if (!head.isKnown()) *end++ = locate(attribute.name());
    }
    *knownWord = known.bits();
    return end;
}

NodeId Tree::createElement(Tag tag, std::string_view name, Namespace space, std::span<const Attribute> attributes) {
    // The node of each tag for an element without attributes.
    static constexpr auto kBare = [] {
        std::array<Node, static_cast<std::size_t>(Tag::count)> nodes{};
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            nodes[i].tag = static_cast<Tag>(i);
            nodes[i].form_ = kNeverMoved.contains(nodes[i].tag) ? Node::Form::wide
                             : kEmpty.contains(nodes[i].tag)    ? Node::Form::point
                                                                : Node::Form::narrow;
        }
        return nodes;
    }();
    attributes = attributes.first(std::min(attributes.size(), kMaxAttributes));
    std::uint32_t* end = words_.reserve(kMostNodeWords + 3 + attributes.size() * kMostAttributeWords);
    const NodeId id = words_.size();
    Node& node = *std::construct_at(reinterpret_cast<Node*>(end), kBare[static_cast<std::size_t>(tag)]);
    if (space != Namespace::html) node.space = space;
    if (attributes.empty() && node.form_ != Node::Form::wide) {
        words_.setEnd(end + (node.form_ == Node::Form::point ? 1 : kFirstChildWord));
        return id;
    }
    node.form_ = Node::Form::wide;
    node.count_ = attributes.size() & Node::kCountMask;
    end += kAttributesWord;
    if (tag == Tag::unknown) {
        *end++ = id + kMostNodeWords + 2;
        *end++ = locate(name);
        *end++ = static_cast<std::uint32_t>(name.size());
    } else {
        *end++ = id + kMostNodeWords;
    }
    if (!attributes.empty()) end = writeAttributes(attributes, end);
    words_.setEnd(end);
    if (tag == Tag::style || tag == Tag::frameset || tag == Tag::noframes) noted_.push_back(id);
    return id;
}

NodeId Tree::createClone(NodeId original, bool childrenFollow) {
    std::uint32_t* const end = words_.reserve(kMostNodeWords);
    original = resolved(original);
    const NodeId id = words_.size();
    const Node& copied = node(original);
    Node& copy = *std::construct_at(reinterpret_cast<Node*>(end));
    copy.tag = copied.tag;
    copy.space = copied.space;
    copy.count_ = copied.count_;
    const bool narrow = childrenFollow && copied.form_ != Node::Form::wide;
    copy.form_ = narrow ? Node::Form::narrow : Node::Form::wide;
    end[kAttributesWord] = copied.form_ == Node::Form::wide ? words_[original + kAttributesWord] : id + kMostNodeWords;
    words_.setEnd(end + (narrow ? kFirstChildWord : kMostNodeWords));
    return id;
}

/// Moves a node that has too few words to the end of the block and gives it every word that its kind can have.
/// Returns the new place.
NodeId Tree::moveToEnd(NodeId id) {
    std::uint32_t* const end = words_.reserve(kMostNodeWords);
    const NodeId place = words_.size();
    Node& old = words_.node(id);
    Node& node = *std::construct_at(reinterpret_cast<Node*>(end), old);
    std::copy_n(&words_[id] + 1, node.offset_ - 1, end + 1);
    end[node.offset_] = node.form_ == Node::Form::point ? id + node.offset_ : words_[id + node.offset_];
    if (node.kind == NodeKind::text) {
        node.form_ = Node::Form::narrow;
        words_.setEnd(end + node.offset_ + 1);
    } else {
        assert(node.form_ != Node::Form::wide);
        end[kFirstChildWord] = id + kFirstChildWord;
        if (node.firstChild_ != Node::Link::none) node.firstChild_ = Node::Link::elsewhere;
        end[kAttributesWord] = place + kMostNodeWords; // there are no attributes, but createClone copies this place
        node.form_ = Node::Form::wide;
        words_.setEnd(end + kMostNodeWords);
    }
    if (node.next_ != Node::Link::none) node.next_ = Node::Link::elsewhere;
    old.moveTo(place);
    return place;
}

void Tree::setNext(NodeId id, NodeId next) {
    if (next == kNoNode) {
        words_.node(id).next_ = Node::Link::none;
        return;
    }
    if (words_.node(id).form_ == Node::Form::point) {
        if (id + words_.node(id).offset_ == next) {
            words_.node(id).next_ = Node::Link::behind;
            return;
        }
        id = moveToEnd(id);
    }
    Node& node = words_.node(id);
    node.next_ = Node::Link::elsewhere;
    words_[id + node.offset_] = next;
}

void Tree::setFirstChild(NodeId id, NodeId child) {
    if (child == kNoNode) {
        words_.node(id).firstChild_ = Node::Link::none;
        return;
    }
    if (words_.node(id).form_ != Node::Form::wide) id = moveToEnd(id);
    words_.node(id).firstChild_ = Node::Link::elsewhere;
    words_[id + kFirstChildWord] = child;
}

void Tree::insert(NodeId parent, NodeId previous, NodeId child) {
    const NodeId following = previous != kNoNode ? next(resolved(previous)) : firstChild(resolved(parent));
    setNext(resolved(child), following);
    setFollowing(parent, previous, child);
}

void Tree::remove(NodeId parent, NodeId previous, NodeId child) {
    setFollowing(parent, previous, next(resolved(child)));
    setNext(resolved(child), kNoNode);
}

void Tree::removeChildren(NodeId parent) {
    setFirstChild(resolved(parent), kNoNode);
}

void Tree::moveChildren(NodeId from, NodeId to) {
    const NodeId first = firstChild(resolved(from));
    removeChildren(from);
    setFirstChild(resolved(to), first);
}

void Tree::addMissingAttributes(NodeId element, std::span<const Attribute> added) {
    assert(node(element).form_ == Node::Form::wide);
    const AttributeList old = attributes(element);
    std::vector<Attribute> all(old.begin(), old.end());
    const std::size_t before = all.size();
    for (const Attribute& attribute : added)
        if (std::none_of(all.begin(), all.end(), [&](const Attribute& a) { return a.hasNameOf(attribute); }) &&
            all.size() < kMaxAttributes)
            all.push_back(attribute);
    if (all.size() == before) return;
    // A new element outside of the tree gets the merged attributes; this element then shares them.
    const NodeId other = createElement(node(element).tag, {}, node(element).space, all);
    words_[element + kAttributesWord] = words_[other + kAttributesWord];
    words_.node(element).count_ = node(other).count_;
}

std::uint32_t Tree::locateKept(std::string_view text) {
    if (text.empty()) return sourceSize();
    const std::size_t place = kept_.locate(text);
    if (place + text.size() > std::numeric_limits<std::uint32_t>::max() - source_.size()) throw std::bad_alloc();
    return sourceSize() + static_cast<std::uint32_t>(place);
}

std::string_view Tree::withReplacements(std::string_view text) {
    if (text.find('\0') == std::string_view::npos) return text;
    std::string replaced;
    for (const char c : text) {
        if (c == '\0') {
            replaced += "\uFFFD";
        } else {
            replaced += c;
        }
    }
    return keep(replaced);
}

} // namespace quillow::html
