// Hosts that take the ground away: the window that a dialog belongs to goes while nobody is looking;
// components of the environment are out of order.
#include <thread>

#include "tests/dialogs/EveryOperation.h"

namespace tamvelo::testing {
namespace {

using ::testing::AnyOf;
using Ground = WithEnvironment;

TEST_F(Ground, AWindowThatIsClosedByASentMessageEndsTheOperation) {
    const DWORD thread = GetCurrentThreadId();
    for (const Operation& operation : Operations()) {
        if (!HasDialog(operation) || operation.name == L"ShowNuevaCita") { // these do not wait
            continue;
        }
        SCOPED_TRACE(::testing::PrintToString(operation.name));
        std::atomic<bool> returned = false;
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
            EXPECT_TRUE(returned);
            PostThreadMessageW(thread, WM_NULL, 0, 0);
        });
        Unwatched(operation);
        returned = true;
        other.join();
        EXPECT_FALSE(IsWindow(owner));
        NewOwner();
    }
}

TEST_F(Ground, AComponentThatIsOutOfOrderIsToldOfOnceAndLeftAlone) {
    environment->Raises(L"Recibir");
    environment->Raises(L"RestaurarPosicion");
    const auto open = [&](const Script& boxes) {
        Play({boxes, L"Tab Tab", Into(IDC_TXTFIELDS0, L"7"), Says(IDC_TXTFIELDS0, L"7"), L"Esc"},
             [&] { return Unwatched(OperationOf(L"ShowBuscar")) ? E_FAIL : S_OK; });
    };
    open({Box(L"«Configuracion».RestaurarPosicion"), Box(L"«Foco».Recibir")});
    EXPECT_THAT(host.log, Contains(AnyOf(StartsWith(L"Recibir"), StartsWith(L"GuardarPosicion"))).Times(1));
    SetValue(kEnvironmentKey, L"Configuracion", L"");
    SetValue(kEnvironmentKey, L"Foco", L"No.Existe");
    Renew();
    open(Box(L"«No.Existe»"));
}

} // namespace
} // namespace tamvelo::testing
