#include "frame/Resources.h"
#include "tests/hosts/ScriptRun.h"
#include "tests/support/ShownGrid.h"

namespace tamvelo::hosts {
namespace {

/// The program that others copy: its fields belong to a record, and it has neither clones nor bookmarks.
TEST(ScriptHost, TheExampleShowsItsRowsAndDeliversTheOneHighlighted) {
    const std::string output = RunScript(L"../../examples/seleccion.vbs", [] {
        const HWND panel = tamvelo::testing::WindowOfAnyProcess(L"Selección de articulos");
        ASSERT_TRUE(panel) << "the panel did not open";
        const Closing closing{panel};
        ASSERT_TRUE(FocusReaches(panel, IDC_DATAGRID));
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        const auto shown = [&] { return tamvelo::testing::ReadGrid(GetDlgItem(panel, IDC_DATAGRID)); };
        EXPECT_EQ(shown().rows,
                  (std::vector<std::wstring>{L"A-1; Tornillo", L"A-2; Tuerca", L"A-3; Arandela"}));
        tamvelo::testing::PostKeyTo(panel, VK_DOWN);
        EXPECT_TRUE(Eventually([&] { return shown().Selected() == L"A-2; Tuerca"; }));
        CoUninitialize();
        tamvelo::testing::PostKeyTo(panel, VK_RETURN);
        EXPECT_TRUE(Eventually([&] { return !IsWindow(panel); }));
    });
    EXPECT_EQ(output, "Elegido: A-2\r\n");
}

} // namespace
} // namespace tamvelo::hosts
