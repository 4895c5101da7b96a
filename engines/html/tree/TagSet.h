// Sets of tags as bit sets, because tree construction compares a tag with dozens of others.
#pragma once

#include "engines/html/tree/Tags.h"

#include <initializer_list>

namespace quillow::html {

class TagSet {
public:
    constexpr TagSet(std::initializer_list<Tag> tags) {
        for (const Tag tag : tags)
            words_[index(tag)] |= bit(tag);
    }
    [[nodiscard]] constexpr bool contains(Tag tag) const { return (words_[index(tag)] & bit(tag)) != 0; }
    [[nodiscard]] constexpr TagSet with(std::initializer_list<Tag> tags) const {
        TagSet result = *this;
        for (const Tag tag : tags)
            result.words_[index(tag)] |= bit(tag);
        return result;
    }

private:
    static constexpr std::size_t index(Tag tag) { return static_cast<std::size_t>(tag) / 64; }
    static constexpr std::uint64_t bit(Tag tag) { return std::uint64_t{1} << (static_cast<std::size_t>(tag) % 64); }
    std::uint64_t words_[4] = {};
};

inline constexpr TagSet kHeadings{Tag::h1, Tag::h2, Tag::h3, Tag::h4, Tag::h5, Tag::h6};
inline constexpr TagSet kTableContext{Tag::table, Tag::tbody, Tag::tfoot, Tag::thead, Tag::tr};
inline constexpr TagSet kTableSections{Tag::tbody, Tag::tfoot, Tag::thead};
inline constexpr TagSet kCells{Tag::td, Tag::th};

} // namespace quillow::html
