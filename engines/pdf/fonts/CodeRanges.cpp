#include "engines/pdf/fonts/CodeRanges.h"

#include <queue>

#include <algorithm>

namespace quillow::pdf {

void CodeRanges::add(CodeRange range) {
    if (range.low > range.high) return;
    if (!ranges_.empty()) {
        CodeRange& last = ranges_.back();
        const bool followsCode = range.low == std::uint64_t{last.high} + 1;
        const bool followsValue = range.value == last.value + last.size();
        if (followsCode && followsValue) {
            last.high = range.high;
            return;
        }
        isSorted_ = isSorted_ && range.low > last.high;
    }
    if (ranges_.size() < kMaximum) ranges_.push_back(range);
}

void CodeRanges::close() {
    if (isSorted_) return;
    resolveOverlaps();
    isSorted_ = true;
}

namespace {

/// A range and its place among those that were added.
struct OrderedRange {
    CodeRange range;
    std::size_t order = 0;

    friend bool operator<(const OrderedRange& a, const OrderedRange& b) { return a.order < b.order; }
};

std::vector<OrderedRange> sortedByLow(std::span<const CodeRange> ranges) {
    std::vector<OrderedRange> sorted;
    sorted.reserve(ranges.size());
    for (const CodeRange& range : ranges)
        sorted.push_back({range, sorted.size()});
    std::sort(sorted.begin(), sorted.end(),
              [](const OrderedRange& a, const OrderedRange& b) { return a.range.low < b.range.low; });
    return sorted;
}

} // namespace

/// Goes through the codes upwards with the ranges that contain the current one in a heap, the last added on top.
void CodeRanges::resolveOverlaps() {
    const std::vector<OrderedRange> sorted = sortedByLow(ranges_);
    ranges_.clear();
    std::priority_queue<OrderedRange> open;
    std::size_t next = 0;
    std::uint64_t code = 0;
    while (next < sorted.size() || !open.empty()) {
        if (open.empty()) code = std::max<std::uint64_t>(code, sorted[next].range.low);
        for (; next < sorted.size() && sorted[next].range.low <= code; ++next)
            open.push(sorted[next]);
        const CodeRange top = open.top().range;
        if (top.high < code) {
            open.pop();
            continue;
        }
        std::uint64_t stop = top.high;
        if (next < sorted.size()) stop = std::min<std::uint64_t>(stop, sorted[next].range.low - 1);
        const auto low = static_cast<std::uint32_t>(code);
        ranges_.push_back({low, static_cast<std::uint32_t>(stop), top.valueOf(low)});
        code = stop + 1;
    }
}

std::optional<std::uint32_t> CodeRanges::find(std::uint32_t code) const {
    const auto behind = std::upper_bound(ranges_.begin(), ranges_.end(), code,
                                         [](std::uint32_t c, const CodeRange& range) { return c < range.low; });
    if (behind == ranges_.begin()) return std::nullopt;
    const CodeRange& range = *std::prev(behind);
    if (code > range.high) return std::nullopt;
    return range.valueOf(code);
}

} // namespace quillow::pdf
