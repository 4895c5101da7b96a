// The nodes of a tree, and the one block of memory that they stand in, each as long as it has to be.
#pragma once

#include "engines/html/tree/Tags.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <type_traits>

namespace quillow::html {

/// A node's place in the tree's block.
using NodeId = std::uint32_t;
inline constexpr NodeId kNoNode = 0xFFFFFFFF;

enum class NodeKind : std::uint8_t {
    document,
    element,
    text,
    moved, ///< no node any more: it stands elsewhere, see Tree::resolved
};
enum class Namespace : std::uint8_t { html, svg, mathMl };

/// What there is of every node: one word. Behind it, in the same block, stand the words that only some nodes have: see Tree.
class alignas(std::uint32_t) Node {
public:
    Tag tag = Tag::unknown; ///< of an element
    NodeKind kind : 2 = NodeKind::element;
    Namespace space : 2 = Namespace::html; ///< of an element

    [[nodiscard]] bool isLast() const { return next_ == Link::none; }

private:
    friend class Tree;
    friend class WordBlock;

    /// Where a neighbour stands.
    enum class Link : std::uint8_t {
        none,
        behind,   ///< right behind the node's own words
        elsewhere ///< where a word of the node says
    };
    /// Which words an element has, or a text, beside those that every one has.
    enum class Form : std::uint8_t {
        point,  ///< none
        narrow, ///< that of the next sibling
        wide,   ///< of an element: those of the first child and the attributes too
    };
    static constexpr std::uint16_t kCountMask = 0xFFF;

    Link next_ : 2 = Link::none;
    Link firstChild_ : 2 = Link::none;
    Form form_ : 2 = Form::point;
    /// From the node to the word of its next sibling, or, if that is right behind, to the sibling itself.
    std::uint16_t offset_ : 2 = 1;
    std::uint16_t count_ : 12 = 0; ///< of an element's attributes; of a text's bytes, or Tree::kLongText

    /// Of a node that has moved, where it is: all that the word can hold beside the kind.
    [[nodiscard]] NodeId target() const;
    void moveTo(NodeId id);
    static constexpr NodeId kMostTarget = (NodeId{1} << 30) - 1;
};

/// Words of 32 bits in one block, which grows by std::realloc: of a large one the system moves the pages, not the bytes, so that
/// no second block is ever filled beside it. Places in it are numbers.
class WordBlock {
public:
    [[nodiscard]] NodeId size() const { return size_; }
    [[nodiscard]] std::uint32_t& operator[](NodeId word) { return words_.get()[word]; }
    [[nodiscard]] const std::uint32_t& operator[](NodeId word) const { return words_.get()[word]; }
    /// Where so many words may be appended; what is written is then said to `setEnd`. References to words may end.
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
