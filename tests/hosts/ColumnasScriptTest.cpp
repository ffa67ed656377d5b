#include "frame/Resources.h"
#include "tests/hosts/ScriptRun.h"

namespace tamvelo::hosts {
namespace {

TEST(ScriptHost, ChoosesItsColumnsAndItsSortColumn) {
    const std::string output = RunScript(L"columnas.vbs", [] {
        for (const wchar_t* caption : {L"Columnas visibles", L"Columna de orden"}) {
            const HWND dialog = tamvelo::testing::WindowOfAnyProcess(caption);
            ASSERT_TRUE(dialog) << ::testing::PrintToString(caption);
            const Closing closing{dialog};
            ASSERT_TRUE(FocusReaches(dialog, IDC_LIST1));
            for (const UINT key : {VK_DOWN, VK_DOWN, VK_SPACE, VK_RETURN}) {
                tamvelo::testing::PostKeyTo(dialog, key);
            }
            EXPECT_TRUE(Eventually([&] { return !IsWindow(dialog); }));
        }
    });
    EXPECT_EQ(output,
              "Codigo -1\r\nNombre -1\r\nSaldo -1\r\n"
              "ActualizaOrden Integer 1, Integer 7\r\nmodo 7\r\n");
}

} // namespace
} // namespace tamvelo::hosts
