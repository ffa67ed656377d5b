#include "com/WinHeaders.h"

#include <commctrl.h>

#include "frame/Resources.h"
#include "tests/dialogs/DialogFixture.h"

namespace tamvelo::testing {
namespace {

/// The date picker, which opens on the current year.
class FechaTest : public DialogTest {
protected:
    std::optional<com::Error> Show(Script script) {
        return Play(std::move(script), [&] { return server->ShowSelecDate(sink.GetAddressOf()); });
    }
    void WarmUp() override {
        host.sink->On(L"AceptarFechaEntre", [](com::Invocation&) { RaiseHostError(); });
        Show(Preset(L'H').Key(VK_RETURN).Box(kHostErrorText).Append(Preset(L'M')).Key(VK_ESCAPE));
        host.sink->On(L"AceptarFechaEntre", [](com::Invocation&) {});
    }

    static Script Focus(int id) {
        return Script().Until("focus on " + std::to_string(id),
                              [id](HWND) { return Item(id) && GetFocus() == Item(id); });
    }
    /// The menu of presets by its access key, and a key there. What is chosen sends the focus to the dates.
    static Script Preset(UINT key) {
        Script script;
        script.Do([] { PostMessageW(GetFocus(), WM_SYSCHAR, L'p', 1 | 1 << 29); });
        const bool leaves = key == VK_ESCAPE;
        script.Append(InMenu()).Key(key).Append(Focus(leaves ? IDC_CMDPERIODO : IDC_DTPICKER0));
        return leaves ? script.Key(VK_TAB).Append(Focus(IDC_DTPICKER0)) : script;
    }
    /// A date typed field by field into the picker with the focus, in the user's own order.
    static Script TypeDate(const std::wstring& year, const std::wstring& month, const std::wstring& day) {
        wchar_t order[2] = L"";
        GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_IDATE, order, ARRAYSIZE(order));
        Script script;
        for (const wchar_t field : std::wstring(*order == L'0' ? L"MDY" : *order == L'1' ? L"DMY" : L"YMD")) {
            script.Key(VK_RIGHT).Type(field == L'Y' ? year : field == L'M' ? month : day);
        }
        return script;
    }
    static std::wstring Accepted(const std::wstring& first, const std::wstring& last) {
        return L"AceptarFechaEntre(#" + first + L"#, #" + last + L"#)";
    }
    static SYSTEMTIME Now() {
        SYSTEMTIME now{};
        GetLocalTime(&now);
        return now;
    }
};

TEST_F(FechaTest, WhatThePickersShowIsHandedOver) {
    const int year = Now().wYear;
    const auto whole = [](int of) {
        return Accepted(std::to_wstring(of) + L"-01-01", std::to_wstring(of) + L"-12-31");
    };
    wchar_t today[16];
    wsprintfW(today, L"%04d-%02d-%02d", Now().wYear, Now().wMonth, Now().wDay);
    struct Row {
        const char* what;
        Script script;
        std::wstring expected;
        std::wstring note; // "": not looked at
    };
    const bool leap = year % 4 == 0;
    const Row rows[] = {
        {"at once", {}, whole(year), leap ? L"366 días" : L"365 días"},
        {"the year before", Script().Key(VK_PRIOR, VK_CONTROL), whole(year - 1), L""},
        {"on and on", Script().Key(VK_NEXT, VK_CONTROL).Key(VK_NEXT, VK_CONTROL), whole(year + 2), L""},
        {"a preset", Preset(L'H'), Accepted(today, today), L"1 día"},
        {"a preset and on", Preset(L'E').Key(VK_NEXT, VK_CONTROL), whole(year), L""},
        {"a period from the menu", Preset(L'I'), whole(year - 1), L""},
        {"no preset", Preset(VK_ESCAPE), whole(year), L""},
        {"the first after the last", TypeDate(L"2090", L"02", L"28"),
         Accepted(L"2090-02-28", std::to_wstring(year) + L"-12-31"), L""},
        {"both typed",
         TypeDate(L"2024", L"02", L"09")
             .Key(VK_TAB)
             .Append(Focus(IDC_DTPICKER1))
             .Append(TypeDate(L"2024", L"03", L"01")),
         Accepted(L"2024-02-09", L"2024-03-01"), L""},
        {"the wrong way round, moved",
         TypeDate(L"2090", L"02", L"28")
             .Key(VK_TAB)
             .Append(Focus(IDC_DTPICKER1))
             .Append(TypeDate(L"2090", L"02", L"27"))
             .Key(VK_NEXT, VK_CONTROL),
         Accepted(L"2090-03-02", L"2090-03-01"), L"La primera fecha es posterior a la última"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        std::wstring note;
        Script script = Focus(IDC_DTPICKER0);
        script.Append(row.script).Do([&] { note = ItemText(IDC_LBLINTERVALO); });
        EXPECT_FALSE(Show(script.Key(VK_RETURN)));
        EXPECT_THAT(TakeLog(), ElementsAre(row.expected));
        if (!row.note.empty()) {
            EXPECT_EQ(note, row.note);
        }
    }
}

TEST_F(FechaTest, LeavingItCallsNothing) {
    const Script leave[] = {
        Keys({VK_ESCAPE}),
        Script().Do([] { PostMessageW(Dialog(), WM_CLOSE, 0, 0); }),
        Script().Do([] { ClickTool(L"Cancelar"); }),
    };
    for (const Script& script : leave) {
        EXPECT_FALSE(Show(Focus(IDC_DTPICKER0).Append(TypeDate(L"2024", L"02", L"09")).Append(script)));
        EXPECT_THAT(TakeLog(), IsEmpty());
    }
}

TEST_F(FechaTest, ARefusingHostLeavesItOpenAsItWasAndAClosingOneEndsIt) {
    host.sink->On(L"AceptarFechaEntre", [](com::Invocation&) { RaiseHostError(); });
    EXPECT_FALSE(Show(Focus(IDC_DTPICKER0)
                          .Append(TypeDate(L"2024", L"02", L"09"))
                          .Key(VK_RETURN)
                          .Box(kHostErrorText)
                          .Append(Focus(IDC_DTPICKER0))
                          .Do([&] {
                              host.log.clear();
                              host.sink->On(L"AceptarFechaEntre",
                                            [&](com::Invocation&) { DestroyWindow(owner); });
                          })
                          .Key(VK_RETURN)));
    EXPECT_THAT(TakeLog(), ElementsAre(Accepted(L"2024-02-09", std::to_wstring(Now().wYear) + L"-12-31")));
}

TEST_F(FechaTest, AnOpenCalendarTakesEnterAndThePeriodKeys) {
    const auto drop = [] {
        RECT picker{};
        GetClientRect(Item(IDC_DTPICKER0), &picker);
        const LPARAM button = MAKELPARAM(picker.right - 5, picker.bottom / 2);
        PostMessageW(Item(IDC_DTPICKER0), WM_LBUTTONDOWN, MK_LBUTTON, button);
        PostMessageW(Item(IDC_DTPICKER0), WM_LBUTTONUP, 0, button);
    };
    const auto isOpen = [] { return IsWindowVisible(DateTime_GetMonthCal(Item(IDC_DTPICKER0))) != FALSE; };
    EXPECT_FALSE(
        Show(Focus(IDC_DTPICKER0)
                 .Do(drop)
                 .Until("the calendar", [&](HWND) { return isOpen(); })
                 .Key(VK_NEXT, VK_CONTROL)
                 .Key(VK_RETURN)
                 .Do([&] { EXPECT_TRUE(Dialog() && host.log.empty()) << "the key went to the form"; })
                 .Do([&] {
                     if (isOpen()) {
                         drop();
                     }
                 })
                 .Until("no calendar", [&](HWND) { return !isOpen(); })
                 .Key(VK_RETURN)));
    EXPECT_THAT(TakeLog(), ElementsAre(HasSubstr(std::to_wstring(Now().wYear))));
}

} // namespace
} // namespace tamvelo::testing
