#include "engines/pdf/layout/Stripes.h"

#include <algorithm>

namespace quillow::pdf {

std::vector<Stripe> freeStripes(std::span<const Edge> edges, float crossing, float width) {
    const int tolerance = static_cast<int>(crossing);
    std::vector<Stripe> stripes;
    int covered = 0;
    bool seen = false;
    float free = 0;
    for (const auto& [x, change] : edges) {
        const bool wasFree = covered <= tolerance;
        covered += change;
        const bool isFree = covered <= tolerance;
        if (!wasFree && isFree) free = x;
        if (wasFree && !isFree) {
            if (seen && x - free > width) stripes.push_back({free, x});
            seen = true;
        }
    }
    return stripes;
}

void Coverage::add(float left, float right) {
    if (!(left < right)) return;
    const auto first = std::lower_bound(covered_.begin(), covered_.end(), left,
                                        [](const Interval& interval, float x) { return interval.right < x; });
    if (first == covered_.end() || right < first->left) {
        covered_.insert(first, {left, right});
        return;
    }
    auto end = first;
    for (; end != covered_.end() && end->left <= right; ++end)
        right = std::max(right, end->right);
    *first = {std::min(left, first->left), right};
    covered_.erase(first + 1, end);
}

std::vector<Stripe> Coverage::stripes(float width) const {
    std::vector<Stripe> stripes;
    for (std::size_t i = 1; i < covered_.size(); ++i)
        if (covered_[i].left - covered_[i - 1].right > width)
            stripes.push_back({covered_[i - 1].right, covered_[i].left});
    return stripes;
}

std::size_t Coverage::stripeCount(float width) const {
    std::size_t count = 0;
    for (std::size_t i = 1; i < covered_.size(); ++i)
        count += covered_[i].left - covered_[i - 1].right > width ? 1 : 0;
    return count;
}

std::size_t columnOf(float left, float right, std::span<const Stripe> stripes) {
    const float middle = (left + right) / 2;
    std::size_t column = 0;
    while (column < stripes.size() && stripes[column].middle() < left)
        ++column;
    while (column < stripes.size() && stripes[column].right < middle && stripes[column].left < left)
        ++column;
    return column;
}

std::pair<std::size_t, std::size_t> columnsUnder(float left, float right, std::span<const Stripe> stripes,
                                                 float slack) {
    std::size_t first = 0;
    while (first < stripes.size() && stripes[first].left < left + slack)
        ++first;
    std::size_t last = stripes.size();
    while (last > 0 && stripes[last - 1].right > right - slack)
        --last;
    if (first <= last) return {first, last};
    // In a stripe, or nearly so.
    const Stripe& stripe = stripes[last];
    const std::size_t nearest = (left + right) / 2 < stripe.middle() ? last : last + 1;
    return {nearest, nearest};
}

} // namespace quillow::pdf
