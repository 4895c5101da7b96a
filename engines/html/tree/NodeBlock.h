// The nodes of a tree and the one block of memory that holds them. Each node uses only as many words as it needs.
#pragma once

#include "engines/html/tree/Tags.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <type_traits>

namespace quillow::html {

/// A node's offset in the tree's block, in 32-bit words.
using NodeId = std::uint32_t;
inline constexpr NodeId kNoNode = 0xFFFFFFFF;

enum class NodeKind : std::uint8_t {
    document,
    element,
    text,
    moved, ///< the node has moved; the word holds its new place, see Tree::resolved
};
enum class Namespace : std::uint8_t { html, svg, mathMl };

/// The one word that every node has. The words that only some nodes have follow it in the same block: see Tree.
class alignas(std::uint32_t) Node {
public:
    Tag tag = Tag::unknown; ///< elements only
    NodeKind kind : 2 = NodeKind::element;
    Namespace space : 2 = Namespace::html; ///< elements only

    [[nodiscard]] bool isLast() const { return next_ == Link::none; }

private:
    friend class Tree;
    friend class WordBlock;

    /// Where the next sibling or the first child is.
    enum class Link : std::uint8_t {
        none,
        behind,   ///< directly after the node's own words
        elsewhere ///< at the place that a word of the node holds
    };
    /// Which optional words an element or a text has.
    enum class Form : std::uint8_t {
        point,  ///< none
        narrow, ///< the next sibling's place
        wide,   ///< elements only: also the places of the first child and of the attributes
    };
    static constexpr std::uint16_t kCountMask = 0xFFF;

    Link next_ : 2 = Link::none;
    Link firstChild_ : 2 = Link::none;
    Form form_ : 2 = Form::point;
    /// Offset from the node to the word with its next sibling's place or, if the next sibling follows directly, to
    /// the sibling itself.
    std::uint16_t offset_ : 2 = 1;
    std::uint16_t count_ : 12 = 0; ///< an element's number of attributes; a text's size in bytes, or Tree::kLongText

    /// The new place of a node that has moved. It takes up all bits of the word except the kind.
    [[nodiscard]] NodeId target() const;
    void moveTo(NodeId id);
    static constexpr NodeId kMostTarget = (NodeId{1} << 30) - 1;
};

/// A growing block of 32-bit words, addressed by index. It grows by std::realloc: for a large block the system
/// remaps the pages instead of copying the bytes, so that no second block is ever filled beside it.
class WordBlock {
public:
    [[nodiscard]] NodeId size() const { return size_; }
    [[nodiscard]] std::uint32_t& operator[](NodeId word) { return words_.get()[word]; }
    [[nodiscard]] const std::uint32_t& operator[](NodeId word) const { return words_.get()[word]; }
    /// Makes room for `more` words and returns the place to write them. The caller then passes the end of what it
    /// wrote to `setEnd`. May invalidate references to words.
    [[nodiscard]] std::uint32_t* reserve(std::size_t more) {
        if (capacity_ - size_ < more) grow(more);
        return words_.get() + size_;
    }
    void setEnd(const std::uint32_t* end) { size_ = static_cast<NodeId>(end - words_.get()); }
    [[nodiscard]] Node& node(NodeId id) { return *reinterpret_cast<Node*>(words_.get() + id); }
    [[nodiscard]] const Node& node(NodeId id) const { return *reinterpret_cast<const Node*>(words_.get() + id); }

private:
    struct Free {
        void operator()(std::uint32_t* words) const { std::free(words); }
    };
    static_assert(std::is_trivially_copyable_v<Node> && sizeof(Node) == 4 && alignof(Node) == alignof(std::uint32_t));
    void grow(std::size_t more);

    std::unique_ptr<std::uint32_t, Free> words_;
    NodeId size_ = 0;
    NodeId capacity_ = 0;
};

} // namespace quillow::html
