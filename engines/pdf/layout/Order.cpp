#include "engines/pdf/layout/Order.h"

#include "engines/pdf/layout/Line.h"

#include <algorithm>
#include <cstddef>

namespace quillow::pdf {

namespace {

/// Items that follow one another in the stream and on the page.
struct Block {
    std::uint32_t first = 0; ///< index of its first item
    std::uint32_t count = 0;
    float left = 0;
    float right = 0;
    float bottom = 0;
    float top = 0;

    [[nodiscard]] float height() const { return top - bottom; }
};

enum class Step { goesOn, otherPlace, goesBack };

/// The next line of a column begins at most so far below the line before it. In ems of the larger one.
constexpr float kNextLine = 3.0F;
/// Vertical extents with so much in common are one row.
constexpr float kSameRow = 0.5F;
/// Boxes may overlap by so much and still be apart: letters reach beyond their boxes. In points.
constexpr float kTouch = 1.0F;
/// A gutter is at least so wide. In points.
constexpr float kLeastGutter = 5.0F;
/// The recursion of cuts ends at this depth: no page has so many columns in columns.
constexpr int kMostCuts = 40;

bool overlapHorizontally(const Item& a, const Item& b) {
    return a.left < b.right - kTouch && b.left < a.right - kTouch;
}

Step stepBetween(const Item& before, const Item& after) {
    if (verticalOverlap(before, after) > kSameRow)
        return after.left >= before.right - kTouch ? Step::goesOn : Step::goesBack;
    const bool overlap = overlapHorizontally(before, after);
    if (after.bottom > before.bottom) return overlap || after.right < before.left ? Step::goesBack : Step::otherPlace;
    const float distance = before.bottom - after.top;
    return overlap && distance < kNextLine * std::max(before.size, after.size) ? Step::goesOn : Step::otherPlace;
}

class ReadingOrder {
public:
    explicit ReadingOrder(std::span<const Item> items)
        : items_(items) {}

    std::vector<std::uint32_t> find() && {
        std::vector<std::uint32_t> order;
        order.reserve(items_.size());
        std::vector<std::uint32_t> blocks;
        const bool goesBack = findBlocks();
        for (std::uint32_t i = 0; i < blocks_.size(); ++i)
            blocks.push_back(i);
        if (goesBack) cut(blocks, kMostCuts);
        for (const std::uint32_t block : blocks)
            for (std::uint32_t i = 0; i < blocks_[block].count; ++i)
                order.push_back(blocks_[block].first + i);
        return order;
    }

private:
    /// Returns whether the stream goes back anywhere.
    bool findBlocks() {
        bool goesBack = false;
        for (std::uint32_t i = 0; i < items_.size(); ++i) {
            const Item& item = items_[i];
            const Step step = i == 0 ? Step::otherPlace : stepBetween(items_[i - 1], item);
            goesBack = goesBack || step == Step::goesBack;
            if (step == Step::goesOn)
                extend(blocks_.back(), item);
            else
                blocks_.push_back({i, 1, item.left, item.right, item.bottom, item.top});
        }
        return goesBack;
    }

    static void extend(Block& block, const Item& item) {
        ++block.count;
        block.left = std::min(block.left, item.left);
        block.right = std::max(block.right, item.right);
        block.bottom = std::min(block.bottom, item.bottom);
        block.top = std::max(block.top, item.top);
    }

    /// Sorts the blocks of a region: columns first if a gutter goes through all of it, else what is above first.
    void cut(std::span<std::uint32_t> blocks, int depth) {
        if (blocks.size() < 2 || depth == 0) return;
        if (const std::size_t at = cutAtGutter(blocks); at != 0) {
            cut(blocks.first(at), depth - 1);
            cut(blocks.subspan(at), depth - 1);
        } else if (const std::size_t below = cutBetweenRows(blocks); below != 0) {
            cut(blocks.first(below), depth - 1);
            cut(blocks.subspan(below), depth - 1);
        } else {
            std::stable_sort(blocks.begin(), blocks.end()); // in content order
        }
    }

    /// Sorts by the left and returns how many blocks are left of the first gutter; 0 if there is none.
    std::size_t cutAtGutter(std::span<std::uint32_t> blocks) {
        std::stable_sort(blocks.begin(), blocks.end(),
                         [this](std::uint32_t a, std::uint32_t b) { return blocks_[a].left < blocks_[b].left; });
        float right = blocks_[blocks[0]].right;
        for (std::size_t i = 1; i < blocks.size(); ++i) {
            if (blocks_[blocks[i]].left > right + kLeastGutter) return i;
            right = std::max(right, blocks_[blocks[i]].right);
        }
        return 0;
    }

    /// Sorts by the top and returns how many blocks are above the first free stripe; 0 if there is none.
    std::size_t cutBetweenRows(std::span<std::uint32_t> blocks) {
        std::stable_sort(blocks.begin(), blocks.end(),
                         [this](std::uint32_t a, std::uint32_t b) { return blocks_[a].top > blocks_[b].top; });
        float bottom = blocks_[blocks[0]].bottom;
        for (std::size_t i = 1; i < blocks.size(); ++i) {
            if (blocks_[blocks[i]].top < bottom + kTouch) return i;
            bottom = std::min(bottom, blocks_[blocks[i]].bottom);
        }
        return 0;
    }

    std::span<const Item> items_;
    std::vector<Block> blocks_;
};

} // namespace

std::vector<std::uint32_t> readingOrder(std::span<const Item> items) {
    return ReadingOrder(items).find();
}

} // namespace quillow::pdf
