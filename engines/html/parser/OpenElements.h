// The stack of open elements of the HTML Standard, section 13.2.4.2, with the operations that need only the stack.
#pragma once

#include "engines/html/parser/OpenElement.h"
#include "engines/html/tree/TagSet.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillow::html {

/// 13.2.4.2: the "special" category of elements.
[[nodiscard]] bool isSpecial(const OpenElement& element);

/// The kinds of scope in which tree construction looks for an element.
enum class Scope : std::uint8_t { standard, listItem, button, table };

class OpenElements {
public:
    /// The index of an element that is not in the stack.
    static constexpr std::size_t kNotOpen = static_cast<std::size_t>(-1);

    [[nodiscard]] bool empty() const { return elements_.empty(); }
    [[nodiscard]] std::size_t size() const { return elements_.size(); }
    /// The element at an index. Index 0 is the html element.
    [[nodiscard]] const OpenElement& operator[](std::size_t index) const { return elements_[index]; }
    [[nodiscard]] OpenElement& operator[](std::size_t index) { return elements_[index]; }
    /// "The current node": the element that was opened last. The stack must not be empty.
    [[nodiscard]] const OpenElement& current() const { return elements_.back(); }
    [[nodiscard]] OpenElement& current() { return elements_.back(); }
    [[nodiscard]] bool currentIs(Tag tag) const {
        return !empty() && current().space == Namespace::html && current().tag == tag;
    }
    [[nodiscard]] bool currentIsIn(const TagSet& tags) const {
        return !empty() && current().space == Namespace::html && tags.contains(current().tag);
    }

    /// Whether an HTML element with this tag is open.
    [[nodiscard]] bool isOpen(Tag tag) const;
    [[nodiscard]] bool isOpen(NodeId id) const { return find(id) != kNotOpen; }
    /// Whether an element is open. `index` is its index at the last search, and is updated.
    [[nodiscard]] bool isStillOpen(NodeId id, std::size_t& index) const {
        if (index < size() && elements_[index].id == id) return true;
        index = find(id);
        return index != kNotOpen;
    }
    /// The index of an element, or kNotOpen.
    [[nodiscard]] std::size_t find(NodeId id) const;
    /// "Have an element in a specific scope": whether the nearest of the HTML elements with these tags is in scope.
    [[nodiscard]] bool hasInScope(const TagSet& tags, Scope scope = Scope::standard) const;
    [[nodiscard]] bool hasParagraphInButtonScope() const {
        return openParagraphs_ > 0 && hasInScope({Tag::p}, Scope::button);
    }
    /// Whether the element at an index is in the standard scope.
    [[nodiscard]] bool isInScope(std::size_t index) const;
    /// "The furthest block" of the adoption agency algorithm: the index of the topmost special element below
    /// an index, or kNotOpen.
    [[nodiscard]] std::size_t furthestBlock(std::size_t index) const;

    void push(const OpenElement& element) {
        if (element.tag == Tag::p) ++openParagraphs_;
        elements_.push_back(element);
    }
    void pop() {
        if (current().tag == Tag::p) --openParagraphs_;
        elements_.pop_back();
    }
    /// Pops elements until `size` are left.
    void popTo(std::size_t size) {
        while (elements_.size() > size)
            pop();
    }
    /// Pops elements up to and including an HTML element with one of these tags. The html element is never popped.
    void popUntil(const TagSet& tags);
    void clear();
    void insert(std::size_t index, const OpenElement& element);
    /// Removes an element, wherever it is in the stack. Does nothing if it is not open.
    void remove(NodeId id);
    void removeAt(std::size_t index);

    /// "Clear the stack back to a table (table body, table row) context".
    void clearBackTo(const TagSet& tags);
    /// 13.2.6.3 "Generate implied end tags", except for elements with the tag `except`.
    void generateImpliedEndTags(Tag except = Tag::unknown);
    /// 13.2.6.3 "Generate all implied end tags thoroughly".
    void generateAllImpliedEndTags();
    /// "Close a p element".
    void closeParagraph();
    /// The same if there is one in button scope.
    void closeParagraphInButtonScope() {
        if (hasParagraphInButtonScope()) closeParagraph();
    }

    /// Updates the neighbours of the open elements before `element` is removed from its parent.
    void unlink(const OpenElement& element);
    /// Replaces the parent `from` in the entries from an index on. If `to` is kNoNode, these elements are no longer in
    /// the tree.
    void changeParent(std::size_t index, NodeId from, NodeId to);

    /// The number of elements examined so far, apart from those that were popped.
    [[nodiscard]] std::uint64_t steps() const { return steps_; }

private:
    /// Counts the steps of a search that went from the top of the stack down to `found`. Returns `found`.
    using Position = std::vector<OpenElement>::const_reverse_iterator;
    Position counted(const Position& found) const {
        steps_ += static_cast<std::uint64_t>(found - elements_.rbegin()) + 1;
        return found;
    }

    std::vector<OpenElement> elements_;
    std::size_t openParagraphs_ = 0;
    mutable std::uint64_t steps_ = 0;
};

} // namespace quillow::html
