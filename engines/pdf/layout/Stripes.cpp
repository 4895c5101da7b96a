#include "engines/pdf/layout/Stripes.h"

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
