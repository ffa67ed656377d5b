// More of everything than anybody means: letters, fields, values.
#include <map>

#include "base/Text.h"
#include "frame/Resources.h"
#include "selection/Resources.h"
#include "tests/dialogs/EveryOperation.h"

namespace tamvelo::testing {
namespace {

using com::Invocation;
using com::Variant;

class Limits : public AllOperations {
protected:
    Limits() { gdiSlack = 32; } // what the system draws its message boxes with
    void WarmUp() override { OpenAll({}, {L"ShowSelec", L"ShowRegistros", L"ShowSeleccionar"}); }

    void Run(std::wstring_view operation, const Script& script) {
        for (const demo::Operation& each : demo::Operations()) {
            if (operation == each.name) {
                Open(each, script);
            }
        }
    }
    static Script Opened() {
        return Script().Until("the dialog", [](HWND top) { return top && top == Dialog(); });
    }
    /// A message box that fits the screen, button and all; what it says.
    Script Told(std::wstring part) {
        return Script().Until("the message", [this, part = std::move(part)](HWND top) {
            const HWND text = GetDlgItem(top, 0xFFFF); // as in every message box
            m_told = text ? TextOf(text) : L"";
            if (m_told.find(part) == m_told.npos) {
                return false;
            }
            RECT box{};
            GetWindowRect(top, &box);
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
            Run(L"ShowSeleccionar", Opened()
                                        .Key(VK_DOWN, VK_CONTROL)
                                        .Append(Told(L"de " + std::to_wstring(text.size() + 5) + L" c"))
                                        .Key(VK_ESCAPE));
            EXPECT_NE(ReadText(trace).find(base::ToUtf8(L"Mensaje: " + text + L"[fin]")), std::string::npos);
        }
    }
    traceTo(L"");
    SetValue(kEnvironmentKey, L"Errores", L"");
    host.data->On(L"MoveNext", [](Invocation&) { RaiseHostError(); }); // the usual one is left as it is
    Run(L"ShowSeleccionar", Opened().Key(VK_DOWN, VK_CONTROL).Append(Told(kHostErrorText)).Key(VK_ESCAPE));
    EXPECT_EQ(m_told,
              std::wstring(kHostErrorText) + L"\n\nOrigen: Gestión\nError: 513\nLlamada: «MyClase».MoveNext");
    // A question names each of its parts.
    host.set->Table().value = [](long, short column) { return Variant(std::wstring(9000, L'a' + column)); };
    Run(L"ShowRegistros", Opened()
                              .Do([] { SetFocus(Item(IDC_DATAGRID)); })
                              .Key(VK_DELETE)
                              .Append(Told(L"¿Desea eliminar"))
                              .Key(VK_ESCAPE));
    EXPECT_THAT(m_told, HasSubstr(L"\nPrecio: ccccc"));
}

/// Messages that a control of the dialog gets, by their numbers.
class Counted {
public:
    explicit Counted(HWND window)
        : m_window(window), m_before(SetWindowLongPtrW(window, GWLP_WNDPROC, Procedure())) {
        s_counted[window] = this;
    }
    ~Counted() {
        SetWindowLongPtrW(m_window, GWLP_WNDPROC, m_before);
        s_counted.erase(m_window);
    }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    std::map<UINT, int> messages;

private:
    static LONG_PTR Procedure() {
        const WNDPROC count =
            [](HWND window, UINT message, WPARAM first, LPARAM second) __attribute__((stdcall))->LRESULT {
            ++s_counted[window]->messages[message];
            return CallWindowProcW(reinterpret_cast<WNDPROC>(s_counted[window]->m_before), window, message,
                                   first, second);
        };
        return reinterpret_cast<LONG_PTR>(count);
    }
    static inline std::map<HWND, Counted*> s_counted;
    const HWND m_window;
    const LONG_PTR m_before;
};

TEST_F(Limits, ACriterionLooksAtItsOwnBoxAndClearingAtEachOnce) {
    host.set->Table().columns = 3000;
    host.data->On(L"ValidaKey", [](Invocation& call) { call.Return(Variant(true)); });
    const auto part = [](int field, int which) {
        return GetDlgItem(Item(IDC_CRITERIA), IDC_CRITERIA_FIELDS + 4 * field + which);
    };
    std::optional<Counted> other;
    std::optional<Counted> status;
    Run(L"ShowSeleccionar", Opened()
                                .Do([&] {
                                    EXPECT_NE(part(299, 1), nullptr);
                                    EXPECT_EQ(part(300, 1), nullptr); // and the user is told
                                    EXPECT_THAT(ItemText(IDC_LBLBUSCAR), HasSubstr(L"2700 campos"));
                                    for (int i = 0; i < 299; i += 2) {
                                        SetWindowTextW(part(i, 1), L"a");
                                    }
                                    EXPECT_THAT(ItemText(IDC_STATUS),
                                                HasSubstr(L"150 criterios: Código, Precio"));
                                    other.emplace(part(200, 1));
                                    status.emplace(Item(IDC_STATUS));
                                })
                                .Type(L"b")
                                .Do([&] {
                                    EXPECT_EQ(other->messages[WM_GETTEXT], 0);
                                    EXPECT_EQ(status->messages[WM_SETTEXT], 1);
                                })
                                .Key(VK_F7)
                                .Do([&] {
                                    EXPECT_EQ(ItemText(IDC_STATUS), L"20 Registros   ·   Sin criterios");
                                    EXPECT_EQ(other->messages[WM_GETTEXT], 1);
                                    EXPECT_EQ(status->messages[WM_SETTEXT], 2);
                                    other.reset();
                                    status.reset();
                                })
                                .Key(VK_ESCAPE));
}

TEST_F(Limits, ACellOfAMegabyteIsSeenByItsBeginningAndCopiedWhole) {
    const std::wstring huge(500'000, L'x');
    host.set->Table().value = [&](long, short) { return Variant(huge); };
    Run(L"ShowSelec",
        Opened()
            .Key(VK_F5)
            .Until("the record",
                   [](HWND) { return ItemText(IDC_RECORD_VALUE).find(L"500000 caracteres") < 20'000; })
            .Key('C', VK_CONTROL)
            .Key(VK_ESCAPE)
            .Key(VK_ESCAPE));
    ASSERT_TRUE(OpenClipboard(nullptr));
    EXPECT_EQ(static_cast<const wchar_t*>(GlobalLock(GetClipboardData(CF_UNICODETEXT))), huge);
    CloseClipboard();
}

} // namespace
} // namespace tamvelo::testing
