// Hosts that go to the limits: texts longer than anybody means; the window that a dialog belongs to goes
// while nobody is looking; components of the environment are out of order.
#include <thread>

#include "tests/dialogs/EveryOperation.h"

namespace tamvelo::testing {
namespace {

class Limits : public AllOperations {
protected:
    /// A message box that fits the screen, button and all; what it says.
    Script Told(std::wstring part) {
        return Until("the message", [this, part = std::move(part)](HWND top) {
            const HWND text = GetDlgItem(top, 0xFFFF); // as in every message box
            m_told = text ? TextOf(text) : L"";
            if (m_told.find(part) == m_told.npos) {
                return false;
            }
            const RECT box = PlaceOf(top);
            EXPECT_LE(box.bottom - box.top, GetSystemMetrics(SM_CYSCREEN) * 3 / 4);
            EXPECT_LE(box.right - box.left, GetSystemMetrics(SM_CXSCREEN));
            PostMessageW(top, WM_COMMAND, GetDlgItem(top, IDNO) ? IDNO : IDOK, 0);
            return true;
        });
    }
    std::wstring m_told;
};

TEST_F(Limits, AMessageShowsTheFirstLinesAndTheTraceTheWhole) {
    const std::wstring trace = File(L"..\\traza.txt");
    const auto traceTo = [](const std::wstring& file) { // looked up when an object is made
        SetValue(kEnvironmentKey, L"Traza", file);
        hosts::Server().Create();
    };
    const auto fail = [this](const std::wstring& told) {
        Open(OperationOf(L"ShowSeleccionar"), {L"^Down", Told(told), L"Esc"});
    };
    traceTo(trace);
    std::wstring words;
    for (int i = 0; i < 4000; ++i) {
        words += i % 100 ? L"palabra " : L"línea\r\n";
    }
    for (const std::wstring& text : {words, std::wstring(50'000, L'x'), std::wstring(900, L'\n') + L"fin"}) {
        host.data->On(L"MoveNext",
                      [&](Invocation&) { throw com::Error(kHostErrorNumber, text + L"[fin]", text); });
        for (const wchar_t* reporter : {L"", L"No.Existe"}) { // also when the host's own is out of order
            SetValue(kEnvironmentKey, L"Errores", reporter);
            WriteText(trace, "");
            fail(L"de " + std::to_wstring(text.size() + 5) + L" c");
            EXPECT_NE(ReadText(trace).find(base::ToUtf8(L"Mensaje: " + text + L"[fin]")), std::string::npos);
        }
    }
    traceTo(L"");
    SetValue(kEnvironmentKey, L"Errores", L"");
    host.data->Raises(L"MoveNext"); // the usual one is left as it is
    fail(kHostErrorText);
    EXPECT_EQ(m_told,
              std::wstring(kHostErrorText) + L"\n\nOrigen: Gestión\nError: 513\nLlamada: «MyClase».MoveNext");
    // A question names each of its parts.
    host.set->Table().value = [](long, short column) { return Variant(std::wstring(9000, L'a' + column)); };
    Open(OperationOf(L"ShowRegistros"), {Into(IDC_DATAGRID), L"Delete", Told(L"¿Desea eliminar"), L"Esc"});
    EXPECT_THAT(m_told, HasSubstr(L"\nPrecio: ccccc"));
}

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
    EXPECT_THAT(host.log,
                Contains(::testing::AnyOf(StartsWith(L"Recibir"), StartsWith(L"GuardarPosicion"))).Times(1));
    SetValue(kEnvironmentKey, L"Configuracion", L"");
    SetValue(kEnvironmentKey, L"Foco", L"No.Existe");
    Renew();
    open(Box(L"«No.Existe»"));
}

} // namespace
} // namespace tamvelo::testing
