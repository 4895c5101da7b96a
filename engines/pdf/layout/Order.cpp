#include "engines/pdf/layout/Order.h"

#include "engines/pdf/layout/Line.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>

namespace quillow::pdf {

namespace {

/// Items that follow one another in the stream and on the page.
struct Block {
    std::uint32_t first = 0; ///< index of its first item in the order
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
/// A block of several lines is parted only where the space is much wider than between lines: the pieces of a formula
/// are nearer, and the stream has their order. In ems.
constexpr float kPartingSpace = 1.0F;
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

/// A way to part the blocks of a region in two: the first `count` of them, sorted by their left or by their top.
struct Cut {
    bool isGutter = false;
    std::size_t count = 0; ///< 0 if there is none
    /// How often the stream goes from the second part to the first, and how often it goes back inside a part.
    std::ptrdiff_t cost = 0;
};

class ReadingOrder {
public:
    ReadingOrder(std::span<const Item> items, TextSource source, Evidence* evidence)
        : items_(items)
        , source_(source)
        , evidence_(evidence)
        , rank_(items.size()) {}

    std::vector<std::uint32_t> find() && {
        findBlocks();
        std::vector<std::uint32_t> blocks(blocks_.size());
        std::iota(blocks.begin(), blocks.end(), 0U);
        order_.reserve(items_.size());
        sort(blocks, kMostCuts);
        return std::move(order_);
    }

private:
    void findBlocks() {
        for (std::uint32_t i = 0; i < items_.size(); ++i) {
            const Item& item = items_[i];
            if (i > 0 && stepBetween(items_[i - 1], item) == Step::goesOn)
                extend(blocks_.back(), item);
            else
                blocks_.push_back({i, 1, item.left, item.right, item.bottom, item.top});
        }
    }

    static void extend(Block& block, const Item& item) {
        ++block.count;
        block.left = std::min(block.left, item.left);
        block.right = std::max(block.right, item.right);
        block.bottom = std::min(block.bottom, item.bottom);
        block.top = std::max(block.top, item.top);
    }

    /// Notes where the stream goes back within a region. Returns whether it does so anywhere.
    bool findStepsBack(std::span<const std::uint32_t> blocks) {
        isStepBack_.assign(blocks.size(), false);
        bool any = false;
        float highest = blocks_[blocks[0]].top;
        for (std::size_t i = 1; i < blocks.size(); ++i) {
            const Block& before = blocks_[blocks[i - 1]];
            const Block& block = blocks_[blocks[i]];
            // A column to the right may begin higher, but not above all that is to the left of it.
            const bool isAboveAll = block.bottom > highest - kTouch;
            isStepBack_[i] = isAboveAll || stepBetween(items_[before.first + before.count - 1], items_[block.first]) ==
                                               Step::goesBack;
            any = any || isStepBack_[i];
            highest = std::max(highest, block.top);
        }
        return any;
    }

    void read(std::span<const std::uint32_t> blocks) {
        for (const std::uint32_t block : blocks)
            for (std::uint32_t i = 0; i < blocks_[block].count; ++i)
                order_.push_back(blocks_[block].first + i);
    }

    /// Reads the blocks of a region, which are in content order.
    void sort(std::span<std::uint32_t> blocks, int depth) {
        if (blocks.size() < 2 || depth == 0) return read(blocks);
        if (!findStepsBack(blocks)) {
            note(Verdict::accepted, blocks, "the stream's order: it never goes back");
            return read(blocks);
        }
        byLeft_.assign(blocks.begin(), blocks.end());
        std::stable_sort(byLeft_.begin(), byLeft_.end(),
                         [this](std::uint32_t a, std::uint32_t b) { return blocks_[a].left < blocks_[b].left; });
        byTop_.assign(blocks.begin(), blocks.end());
        std::stable_sort(byTop_.begin(), byTop_.end(),
                         [this](std::uint32_t a, std::uint32_t b) { return blocks_[a].top > blocks_[b].top; });
        if (areStacked(byTop_)) {
            note(Verdict::accepted, blocks, "from the top: the stream goes back, and nothing is side by side");
            return read(byTop_);
        }
        Cut cut = bestGutter(blocks);
        if (const Cut stripe = bestStripe(blocks); cut.count == 0 || (stripe.count != 0 && stripe.cost <= cut.cost))
            cut = stripe;
        if (cut.count == 0) {
            if (std::vector<std::uint32_t> parted = withOneParted(blocks); !parted.empty())
                return sort(parted, depth - 1);
            note(Verdict::refused, blocks, "cut: the stream goes back, but no gutter and no stripe is free");
            return read(blocks);
        }
        if (evidence_ != nullptr) noteCut(cut);
        setRanks(cut.isGutter ? byLeft_ : byTop_);
        std::stable_partition(blocks.begin(), blocks.end(),
                              [this, &cut](std::uint32_t block) { return rank_[block] < cut.count; });
        sort(blocks.first(cut.count), depth - 1);
        sort(blocks.subspan(cut.count), depth - 1);
    }

    /// A block that goes on above or below all blocks beside it is in the way of a cut: it is parted at the stripe
    /// where they begin or end. Returns the blocks of the region then, and nothing if there is no such block.
    [[nodiscard]] std::vector<std::uint32_t> withOneParted(std::span<const std::uint32_t> blocks) {
        if (source_ == TextSource::recogniser) return {};
        struct Part {
            std::uint32_t item;
            std::size_t block; ///< its place in the region
        };
        std::vector<Part> parts;
        for (std::size_t b = 0; b < blocks.size(); ++b)
            for (std::uint32_t i = 0; i < blocks_[blocks[b]].count; ++i)
                parts.push_back({blocks_[blocks[b]].first + i, b});
        std::stable_sort(parts.begin(), parts.end(),
                         [this](Part a, Part b) { return items_[a.item].top > items_[b.item].top; });
        std::vector<std::uint32_t> above(blocks.size()); // items of each block
        std::size_t cutThrough = 0;                      // blocks with items above and below
        std::size_t open = 0;                            // their sum, so their place if there is one
        Part lowest = parts[0];
        for (std::size_t p = 0; p < parts.size(); ++p) {
            const Part part = parts[p];
            const float bottom = items_[lowest.item].bottom;
            const float size = std::max(items_[lowest.item].size, items_[part.item].size);
            const bool isStripe = p > 0 && bottom - items_[part.item].top > kPartingSpace * size;
            if (isStripe && cutThrough == 1 && (lowest.block != open || part.block != open)) {
                const Block& block = blocks_[blocks[open]];
                if (isAbove(block.first, above[open], bottom)) return withParted(blocks, open, above[open]);
            }
            const std::uint32_t count = blocks_[blocks[part.block]].count;
            if (++above[part.block] == 1 && count > 1) {
                ++cutThrough;
                open += part.block;
            } else if (above[part.block] == count && count > 1) {
                --cutThrough;
                open -= part.block;
            }
            if (items_[part.item].bottom < bottom) lowest = part;
        }
        return {};
    }

    [[nodiscard]] bool isAbove(std::uint32_t first, std::uint32_t count, float bottom) const {
        const auto items = items_.subspan(first, count);
        return std::all_of(items.begin(), items.end(), [&](const Item& item) { return item.bottom >= bottom; });
    }

    /// The first `count` items of the block at that place become a block of their own.
    std::vector<std::uint32_t> withParted(std::span<const std::uint32_t> blocks, std::size_t at, std::uint32_t count) {
        const Block whole = blocks_[blocks[at]];
        const auto rest = static_cast<std::uint32_t>(blocks_.size());
        blocks_[blocks[at]] = blockOf(whole.first, count);
        blocks_.push_back(blockOf(whole.first + count, whole.count - count));
        rank_.resize(blocks_.size());
        std::vector<std::uint32_t> parted(blocks.begin(), blocks.end());
        parted.insert(parted.begin() + static_cast<std::ptrdiff_t>(at) + 1, rest);
        if (evidence_ != nullptr) {
            const Box above = areaOf(std::array{blocks[at]});
            const Box below = areaOf(std::array{rest});
            evidence_->note(Topic::order, Verdict::accepted, Box{above.left, below.top, above.right, above.bottom},
                            "a block is parted where the blocks beside it end", {{"high", above.bottom - below.top}});
        }
        return parted;
    }

    [[nodiscard]] Block blockOf(std::uint32_t first, std::uint32_t count) const {
        const Item& item = items_[first];
        Block block{first, 1, item.left, item.right, item.bottom, item.top};
        for (std::uint32_t i = first + 1; i < first + count; ++i)
            extend(block, items_[i]);
        return block;
    }

    void note(Verdict verdict, std::span<const std::uint32_t> blocks, std::string_view reason) const {
        if (evidence_ == nullptr) return;
        evidence_->note(Topic::order, verdict, areaOf(blocks), reason, {{"blocks", static_cast<float>(blocks.size())}});
    }

    /// The area of the note is the space that is cut through.
    void noteCut(const Cut& cut) const {
        const std::span sorted(cut.isGutter ? byLeft_ : byTop_);
        const Box first = areaOf(sorted.first(cut.count));
        const Box second = areaOf(sorted.subspan(cut.count));
        const Box whole = areaOf(sorted);
        const auto cost = static_cast<float>(cut.cost);
        if (cut.isGutter)
            evidence_->note(Topic::order, Verdict::accepted, Box{first.right, whole.bottom, second.left, whole.top},
                            "cut at a gutter",
                            {{"cost", cost}, {"wide", second.left - first.right}, {"kLeastGutter", kLeastGutter}});
        else
            evidence_->note(Topic::order, Verdict::accepted, Box{whole.left, second.top, whole.right, first.bottom},
                            "cut at a stripe across", {{"cost", cost}, {"high", first.bottom - second.top}});
    }

    [[nodiscard]] Box areaOf(std::span<const std::uint32_t> blocks) const {
        const Block& front = blocks_[blocks.front()];
        Box area{front.left, front.bottom, front.right, front.top};
        for (const std::uint32_t block : blocks) {
            area.extendTo({blocks_[block].left, blocks_[block].bottom});
            area.extendTo({blocks_[block].right, blocks_[block].top});
        }
        return area;
    }

    [[nodiscard]] bool areStacked(std::span<const std::uint32_t> byTop) const {
        for (std::size_t i = 1; i < byTop.size(); ++i)
            if (blocks_[byTop[i]].top >= blocks_[byTop[i - 1]].bottom + kTouch) return false;
        return true;
    }

    void setRanks(std::span<const std::uint32_t> sorted) {
        for (std::size_t i = 0; i < sorted.size(); ++i)
            rank_[sorted[i]] = i;
    }

    /// For every number n, counts what it costs to read the first n of the sorted blocks before the others.
    void countCosts(std::span<const std::uint32_t> blocks, std::span<const std::uint32_t> sorted) {
        setRanks(sorted);
        costs_.assign(blocks.size() + 1, 0);
        for (std::size_t i = 1; i < blocks.size(); ++i) {
            const std::size_t before = rank_[blocks[i - 1]];
            const std::size_t after = rank_[blocks[i]];
            const auto [first, last] = std::minmax(before, after);
            // A cut between the two removes a step back. It costs a turn if it reads the second one first.
            const bool back = isStepBack_[i];
            const std::ptrdiff_t change = (after < before ? 1 : 0) - (back ? 1 : 0);
            costs_[0] += back ? 1 : 0;
            costs_[first + 1] += change;
            costs_[last + 1] -= change;
        }
        std::partial_sum(costs_.begin(), costs_.end(), costs_.begin());
    }

    Cut bestGutter(std::span<const std::uint32_t> blocks) {
        Cut best;
        best.isGutter = true;
        countCosts(blocks, byLeft_);
        float right = blocks_[byLeft_[0]].right;
        for (std::size_t i = 1; i < byLeft_.size(); ++i) {
            const Block& block = blocks_[byLeft_[i]];
            if (block.left > right + kLeastGutter) keepBetter(best, i);
            right = std::max(right, block.right);
        }
        return best;
    }

    Cut bestStripe(std::span<const std::uint32_t> blocks) {
        Cut best;
        countCosts(blocks, byTop_);
        float bottom = blocks_[byTop_[0]].bottom;
        for (std::size_t i = 1; i < byTop_.size(); ++i) {
            const Block& block = blocks_[byTop_[i]];
            if (block.top < bottom + kTouch) keepBetter(best, i);
            bottom = std::min(bottom, block.bottom);
        }
        return best;
    }

    void keepBetter(Cut& best, std::size_t count) const {
        if (best.count != 0 && costs_[count] >= best.cost) return;
        best.count = count;
        best.cost = costs_[count];
    }

    std::span<const Item> items_;
    TextSource source_;
    Evidence* evidence_;
    std::vector<Block> blocks_;
    std::vector<std::uint32_t> order_; ///< of the items
    std::vector<std::size_t> rank_;    ///< of a block in the last sorted list
    std::vector<bool> isStepBack_;     ///< for each block of the region that is cut
    std::vector<std::uint32_t> byLeft_;
    std::vector<std::uint32_t> byTop_;
    std::vector<std::ptrdiff_t> costs_;
};

} // namespace

std::vector<std::uint32_t> readingOrder(std::span<const Item> items, TextSource source, Evidence* evidence) {
    return ReadingOrder(items, source, evidence).find();
}

} // namespace quillow::pdf
