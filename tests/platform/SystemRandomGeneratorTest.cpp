#include "platform/qt/services/SystemRandomGenerator.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillow {
namespace {

std::vector<std::int64_t> drawn(std::uint32_t seed) {
    SystemRandomGenerator generator;
    generator.seed(seed);
    std::vector<std::int64_t> numbers;
    for (int i = 0; i < 100; ++i)
        numbers.push_back(generator.next());
    return numbers;
}

TEST(SystemRandomGenerator, aSeedGivesItsSequence) {
    EXPECT_EQ(drawn(1), drawn(1));
    EXPECT_NE(drawn(1), drawn(2));
}

TEST(SystemRandomGenerator, numbersStayInTheirRange) {
    for (const std::int64_t number : drawn(20090305)) {
        EXPECT_GE(number, 0);
        EXPECT_LE(number, 2147483647);
    }
}

} // namespace
} // namespace quillow
