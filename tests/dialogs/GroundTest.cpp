// Hosts that take the ground away: the window that a dialog belongs to goes while nobody is looking;
// components of the environment are out of order.
#include <thread>

#include "frame/Resources.h"
#include "tests/dialogs/EveryOperation.h"

namespace tamvelo::testing {
namespace {

using com::Invocation;

using Ground = WithEnvironment;

TEST_F(Ground, AWindowThatIsClosedByASentMessageEndsTheOperation) {
    const DWORD thread = GetCurrentThreadId();
    for (const demo::Operation& operation : demo::Operations()) {
        const std::wstring_view name = operation.name;
        if (name.starts_with(L"Print") || name == L"ShowNuevaCita") { // these do not wait
            continue;
        }
        SCOPED_TRACE(::testing::PrintToString(std::wstring(name)));
        bool returned = false;
        bool stuck = false;
        // Nothing is posted to the dialog's thread meanwhile, as a timer would.
        std::thread other([&] {
            const auto open = [&] {
                GUITHREADINFO info{};
                info.cbSize = sizeof info;
                return GetGUIThreadInfo(thread, &info) && info.hwndFocus && !IsWindowEnabled(owner);
            };
            for (int i = 0; i < 500 && !open(); ++i) {
                Sleep(10);
            }
            Sleep(50);
            SendMessageW(owner, WM_CLOSE, 0, 0);
            for (int i = 0; i < 300 && !returned; ++i) {
                Sleep(10);
            }
            if (!returned) {
                stuck = true;
                PostThreadMessageW(thread, WM_NULL, 0, 0);
            }
        });
        Unwatched(operation);
        returned = true;
        other.join();
        EXPECT_FALSE(stuck);
        EXPECT_FALSE(IsWindow(owner));
        NewOwner();
    }
}

TEST_F(Ground, AComponentThatIsOutOfOrderIsToldOfOnceAndLeftAlone) {
    const Script use = Script()
                           .Key(VK_TAB)
                           .Key(VK_TAB)
                           .Do([] { SetFocus(Item(IDC_TXTFIELDS0)); })
                           .Type(L"7")
                           .Do([] { EXPECT_EQ(ItemText(IDC_TXTFIELDS0), L"7"); })
                           .Key(VK_ESCAPE);
    environment->On(L"Recibir", [](Invocation&) { RaiseHostError(); });
    environment->On(L"RestaurarPosicion", [](Invocation&) { RaiseHostError(); });
    const auto open = [&](const Script& script) {
        Open(*std::ranges::find(demo::Operations(), std::wstring_view(L"ShowBuscar"), &demo::Operation::name),
             script);
    };
    open(Script().Box(L"«Configuracion».RestaurarPosicion").Box(L"«Foco».Recibir").Append(use));
    EXPECT_EQ(std::ranges::count_if(host.log,
                                    [](const std::wstring& line) {
                                        return line.starts_with(L"Recibir") ||
                                               line.starts_with(L"GuardarPosicion");
                                    }),
              1);
    SetValue(kEnvironmentKey, L"Configuracion", L"");
    SetValue(kEnvironmentKey, L"Foco", L"No.Existe");
    Renew();
    open(Script().Box(L"«No.Existe»").Append(use));
}

} // namespace
} // namespace tamvelo::testing
