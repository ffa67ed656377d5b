#include "frame/Resources.h"
#include "selection/Resources.h"
#include "tests/hosts/ScriptRun.h"

namespace tamvelo::hosts {
namespace {

TEST(AltaScript, StoresANewArticleAndHandsItsCodeOver) {
    const std::string output = RunScript(L"alta.vbs", [] {
        constexpr int kFamily = IDC_RECORD_BOXES + 4 * 3 + 1;
        constexpr int kCode = IDC_RECORD_BOXES + 1 * 3 + 1;
        constexpr int kName = IDC_RECORD_BOXES + 2 * 3 + 1;
        const HWND panel = tamvelo::testing::WindowOfAnyProcess(L"Selección de Articulos");
        ASSERT_TRUE(panel) << "the panel did not open";
        const Closing closing{panel};
        ASSERT_TRUE(FocusReaches(panel, IDC_DATAGRID));
        const HWND button = GetDlgItem(panel, IDC_CMDNUEVO);
        PostMessageW(panel, WM_COMMAND, IDC_CMDNUEVO, reinterpret_cast<LPARAM>(button));
        ASSERT_TRUE(FocusReaches(panel, kFamily));
        tamvelo::testing::PostTextTo(panel, L"7");
        tamvelo::testing::PostKeyTo(panel, VK_TAB);
        ASSERT_TRUE(FocusReaches(panel, kCode));
        tamvelo::testing::PostKeyTo(panel, VK_TAB);
        ASSERT_TRUE(FocusReaches(panel, kName));
        tamvelo::testing::PostTextTo(panel, L"Puente");
        tamvelo::testing::PostKeyTo(panel, VK_RETURN);
        EXPECT_TRUE(Eventually([&] { return !IsWindow(panel); }));
    });
    EXPECT_EQ(output,
              "Requery seleccion\r\n"
              "InsertarArticulo |7-001|Puente|7|\r\n"
              "AceptarSeleccion 0, 7-001\r\n"
              "AplyFilter ''\r\n"
              "En el campo: 7-001\r\n");
}

} // namespace
} // namespace tamvelo::hosts
