// Hosts that take the ground away: the window that a dialog belongs to goes in the middle of any call, or
// while nobody is looking; components of the environment are out of order.
#include <set>
#include <thread>

#include "frame/Resources.h"
#include "tests/dialogs/EveryOperation.h"
#include "tests/support/Component.h"

namespace tamvelo::testing {
namespace {

using com::Invocation;
using com::Variant;

class Ground : public AllOperations {
protected:
    void SetUp() override {
        const auto text = [](Invocation& call) { call.Return(Variant(L"C:\\no hay\\")); };
        const auto nothing = [](Invocation&) {};
        for (const wchar_t* member : {L"RestaurarPosicion", L"GuardarPosicion", L"LeerValor", L"GuardarValor",
                                      L"CargarLista", L"CargarEtiquetas", L"GuardarLista", L"Recibir"}) {
            environment->On(member, nothing);
        }
        for (const wchar_t* member : {L"RutaBarra", L"CarpetaCuadriculas"}) {
            environment->On(member, text);
        }
        environment->On(L"Existe", [](Invocation& call) { call.Return(Variant(false)); });
        for (const wchar_t* member : {L"ValidaKey", L"ValidaValue"}) {
            host.data->On(member, [](Invocation& call) { call.Return(Variant(true)); });
        }
        host.data->On(L"ValidaDefinedSize", [](Invocation& call) { call.Return(Variant(9L)); });
        AllOperations::SetUp();
        m_component.emplace(environment.Get());
        for (const wchar_t* part : {L"Configuracion", L"Archivos", L"Foco"}) {
            SetValue(kEnvironmentKey, part, Component::Name());
        }
        Renew();
    }
    void TearDown() override {
        HostObject::beforeEach = {};
        AllOperations::TearDown();
    }
    /// The library looks for its components anew.
    void Renew() {
        server.Reset();
        EXPECT_TRUE(hosts::Server().MayUnload());
        server = hosts::Server().Create();
    }
    void NewOwner() {
        if (!IsWindow(owner)) {
            owner = CreateWindowExW(0, L"STATIC", L"Gestión", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 500,
                                    400, nullptr, nullptr, nullptr, nullptr);
        }
        SetActiveWindow(owner);
    }
    static void CALLBACK CloseDialog(HWND, UINT, UINT_PTR, DWORD) {
        const HWND top = TopWindow();
        if (top && (top == Dialog() || !BoxText(top).empty())) {
            PostMessageW(top, WM_CLOSE, 0, 0);
        }
    }

    com::ComPtr<HostObject> environment = com::Make<HostObject>(L"entorno", host.log);

private:
    std::optional<Component> m_component;
};

TEST_F(Ground, AnyCallOfAnOpeningMayCloseTheHostsWindow) {
    for (const demo::Operation& operation : demo::Operations()) {
        if (std::wstring_view(operation.name).starts_with(L"Print")) {
            continue; // no window
        }
        SCOPED_TRACE(::testing::PrintToString(std::wstring(operation.name)));
        std::set<std::wstring> called;
        HostObject::beforeEach = [&](const std::wstring& member) { called.insert(member); };
        Open(operation, Script()
                            .Until("the dialog", [](HWND top) { return top && top == Dialog(); })
                            .Do([&] { HostObject::beforeEach = {}; })
                            .Key(VK_ESCAPE));
        EXPECT_GE(called.size(), 3U);
        for (const std::wstring& closing : called) {
            SCOPED_TRACE(::testing::PrintToString(closing));
            bool closed = false;
            HostObject::beforeEach = [&](const std::wstring& member) {
                if (member == closing && !closed) {
                    closed = true;
                    DestroyWindow(owner);
                }
            };
            // What has no window yet when that happens opens without an owner.
            const UINT_PTR timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, CloseDialog);
            Unwatched(operation);
            for (MSG message; Dialog() && GetMessageW(&message, nullptr, 0, 0) > 0;) {
                DispatchMessageW(&message);
            }
            KillTimer(nullptr, timer);
            EXPECT_TRUE(closed);
            EXPECT_EQ(Dialog(), nullptr);
            HostObject::beforeEach = {};
            NewOwner();
        }
    }
}

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
