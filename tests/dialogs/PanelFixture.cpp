#include "tests/dialogs/PanelFixture.h"

#include <commctrl.h>

namespace tamvelo::testing {

std::optional<com::Error> PanelTest::Show(PanelCall& call, Script script) {
    return Play(std::move(script), [&] {
        return (server.Get()->*call.operation)(sink.GetAddressOf(), data.GetAddressOf(), ctl.GetAddressOf(),
                                               &call.column, &call.indx, &call.find, &call.last);
    });
}

std::optional<com::Error> PanelTest::ShowIndirect(const wchar_t* text, short modal, Script script) {
    com::Bstr own(text);
    short column = 0;
    return Play(std::move(script), [&] {
        return server->ShowSelecInDirecta(sink.GetAddressOf(), data.GetAddressOf(), ctl.GetAddressOf(),
                                          &column, own.Address(), nullptr, &modal);
    });
}

std::optional<com::Error> PanelTest::ShowLate(const wchar_t* operation, Script script) {
    return PlayLate(operation, {host.sink.Get(), host.data.Get(), com::Argument::Ref(ctl)},
                    std::move(script));
}

void PanelTest::WarmUp() {
    Script script;
    script.Do([] { PostMessageW(Item(IDC_DATAGRID), WM_CONTEXTMENU, 0, FirstRow()); }).Append(InMenu());
    script.Key(VK_ESCAPE).Key(VK_F5).Append(Elsewhere()).Key(VK_ESCAPE).Key(VK_F3).Append(Elsewhere());
    script.Key(VK_ESCAPE).Key(VK_F6).Append(Elsewhere()).Do([] {
        PostMessageW(TopWindow(), WM_CLOSE, 0, 0);
    });
    script.Until("the panel", [](HWND top) { return top == Panel(); });
    script.Key(VK_RETURN).Box(kHostErrorText).Key(VK_ESCAPE);
    host.sink->On(L"AceptarSeleccion", [](com::Invocation&) { RaiseHostError(); });
    Show(script);
    host.sink->On(L"AceptarSeleccion", [](com::Invocation&) {});
}

Script PanelTest::Elsewhere() {
    return Script().Until("another dialog", [](HWND top) { return top != Panel(); });
}

Script PanelTest::Back() {
    return Script().Until("the panel", [](HWND top) { return top == Panel(); });
}

Script PanelTest::DoubleClick() {
    return Script().Do([] { PostMessageW(Item(IDC_DATAGRID), WM_LBUTTONDBLCLK, MK_LBUTTON, FirstRow()); });
}

HWND PanelTest::Panel() {
    HWND panel = nullptr;
    const WNDENUMPROC look = [](HWND window, LPARAM out) __attribute__((stdcall))->BOOL {
        return GetDlgItem(window, IDC_DATAGRID) ? (*reinterpret_cast<HWND*>(out) = window, FALSE) : TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), look, reinterpret_cast<LPARAM>(&panel));
    return panel;
}

HWND PanelTest::Heading() { return FindWindowExW(Item(IDC_DATAGRID), nullptr, L"SysHeader32", nullptr); }

LPARAM PanelTest::FirstRow() {
    RECT heading{};
    GetClientRect(Heading(), &heading);
    return MAKELPARAM(20, heading.bottom + 4);
}

} // namespace tamvelo::testing
