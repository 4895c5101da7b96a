// The document tree of the HTML engine: small nodes in one block, texts and attribute values as slices of the
// source. It keeps only what rendering needs: no comments, no doctype. The parser fills it.
#pragma once

#include "engines/html/tree/Attributes.h"
#include "engines/html/tree/NodeBlock.h"
#include "engines/html/tree/StringArena.h"

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::html {

/// Attributes of one element beyond this number are dropped.
inline constexpr std::size_t kMaxAttributes = 255;

class Tree;

/// The attributes of an element, decoded one by one as they are iterated.
class AttributeList {
public:
    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Attribute;
        using difference_type = std::ptrdiff_t;
        using pointer = const Attribute*;
        using reference = Attribute;
        Iterator(const Tree& tree, NodeId word, std::size_t left)
            : tree_(&tree)
            , word_(word)
            , left_(left) {}
        [[nodiscard]] Attribute operator*() const;
        Iterator& operator++();
        Iterator operator++(int) {
            const Iterator before = *this;
            ++*this;
            return before;
        }
        [[nodiscard]] bool operator==(const Iterator& other) const { return left_ == other.left_; }

    private:
        const Tree* tree_;
        NodeId word_;
        std::size_t left_;
    };
    AttributeList(const Tree& tree, NodeId word, std::size_t size)
        : tree_(tree)
        , word_(word)
        , size_(size) {}
    [[nodiscard]] Iterator begin() const { return {tree_, word_, size_}; }
    [[nodiscard]] Iterator end() const { return {tree_, word_, 0}; }
    [[nodiscard]] std::size_t size() const { return size_; }

private:
    const Tree& tree_;
    NodeId word_;
    std::size_t size_;
};

/// A tree with its strings. It can be neither copied nor moved, because its slices point into it or into the source
/// that it was given.
///
/// Large pages consist of many small elements and texts, so each node uses as few words as possible. Behind its
/// Node follow:
/// - for a text: its location; its size, if that is kLongText bytes or more; its next sibling, if that does not
///   follow directly;
/// - for an element: its next sibling; then, for some elements, its first child and the place of its attributes.
///   These two words exist if the element has attributes or a name of its own, if its first child does not follow
///   directly, or if its kind never moves. A `br` and its like without attributes have none of these words.
/// At the attributes' place there is a word with one bit for each AttributeName that occurs, and then the
/// attributes. For an element of unknown tag, the location and the size of its name come before that word. Clones
/// of an element share its attributes.
///
/// Nodes are nearly always created in document order, so the neighbour usually follows directly. If a node later
/// needs a word that it has no room for, it moves to the end of the block, and its old first word then holds the
/// new place.
///
/// No node knows its parent or its previous sibling. Code that changes the tree keeps the open elements; code that
/// reads the tree keeps the path to the current node (see TreeWalk).
class Tree {
public:
    static constexpr NodeId kDocument = 0;

    /// A tree over a source that outlives it. The source contains no U+000D.
    explicit Tree(std::string_view source);
    /// A tree that owns its source. The source contains no U+000D.
    explicit Tree(std::string source);
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

    /// The node with this number, as `firstChild` and `next` return it. A node that has moved since its creation
    /// has a new number: see `resolved`.
    [[nodiscard]] const Node& node(NodeId id) const {
        assert(words_.node(id).kind != NodeKind::moved);
        return words_.node(id);
    }
    /// The current number of the node that was created under this number.
    [[nodiscard]] NodeId resolved(NodeId id) const {
        const Node& node = words_.node(id);
        if (node.kind == NodeKind::moved) [[unlikely]]
            return node.target();
        return id;
    }
    /// The memory that the nodes and their attributes use, in bytes.
    [[nodiscard]] std::size_t bytes() const { return words_.size() * sizeof(std::uint32_t); }
    [[nodiscard]] NodeId firstChild(NodeId id) const {
        const Node::Link link = node(id).firstChild_;
        if (link == Node::Link::none) return kNoNode;
        const NodeId place = id + kFirstChildWord;
        return resolved(link == Node::Link::behind ? place : words_[place]);
    }
    /// The next sibling, or kNoNode.
    [[nodiscard]] NodeId next(NodeId id) const {
        const Node& node = this->node(id);
        if (node.next_ == Node::Link::none) return kNoNode;
        const NodeId place = id + node.offset_;
        return resolved(node.next_ == Node::Link::behind ? place : words_[place]);
    }
    /// A text node's characters; an element's name in lower case.
    [[nodiscard]] std::string_view text(NodeId id) const {
        const Node& node = this->node(id);
        if (node.kind == NodeKind::text) return characters(id);
        return node.tag != Tag::unknown ? tagName(node.tag) : unknownName(id);
    }
    /// A text node's characters.
    [[nodiscard]] std::string_view characters(NodeId id) const {
        const std::size_t count = node(id).count_;
        return textAt(words_[id + kLocationWord], count == kLongText ? words_[id + kSizeWord] : count);
    }
    [[nodiscard]] AttributeList attributes(NodeId id) const {
        const std::size_t count = node(id).count_;
        return {*this, count == 0 ? 0 : words_[id + kAttributesWord] + 1, count};
    }
    /// Whether an element has an attribute of that name.
    [[nodiscard]] bool has(NodeId id, AttributeName name) const { return has(id, AttributeNames{name}); }
    /// Whether an element has at least one of these attributes.
    [[nodiscard]] bool has(NodeId id, AttributeNames names) const {
        return node(id).count_ != 0 && (words_[words_[id + kAttributesWord]] & names.bits()) != 0;
    }
    /// The value of the attribute with this name, or std::nullopt if the element has none. The
    /// first of several wins.
    [[nodiscard]] std::optional<std::string_view> attribute(NodeId id, AttributeName name) const {
        if (!has(id, name)) return std::nullopt;
        NodeId word = words_[id + kAttributesWord] + 1;
        while (AttributeHead(words_[word]).known() != name)
            word += wordsOf(AttributeHead(words_[word]));
        return valueAt(word);
    }
    /// The same for any name, given in lower case.
    [[nodiscard]] std::optional<std::string_view> attribute(NodeId id, std::string_view name) const;

    /// The style, frameset and noframes elements, in the order in which they were created.
    [[nodiscard]] std::span<const NodeId> notedElements() const { return noted_; }

    [[nodiscard]] std::string_view source() const { return source_; }

    /// Whether the document is in quirks mode, in which a few style rules differ.
    [[nodiscard]] bool isQuirky() const { return quirky_; }
    void setQuirky() { quirky_ = true; }

    /// Creates an element that is not in the tree yet.
    [[nodiscard]] NodeId createElement(Tag tag, std::string_view name, Namespace space,
                                       std::span<const Attribute> attributes);
    /// Creates an element with the name and the attributes of another. `childrenFollow` says that its first
    /// child is created next.
    [[nodiscard]] NodeId createClone(NodeId original, bool childrenFollow);
    /// Creates a text node. The text must not be empty.
    [[nodiscard]] NodeId createText(std::string_view text) {
        const std::uint32_t location = locate(text);
        std::uint32_t* const end = words_.reserve(kMostNodeWords);
        const NodeId id = words_.size();
        const bool isLong = text.size() >= kLongText;
        Node node;
        node.kind = NodeKind::text;
        node.offset_ = isLong ? kSizeWord + 1 : kLocationWord + 1;
        node.count_ = (isLong ? kLongText : text.size()) & Node::kCountMask;
        std::construct_at(reinterpret_cast<Node*>(end), node);
        end[kLocationWord] = location;
        if (isLong) end[kSizeWord] = static_cast<std::uint32_t>(text.size());
        words_.setEnd(end + node.offset_);
        return id;
    }
    /// Creates an element as the last child of a parent. `last` is the parent's last child so far, or kNoNode.
    NodeId appendElement(NodeId parent, NodeId last, Tag tag, std::string_view name, Namespace space,
                         std::span<const Attribute> attributes) {
        linkNew(parent, last);
        return createElement(tag, name, space, attributes);
    }
    NodeId appendText(NodeId parent, NodeId last, std::string_view text) {
        linkNew(parent, last);
        return createText(text);
    }
    NodeId appendClone(NodeId parent, NodeId last, NodeId original) {
        linkNew(parent, last);
        return createClone(original, true);
    }
    /// Inserts a node that is not in the tree after its sibling `previous`, or as the first child if
    /// `previous` is kNoNode.
    void insert(NodeId parent, NodeId previous, NodeId child);
    /// Removes a node from the tree. `previous` is the sibling before it, or kNoNode.
    void remove(NodeId parent, NodeId previous, NodeId child);
    /// Removes all children.
    void removeChildren(NodeId parent);
    /// Moves the children of one element to another element, which has none.
    void moveChildren(NodeId from, NodeId to);
    /// Adds the attributes that the element does not have yet. It must be an HTML element with the
    /// tag html or body.
    void addMissingAttributes(NodeId element, std::span<const Attribute> attributes);

    /// A copy that lives as long as the tree.
    [[nodiscard]] std::string_view keep(std::string_view text) { return kept_.keep(text); }
    /// The text with U+FFFD for each U+0000.
    [[nodiscard]] std::string_view withReplacements(std::string_view text);

private:
    friend class AttributeList::Iterator;

    static constexpr std::uint16_t kLongText = Node::kCountMask;
    static constexpr NodeId kLocationWord = 1;
    static constexpr NodeId kSizeWord = 2;
    /// Holds the first child's place; in a narrow element the first child itself may begin here.
    static constexpr NodeId kFirstChildWord = 2;
    static constexpr NodeId kAttributesWord = 3;
    static constexpr NodeId kMostNodeWords = 4;

    /// Links the node that is created next as the last child of `parent`.
    void linkNew(NodeId parent, NodeId last) {
        if (last != kNoNode) {
            last = resolved(last);
            if (node(last).form_ == Node::Form::point) {
                if (last + node(last).offset_ == words_.size()) {
                    words_.node(last).next_ = Node::Link::behind;
                    return;
                }
                last = moveToEnd(last);
            }
            words_.node(last).next_ = Node::Link::elsewhere;
            words_[last + node(last).offset_] = words_.size();
        } else {
            parent = resolved(parent);
            if (node(parent).form_ != Node::Form::wide) {
                if (node(parent).form_ == Node::Form::narrow && parent + kFirstChildWord == words_.size()) {
                    words_.node(parent).firstChild_ = Node::Link::behind;
                    return;
                }
                parent = moveToEnd(parent);
            }
            words_.node(parent).firstChild_ = Node::Link::elsewhere;
            words_[parent + kFirstChildWord] = words_.size();
        }
    }
    NodeId moveToEnd(NodeId id);
    void setNext(NodeId id, NodeId next);
    void setFirstChild(NodeId id, NodeId child);
    /// Sets the next sibling of `previous`, or the first child of `parent` if `previous` is kNoNode.
    void setFollowing(NodeId parent, NodeId previous, NodeId following) {
        previous != kNoNode ? setNext(resolved(previous), following) : setFirstChild(resolved(parent), following);
    }

    /// The number of words of an attribute: its head, the location of its value, the size of a long value, and the
    /// location of an unknown name.
    [[nodiscard]] static NodeId wordsOf(AttributeHead head) {
        return 2U + (head.hasLongValue() ? 1U : 0U) + (head.isKnown() ? 0U : 1U);
    }
    static constexpr std::size_t kMostAttributeWords = 4;

    /// A text's location: its offset in the source or, for a kept string, the source's size plus its
    /// place in the arena.
    [[nodiscard]] std::uint32_t locate(std::string_view text) {
        const std::size_t offset =
            reinterpret_cast<std::uintptr_t>(text.data()) - reinterpret_cast<std::uintptr_t>(source_.data());
        return offset < source_.size() ? static_cast<std::uint32_t>(offset) : locateKept(text);
    }
    [[nodiscard]] std::uint32_t locateKept(std::string_view text);
    [[nodiscard]] std::string_view textAt(std::uint32_t location, std::size_t size) const {
        if (location < source_.size()) return {source_.data() + location, size};
        return size == 0 ? std::string_view() : std::string_view(kept_.at(location - sourceSize()), size);
    }
    [[nodiscard]] std::uint32_t sourceSize() const { return static_cast<std::uint32_t>(source_.size()); }
    [[nodiscard]] std::string_view unknownName(NodeId id) const;
    [[nodiscard]] std::string_view valueAt(NodeId word) const {
        const AttributeHead head(words_[word]);
        return textAt(words_[word + 1], head.hasLongValue() ? words_[word + 2] : head.valueSize());
    }
    [[nodiscard]] Attribute attributeAt(NodeId word) const;
    /// Writes the words of the attributes and returns their end.
    std::uint32_t* writeAttributes(std::span<const Attribute> attributes, std::uint32_t* end);

    bool quirky_ = false;
    std::string ownSource_;
    std::string_view source_;
    WordBlock words_;
    std::vector<NodeId> noted_;
    StringArena kept_;
};

/// Elements nest no deeper than this. A deeper element becomes a sibling, so that its text is kept. Browsers have
/// the same limit of 512.
inline constexpr std::size_t kMaxTreeDepth = 512;

} // namespace quillow::html
