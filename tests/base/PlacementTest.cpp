#include "base/Placement.h"

#include <gtest/gtest.h>

#include <climits>
#include <vector>

namespace tamvelo::base {

static void PrintTo(const Rect& rect, std::ostream* out) {
    *out << rect.left << ',' << rect.top << ' ' << rect.width << 'x' << rect.height;
}

namespace {

// A screen with its bar at the bottom, and a bigger one to its left that begins higher up.
const std::vector<Rect> kTwoScreens = {{0, 0, 1920, 1040}, {-2560, -400, 2560, 1400}};

TEST(Placement, PullsWhatIsNotInsideOneWorkArea) {
    struct Row {
        const char* what;
        Rect saved;
        Rect shown;
    };
    const Row rows[] = {
        {"inside the first", {100, 100, 600, 400}, {100, 100, 600, 400}},
        {"fills the first", {0, 0, 1920, 1040}, {0, 0, 1920, 1040}},
        {"inside the left one, negative", {-2000, -300, 600, 400}, {-2000, -300, 600, 400}},
        {"over both, more on the left", {-400, 100, 600, 400}, {-600, 100, 600, 400}},
        {"over both, more on the right", {-200, 100, 600, 400}, {0, 100, 600, 400}},
        {"below the bar", {100, 900, 600, 400}, {100, 640, 600, 400}},
        {"on a monitor that went away, right", {4000, 200, 600, 400}, {1320, 200, 600, 400}},
        {"on a monitor that went away, left", {-5000, 200, 600, 400}, {-2560, 200, 600, 400}},
        {"minimised when saved", {-32000, -32000, 600, 400}, {-2560, -400, 600, 400}},
        {"larger than its screen", {10, 10, 5000, 3000}, {0, 0, 1920, 1040}},
        {"too small", {100, 100, 3, -7}, {100, 100, 300, 200}},
        {"nonsense", {INT_MAX, INT_MIN, INT_MAX, INT_MAX}, {0, 0, 1920, 1040}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(PullOnto(row.saved, kTwoScreens, {300, 200}), row.shown) << row.what;
    }
}

TEST(Placement, AWorkAreaSmallerThanTheMinimumWins) {
    EXPECT_EQ(PullOnto({50, 50, 100, 100}, std::vector<Rect>{{0, 0, 250, 150}}, {300, 200}),
              (Rect{0, 0, 250, 150}));
    EXPECT_EQ(PullOnto({50, 50, 100, 100}, {}, {300, 200}), (Rect{50, 50, 300, 200}));
}

TEST(Placement, StoredNumbersMustBeAWindow) {
    EXPECT_TRUE(IsSanePlacement({-32768, 32767, 1, 32767}));
    for (const Rect& bad : {Rect{-32769, 0, 9, 9}, Rect{0, 32768, 9, 9}, Rect{0, 0, 0, 9}, Rect{0, 0, 9, -1},
                            Rect{0, 0, 32768, 9}, Rect{0, 0, 9, INT_MAX}}) {
        EXPECT_FALSE(IsSanePlacement(bad)) << testing::PrintToString(bad);
    }
}

TEST(Placement, ScalingRoundsAndDoesNotDrift) {
    EXPECT_EQ(Scale(100, 96, 144), 150);
    EXPECT_EQ(Scale(1, 96, 144), 2);
    EXPECT_EQ(Scale(-1, 96, 144), -2);
    EXPECT_EQ(Scale(3, 96, 120), 4);
    EXPECT_EQ(Scale(2000000000, 96, 96), 2000000000);
    for (const int dpi : {96, 120, 144, 168, 192, 480}) {
        for (int length = -300; length <= 300; ++length) {
            ASSERT_EQ(Scale(Scale(length, 96, dpi), dpi, 96), length) << dpi;
        }
    }
}

} // namespace
} // namespace tamvelo::base
