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

void Coverage::reset(std::size_t crossing) {
    used_ = crossing + 1;
    if (layers_.size() < used_) layers_.resize(used_);
    for (std::size_t i = 0; i < used_; ++i)
        layers_[i].clear();
}

void Coverage::add(float left, float right) {
    if (!(left < right)) return;
    const auto endsBefore = [](const Interval& interval, float x) { return interval.right <= x; };
    for (std::size_t i = used_; i-- > 1;) {
        const Layer& below = layers_[i - 1];
        auto common = std::lower_bound(below.begin(), below.end(), left, endsBefore);
        for (; common != below.end() && common->left < right; ++common)
            unite(layers_[i], {std::max(left, common->left), std::min(right, common->right)});
    }
    unite(layers_[0], {left, right});
}

void Coverage::unite(Layer& layer, Interval added) {
    const auto first = std::lower_bound(layer.begin(), layer.end(), added.left,
                                        [](const Interval& interval, float x) { return interval.right < x; });
    if (first == layer.end() || added.right < first->left) {
        layer.insert(first, added);
        return;
    }
    auto end = first;
    for (; end != layer.end() && end->left <= added.right; ++end)
        added.right = std::max(added.right, end->right);
    *first = {std::min(added.left, first->left), added.right};
    layer.erase(first + 1, end);
}

std::vector<Stripe> Coverage::stripes(std::size_t crossing, float width) const {
    const Layer& layer = layers_[crossing];
    std::vector<Stripe> stripes;
    for (std::size_t i = 1; i < layer.size(); ++i)
        if (layer[i].left - layer[i - 1].right > width) stripes.push_back({layer[i - 1].right, layer[i].left});
    return stripes;
}

std::size_t Coverage::stripeCount(std::size_t crossing, float width) const {
    const Layer& layer = layers_[crossing];
    std::size_t count = 0;
    for (std::size_t i = 1; i < layer.size(); ++i)
        count += layer[i].left - layer[i - 1].right > width ? 1 : 0;
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
