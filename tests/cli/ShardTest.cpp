#include "cli/Shard.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillow::cli {
namespace {

TEST(Shard, everyPathBelongsToExactlyOnePart) {
    constexpr std::uint32_t kParts = 7;
    std::vector<int> sizes(kParts);
    for (int i = 0; i < 7000; ++i) {
        const std::string path = "folder/document-" + std::to_string(i) + ".pdf";
        int parts = 0;
        for (std::uint32_t number = 1; number <= kParts; ++number) {
            if (!Shard{number, kParts}.has(path)) continue;
            ++parts;
            ++sizes[number - 1];
        }
        ASSERT_EQ(parts, 1) << path;
    }
    for (const int size : sizes) {
        EXPECT_GT(size, 850);
        EXPECT_LT(size, 1150);
    }
}

// A list that is converted in parts today must have the same parts tomorrow.
TEST(Shard, thePartOfAPathNeverChanges) {
    EXPECT_TRUE((Shard{2, 4}.has("")));
    EXPECT_TRUE((Shard{1, 4}.has("a")));
    EXPECT_TRUE((Shard{2, 4}.has("foobar")));
}

TEST(Shard, theOnlyPartHasEveryPath) {
    EXPECT_TRUE(Shard().has("a.pdf"));
    EXPECT_TRUE(Shard().has("\xFF"));
}

} // namespace
} // namespace quillow::cli
