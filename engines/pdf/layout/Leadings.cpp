#include "engines/pdf/layout/Leadings.h"

#include "engines/pdf/layout/Margins.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace quillow::pdf {

namespace {

/// The leading of a page that shows none: a line below another one by 1.35 em.
constexpr float kUsualLeading = 0.45F;
/// Rows further apart are never one paragraph. In ems.
constexpr float kMostLeading = 2.5F;
/// Leadings that differ by less are one: formulas and signs of another font move a line. In ems.
constexpr float kOneLeading = 0.11F;
/// So few pairs of rows show nothing.
constexpr std::size_t kLeastPairs = 3;
/// The smallest leading counts if so many pairs have it, and at least two. On a page of paragraphs with one or two
/// lines the space between paragraphs is more frequent than that between lines.
constexpr std::size_t kShareOfMost = 4;
constexpr float kUnknown = -1000;

} // namespace

float leadingBetween(const Row& above, const Row& below) {
    const float size = std::min(above.size, below.size);
    return size > 0 ? (above.bottom - below.top) / size : 0;
}

bool follows(const Row& above, const Row& below) {
    return areInOneColumn(above, below) && leadingBetween(above, below) < kMostLeading;
}

bool haveOneSize(const Row& a, const Row& b) {
    return std::abs(a.size - b.size) < kSameSize * std::max(a.size, b.size);
}

Leadings::Leadings(std::span<const Row> rows)
    : last_(kUsualLeading) {
    for (std::size_t i = 1; i < rows.size(); ++i)
        if (follows(rows[i - 1], rows[i]) && haveOneSize(rows[i - 1], rows[i]))
            leadings_[bucketOf(rows[i].size)].push_back(leadingBetween(rows[i - 1], rows[i]));
}

int Leadings::bucketOf(float size) {
    if (size == lastSize_) return lastBucket_;
    constexpr float kSmallest = 0.01F;
    lastSize_ = size;
    lastBucket_ = static_cast<int>(std::lround(std::log(std::max(size, kSmallest)) / std::log(1 + kSameSize)));
    return lastBucket_;
}

float Leadings::usual(float size) {
    const int bucket = bucketOf(size);
    const auto [found, isNew] = usual_.try_emplace(bucket, kUnknown);
    if (isNew) found->second = usualNear(bucket);
    if (found->second > kUnknown) last_ = found->second;
    return last_;
}

float Leadings::usualNear(int bucket) const {
    std::vector<float> leadings;
    for (int near = bucket - 1; near <= bucket + 1; ++near)
        if (const auto found = leadings_.find(near); found != leadings_.end())
            leadings.insert(leadings.end(), found->second.begin(), found->second.end());
    if (leadings.size() < kLeastPairs) return kUnknown;
    std::sort(leadings.begin(), leadings.end());
    std::vector<std::size_t> counts; // for each leading, of those from it on that are one
    std::size_t end = 0;
    for (std::size_t begin = 0; begin < leadings.size(); ++begin) {
        while (end < leadings.size() && leadings[end] < leadings[begin] + kOneLeading)
            ++end;
        counts.push_back(end - begin);
    }
    const std::size_t most = *std::max_element(counts.begin(), counts.end());
    const std::size_t enough = std::max<std::size_t>(2, (most + kShareOfMost - 1) / kShareOfMost);
    std::size_t best = 0;
    while (counts[best] < std::min(enough, most))
        ++best;
    // The middle of the fullest window that begins in this one.
    for (std::size_t i = best; i < leadings.size() && leadings[i] < leadings[best] + kOneLeading; ++i)
        if (counts[i] > counts[best]) best = i;
    return leadings[best + counts[best] / 2];
}

} // namespace quillow::pdf
