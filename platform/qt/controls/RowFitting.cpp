#include "platform/qt/controls/RowFitting.h"

#include <algorithm>
#include <numeric>

namespace quillow {
namespace {

/// The indices in the order in which the parts give way.
std::vector<std::size_t> yieldOrder(const std::vector<RowPart>& parts) {
    std::vector<std::size_t> order(parts.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&parts](std::size_t a, std::size_t b) { return parts[a].order < parts[b].order; });
    return order;
}

int totalOf(const std::vector<int>& widths, int gap) {
    int total = 0;
    for (const int width : widths)
        if (width > 0) total += width + (total > 0 ? gap : 0);
    return total;
}

} // namespace

std::vector<int> rowWidths(std::vector<RowPart> parts, int gap, int room) {
    const std::vector<std::size_t> order = yieldOrder(parts);
    std::vector<int> widths;
    int excess = 0;
    const auto shrink = [&](int RowPart::*limit) {
        for (const std::size_t i : order) {
            const int given = std::clamp(excess, 0, std::max(widths[i] - parts[i].*limit, 0));
            widths[i] -= given;
            excess -= given;
        }
    };
    for (;;) {
        widths.clear();
        for (const RowPart& part : parts)
            widths.push_back(part.whole);
        excess = totalOf(widths, gap) - room;
        shrink(&RowPart::comfortable);
        const auto vanishing =
            std::find_if(order.begin(), order.end(), [&parts](std::size_t i) { return parts[i].mayVanish; });
        if (excess <= 0 || vanishing == order.end()) break;
        parts[*vanishing] = {0, 0, 0};
    }
    shrink(&RowPart::least);
    return widths;
}

std::vector<std::size_t> rowStarts(const std::vector<int>& widths, int gap, int room) {
    std::vector<std::size_t> starts;
    int used = 0;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        if (i == 0 || used + gap + widths[i] > room) {
            starts.push_back(i);
            used = widths[i];
        } else {
            used += gap + widths[i];
        }
    }
    return starts;
}

} // namespace quillow
