// The document tree of the HTML engine: small nodes in an arena, texts and attribute values as slices of the source. It keeps
// what rendering needs and nothing else (no comments, no doctype). `parseHtml` fills it; how is known to one file only.
#pragma once

#include "engines/html/HtmlAttributes.h"
#include "engines/html/HtmlTags.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace quillow::html {

using NodeId = std::uint32_t;
inline constexpr NodeId kNoNode = 0xFFFFFFFF;

enum class NodeKind : std::uint8_t { document, element, text };
enum class Namespace : std::uint8_t { html, svg, mathMl };

struct Node {
    NodeId parent = kNoNode;
    NodeId previous = kNoNode;
    NodeId next = kNoNode;
    NodeId firstChild = kNoNode;
    NodeId lastChild = kNoNode;
    NodeKind kind = NodeKind::element;
    Namespace space = Namespace::html;
    Tag tag = Tag::unknown;
    std::uint8_t attributeCount = 0;
    std::uint32_t sizeOrKnown = 0; ///< a text node's size; an element's known attributes, a bit each
    union {
        const char* text; ///< of a text node
        const Attribute*
            attributes; ///< of an element; before them, where its tag is unknown, its name as an attribute's value
    } content = {nullptr};

    /// A text node's characters; an element's name in lower case.
    [[nodiscard]] std::string_view text() const {
        if (kind == NodeKind::text) return {content.text, sizeOrKnown};
        return tag != Tag::unknown || kind == NodeKind::document ? tagName(tag) : content.attributes[-1].value();
    }
    /// Whether an element has an attribute of that name.
    [[nodiscard]] bool has(AttributeName name) const { return (sizeOrKnown >> static_cast<unsigned>(name) & 1) != 0; }
};

/// Attributes of one element beyond this number are dropped.
inline constexpr std::size_t kMaxAttributes = 255;

/// The nodes in one block, which grows by std::realloc: of a large one the system moves the pages, not the bytes, so that no
/// second block is ever filled beside it.
class NodeBlock {
public:
    [[nodiscard]] std::size_t size() const { return size_; }
    [[nodiscard]] Node& operator[](NodeId id) { return nodes_.get()[id]; }
    [[nodiscard]] const Node& operator[](NodeId id) const { return nodes_.get()[id]; }
    void reserve(std::size_t count);
    /// Appends a node; references to others may end.
    Node& emplaceBack() {
        if (size_ == capacity_) reserve(2 * capacity_ + 16);
        return *std::construct_at(nodes_.get() + size_++);
    }

private:
    struct Free {
        void operator()(Node* nodes) const { std::free(nodes); }
    };
    static_assert(std::is_trivially_copyable_v<Node>);
    std::unique_ptr<Node, Free> nodes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

/// A tree with its strings. Neither copied nor moved: the slices point into it, or into the source that it was given.
class HtmlTree {
public:
    static constexpr NodeId kDocument = 0;

    /// A tree over a source that outlives it, without U+000D.
    explicit HtmlTree(std::string_view source);
    /// A tree that keeps its source.
    explicit HtmlTree(std::string source);
    HtmlTree(const HtmlTree&) = delete;
    HtmlTree& operator=(const HtmlTree&) = delete;

    [[nodiscard]] const Node& node(NodeId id) const { return nodes_[id]; }
    [[nodiscard]] std::size_t size() const { return nodes_.size(); }
    [[nodiscard]] std::span<const Attribute> attributes(NodeId id) const {
        return {nodes_[id].content.attributes, nodes_[id].attributeCount};
    }
    /// The value of an attribute, or nothing where the element has none of that name; the first of several wins.
    [[nodiscard]] std::optional<std::string_view> attribute(NodeId id, AttributeName name) const {
        if (!nodes_[id].has(name)) return std::nullopt;
        for (const Attribute& attribute : attributes(id))
            if (attribute.known() == name) return attribute.value();
        return std::nullopt;
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
    [[nodiscard]] NodeId createClone(const Node& original);
    [[nodiscard]] NodeId createText(std::string_view text) {
        const auto id = static_cast<NodeId>(nodes_.size());
        Node& node = nodes_.emplaceBack();
        node.kind = NodeKind::text;
        node.sizeOrKnown = static_cast<std::uint32_t>(text.size());
        node.content.text = text.data();
        return id;
    }
    void append(NodeId parent, NodeId child) {
        Node& inserted = nodes_[child];
        Node& container = nodes_[parent];
        inserted.parent = parent;
        inserted.previous = container.lastChild;
        (container.lastChild == kNoNode ? container.firstChild : nodes_[container.lastChild].next) = child;
        container.lastChild = child;
    }
    /// `before` is a child of `parent`, or kNoNode for the end.
    void insertBefore(NodeId parent, NodeId child, NodeId before);
    void remove(NodeId child);
    /// Moves every child of `from` to the end of `to`; answers how many there were.
    std::size_t moveChildren(NodeId from, NodeId to);
    /// Adds the attributes that the element does not have yet.
    void addMissingAttributes(NodeId element, std::span<const Attribute> attributes);

    /// A copy that lives as long as the tree.
    [[nodiscard]] std::string_view keep(std::string_view text);
    /// The text with U+FFFD for each U+0000.
    [[nodiscard]] std::string_view withReplacements(std::string_view text);

private:
    /// Alignments are powers of two.
    [[nodiscard]] char* allocate(std::size_t size, std::size_t alignment);
    [[nodiscard]] char* allocateChunk(std::size_t size);
    [[nodiscard]] Attribute* allocateAttributes(std::size_t count) {
        return reinterpret_cast<Attribute*>(allocate(count * sizeof(Attribute), alignof(Attribute)));
    }

    bool quirky_ = false;
    std::string ownSource_;
    std::string_view source_;
    NodeBlock nodes_;
    std::vector<NodeId> noted_;
    std::vector<std::unique_ptr<char[]>> chunks_;
    char* free_ = nullptr;
    std::size_t freeBytes_ = 0;
};

/// Elements nest no deeper than this; what is nested deeper becomes a sibling, so that its text is kept. Browsers draw the
/// same line at 512.
inline constexpr std::size_t kMaxTreeDepth = 512;

/// The tree of a document in well-formed UTF-8, scripting off. Never fails: any text is a document.
[[nodiscard]] std::unique_ptr<HtmlTree> parseHtml(std::string utf8);
/// The same without a copy where that can be: the document outlives the tree.
[[nodiscard]] std::unique_ptr<HtmlTree> parseHtmlInPlace(std::string_view utf8);

} // namespace quillow::html
