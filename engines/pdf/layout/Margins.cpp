#include "engines/pdf/layout/Margins.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <vector>

namespace quillow::pdf {

namespace {

/// Rows end within so many ems of their margin if it is theirs: the lines of ragged text differ by more.
constexpr float kNearMargin = 1.5F;
/// A margin has at least two rows, and one in so many of its column.
constexpr std::size_t kRowsOfAMargin = 16;
/// Rows with nearly the same margin. In ems.
constexpr float kSameMargin = 0.35F;
/// Lines may begin so far behind the end of a short line above them: those that belong to a term. In ems.
constexpr float kMostBeside = 3.0F;
/// Text beside a row is looked for among so many rows above and below it.
constexpr std::size_t kNeighbours = 12;

class MarginFinder {
public:
    MarginFinder(std::span<Row> rows, Side beginning)
        : rows_(rows)
        , beginning_(beginning) {}

    void find() {
        std::vector<std::size_t> ends; // of the columns
        for (std::size_t i = 1; i <= rows_.size(); ++i)
            if (i == rows_.size() || !areInOneColumn(rows_[i - 1], rows_[i])) ends.push_back(i);
        hasNeighbour_.assign(rows_.size(), false);
        haveNeighbours_ = ends.size() > 1;
        if (haveNeighbours_) findNeighbours();
        std::size_t begin = 0;
        for (const std::size_t end : ends) {
            measure(begin, end);
            begin = end;
        }
    }

private:
    [[nodiscard]] float start(std::size_t i) const { return startOf(rows_[i], beginning_); }
    [[nodiscard]] float finish(std::size_t i) const { return finishOf(rows_[i], beginning_); }

    /// Which rows have text beside them at their end: those of all columns but the last one.
    void findNeighbours() {
        std::vector<std::uint32_t> order(rows_.size());
        std::iota(order.begin(), order.end(), 0U);
        std::stable_sort(order.begin(), order.end(),
                         [this](std::uint32_t a, std::uint32_t b) { return rows_[a].baseline > rows_[b].baseline; });
        for (std::size_t k = 0; k < order.size(); ++k) {
            const std::size_t first = k > kNeighbours ? k - kNeighbours : 0;
            const std::size_t end = std::min(order.size(), k + kNeighbours + 1);
            const Row& row = rows_[order[k]];
            for (std::size_t j = first; j < end && !hasNeighbour_[order[k]]; ++j) {
                const Row& other = rows_[order[j]];
                hasNeighbour_[order[k]] =
                    start(order[j]) > finish(order[k]) && other.bottom < row.top && other.top > row.bottom;
            }
        }
    }

    void measure(std::size_t begin, std::size_t end) {
        for (const bool beside : {false, true}) {
            if (beside && !haveNeighbours_) break;
            members_.clear();
            for (std::size_t i = begin; i < end; ++i)
                if (hasNeighbour_[i] == beside && !rows_[i].isTableRow) members_.push_back(i);
            if (!members_.empty()) measureMembers();
        }
    }

    void measureMembers() {
        std::vector<float>& finishes = finishes_;
        std::vector<float>& sizes = sizes_;
        finishes.clear();
        sizes.clear();
        starts_.clear();
        for (const std::size_t i : members_) {
            starts_.push_back(start(i));
            finishes.push_back(finish(i));
            sizes.push_back(rows_[i].size);
        }
        std::nth_element(sizes.begin(), sizes.begin() + static_cast<std::ptrdiff_t>(sizes.size() / 2), sizes.end());
        const float size = sizes[sizes.size() / 2];
        std::sort(finishes.begin(), finishes.end(), std::greater<>());
        const std::size_t least = std::max<std::size_t>(2, finishes.size() / kRowsOfAMargin);
        std::size_t margin = 0;
        for (std::size_t i = 0; i + least <= finishes.size(); ++i) {
            if (finishes[i] - finishes[i + least - 1] > kNearMargin * size) continue;
            margin = i;
            break;
        }
        const float usual = usualStart(size);
        for (const std::size_t i : members_) {
            rows_[i].room = std::max(0.0F, finishes[margin] - finish(i));
            rows_[i].indent = start(i) - usual;
        }
    }

    /// Where most rows begin; of equals the outer one.
    [[nodiscard]] float usualStart(float size) const {
        constexpr std::size_t kSamples = 64;
        float best = starts_.front();
        float before = best;
        std::uint32_t bestCount = 0;
        const std::size_t step = 1 + members_.size() / kSamples;
        for (std::size_t k = 0; k < members_.size(); k += step) {
            const float candidate = starts_[k];
            if (k > 0 && candidate == before) continue; // it has been counted
            before = candidate;
            std::uint32_t count = 0;
            for (const float start : starts_)
                count += std::abs(start - candidate) < kSameMargin * size ? 1 : 0;
            if (count < bestCount || (count == bestCount && candidate >= best)) continue;
            bestCount = count;
            best = candidate;
        }
        return best;
    }

    std::span<Row> rows_;
    Side beginning_;
    bool haveNeighbours_ = false; ///< some rows may
    std::vector<bool> hasNeighbour_;
    std::vector<std::size_t> members_; ///< the rows of the column that is measured
    std::vector<float> finishes_;      ///< their ends
    std::vector<float> sizes_;
    std::vector<float> starts_;
};

} // namespace

bool areInOneColumn(const Row& above, const Row& below) {
    const float indent = kMostBeside * std::min(above.size, below.size);
    return below.baseline < above.baseline && above.left < below.right + indent && below.left < above.right + indent;
}

void measureMargins(std::span<Row> rows, Side beginning) {
    MarginFinder(rows, beginning).find();
}

} // namespace quillow::pdf
