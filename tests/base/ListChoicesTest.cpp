#include "base/ListChoices.h"

#include <gtest/gtest.h>

namespace tamvelo::base {
namespace {

using Titles = std::vector<std::wstring>;
using Ticks = std::vector<bool>;

TEST(ListChoices, TicksFollowTheirReports) {
    const Titles then{L"Listado", L"Resumen", L"Etiquetas", L"Resumen"};
    const std::wstring text = RememberTicks(then, {true, false, false, true});
    EXPECT_EQ(text, L"Listado|Resumen#2|");
    EXPECT_EQ(RestoreTicks(then, text), (Ticks{true, false, false, true}));
    // Reordered, one removed, one added.
    EXPECT_EQ(RestoreTicks(Titles{L"Nuevo", L"Resumen", L"Listado", L"Resumen"}, text),
              (Ticks{false, false, true, true}));
    EXPECT_EQ(RestoreTicks(Titles{L"Resumen"}, text), (Ticks{false}));
}

TEST(ListChoices, TitlesWithMarksAndTextsThatAreNoneOfOurs) {
    const Titles titles{L"A|B", L"A#2", L"A", L"A", L"C\\", L""};
    const Ticks all(titles.size(), true);
    EXPECT_EQ(RestoreTicks(titles, RememberTicks(titles, all)), all);
    const Ticks second{false, false, false, true, false, false};
    EXPECT_EQ(RestoreTicks(titles, RememberTicks(titles, second)), second);
    EXPECT_EQ(RestoreTicks(Titles{L"A"}, L"\\"), (Ticks{false}));
    EXPECT_EQ(RestoreTicks(Titles{L"A", L"B"}, L"||B#|A"), (Ticks{true, false})); // cut after the last
    EXPECT_EQ(RememberTicks(titles, {}), L"");
}

} // namespace
} // namespace tamvelo::base
