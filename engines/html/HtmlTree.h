// The document tree of the HTML engine: small nodes in a block, texts and attribute values as slices of the source. It keeps
// what rendering needs and nothing else (no comments, no doctype). `parseHtml` fills it; how is known to one file only.
#pragma once

#include "engines/html/HtmlAttributes.h"
#include "engines/html/NodeBlock.h"
#include "engines/html/StringArena.h"

#include <algorithm>
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

class HtmlTree;

/// The attributes of an element, as they are asked for.
class AttributeList {
public:
    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Attribute;
        using difference_type = std::ptrdiff_t;
        using pointer = const Attribute*;
        using reference = Attribute;
        Iterator(const HtmlTree& tree, NodeId word, std::size_t left)
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
        const HtmlTree* tree_;
        NodeId word_;
        std::size_t left_;
    };
    AttributeList(const HtmlTree& tree, NodeId word, std::size_t size)
        : tree_(tree)
        , word_(word)
        , size_(size) {}
    [[nodiscard]] Iterator begin() const { return {tree_, word_, size_}; }
    [[nodiscard]] Iterator end() const { return {tree_, word_, 0}; }
    [[nodiscard]] std::size_t size() const { return size_; }

private:
    const HtmlTree& tree_;
    NodeId word_;
    std::size_t size_;
};

/// A tree with its strings. Neither copied nor moved: the slices point into it, or into the source that it was given.
///
/// Large pages are dense with small elements and texts, so each takes as few words as it can. Behind its Node stand the sibling
/// before it (of the first one the last) and:
/// - of a text, its location, and its size if that is kLongText bytes or more;
/// - of an element, its first child, its parent, and, if it has attributes or a name of its own, or may get attributes later,
///   the place of its attributes.
/// At that place stand a bit for each known attribute, and the attributes; before them, where the tag is unknown, the location
/// and the size of the name. Copies of an element share them.
///
/// A lone text, most often the only child that its parent gets, is nothing but a Node, whose "next" is its location, and which
/// knows how far behind its parent it stands. As soon as it gets a sibling, another text takes its place.
class HtmlTree {
public:
    static constexpr NodeId kDocument = 0;

    /// A tree over a source that outlives it, without U+000D.
    explicit HtmlTree(std::string_view source);
    /// A tree that keeps its source.
    explicit HtmlTree(std::string source);
    HtmlTree(const HtmlTree&) = delete;
    HtmlTree& operator=(const HtmlTree&) = delete;

    [[nodiscard]] const Node& node(NodeId id) const { return words_.node(id); }
    /// What the nodes and their attributes take, in bytes.
    [[nodiscard]] std::size_t bytes() const { return words_.size() * sizeof(std::uint32_t); }
    /// Takes long for a text that has many siblings after it.
    [[nodiscard]] NodeId parent(NodeId id) const {
        return node(id).kind == NodeKind::text ? parentOfText(id) : words_[id + kParentWord];
    }
    /// The parent of a node that is the last of its children.
    [[nodiscard]] NodeId parentOfLast(NodeId id) const {
        return isLone(node(id)) ? id - node(id).distanceToParent() : node(id).next_ & ~Node::kLast;
    }
    [[nodiscard]] NodeId firstChild(NodeId id) const {
        return node(id).kind == NodeKind::text ? kNoNode : words_[id + kFirstChildWord];
    }
    [[nodiscard]] NodeId previous(NodeId id) const;
    /// A text node's characters; an element's name in lower case.
    [[nodiscard]] std::string_view text(NodeId id) const {
        const Node& node = words_.node(id);
        if (node.kind != NodeKind::text) return node.tag != Tag::unknown ? tagName(node.tag) : unknownName(id);
        if (isLone(node)) return textAt(node.next_ & ~Node::kLast, node.count_);
        return textAt(words_[id + kLocationWord], node.count_ == kLongText ? words_[id + kSizeWord] : node.count_);
    }
    [[nodiscard]] AttributeList attributes(NodeId id) const {
        const std::size_t count = node(id).count_;
        return {*this, count == 0 ? 0 : words_[id + kAttributesWord] + 1, count};
    }
    /// Whether an element has an attribute of that name.
    [[nodiscard]] bool has(NodeId id, AttributeName name) const { return has(id, AttributeNames{name}); }
    /// Whether it has any of some.
    [[nodiscard]] bool has(NodeId id, AttributeNames names) const {
        return node(id).count_ != 0 && (words_[words_[id + kAttributesWord]] & names.bits()) != 0;
    }
    /// The value of an attribute, or nothing where the element has none of that name; the first of several wins.
    [[nodiscard]] std::optional<std::string_view> attribute(NodeId id, AttributeName name) const {
        if (!has(id, name)) return std::nullopt;
        NodeId word = words_[id + kAttributesWord] + 1;
        while (AttributeHead(words_[word]).known() != name)
            word += wordsOf(AttributeHead(words_[word]));
        return valueAt(word);
    }
    /// The same for a name of any kind, in lower case.
    [[nodiscard]] std::optional<std::string_view> attribute(NodeId id, std::string_view name) const;

    /// The style, frameset and noframes elements, in the order in which they were created.
    [[nodiscard]] std::span<const NodeId> notedElements() const { return noted_; }

    [[nodiscard]] std::string_view source() const { return source_; }

    /// Whether the document is in quirks mode: a few rules of style are others then.
    [[nodiscard]] bool isQuirky() const { return quirky_; }
    void setQuirky() { quirky_ = true; }

    [[nodiscard]] NodeId createElement(Tag tag, std::string_view name, Namespace space,
                                       std::span<const Attribute> attributes);
    /// A new element with the name and the attributes of another.
    [[nodiscard]] NodeId createClone(NodeId original);
    [[nodiscard]] NodeId createText(std::string_view text) { return createText(locate(text), text.size()); }
    void append(NodeId parent, NodeId child) {
        const NodeId first = firstOfSeveral(parent);
        if (node(child).kind != NodeKind::text) words_[child + kParentWord] = parent;
        words_.node(child).next_ = parent | Node::kLast;
        if (first == kNoNode) {
            words_[parent + kFirstChildWord] = words_[child + kPreviousWord] = child;
            return;
        }
        const NodeId last = words_[first + kPreviousWord];
        words_.node(last).next_ = child;
        words_[child + kPreviousWord] = last;
        words_[first + kPreviousWord] = child;
    }
    /// Appends a new text, which is not empty.
    void appendText(NodeId parent, std::string_view text) {
        const std::uint32_t location = locate(text);
        const NodeId id = words_.size();
        // What begins with a line end stands before an element most often.
        if (words_[parent + kFirstChildWord] != kNoNode || text.front() == '\n' || text.size() >= kLongText ||
            id - parent > kMostDistance || location >= (kNoNode & ~Node::kLast)) {
            append(parent, createText(location, text.size()));
            return;
        }
        std::uint32_t* const end = words_.reserve(kNodeWords);
        Node& node = *std::construct_at(reinterpret_cast<Node*>(end));
        node.kind = NodeKind::text;
        node.setDistanceToParent(id - parent);
        node.count_ = static_cast<std::uint8_t>(text.size());
        node.next_ = location | Node::kLast;
        words_.setEnd(end + kNodeWords);
        words_[parent + kFirstChildWord] = id;
    }
    /// `before` is an element that is a child of `parent`, or kNoNode for the end.
    void insertBefore(NodeId parent, NodeId child, NodeId before);
    /// A text that is removed is not to be inserted again.
    void remove(NodeId child);
    /// Removes every child; answers how many there were.
    std::size_t removeChildren(NodeId parent);
    /// Moves every child of `from` to the end of `to`; answers how many there were.
    std::size_t moveChildren(NodeId from, NodeId to);
    /// Adds the attributes that the element, an html or body element of HTML, does not have yet.
    void addMissingAttributes(NodeId element, std::span<const Attribute> attributes);

    /// A copy that lives as long as the tree.
    [[nodiscard]] std::string_view keep(std::string_view text) { return kept_.keep(text); }
    /// The text with U+FFFD for each U+0000.
    [[nodiscard]] std::string_view withReplacements(std::string_view text);

private:
    friend class AttributeList::Iterator;

    static constexpr std::uint8_t kLongText = 0xFF;
    static constexpr NodeId kNodeWords = sizeof(Node) / sizeof(std::uint32_t);
    static constexpr NodeId kPreviousWord = kNodeWords;
    static constexpr NodeId kLocationWord = kPreviousWord + 1;
    static constexpr NodeId kSizeWord = kLocationWord + 1;
    static constexpr NodeId kFirstChildWord = kPreviousWord + 1;
    static constexpr NodeId kParentWord = kFirstChildWord + 1;
    static constexpr NodeId kAttributesWord = kParentWord + 1;
    static constexpr std::size_t kMostNodeWords = kAttributesWord + 1;
    static constexpr NodeId kMostDistance = 0xFF; ///< from a parent to its lone text

    [[nodiscard]] static bool isLone(const Node& node) {
        return node.kind == NodeKind::text && node.distanceToParent() != 0;
    }
    [[nodiscard]] NodeId createText(std::uint32_t location, std::size_t size) {
        std::uint32_t* end = words_.reserve(kMostNodeWords);
        const NodeId id = words_.size();
        Node& node = *std::construct_at(reinterpret_cast<Node*>(end));
        node.kind = NodeKind::text;
        node.count_ = static_cast<std::uint8_t>(std::min<std::size_t>(size, kLongText));
        end[kPreviousWord] = kNoNode;
        end[kLocationWord] = location;
        if (size >= kLongText) end[kSizeWord] = static_cast<std::uint32_t>(size);
        words_.setEnd(end + (size >= kLongText ? kSizeWord : kLocationWord) + 1);
        return id;
    }
    /// The first child of a parent that is about to get another.
    NodeId firstOfSeveral(NodeId parent) {
        const NodeId first = words_[parent + kFirstChildWord];
        return first == kNoNode || !isLone(node(first)) ? first : replaceLoneText(parent);
    }
    NodeId replaceLoneText(NodeId parent);

    /// The words of an attribute: its head, the location of its value, of a long value the size, and of an unknown name the
    /// location.
    [[nodiscard]] static NodeId wordsOf(AttributeHead head) {
        return 2U + (head.hasLongValue() ? 1U : 0U) + (head.isKnown() ? 0U : 1U);
    }
    static constexpr std::size_t kMostAttributeWords = 4;

    /// Where a text lies: in the source, or behind it in the strings kept.
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
    [[nodiscard]] NodeId parentOfText(NodeId id) const;
    [[nodiscard]] std::string_view valueAt(NodeId word) const {
        const AttributeHead head(words_[word]);
        return textAt(words_[word + 1], head.hasLongValue() ? words_[word + 2] : head.valueSize());
    }
    [[nodiscard]] Attribute attributeAt(NodeId word) const;
    /// Writes the words of attributes; answers where they end.
    std::uint32_t* writeAttributes(std::span<const Attribute> attributes, std::uint32_t* end);

    bool quirky_ = false;
    std::string ownSource_;
    std::string_view source_;
    WordBlock words_;
    std::vector<NodeId> noted_;
    StringArena kept_;
};

/// Elements nest no deeper than this; what is nested deeper becomes a sibling, so that its text is kept. Browsers draw the
/// same line at 512.
inline constexpr std::size_t kMaxTreeDepth = 512;

/// 13.2.3.5 Preprocessing the input stream: a copy whose line ends are LF.
[[nodiscard]] std::string copyWithLineFeeds(std::string_view source);

/// The tree of a document in well-formed UTF-8, scripting off. Never fails: any text is a document.
[[nodiscard]] std::unique_ptr<HtmlTree> parseHtml(std::string utf8);
/// The same without a copy: the document, which holds no U+000D, outlives the tree.
[[nodiscard]] std::unique_ptr<HtmlTree> parseHtmlInPlace(std::string_view utf8);

} // namespace quillow::html
