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

/// What pieces cover that are added one by one. Where there are few columns, this finds stripes much faster than edges
/// that must be sorted.
class Coverage {
public:
    /// At most so many pieces will be allowed to reach over a stripe.
    explicit Coverage(std::size_t crossing) { reset(crossing); }
    void reset(std::size_t crossing);
    void add(float left, float right);
    /// What `freeStripes` finds.
    [[nodiscard]] std::vector<Stripe> stripes(std::size_t crossing, float width) const;
    [[nodiscard]] std::size_t stripeCount(std::size_t crossing, float width) const;

private:
    struct Interval {
        float left = 0;
        float right = 0;
    };
    using Layer = std::vector<Interval>; ///< from left to right, none of them touch

    static void unite(Layer& layer, Interval added);

    std::vector<Layer> layers_; ///< where there are at least 1, 2, 3, ... pieces
    std::size_t used_ = 0;      ///< of the layers
};

/// The column of a line or a piece. One that reaches over several columns belongs to the first one, a misaligned one to
/// the column that its middle is in.
[[nodiscard]] std::size_t columnOf(float left, float right, std::span<const Stripe> stripes);

/// The first and the last column that a piece has more than `slack` in common with; if there is none, the nearest one.
[[nodiscard]] std::pair<std::size_t, std::size_t> columnsUnder(float left, float right, std::span<const Stripe> stripes,
                                                               float slack);

} // namespace quillow::pdf
