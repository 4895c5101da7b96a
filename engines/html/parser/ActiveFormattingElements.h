// The list of active formatting elements of the HTML Standard, section 13.2.4.3.
#pragma once

#include "engines/html/tree/Tree.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillow::html {

/// Limit for the active formatting elements after the last marker. Beyond it the earliest one is forgotten;
/// its content stays.
inline constexpr std::size_t kMaxActiveFormatting = 64;
/// Formatting elements with more attributes than this count as equal only if their attributes have the same order.
inline constexpr std::size_t kMaxUnorderedAttributes = 8;
/// "The Noah's Ark clause": no more than this many equal elements are in the list after the last marker.
inline constexpr std::size_t kMaxEqualFormatting = 3;

class ActiveFormattingElements {
public:
    struct Entry {
        NodeId id = kNoNode; ///< kNoNode for a marker
        Tag tag = Tag::unknown;
        [[nodiscard]] bool isMarker() const { return id == kNoNode; }
    };
    /// The index of an element that is not in the list.
    static constexpr std::size_t kNotListed = static_cast<std::size_t>(-1);

    explicit ActiveFormattingElements(const Tree& tree)
        : tree_(tree) {}

    [[nodiscard]] bool empty() const { return entries_.empty(); }
    [[nodiscard]] std::size_t size() const { return entries_.size(); }
    [[nodiscard]] const Entry& operator[](std::size_t index) const { return entries_[index]; }
    /// The last entry. The list must not be empty.
    [[nodiscard]] const Entry& last() const { return entries_.back(); }

    /// "Push onto the list of active formatting elements", with the Noah's Ark clause and the bound
    /// kMaxActiveFormatting.
    void push(NodeId element);
    void insertMarker() { entries_.push_back({}); }
    /// "Clear the list of active formatting elements up to the last marker".
    void clearToMarker();

    /// The index of an element, or kNotListed.
    [[nodiscard]] std::size_t find(NodeId id) const;
    /// The index of the last element with a tag after the last marker, or kNotListed.
    [[nodiscard]] std::size_t findLast(Tag tag) const;
    /// Removes an element. Does nothing if it is not in the list.
    void remove(NodeId id);
    void removeAt(std::size_t index) { entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(index)); }
    /// Keeps only the first `size` entries.
    void truncate(std::size_t size) { entries_.resize(size); }
    /// Puts an element of the same tag in the place of the one at an index.
    void replace(std::size_t index, NodeId id) { entries_[index].id = id; }
    void insert(std::size_t index, const Entry& entry) {
        entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(index), entry);
    }

    /// The number of entries and attributes examined so far.
    [[nodiscard]] std::uint64_t steps() const { return steps_; }

private:
    [[nodiscard]] bool areEqual(NodeId one, NodeId other) const;

    const Tree& tree_;
    std::vector<Entry> entries_;
    mutable std::uint64_t steps_ = 0;
};

} // namespace quillow::html
