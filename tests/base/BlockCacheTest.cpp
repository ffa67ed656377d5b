#include "base/BlockCache.h"

#include <gtest/gtest.h>

#include <string>

namespace tamvelo::base {
namespace {

using Cache = BlockCache<std::string>;

TEST(BlockCache, ABlockAnswersForItsRowsOnly) {
    Cache cache(2);
    EXPECT_EQ(cache.Find(0), nullptr);
    cache.Insert(cache.Epoch(), 70, "1");
    EXPECT_EQ(cache.Find(63), nullptr);
    ASSERT_NE(cache.Find(64), nullptr);
    EXPECT_EQ(*cache.Find(127), "1");
    EXPECT_EQ(cache.Find(128), nullptr);
}

TEST(BlockCache, TheLeastRecentlyUsedBlockGivesWay) {
    Cache cache(2);
    cache.Insert(cache.Epoch(), 0, "0");
    cache.Insert(cache.Epoch(), 64, "1");
    cache.Find(0);
    cache.Insert(cache.Epoch(), 128, "2");
    EXPECT_EQ(cache.Find(64), nullptr);
    EXPECT_NE(cache.Find(0), nullptr);

    // A second reading of a block takes its own slot, not another block's.
    cache.Insert(cache.Epoch(), 130, "2b");
    EXPECT_EQ(*cache.Find(128), "2b");
    EXPECT_EQ(cache.FirstRows(), (std::vector<long>{0, 128}));
    EXPECT_NE(cache.Find(0), nullptr);
}

TEST(BlockCache, NothingCrossesAnEpoch) {
    Cache cache(2);
    const auto began = cache.Epoch();
    cache.Insert(began, 0, "old");
    cache.BumpEpoch();
    EXPECT_EQ(cache.Find(0), nullptr);
    EXPECT_EQ(cache.Insert(began, 0, "read while the record set changed"), nullptr);
    EXPECT_EQ(cache.Find(0), nullptr);
    EXPECT_EQ(cache.FirstRows(), std::vector<long>());
    ASSERT_NE(cache.Insert(cache.Epoch(), 0, "new"), nullptr);
    EXPECT_EQ(*cache.Find(0), "new");
}

} // namespace
} // namespace tamvelo::base
