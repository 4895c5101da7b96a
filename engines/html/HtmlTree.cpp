#include "engines/html/HtmlTree.h"

#include <algorithm>
#include <cassert>
#include <limits>
#include <new>

namespace quillow::html {

namespace {

/// A guess; pages of few tags take fewer, and what is reserved and not used costs nothing.
constexpr std::size_t kSourceBytesPerWord = 4;

/// Elements that further tags may give attributes.
bool mayGetAttributes(Tag tag) {
    return tag == Tag::html || tag == Tag::body;
}

/// Whether an element has the word for the place of its attributes.
bool hasAttributesWord(Tag tag, std::size_t attributes) {
    return attributes != 0 || tag == Tag::unknown || mayGetAttributes(tag);
}

} // namespace

void WordBlock::grow(std::size_t more) {
    constexpr std::size_t kMost = Node::kLast - 1; // no node has a number with the mark in it
    if (more > kMost - size_) throw std::bad_alloc();
    const std::size_t capacity = std::min(std::max<std::size_t>(size_ + more, 2 * std::size_t{capacity_}), kMost);
    void* const moved = std::realloc(static_cast<void*>(words_.get()), capacity * sizeof(std::uint32_t));
    if (moved == nullptr) throw std::bad_alloc();
    static_cast<void>(words_.release()); // which std::realloc has freed
    words_.reset(static_cast<std::uint32_t*>(moved));
    capacity_ = static_cast<NodeId>(capacity);
}

Attribute AttributeList::Iterator::operator*() const {
    return tree_->attributeAt(word_);
}

AttributeList::Iterator& AttributeList::Iterator::operator++() {
    word_ += HtmlTree::wordsOf(AttributeHead(tree_->words_[word_]));
    --left_;
    return *this;
}

HtmlTree::HtmlTree(std::string_view source)
    : source_(source) {
    std::uint32_t* const end = words_.reserve(source_.size() / kSourceBytesPerWord + kMostNodeWords);
    std::construct_at(reinterpret_cast<Node*>(end))->kind = NodeKind::document;
    end[kPreviousWord] = end[kFirstChildWord] = end[kParentWord] = kNoNode;
    words_.setEnd(end + kParentWord + 1);
}

HtmlTree::HtmlTree(std::string source)
    : HtmlTree(std::string_view()) {
    ownSource_ = std::move(source);
    source_ = ownSource_;
}

NodeId HtmlTree::parentOfText(NodeId id) const {
    while (!node(id).isLast())
        id = node(id).next_;
    return node(id).next_ == kNoNode ? kNoNode : parentOfLast(id);
}

NodeId HtmlTree::previous(NodeId id) const {
    if (isLone(node(id))) return kNoNode;
    const NodeId before = words_[id + kPreviousWord];
    return before == kNoNode || node(before).isLast() ? kNoNode : before;
}

std::string_view HtmlTree::unknownName(NodeId id) const {
    if (node(id).kind == NodeKind::document) return {};
    const NodeId attributes = words_[id + kAttributesWord];
    return textAt(words_[attributes - 2], words_[attributes - 1]);
}

Attribute HtmlTree::attributeAt(NodeId word) const {
    const AttributeHead head(words_[word]);
    if (head.isKnown()) return {head.known(), attributeName(head.known()), valueAt(word)};
    return {head.known(), textAt(words_[word + wordsOf(head) - 1], head.nameSize()), valueAt(word)};
}

std::optional<std::string_view> HtmlTree::attribute(NodeId id, std::string_view name) const {
    if (const AttributeName known = attributeNameForKey(keyOf(name)); known != AttributeName::unknown)
        return attribute(id, known);
    if (!has(id, AttributeName::unknown)) return std::nullopt;
    for (const Attribute& attribute : attributes(id))
        if (attribute.known() == AttributeName::unknown && attribute.name() == name) return attribute.value();
    return std::nullopt;
}

std::uint32_t* HtmlTree::writeAttributes(std::span<const Attribute> attributes, std::uint32_t* end) {
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

NodeId HtmlTree::createElement(Tag tag, std::string_view name, Namespace space, std::span<const Attribute> attributes) {
    attributes = attributes.first(std::min(attributes.size(), kMaxAttributes));
    std::uint32_t* end = words_.reserve(kMostNodeWords + 3 + attributes.size() * kMostAttributeWords);
    const NodeId id = words_.size();
    Node& node = *std::construct_at(reinterpret_cast<Node*>(end));
    node.tag = tag;
    node.space = space;
    node.count_ = static_cast<std::uint8_t>(attributes.size());
    end[kPreviousWord] = end[kFirstChildWord] = end[kParentWord] = kNoNode;
    end += kAttributesWord;
    if (tag == Tag::unknown) {
        *end++ = id + kMostNodeWords + 2;
        *end++ = locate(name);
        *end++ = static_cast<std::uint32_t>(name.size());
    } else if (hasAttributesWord(tag, attributes.size())) {
        *end++ = id + kMostNodeWords;
    }
    if (!attributes.empty()) end = writeAttributes(attributes, end);
    words_.setEnd(end);
    if (tag == Tag::style || tag == Tag::frameset || tag == Tag::noframes) noted_.push_back(id);
    return id;
}

NodeId HtmlTree::createClone(NodeId original) {
    std::uint32_t* end = words_.reserve(kMostNodeWords);
    const NodeId id = words_.size();
    const Node& copied = node(original);
    Node& copy = *std::construct_at(reinterpret_cast<Node*>(end));
    copy.tag = copied.tag;
    copy.space = copied.space;
    copy.count_ = copied.count_;
    end[kPreviousWord] = end[kFirstChildWord] = end[kParentWord] = kNoNode;
    end += kAttributesWord;
    if (hasAttributesWord(copied.tag, copied.count_)) *end++ = words_[original + kAttributesWord];
    words_.setEnd(end);
    return id;
}

NodeId HtmlTree::replaceLoneText(NodeId parent) {
    const Node lone = node(words_[parent + kFirstChildWord]);
    const NodeId text = createText(lone.next_ & ~Node::kLast, lone.count_);
    words_.node(text).next_ = parent | Node::kLast;
    words_[text + kPreviousWord] = text;
    words_[parent + kFirstChildWord] = text;
    return text;
}

void HtmlTree::insertBefore(NodeId parent, NodeId child, NodeId before) {
    if (before == kNoNode) return append(parent, child);
    assert(node(before).kind == NodeKind::element);
    const NodeId previous = words_[before + kPreviousWord];
    if (node(child).kind != NodeKind::text) words_[child + kParentWord] = parent;
    words_.node(child).next_ = before;
    words_[child + kPreviousWord] = previous;
    NodeId& first = words_[parent + kFirstChildWord];
    (first == before ? first : words_.node(previous).next_) = child;
    words_[before + kPreviousWord] = child;
}

void HtmlTree::remove(NodeId child) {
    const NodeId from = parent(child);
    if (from == kNoNode) return;
    NodeId& first = words_[from + kFirstChildWord];
    if (isLone(node(child))) {
        first = kNoNode;
        return;
    }
    Node& removed = words_.node(child);
    const NodeId previous = words_[child + kPreviousWord];
    // What held the child as the one before it: the one after it, or of the last one the first.
    words_[(removed.isLast() ? first : removed.next_) + kPreviousWord] = previous;
    if (first == child) {
        first = removed.next();
    } else {
        words_.node(previous).next_ = removed.next_;
    }
    removed.next_ = words_[child + kPreviousWord] = kNoNode;
    if (removed.kind != NodeKind::text) words_[child + kParentWord] = kNoNode;
}

std::size_t HtmlTree::removeChildren(NodeId parent) {
    NodeId child = firstOfSeveral(parent);
    words_[parent + kFirstChildWord] = kNoNode;
    std::size_t removed = 0;
    for (; child != kNoNode; ++removed) {
        const NodeId next = node(child).next();
        words_.node(child).next_ = words_[child + kPreviousWord] = kNoNode;
        if (node(child).kind != NodeKind::text) words_[child + kParentWord] = kNoNode;
        child = next;
    }
    return removed;
}

std::size_t HtmlTree::moveChildren(NodeId from, NodeId to) {
    NodeId child = firstOfSeveral(from);
    words_[from + kFirstChildWord] = kNoNode;
    std::size_t moved = 0;
    for (; child != kNoNode; ++moved) {
        const NodeId next = node(child).next();
        append(to, child);
        child = next;
    }
    return moved;
}

void HtmlTree::addMissingAttributes(NodeId element, std::span<const Attribute> added) {
    assert(mayGetAttributes(node(element).tag));
    const AttributeList old = attributes(element);
    std::vector<Attribute> all(old.begin(), old.end());
    const std::size_t before = all.size();
    for (const Attribute& attribute : added)
        if (std::none_of(all.begin(), all.end(), [&](const Attribute& a) { return a.hasNameOf(attribute); }) &&
            all.size() < kMaxAttributes)
            all.push_back(attribute);
    if (all.size() == before) return;
    // Of another element, in no tree, that has them all.
    const NodeId other = createElement(node(element).tag, {}, node(element).space, all);
    words_[element + kAttributesWord] = words_[other + kAttributesWord];
    words_.node(element).count_ = node(other).count_;
}

std::uint32_t HtmlTree::locateKept(std::string_view text) {
    if (text.empty()) return sourceSize();
    const std::size_t place = kept_.locate(text);
    if (place + text.size() > std::numeric_limits<std::uint32_t>::max() - source_.size()) throw std::bad_alloc();
    return sourceSize() + static_cast<std::uint32_t>(place);
}

std::string_view HtmlTree::withReplacements(std::string_view text) {
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
