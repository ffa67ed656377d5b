#include "frame/Resources.h"
#include "selection/Resources.h"
#include "tests/hosts/ScriptRun.h"

namespace tamvelo::hosts {
namespace {

using tamvelo::testing::PostKeyTo;

TEST(CasillasScript, TicksWhatTheHostAllowsAndAccepts) {
    const std::string output = RunScript(L"casillas.vbs", [] {
        const HWND list = tamvelo::testing::WindowOfAnyProcess(L"Lista con casillas de Fases");
        ASSERT_TRUE(list) << "the list did not open";
        const Closing closing{list};
        const auto says = [&](std::wstring_view status) {
            return Eventually([&] {
                wchar_t text[64] = L"";
                SendMessageW(GetDlgItem(list, IDC_STATUS), WM_GETTEXT, ARRAYSIZE(text),
                             reinterpret_cast<LPARAM>(text));
                return status == text;
            });
        };
        ASSERT_TRUE(FocusReaches(list, IDC_DATAGRID));
        EXPECT_TRUE(says(L"Registro 1 de 3   ·   1 marcada"));
        PostMessageW(GetDlgItem(list, IDC_LBLNINGUNO), BM_CLICK, 0, 0);
        EXPECT_TRUE(says(L"Registro 1 de 3   ·   0 marcadas"));
        PostKeyTo(list, VK_TAB); // from the last of the links
        ASSERT_TRUE(FocusReaches(list, IDC_TXTFIELDS0));
        PostKeyTo(list, VK_TAB);
        ASSERT_TRUE(FocusReaches(list, IDC_DATAGRID));
        PostKeyTo(list, VK_SPACE);
        EXPECT_TRUE(says(L"Registro 1 de 3   ·   1 marcada"));
        PostKeyTo(list, VK_DOWN);
        PostKeyTo(list, VK_DOWN);
        EXPECT_TRUE(says(L"Registro 3 de 3   ·   1 marcada"));
        PostKeyTo(list, VK_SPACE); // refused
        HWND refusal = nullptr;
        ASSERT_TRUE(Eventually([&] {
            refusal = GetLastActivePopup(list);
            return refusal != list && IsWindowVisible(refusal);
        })) << "no message";
        PostMessageW(refusal, WM_COMMAND, IDOK, 0);
        ASSERT_TRUE(FocusReaches(list, IDC_DATAGRID));
        EXPECT_TRUE(says(L"Registro 3 de 3   ·   1 marcada"));
        PostKeyTo(list, VK_RETURN);
        EXPECT_TRUE(Eventually([&] { return !IsWindow(list); }));
    });
    EXPECT_EQ(output,
              "Requery seleccion\r\n"
              "Denegar_todos conexion: F-2\r\n"
              "Requery seleccion\r\n"
              "Planificar de F-1 = Boolean -1\r\n"
              "Update\r\n"
              "AceptarSeleccionParam 0, F-3, F-3, No: F-1\r\n"
              "clsEvents_AceptaSeleccion 0, F-3, F-3\r\n"
              "En el campo: F-3\r\n");
}

} // namespace
} // namespace tamvelo::hosts
