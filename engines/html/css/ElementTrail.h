// Keeps the current element, its ancestors and the previous siblings of all of them while a tree is visited
// in document order.
#pragma once

#include "engines/html/tree/NodeBlock.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace quillow::html {

/// The surroundings of an element that selectors ask about. Every child element of an entered element must
/// be added, in order.
class ElementTrail {
public:
    struct Place {
        std::uint32_t level = 0;
        std::uint32_t index = 0;
    };

    /// Adds the next child element of the element entered last. It becomes the current element.
    void add(NodeId element) { elements_.push_back(element); }
    /// Enters the current element.
    void enter() { levels_.push_back({static_cast<std::uint32_t>(elements_.size())}); }
    /// Leaves the element entered last. It becomes the current element again.
    void leave() {
        elements_.resize(levels_.back().start);
        levels_.pop_back();
    }

    /// The place of the current element.
    [[nodiscard]] Place here() const {
        return {static_cast<std::uint32_t>(levels_.size() - 1), static_cast<std::uint32_t>(elements_.size() - 1)};
    }
    [[nodiscard]] NodeId element(const Place& place) const { return elements_[place.index]; }
    [[nodiscard]] std::optional<Place> parent(const Place& place) const {
        if (place.level == 0) return std::nullopt;
        return Place{place.level - 1, levels_[place.level].start - 1};
    }
    /// The element's position among its siblings, counted from 1.
    [[nodiscard]] std::uint32_t position(const Place& place) const {
        return place.index - levels_[place.level].start + 1;
    }
    /// The number of siblings, the element included, or 0 if `setSiblings` has not set it yet.
    [[nodiscard]] std::uint32_t siblings(const Place& place) const { return levels_[place.level].siblings; }
    void setSiblings(const Place& place, std::uint32_t number) { levels_[place.level].siblings = number; }
    /// The previous sibling, or std::nullopt.
    [[nodiscard]] std::optional<Place> previous(const Place& place) const {
        if (place.index == levels_[place.level].start) return std::nullopt;
        return Place{place.level, place.index - 1};
    }

private:
    struct Level {
        std::uint32_t start;
        std::uint32_t siblings = 0;
    };

    /// The children of each level so far. On all but the innermost level the last one is entered.
    std::vector<NodeId> elements_;
    std::vector<Level> levels_ = {{0}};
};

} // namespace quillow::html
