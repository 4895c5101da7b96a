// The elements around the one that is looked at, and those before it, while a tree is visited in document order.
#pragma once

#include "engines/html/tree/NodeBlock.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace quillow::html {

/// What selectors ask of an element's surroundings. Every child element of an element that is entered has to be added, in order.
class ElementTrail {
public:
    struct Place {
        std::uint32_t level = 0;
        std::uint32_t index = 0;
    };

    /// Comes to an element, in the one entered last and not left.
    void add(NodeId element) { elements_.push_back(element); }
    /// Enters the element that was come to last.
    void enter() { levels_.push_back({static_cast<std::uint32_t>(elements_.size())}); }
    /// Leaves the element entered last, of whose parent it is the last child so far.
    void leave() {
        elements_.resize(levels_.back().start);
        levels_.pop_back();
    }

    /// The element that was come to last.
    [[nodiscard]] Place here() const {
        return {static_cast<std::uint32_t>(levels_.size() - 1), static_cast<std::uint32_t>(elements_.size() - 1)};
    }
    [[nodiscard]] NodeId element(const Place& place) const { return elements_[place.index]; }
    [[nodiscard]] std::optional<Place> parent(const Place& place) const {
        if (place.level == 0) return std::nullopt;
        return Place{place.level - 1, levels_[place.level].start - 1};
    }
    /// How many of its siblings are there so far, itself included.
    [[nodiscard]] std::uint32_t position(const Place& place) const {
        return place.index - levels_[place.level].start + 1;
    }
    /// How many siblings there are in all, itself included, as soon as that has been said; or 0.
    [[nodiscard]] std::uint32_t siblings(const Place& place) const { return levels_[place.level].siblings; }
    void setSiblings(const Place& place, std::uint32_t number) { levels_[place.level].siblings = number; }
    /// The element before it with the same parent.
    [[nodiscard]] std::optional<Place> previous(const Place& place) const {
        if (place.index == levels_[place.level].start) return std::nullopt;
        return Place{place.level, place.index - 1};
    }

private:
    struct Level {
        std::uint32_t start;
        std::uint32_t siblings = 0;
    };

    std::vector<NodeId> elements_; ///< of each level the children so far, the last of which is entered
    std::vector<Level> levels_ = {{0}};
};

} // namespace quillow::html
