// The document tree of the HTML engine: small nodes in an arena, texts and attribute values as slices of the source. It keeps
// what rendering needs and nothing else (no comments, no doctype). `parseHtml` fills it; how is known to one file only.
#pragma once

#include "engines/html/HtmlTags.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::html {

using NodeId = std::uint32_t;
inline constexpr NodeId kNoNode = 0xFFFFFFFF;

enum class NodeKind : std::uint8_t { document, element, text };
enum class Namespace : std::uint8_t { html, svg, mathMl };

struct Attribute {
    std::string_view name; ///< ASCII lower case
    std::string_view value;
};

struct Node {
    NodeId parent = kNoNode;
    NodeId previous = kNoNode;
    NodeId next = kNoNode;
    NodeId firstChild = kNoNode;
    NodeId lastChild = kNoNode;
    NodeKind kind = NodeKind::element;
    Namespace space = Namespace::html;
    Tag tag = Tag::unknown;
    std::uint32_t firstAttribute = 0;
    std::uint32_t attributeCount = 0;
    std::string_view text; ///< a text node's characters; an element's name in lower case
};

/// A tree with its strings. Neither copied nor moved: the slices point into it.
class HtmlTree {
public:
    static constexpr NodeId kDocument = 0;

    explicit HtmlTree(std::string source);
    HtmlTree(const HtmlTree&) = delete;
    HtmlTree& operator=(const HtmlTree&) = delete;

    [[nodiscard]] const Node& node(NodeId id) const { return nodes_[id]; }
    [[nodiscard]] std::size_t size() const { return nodes_.size(); }
    [[nodiscard]] std::span<const Attribute> attributes(NodeId id) const {
        return std::span(attributes_).subspan(nodes_[id].firstAttribute, nodes_[id].attributeCount);
    }
    /// The value of an attribute, or nullptr where the element has none of that name; the first of several wins.
    [[nodiscard]] const std::string_view* attribute(NodeId id, std::string_view name) const;

    /// The source, which the builder may rewrite in place (lower case for names, character references) before it takes slices.
    [[nodiscard]] std::string& source() { return source_; }

    [[nodiscard]] NodeId createElement(Tag tag, std::string_view name, Namespace space,
                                       std::span<const Attribute> attributes);
    /// A new element with the name and the attributes of another.
    [[nodiscard]] NodeId createClone(const Node& original);
    [[nodiscard]] NodeId createText(std::string_view text);
    void append(NodeId parent, NodeId child) { insertBefore(parent, child, kNoNode); }
    /// `before` is a child of `parent`, or kNoNode for the end.
    void insertBefore(NodeId parent, NodeId child, NodeId before);
    void remove(NodeId child);
    /// Moves every child of `from` to the end of `to`; answers how many there were.
    std::size_t moveChildren(NodeId from, NodeId to);
    /// Adds the attributes that the element does not have yet.
    void addMissingAttributes(NodeId element, std::span<const Attribute> attributes);

    /// Room for `size` bytes that lives as long as the tree.
    [[nodiscard]] char* allocate(std::size_t size);
    /// A copy that lives as long as the tree.
    [[nodiscard]] std::string_view keep(std::string_view text);
    /// The text with U+FFFD for each U+0000.
    [[nodiscard]] std::string_view withReplacements(std::string_view text);

private:
    std::string source_;
    std::vector<Node> nodes_;
    std::vector<Attribute> attributes_;
    std::vector<std::unique_ptr<char[]>> chunks_;
    char* free_ = nullptr;
    std::size_t freeBytes_ = 0;
};

/// Elements nest no deeper than this; what is nested deeper becomes a sibling, so that its text is kept. Browsers draw the
/// same line at 512.
inline constexpr std::size_t kMaxTreeDepth = 512;
/// Attributes of one element beyond this number are dropped.
inline constexpr std::size_t kMaxAttributes = 1024;

/// The tree of a document in well-formed UTF-8, scripting off. Never fails: any text is a document.
[[nodiscard]] std::unique_ptr<HtmlTree> parseHtml(std::string utf8);

} // namespace quillow::html
