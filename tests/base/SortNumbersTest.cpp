#include "base/SortNumbers.h"

#include <gtest/gtest.h>

namespace tamvelo::base {
namespace {

TEST(SortNumbers, SkipTheHostsReservedColumns) {
    struct Case {
        int entry;
        short number;
    };
    for (const Case& c :
         {Case{-1, -1}, {0, 0}, {38, 38}, {39, 47}, {40, 48}, {41, 51}, {42, 52}, {99, 109}}) {
        EXPECT_EQ(SortNumber(c.entry), c.number) << c.entry;
    }
}

} // namespace
} // namespace tamvelo::base
