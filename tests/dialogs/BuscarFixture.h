#pragma once

#include <utility>

#include "base/Text.h"
#include "search/Resources.h"
#include "tests/dialogs/DialogFixture.h"

namespace tamvelo::testing {

using com::Invocation;
using com::Variant;

inline constexpr wchar_t kSession[] = L"SOFTWARE\\Tamvelo\\Global\\Configuracion\\Sesion\\Ordenes";

/// The search panel over a host with five columns, that takes every key and value up to five characters.
class BuscarTest : public DialogTest {
protected:
    BuscarTest() {
        gdiSlack = 16; // of a window that is hidden before it goes
        host.AddColumn(L"Código", L"codigo");
        host.AddColumn(L"Caja", L"caja");
        host.AddColumn(L"Orden", L"orden");
        host.AddColumn(L"Paciente", L"paciente");
        host.AddColumn(L"Parcial", L"PARCIAL");
        host.data->On(L"CreateFilter", [](Invocation& call) {
            com::LateObject control(call[0].ToObject().Get(), L"control");
            const std::wstring text =
                control.Answers(L"ListCount")
                    ? L"de " + control.Call(L"ListCount").ToText() + L" hasta " +
                          control.Call(L"List", {control.Call(L"ListCount").ToLong() - 1}).ToText()
                    : control.Call(L"Text").ToText();
            call.Return(Variant(text.empty() ? L"" : control.Call(L"DataField").ToText() + L" " + text));
        });
        host.data->On(
            L"ValidaKey", [](Invocation& call) { call.Return(Variant::Null()); }, true);
        host.data->On(L"ValidaDefinedSize", [](Invocation& call) { call.Return(Variant(5L)); });
        host.data->On(L"ValidaValue", [](Invocation& call) { call.Return(Variant(true)); });
    }
    void WarmUp() override {
        host.sink->On(L"AceptarBuscar", [](Invocation&) { RaiseHostError(); });
        for (const wchar_t* text : {L"a;b", L"a"}) {
            Show(Mode(4)
                     .Do([text] { Paste(text); })
                     .Type(L"a")
                     .Key(VK_RETURN)
                     .Key(VK_RETURN)
                     .Do([] { SetFocus(Item(IDC_LIST2)); })
                     .Key(VK_DOWN)
                     .Append(Mode(2))
                     .Append(Mode(3))
                     .Type(L"a")
                     .Key(VK_RETURN)
                     .Append(Mode(1))
                     .Key(VK_TAB)
                     .Append(Focused(IDC_TXTFIELDS2))
                     .Do([] { ClickTool(L"Aceptar"); })
                     .Box(kHostErrorText)
                     .Key(VK_ESCAPE));
        }
        host.sink->On(L"AceptarBuscar", [](Invocation&) {});
        Show(Script().Type(L"a").Key(VK_RETURN).Do([] { PostMessageW(Dialog(), WM_CLOSE, 0, 0); }));
    }
    std::optional<com::Error> Show(Script script) {
        return Play(std::move(script), [&] {
            return server->ShowBuscar(sink.GetAddressOf(), data.GetAddressOf(), columns.GetAddressOf());
        });
    }
    /// A mode by its key, then the focus in the box that it gives it to.
    static Script Mode(UINT number) {
        constexpr int kFirst[] = {IDC_TXTFIELDS0, IDC_TXTFIELDS1, IDC_TXTFIELDS1, IDC_TXTFIELDS2,
                                  IDC_TXTFIELDS0};
        return Script().Key('1' + number, VK_CONTROL).Append(Focused(kFirst[number]));
    }
    static std::wstring Shown() {
        std::wstring shown;
        for (const int id : {IDC_TXTFIELDS0, IDC_TXTFIELDS1, IDC_TXTFIELDS2, IDC_LIST2, IDC_LSTTIPOS,
                             IDC_FRMOPTION, IDC_CMDESTILO0}) {
            shown += IsShown(id) ? L'x' : L'-';
        }
        return shown;
    }
    static long Count(int list) { return static_cast<long>(SendMessageW(Item(list), LB_GETCOUNT, 0, 0)); }
    static void Paste(const std::wstring& text) {
        const size_t bytes = (text.size() + 1) * sizeof(wchar_t);
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
        memcpy(GlobalLock(memory), text.c_str(), bytes);
        GlobalUnlock(memory);
        OpenClipboard(Dialog());
        EmptyClipboard();
        SetClipboardData(CF_UNICODETEXT, memory);
        CloseClipboard();
        SendMessageW(GetFocus(), WM_PASTE, 0, 0);
    }
};

} // namespace tamvelo::testing
