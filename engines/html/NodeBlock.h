// The nodes of a tree, and the one block of memory that they stand in, each as long as it has to be.
#pragma once

#include "engines/html/HtmlTags.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <type_traits>

namespace quillow::html {

/// A node's place in the tree's block.
using NodeId = std::uint32_t;
inline constexpr NodeId kNoNode = 0xFFFFFFFF;

enum class NodeKind : std::uint8_t { document, element, text };
enum class Namespace : std::uint8_t { html, svg, mathMl };

/// What there is of every node. Behind it, in the same block, stand the words that only some nodes have: see HtmlTree.
class Node {
public:
    NodeKind kind = NodeKind::element;
    Namespace space = Namespace::html; ///< of an element
    Tag tag = Tag::unknown;            ///< of an element

    [[nodiscard]] bool isLast() const { return (next_ & kLast) != 0; }
    [[nodiscard]] NodeId next() const { return isLast() ? kNoNode : next_; }

private:
    friend class HtmlTree;
    friend class WordBlock;
    /// Marks the last of its parent's children, whose "next" is the parent.
    static constexpr NodeId kLast = 0x80000000;

    /// Of a lone text the words from its parent to it, of any other text 0: it stands where an element has its namespace.
    [[nodiscard]] NodeId distanceToParent() const { return static_cast<NodeId>(space); }
    void setDistanceToParent(NodeId words) { space = static_cast<Namespace>(words); }

    std::uint8_t count_ = 0; ///< of an element's attributes; of a text's bytes, or HtmlTree::kLongText
    NodeId next_ = kNoNode;
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
    static_assert(std::is_trivially_copyable_v<Node> && sizeof(Node) == 8 && alignof(Node) == alignof(std::uint32_t));
    void grow(std::size_t more);

    std::unique_ptr<std::uint32_t, Free> words_;
    NodeId size_ = 0;
    NodeId capacity_ = 0;
};

} // namespace quillow::html
