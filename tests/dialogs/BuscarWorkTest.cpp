// The search panel at work: lists of values, choices that a value stands against, hosts that take their time.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include <algorithm>
#include <map>

#include "tests/dialogs/BuscarFixture.h"
#include "tests/support/Component.h"

namespace tamvelo::testing {
namespace {

TEST_F(BuscarTest, AListIsPastedCountedAndCorrected) {
    host.sink->On(L"AceptarBuscar", [](Invocation&) { RaiseHostError(); });
    EXPECT_FALSE(Show(Mode(4)
                          .Do([] {
                              Paste(L"1,5\r\n2;3\r\n");
                              EXPECT_EQ(ItemText(IDC_LBLLIST2), L"&Lista: 3 valores");
                              EXPECT_EQ(ItemText(IDC_TXTFIELDS0), L"");
                              Paste(L"4,5");
                              EXPECT_EQ(ItemText(IDC_TXTFIELDS0), L"4,5");
                              SetFocus(Item(IDC_LIST2));
                              SendMessageW(Item(IDC_LIST2), LB_SETCURSEL, 2, 0);
                          })
                          .Key(VK_DELETE)
                          .Key(VK_DELETE)
                          .Do([] {
                              EXPECT_EQ(ItemText(IDC_LBLLIST2), L"&Lista: 1 valor");
                              SetFocus(Item(IDC_OPTBUSCAR4));
                          })
                          .Key(VK_RIGHT)
                          .Append(Focused(IDC_OPTBUSCAR0))
                          .Do([] { EXPECT_EQ(Count(IDC_LIST2), 0); })
                          .Key(VK_LEFT)
                          .Key(VK_UP)
                          .Append(Focused(IDC_OPTBUSCAR3))
                          .Do([] { EXPECT_EQ(Shown(), L"--x--x-"); })
                          .Append(Click(IDC_OPTBUSCAR1))
                          .Append(Focused(IDC_TXTFIELDS1))
                          .Key(VK_RETURN, VK_CONTROL)
                          .Box(kHostErrorText)
                          .Key(VK_ESCAPE)));
}

TEST_F(BuscarTest, ManyPastedValuesAreShownAndCountedOnce) {
    constexpr UINT kMany = 20000;
    static std::map<UINT, UINT> messages; // of the list and its counter
    const SUBCLASSPROC count = [](HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR, DWORD_PTR)
                                   __attribute__((stdcall))
                                       ->LRESULT {
        constexpr UINT kLookEvery = 1000; // looking takes longer than adding
        if (++messages[message] % kLookEvery == 1 && message == LB_ADDSTRING) {
            EXPECT_FALSE(IsWindowVisible(window)) << "drawn";
            EXPECT_EQ(GetCapture(), Dialog()) << "no busy cursor";
        }
        return DefSubclassProc(window, message, first, second);
    };
    std::wstring text;
    for (UINT i = 1; i <= kMany; ++i) {
        text += std::to_wstring(i) + L"\r\n";
    }
    EXPECT_FALSE(Show(Mode(4)
                          .Do([&] {
                              messages.clear();
                              for (const int id : {IDC_LIST2, IDC_LBLLIST2}) {
                                  SetWindowSubclass(Item(id), count, 1, 0);
                              }
                              Paste(text);
                              EXPECT_EQ(GetCapture(), nullptr);
                              for (const int id : {IDC_LIST2, IDC_LBLLIST2}) {
                                  RemoveWindowSubclass(Item(id), count, 1);
                              }
                              EXPECT_EQ(ItemText(IDC_LBLLIST2), L"&Lista: 20000 valores");
                              EXPECT_EQ(std::exchange(messages[LB_ADDSTRING], 0), kMany);
                              UINT others = 0;
                              for (const auto& [message, times] : messages) {
                                  EXPECT_LE(times, 4U) << std::hex << message;
                                  others += times;
                              }
                              EXPECT_LE(others, 40U);
                          })
                          .Key(VK_RETURN)
                          .Do([&] { EXPECT_EQ(host.stored, L"codigo de 20000 hasta 20000"); })
                          .Key(VK_ESCAPE)));
}

TEST_F(BuscarTest, AHostThatTakesItsTimeIsWaitedForWithTheAnimatedCursor) {
    std::wstring slow;
    Log shown; // the members that were called under it
    bool comesForward = false;
    for (const wchar_t* member : {L"CreateFilter", L"SetFilter", L"GetFilter", L"AplyFilter"}) {
        host.data->On(member, [&, member](Invocation& call) {
            if (GetCapture() == Dialog() && GetCursor() && GetCursor() != LoadCursorW(nullptr, IDC_WAIT)) {
                shown.push_back(member);
            }
            if (slow == member) {
                Sleep(600);
            }
            if (comesForward) { // a window of the host's takes the mouse
                const HWND other = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 9, 9,
                                                   owner, nullptr, nullptr, nullptr);
                SetActiveWindow(other);
                EXPECT_EQ(GetCapture(), nullptr);
                DestroyWindow(other);
                SetActiveWindow(Dialog());
            }
            call.Return(Variant(L"x"));
        });
    }
    const auto search = [&](const wchar_t* member, const Log& expected) {
        return Script()
            .Do([&, member] {
                slow = member;
                shown.clear();
            })
            .Key(VK_RETURN)
            .Do([&, expected] {
                EXPECT_EQ(shown, expected);
                EXPECT_EQ(GetCapture(), nullptr);
                EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
            });
    };
    EXPECT_FALSE(Show(
        search(L"AplyFilter", {}) // nobody could know
            .Append(search(L"", {L"AplyFilter"}))
            .Append(search(L"", {})) // it was quick again
            .Append(search(L"CreateFilter", {L"SetFilter", L"GetFilter", L"AplyFilter"}))
            .Do([&] { comesForward = true; })
            .Append(search(L"CreateFilter", {L"CreateFilter", L"SetFilter", L"GetFilter", L"AplyFilter"}))
            .Do([&] { comesForward = false; })
            .Key(VK_ESCAPE)));
}

TEST_F(BuscarTest, WhatIsChosenAgainLosesNothingAndARefusedValueStopsEveryChoice) {
    host.className = L"Ordenes";
    const auto still = [] { return Focused(IDC_TXTFIELDS0).Do([] { EXPECT_EQ(Count(IDC_LIST2), 2); }); };
    EXPECT_FALSE(Show(Mode(4)
                          .Do([] { Paste(L"a;b"); })
                          .Append(Mode(4))
                          .Append(still())
                          .Append(Click(IDC_OPTBUSCAR4))
                          .Append(still())
                          .Do([] { SetFocus(Item(IDC_OPTBUSCAR4)); })
                          .Append(Click(IDC_OPTBUSCAR4))
                          .Append(still())
                          .Key(VK_ESCAPE)));
    host.data->On(L"ValidaValue", [](Invocation& call) { call.Return(Variant(false)); });
    SetValue(kSession, L"Modo_Ordenes", L"0");
    const Script kind = Script()
                            .Do([] { PostMessageW(Item(IDC_LSTTIPOS), WM_LBUTTONDOWN, 0, MAKELPARAM(9, 2)); })
                            .Append(Focused(IDC_TXTFIELDS0)) // called back before the button comes up
                            .Do([] { PostMessageW(Item(IDC_LSTTIPOS), WM_LBUTTONUP, 0, MAKELPARAM(9, 2)); });
    const struct {
        const wchar_t* simple;
        Script choice;
    } cases[] = {
        {L"0", Script().Key('2', VK_CONTROL)},
        {L"0", Click(IDC_OPTBUSCAR1)},
        {L"0", Click(IDC_CMDESTILO1)},
        {L"0", Click(IDC_CMDBUSCAR)},
        {L"1", kind},
        {L"1", Click(IDC_CMDESTILO0)},
        {L"1", Script().Key(VK_F4)},
        {L"1", Script().Key(VK_RETURN)},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(&row - cases);
        SetValue(kSession, L"Simple", row.simple);
        SetValue(kSession, L"Simple_idx", L"1");
        std::wstring shown;
        EXPECT_FALSE(
            Show(Focused(IDC_TXTFIELDS0)
                     .Type(L"mal")
                     .Append(Forget())
                     .Do([&] { shown = Shown(); })
                     .Append(row.choice)
                     .Until("the refusal", [&](HWND) { return host.log.size() == 2; })
                     .Append(Focused(IDC_TXTFIELDS0))
                     .Do([&] {
                         EXPECT_THAT(TakeLog(), ElementsAre(L"ValidaDefinedSize(&TxtFields(0))",
                                                            L"ValidaValue(&TxtFields(0))"));
                         EXPECT_EQ(ItemText(IDC_TXTFIELDS0), L"mal");
                         EXPECT_EQ(Shown(), shown);
                         EXPECT_EQ(SendMessageW(Item(IDC_LSTTIPOS), LB_GETCURSEL, 0, 0), 1);
                         EXPECT_EQ(SendMessageW(Item(IDC_OPTBUSCAR0), BM_GETCHECK, 0, 0), BST_CHECKED);
                         EXPECT_EQ(ItemText(IDC_LBLBUSCAR), L"Panel de Búsqueda - Buscar por : Orden");
                     })
                     .Key(VK_ESCAPE)));
        EXPECT_THAT(TakeLog(), ElementsAre(L"AplyFilter(\"\")"));
        EXPECT_EQ(GetValue(kSession, L"Simple") + GetValue(kSession, L"Simple_idx"),
                  row.simple + std::wstring(L"1"));
    }
}

TEST_F(BuscarTest, SettingsThatCannotBeKeptAreToldOnceAndHinderNothing) {
    const auto settings = com::Make<HostObject>(L"Configuracion", host.log);
    for (const wchar_t* quiet : {L"RestaurarPosicion", L"GuardarPosicion", L"LeerValor"}) {
        settings->On(
            quiet, [](Invocation&) {}, true);
    }
    settings->On(L"GuardarValor", [](Invocation&) { RaiseHostError(); });
    const Component component(settings.Get());
    SetValue(kEnvironmentKey, L"Configuracion", component.Name());
    host.className = L"Ordenes";
    EXPECT_FALSE(Show(Focused(IDC_TXTFIELDS0)
                          .Append(Script().Key('3', VK_CONTROL))
                          .Box(kHostErrorText)
                          .Append(Mode(3))
                          .Type(L"9")
                          .Key(VK_RETURN)
                          .Do([&] { EXPECT_EQ(host.stored, L"codigo 9"); })
                          .Key(VK_ESCAPE)));
    EXPECT_EQ(
        std::ranges::count_if(host.log, [](const auto& line) { return line.starts_with(L"GuardarValor"); }),
        1);
}

} // namespace
} // namespace tamvelo::testing
