#include "engines/pdf/layout/Stripes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace quillow::pdf {
namespace {

TEST(PdfStripes, coverageFindsTheStripesThatEdgesShow) {
    std::mt19937 random(3);
    const auto below = [&random](std::size_t end) { return static_cast<float>(random() % end); };
    for (int round = 0; round < 500; ++round) {
        constexpr std::size_t kMostCrossing = 4;
        Coverage coverage(kMostCrossing);
        std::vector<Edge> edges;
        for (std::size_t pieces = 1 + random() % 40; pieces > 0; --pieces) {
            const float left = below(6) * 40 + below(8);
            const float right = left + (below(8) == 0 ? below(150) : below(30));
            coverage.add(left, right);
            edges.emplace_back(left, 1);
            edges.emplace_back(right, -1);
            std::vector<Edge> sorted = edges;
            std::sort(sorted.begin(), sorted.end());
            for (std::size_t crossing = 0; crossing <= kMostCrossing; ++crossing) {
                const std::vector<Stripe> expected = freeStripes(sorted, static_cast<float>(crossing), 3);
                const std::vector<Stripe> found = coverage.stripes(crossing, 3);
                const auto isSame = [](const Stripe& a, const Stripe& b) {
                    return a.left == b.left && a.right == b.right;
                };
                EXPECT_TRUE(std::equal(found.begin(), found.end(), expected.begin(), expected.end(), isSame))
                    << "round " << round << ", " << crossing << " may cross";
                EXPECT_EQ(coverage.stripeCount(crossing, 3), expected.size());
            }
        }
    }
}

TEST(PdfStripes, coverageCanBeUsedAgain) {
    Coverage coverage(2);
    coverage.add(0, 100);
    coverage.reset(1);
    coverage.add(0, 10);
    coverage.add(20, 30);
    EXPECT_EQ(coverage.stripeCount(0, 5), 1U);
    EXPECT_EQ(coverage.stripeCount(1, 5), 0U);
}

} // namespace
} // namespace quillow::pdf
