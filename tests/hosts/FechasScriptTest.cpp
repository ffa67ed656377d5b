#include "frame/Resources.h"
#include "tests/hosts/ScriptRun.h"

namespace tamvelo::hosts {
namespace {

TEST(ScriptHost, GetsTwoDatesOrNothing) {
    const std::string output = RunScript(L"fechas.vbs", [] {
        for (const UINT key : {VK_ESCAPE, VK_RETURN}) {
            const HWND dialog = tamvelo::testing::WindowOfAnyProcess(L"Seleccionar Fechas");
            ASSERT_TRUE(dialog) << "the dialog did not open";
            const Closing closing{dialog};
            ASSERT_TRUE(FocusReaches(dialog, IDC_DTPICKER0));
            tamvelo::testing::PostKeyTo(dialog, key);
            ASSERT_TRUE(Eventually([&] { return !IsWindow(dialog); }));
        }
    });
    EXPECT_EQ(output, "Cancelado\r\nDate 0\r\nDate 0\r\n");
}

} // namespace
} // namespace tamvelo::hosts
