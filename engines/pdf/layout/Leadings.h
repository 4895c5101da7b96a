// How far lines of text are apart on a page.
#pragma once

#include "engines/pdf/layout/Row.h"

#include <map>
#include <span>
#include <vector>

namespace quillow::pdf {

/// The free space between two rows, in ems of the smaller one.
[[nodiscard]] float leadingBetween(const Row& above, const Row& below);

/// Whether a row goes on below the other one in the same column.
[[nodiscard]] bool follows(const Row& above, const Row& below);

/// Fonts that differ by less are of one size.
inline constexpr float kSameSize = 0.08F;

[[nodiscard]] bool haveOneSize(const Row& a, const Row& b);

/// The leading inside paragraphs, for each size of the font.
class Leadings {
public:
    /// `rows` are in reading order.
    explicit Leadings(std::span<const Row> rows);

    /// The leading inside paragraphs of that size, in ems. Where the page shows none, the last one that was asked for.
    [[nodiscard]] float usual(float size);

private:
    int bucketOf(float size);
    [[nodiscard]] float usualNear(int bucket) const;

    std::map<int, std::vector<float>> leadings_; ///< by bucketOf
    std::map<int, float> usual_;                 ///< by bucketOf; kUnknown where there are too few
    float last_;
    float lastSize_ = -1; ///< the argument of bucketOf() before, and its result
    int lastBucket_ = 0;
};

} // namespace quillow::pdf
