#include "posix/BlockCache.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace quillow {
namespace {

class BlockCacheTest : public testing::Test {
protected:
    ~BlockCacheTest() override { cache_.release(); }

    void* take(std::size_t size) {
        void* const kept = cache_.takeKept(size);
        return kept != nullptr ? kept : cache_.takeNew(size);
    }

    BlockCache cache_;
};

TEST_F(BlockCacheTest, keepsABlockForTheNextRequestOfItsSize) {
    void* const block = take(100);
    cache_.give(block, 100);

    EXPECT_EQ(cache_.takeKept(100), block);
    EXPECT_EQ(cache_.takeKept(100), nullptr);

    cache_.give(block, 100);
}

TEST_F(BlockCacheTest, takesBackABlockWithoutItsSize) {
    void* const block = take(100);

    cache_.give(block);

    EXPECT_EQ(cache_.takeKept(100), block);
    cache_.give(block, 100);
}

TEST_F(BlockCacheTest, givesOnlyBlocksThatAreLargeEnough) {
    for (const std::size_t given : {0, 1, 8, 9, 24, 25, 40, 41, 1000, 1023, 1024, 1025, 2000})
        for (const std::size_t taken : {0, 1, 8, 9, 24, 25, 40, 41, 1000, 1023, 1024, 1025, 2000})
            for (const bool sizeIsKnown : {false, true}) {
                void* const block = take(given);
                std::memset(block, 1, given);
                sizeIsKnown ? cache_.give(block, given) : cache_.give(block);
                void* const next = take(taken);
                std::memset(next, 2, taken); // a sanitizer sees what is beyond the block
                EXPECT_EQ(reinterpret_cast<std::uintptr_t>(next) % alignof(std::max_align_t), 0U);
                cache_.give(next, taken);
                cache_.release();
            }
}

TEST_F(BlockCacheTest, neverGivesABlockTwice) {
    std::vector<void*> blocks;
    for (int i = 0; i < 1000; ++i)
        blocks.push_back(take(32));
    for (void* const block : blocks)
        cache_.give(block, 32);
    for (void*& block : blocks)
        block = take(32);

    std::sort(blocks.begin(), blocks.end());
    EXPECT_EQ(std::adjacent_find(blocks.begin(), blocks.end()), blocks.end());

    for (void* const block : blocks)
        cache_.give(block, 32);
}

TEST_F(BlockCacheTest, keepsLimitedBytesOfEachSize) {
    std::vector<void*> blocks;
    for (std::size_t i = 0; i < 2 * BlockCache::kMostBytes / 500; ++i)
        blocks.push_back(take(500));
    for (void* const block : blocks)
        cache_.give(block, 500);

    EXPECT_GE(cache_.bytesKept(), BlockCache::kMostBytes);
    EXPECT_LT(cache_.bytesKept(), BlockCache::kMostBytes + BlockCache::kLargestBlock);
}

TEST_F(BlockCacheTest, doesNotKeepLargeBlocks) {
    cache_.give(take(BlockCache::kLargestBlock + 100), BlockCache::kLargestBlock + 100);
    cache_.give(take(std::size_t{1} << 20));

    EXPECT_EQ(cache_.bytesKept(), 0U);
}

TEST_F(BlockCacheTest, keepsNothingAfterItsEnd) {
    void* const late = take(48);
    cache_.give(take(48), 48);

    cache_.close();
    cache_.give(late, 48);

    EXPECT_EQ(cache_.bytesKept(), 0U);
    EXPECT_EQ(cache_.takeKept(48), nullptr);
}

} // namespace
} // namespace quillow
