#include "engines/pdf/layout/Grid.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <numeric>

namespace quillow::pdf {

namespace {

/// Rulings nearer than this are one: doubled lines, and the edges of the rectangles of two cells. In points.
constexpr float kSameRuling = 1.0F;
/// Rulings that end so near one another touch: cells with spacing, thick borders. In points.
constexpr float kTouch = 3.0F;
/// Columns are wider and rows are higher. In points.
constexpr float kLeastField = 3.5F;
/// Fields that are not larger are the space between two cells. In points.
constexpr float kLeastCell = 8;
/// Pages with more rulings than this show maps and plots.
constexpr std::size_t kMostRulings = 4000;
/// Grids that a page may have; more are the boxes of a form or a drawing.
constexpr std::size_t kMostGrids = 64;
constexpr std::size_t kMostFields = 100000;

/// Places that are nearer than the least field become one.
std::vector<float> clustered(std::vector<float> places) {
    std::sort(places.begin(), places.end());
    std::vector<float> result;
    for (const float place : places)
        if (result.empty() || place - result.back() > kLeastField) result.push_back(place);
    return result;
}

/// Which rulings touch, directly or through others.
class Components {
public:
    explicit Components(std::size_t count)
        : parents_(count) {
        std::iota(parents_.begin(), parents_.end(), std::size_t{0});
    }

    std::size_t rootOf(std::size_t i) {
        while (parents_[i] != i)
            i = parents_[i] = parents_[parents_[i]];
        return i;
    }
    void join(std::size_t a, std::size_t b) { parents_[rootOf(a)] = rootOf(b); }

private:
    std::vector<std::size_t> parents_;
};

} // namespace

void joinRulings(std::vector<Ruling>& rulings) {
    std::sort(rulings.begin(), rulings.end(), [](const Ruling& a, const Ruling& b) { return a.at < b.at; });
    float at = 0;
    for (std::size_t i = 0; i < rulings.size(); ++i) {
        if (i == 0 || rulings[i].at - at > kSameRuling) at = rulings[i].at;
        rulings[i].at = at;
    }
    std::sort(rulings.begin(), rulings.end(),
              [](const Ruling& a, const Ruling& b) { return a.at != b.at ? a.at < b.at : a.from < b.from; });
    std::size_t kept = 0;
    for (const Ruling& ruling : rulings) {
        if (kept > 0 && rulings[kept - 1].at == ruling.at && ruling.from - rulings[kept - 1].to < kTouch)
            rulings[kept - 1].to = std::max(rulings[kept - 1].to, ruling.to);
        else
            rulings[kept++] = ruling;
    }
    rulings.resize(kept);
}

Grid::Grid(std::vector<float> xs, std::vector<float> ys, std::vector<Ruling> horizontal, std::vector<Ruling> vertical)
    : xs_(std::move(xs))
    , ys_(std::move(ys))
    , horizontal_(std::move(horizontal))
    , vertical_(std::move(vertical)) {
    const std::size_t fields = columns() * rows();
    std::vector<bool> isRuledAbove(fields);
    std::vector<bool> isRuledBefore(fields);
    const auto indexOf = [](const std::vector<float>& places, float at) {
        std::size_t i = 0;
        while (i + 1 < places.size() && std::abs(places[i + 1] - at) < std::abs(places[i] - at))
            ++i;
        return i;
    };
    for (const Ruling& ruling : horizontal_) {
        const std::size_t row = indexOf(ys_, ruling.at);
        for (std::size_t column = 0; row < rows() && column < columns(); ++column) {
            const float middle = (xs_[column] + xs_[column + 1]) / 2;
            if (ruling.from < middle && ruling.to > middle) isRuledAbove[row * columns() + column] = true;
        }
    }
    for (const Ruling& ruling : vertical_) {
        const std::size_t column = indexOf(xs_, ruling.at);
        for (std::size_t row = 0; column < columns() && row < rows(); ++row) {
            const float middle = (ys_[row] + ys_[row + 1]) / 2;
            if (ruling.from < middle && ruling.to > middle) isRuledBefore[row * columns() + column] = true;
        }
    }
    cells_.resize(fields);
    std::iota(cells_.begin(), cells_.end(), 0U);
    for (std::uint32_t field = 0; field < fields; ++field) {
        if (field % columns() != 0 && !isRuledBefore[field]) join(field - 1, field);
        if (field >= columns() && !isRuledAbove[field]) join(field - static_cast<std::uint32_t>(columns()), field);
    }
    for (std::uint32_t field = 0; field < fields; ++field)
        cells_[field] = rootOf(field);
}

Grid Grid::with(std::span<const Ruling> vertical) const {
    std::vector<float> xs = xs_;
    for (const Ruling& ruling : vertical)
        xs.push_back(ruling.at);
    std::vector<Ruling> all = vertical_;
    all.insert(all.end(), vertical.begin(), vertical.end());
    return {clustered(std::move(xs)), ys_, horizontal_, std::move(all)};
}

std::uint32_t Grid::onlyColumnOf(std::size_t row, std::size_t column) const {
    const std::size_t field = row * columns() + column;
    const bool goesLeft = column > 0 && cells_[field - 1] == cells_[field];
    const bool goesRight = column + 1 < columns() && cells_[field + 1] == cells_[field];
    return goesLeft || goesRight ? kOutside : static_cast<std::uint32_t>(column);
}

std::uint32_t Grid::rootOf(std::uint32_t field) {
    while (cells_[field] != field)
        field = cells_[field] = cells_[cells_[field]];
    return field;
}

void Grid::join(std::uint32_t a, std::uint32_t b) {
    const auto [first, last] = std::minmax({rootOf(a), rootOf(b)});
    cells_[last] = first;
}

std::size_t Grid::cellCount() const {
    std::size_t count = 0;
    for (std::uint32_t field = 0; field < cells_.size(); ++field) {
        const std::size_t row = field / columns();
        const std::size_t column = field % columns();
        const bool holdsText = xs_[column + 1] - xs_[column] > kLeastCell && ys_[row] - ys_[row + 1] > kLeastCell;
        count += cells_[field] == field && holdsText ? 1 : 0;
    }
    return count;
}

std::uint32_t Grid::rowAt(float y) const {
    const auto below = std::upper_bound(ys_.begin(), ys_.end(), y, std::greater<>());
    return static_cast<std::uint32_t>(std::max(below - ys_.begin() - 1, std::ptrdiff_t{0}));
}

std::uint32_t Grid::columnAt(float x) const {
    const auto after = std::upper_bound(xs_.begin(), xs_.end(), x);
    const std::ptrdiff_t column = std::clamp<std::ptrdiff_t>(after - xs_.begin() - 1, 0, std::ssize(xs_) - 2);
    return static_cast<std::uint32_t>(column);
}

bool Grid::isBackground(float l, float r, float b, float t) const {
    const std::uint32_t cell = cellAt(l - kSameRuling, t - kSameRuling);
    return cell != kOutside && cell == cellAt(r + kSameRuling, t - kSameRuling) &&
           cell == cellAt(l - kSameRuling, b + kSameRuling) && cell == cellAt(r + kSameRuling, b + kSameRuling);
}

std::uint32_t Grid::cellAt(float x, float y) const {
    if (x < left() || x >= right() || y > top() || y <= bottom()) return kOutside;
    const auto column = std::upper_bound(xs_.begin(), xs_.end(), x) - xs_.begin() - 1;
    const auto row = std::upper_bound(ys_.begin(), ys_.end(), y, std::greater<>()) - ys_.begin() - 1;
    const auto field = static_cast<std::size_t>(row) * columns() + static_cast<std::size_t>(column);
    return field < cells_.size() ? cells_[field] : kOutside;
}

std::vector<Grid> gridsOf(const Rulings& rulings) {
    const std::vector<Ruling>& horizontal = rulings.horizontal;
    const std::vector<Ruling>& vertical = rulings.vertical;
    std::vector<Grid> grids;
    if (horizontal.size() < 2 || vertical.empty()) return grids;
    if (horizontal.size() > kMostRulings || vertical.size() > kMostRulings) return grids;
    Components components(horizontal.size() + vertical.size());
    for (std::size_t v = 0; v < vertical.size(); ++v) {
        const Ruling& ruling = vertical[v];
        auto h = std::lower_bound(horizontal.begin(), horizontal.end(), ruling.from - kTouch,
                                  [](const Ruling& a, float at) { return a.at < at; });
        for (; h != horizontal.end() && h->at <= ruling.to + kTouch; ++h)
            if (h->from - kTouch <= ruling.at && ruling.at <= h->to + kTouch)
                components.join(horizontal.size() + v, static_cast<std::size_t>(h - horizontal.begin()));
    }
    struct Members {
        std::vector<Ruling> horizontal;
        std::vector<Ruling> vertical;
    };
    std::vector<Members> members(horizontal.size() + vertical.size());
    for (std::size_t i = 0; i < horizontal.size(); ++i)
        members[components.rootOf(i)].horizontal.push_back(horizontal[i]);
    for (std::size_t i = 0; i < vertical.size(); ++i)
        members[components.rootOf(horizontal.size() + i)].vertical.push_back(vertical[i]);
    for (Members& m : members) {
        if (grids.size() == kMostGrids) break;
        if (m.horizontal.size() < 2 || m.vertical.empty()) continue;
        std::vector<float> xs;
        std::vector<float> ys;
        for (const Ruling& ruling : m.vertical) {
            xs.push_back(ruling.at);
            ys.insert(ys.end(), {ruling.from, ruling.to});
        }
        // A ruling that ends inside the grid is not an edge of a field there; only the outermost ends are.
        const auto [bottom, top] = std::minmax_element(ys.begin(), ys.end());
        ys = {*bottom, *top};
        float left = xs.front();
        float right = xs.front();
        for (const Ruling& ruling : m.horizontal) {
            ys.push_back(ruling.at);
            left = std::min(left, ruling.from);
            right = std::max(right, ruling.to);
        }
        xs.insert(xs.end(), {left, right});
        xs = clustered(std::move(xs));
        ys = clustered(std::move(ys));
        if (xs.size() < 2 || ys.size() < 3 || xs.size() * ys.size() > kMostFields) continue;
        std::reverse(ys.begin(), ys.end());
        grids.emplace_back(std::move(xs), std::move(ys), std::move(m.horizontal), std::move(m.vertical));
    }
    return grids;
}

} // namespace quillow::pdf
