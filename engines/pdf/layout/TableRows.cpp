#include "engines/pdf/layout/TableRows.h"

#include "engines/pdf/layout/Line.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace quillow::pdf {

namespace {

/// Lines in different columns whose heights have so much in common, and more than lines below one another ever have,
/// are of one row.
constexpr float kInterleaved = 0.2F;
/// The middles of the cells of a centred row differ by less. In ems.
constexpr float kSameMiddle = 0.35F;
/// A line belongs to a centred row if that brings the middle of its cell nearer by so much. In ems.
constexpr float kNearer = 0.1F;
/// Lines of one cell are nearer to each other: between the letters, in ems. Half of a line is usual at most.
constexpr float kMostGap = 0.6F;
/// A ruling below a heading is so near. In ems.
constexpr float kUnderline = 0.8F;
/// Rulings end so near the text that they underline. In ems.
constexpr float kTouch = 0.5F;

/// The cell that fragments of one column make.
struct Extent {
    float bottom = 0;
    float top = 0;
    bool isUsed = false;

    void add(const Fragment& fragment) {
        bottom = isUsed ? std::min(bottom, fragment.bottom) : fragment.bottom;
        top = isUsed ? std::max(top, fragment.top) : fragment.top;
        isUsed = true;
    }
    [[nodiscard]] float middle() const { return (bottom + top) / 2; }
    [[nodiscard]] float height() const { return top - bottom; }
};

/// Bands that may be one row.
class CentredRows {
public:
    CentredRows(std::span<const Fragment> fragments, std::size_t bands)
        : fragments_(fragments)
        , begins_(bands + 1, fragments.size())
        , joins_(bands) {
        std::size_t columns = 0;
        for (std::size_t i = fragments.size(); i-- > 0;) {
            columns = std::max<std::size_t>(columns, fragments[i].column + 1);
            for (std::size_t b = fragments[i].band + 1; b-- > 0 && begins_[b] > i;)
                begins_[b] = i;
        }
        cells_.resize(columns);
    }

    std::vector<bool> find() && {
        joinInterleaved();
        joinSingles();
        return std::move(joins_);
    }

private:
    [[nodiscard]] std::size_t bands() const { return joins_.size(); }
    [[nodiscard]] std::span<const Fragment> band(std::size_t b) const {
        return fragments_.subspan(begins_[b], begins_[b + 1] - begins_[b]);
    }

    /// Bands that reach into each other and have no column in common.
    void joinInterleaved() {
        std::size_t begin = 0;
        for (std::size_t b = 1; b <= bands(); ++b) {
            if (b < bands() && isInterleaved(b)) continue;
            if (b - begin > 1 && isCentred(begin, b))
                for (std::size_t i = begin + 1; i < b; ++i)
                    joins_[i] = true;
            begin = b;
        }
    }

    [[nodiscard]] bool isInterleaved(std::size_t b) const {
        const std::span<const Fragment> above = band(b - 1);
        const std::span<const Fragment> below = band(b);
        if (above.empty() || below.empty()) return false;
        if (verticalOverlap(above.front(), below.front()) < kInterleaved) return false;
        std::size_t i = 0;
        std::size_t k = 0;
        while (i < above.size() && k < below.size()) {
            if (above[i].column == below[k].column) return false;
            if (above[i].column < below[k].column)
                ++i;
            else
                ++k;
        }
        return true;
    }

    /// The cells of the bands from `begin` to `end`, and the mean of their middles.
    float fillCells(std::size_t begin, std::size_t end) {
        std::fill(cells_.begin(), cells_.end(), Extent{});
        float sum = 0;
        float count = 0;
        for (const Fragment& fragment : fragments_.subspan(begins_[begin], begins_[end] - begins_[begin]))
            cells_[fragment.column].add(fragment);
        for (const Extent& cell : cells_) {
            if (!cell.isUsed) continue;
            sum += cell.middle();
            ++count;
        }
        return count > 0 ? sum / count : 0;
    }

    [[nodiscard]] bool isCentred(std::size_t begin, std::size_t end) {
        const float middle = fillCells(begin, end);
        const float most = kSameMiddle * band(begin).front().size;
        return std::all_of(cells_.begin(), cells_.end(), [middle, most](const Extent& cell) {
            return !cell.isUsed || std::abs(cell.middle() - middle) < most;
        });
    }

    /// Bands of one fragment above and below a row that has a cell in the same column: the first and the last line of
    /// that cell, if the cell is centred with them.
    void joinSingles() {
        std::size_t begin = 0;
        while (begin < bands()) {
            std::size_t end = begin + 1;
            while (end < bands() && joins_[end])
                ++end;
            if (begins_[end] - begins_[begin] > 1) addSingles(begin, end);
            begin = end;
        }
    }

    [[nodiscard]] const Fragment* singleAt(std::size_t b) const {
        return band(b).size() == 1 ? &band(b).front() : nullptr;
    }
    [[nodiscard]] float gapBelow(std::size_t b) const {
        return b + 1 < bands() ? band(b).front().bottom - band(b + 1).front().top : kFar;
    }

    /// Lengthens a row upwards and downwards as long as its cells become more centred.
    void addSingles(std::size_t begin, std::size_t& end) {
        while (addSinglesOnce(begin, end)) {
        }
    }

    bool addSinglesOnce(std::size_t& begin, std::size_t& end) {
        const Fragment* above = begin > 0 && !joins_[begin - 1] ? singleAt(begin - 1) : nullptr;
        const Fragment* below = end < bands() ? singleAt(end) : nullptr;
        const float size = band(begin).front().size;
        fillCells(begin, end);
        const auto offsetWith = [&](const Fragment* a, const Fragment* b, std::size_t column) {
            Extent cell = cells_[column];
            float sum = 0;
            float count = 0;
            for (std::size_t c = 0; c < cells_.size(); ++c) {
                if (c == column || !cells_[c].isUsed) continue;
                sum += cells_[c].middle();
                ++count;
            }
            if (a != nullptr) cell.add(*a);
            if (b != nullptr) cell.add(*b);
            return count > 0 ? std::abs(cell.middle() - sum / count) : kFar;
        };
        const auto isNear = [&](const Fragment& single) {
            const Extent& cell = cells_[single.column];
            return cell.isUsed && std::max(single.bottom - cell.top, cell.bottom - single.top) < kMostGap * size;
        };
        if (above != nullptr && !isNear(*above)) above = nullptr;
        if (below != nullptr && !isNear(*below)) below = nullptr;
        const auto improves = [&](const Fragment* a, const Fragment* b, std::size_t column) {
            const float offset = offsetWith(a, b, column);
            return offset < kSameMiddle * size && offset + kNearer * size < offsetWith(nullptr, nullptr, column);
        };
        if (above != nullptr && improves(above, nullptr, above->column)) {
            joins_[begin--] = true;
            return true;
        }
        if (below != nullptr && improves(nullptr, below, below->column)) {
            joins_[end++] = true;
            return true;
        }
        if (above == nullptr || below == nullptr || above->column != below->column) return false;
        // Both: nearer to the row than to what is beyond them.
        const float inside = std::max(gapBelow(begin - 1), gapBelow(end - 1)) + kNearer * size;
        const float outside = std::min(begin > 1 ? gapBelow(begin - 2) : kFar, gapBelow(end));
        if (inside > outside || offsetWith(above, below, above->column) > kSameMiddle * size) return false;
        joins_[begin--] = true;
        joins_[end++] = true;
        return true;
    }

    static constexpr float kFar = 1e6F;

    std::span<const Fragment> fragments_;
    std::vector<std::size_t> begins_; ///< of the bands in `fragments_`
    std::vector<bool> joins_;
    std::vector<Extent> cells_;
};

/// If there is a ruling below a heading that reaches over several columns, but not over all, the heading does too.
bool stretchOverUnderline(Fragment& fragment, std::span<const Ruling> underlines, std::span<const float> middles) {
    for (const Ruling& ruling : underlines) {
        const bool isBelow = ruling.at < fragment.bottom + kTouch * fragment.size / 2 &&
                             ruling.at > fragment.bottom - kUnderline * fragment.size;
        const float slack = kTouch * fragment.size;
        if (!isBelow || ruling.from > fragment.left + slack || ruling.to < fragment.right - slack) continue;
        const auto first = std::lower_bound(middles.begin(), middles.end(), ruling.from);
        const auto end = std::upper_bound(first, middles.end(), ruling.to);
        if (end - first < 2 || end - first == std::ssize(middles)) continue;
        fragment.column = static_cast<std::uint32_t>(first - middles.begin());
        fragment.lastColumn = static_cast<std::uint32_t>(end - middles.begin()) - 1;
        return true;
    }
    return false;
}

} // namespace

std::vector<bool> centredBands(std::span<const Fragment> fragments, std::size_t bands) {
    if (fragments.empty()) return std::vector<bool>(bands);
    return CentredRows(fragments, bands).find();
}

std::vector<std::uint32_t> rowsOfHead(std::span<Fragment> fragments, std::span<const Ruling> underlines,
                                      std::span<const float> columnMiddles) {
    struct Column {
        std::uint32_t next = 0;    ///< the row of its next line
        std::uint32_t heading = 0; ///< the band of the heading over it that may go on, counted from 1
    };
    std::vector<Column> columns(columnMiddles.size());
    std::vector<std::uint32_t> rows(fragments.size());
    for (std::size_t i = 0; i < fragments.size(); ++i) {
        Fragment& fragment = fragments[i];
        const bool isUnderlined = stretchOverUnderline(fragment, underlines, columnMiddles);
        const bool isHeading = isUnderlined || fragment.lastColumn > fragment.column;
        const auto from = columns.begin() + fragment.column;
        const auto to = columns.begin() + fragment.lastColumn + 1;
        std::uint32_t row =
            std::max_element(from, to, [](const Column& a, const Column& b) { return a.next < b.next; })->next;
        const bool goesOn = isHeading && std::any_of(from, to, [&fragment](const Column& c) {
                                return c.heading != 0 && c.heading == fragment.band;
                            });
        if (goesOn && row > 0) --row;
        rows[i] = row;
        for (auto c = from; c != to; ++c) {
            c->next = isHeading ? row + 1 : row;
            c->heading = isHeading && !isUnderlined ? fragment.band + 1 : 0;
        }
    }
    return rows;
}

} // namespace quillow::pdf
