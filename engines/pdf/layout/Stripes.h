// Free stripes between columns, and the columns that they separate.
#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace quillow::pdf {

/// Space between two columns.
struct Stripe {
    float left = 0;
    float right = 0;

    [[nodiscard]] float middle() const { return (left + right) / 2; }
};

/// Where a piece of text begins (1) or ends (-1).
using Edge = std::pair<float, int>;

/// Where at most `crossing` of the pieces are, for at least `width`. The edges are sorted.
[[nodiscard]] std::vector<Stripe> freeStripes(std::span<const Edge> edges, float crossing, float width);

/// What lines cover, where no line may reach over a stripe. As long as there are few columns, this is much faster than
/// sorting edges.
class Coverage {
public:
    void clear() { covered_.clear(); }
    void add(float left, float right);
    /// What `freeStripes` finds without crossing lines.
    [[nodiscard]] std::vector<Stripe> stripes(float width) const;
    [[nodiscard]] std::size_t stripeCount(float width) const;

private:
    struct Interval {
        float left = 0;
        float right = 0;
    };
    std::vector<Interval> covered_; ///< from left to right, none of them touch
};

/// The column of a line or a piece. One that reaches over several columns belongs to the first one, a misaligned one to
/// the column that its middle is in.
[[nodiscard]] std::size_t columnOf(float left, float right, std::span<const Stripe> stripes);

/// The first and the last column that a piece has more than `slack` in common with; if there is none, the nearest one.
[[nodiscard]] std::pair<std::size_t, std::size_t> columnsUnder(float left, float right, std::span<const Stripe> stripes,
                                                               float slack);

} // namespace quillow::pdf
