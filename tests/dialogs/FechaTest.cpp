// The date picker, which opens on the current year: what its keys, its menu and its calendar make of the two
// dates.
#include "tests/dialogs/DialogFixture.h"

namespace tamvelo::testing {
namespace {

class FechaTest : public DialogTest {
protected:
    void Show(const Script& script) {
        EXPECT_FALSE(PlayLate(L"ShowSelecDate", {sink.Get()}, {Focused(IDC_DTPICKER0), script}));
    }
    /// The menu of presets by its access key, and a key there. What is chosen sends the focus to the dates.
    static Script Preset(UINT key) {
        return {Do([] { PostMessageW(GetFocus(), WM_SYSCHAR, L'p', 1 | 1 << 29); }), InMenu(), Key(key),
                Focused(IDC_DTPICKER0)};
    }
    /// A date typed field by field into the picker with the focus, which is Spanish.
    static Script TypeDate(const wchar_t* day, const wchar_t* month, const wchar_t* year) {
        return {L"Right", Type(day), L"Right", Type(month), L"Right", Type(year)};
    }
    static std::wstring Accepted(const std::wstring& first, const std::wstring& last) {
        return L"AceptarFechaEntre(#" + first + L"#, #" + last + L"#)";
    }
};

TEST_F(FechaTest, WhatThePickersShowIsHandedOver) {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    const auto whole = [&](int offset) {
        const std::wstring year = std::to_wstring(now.wYear + offset);
        return Accepted(year + L"-01-01", year + L"-12-31");
    };
    wchar_t today[16];
    wsprintfW(today, L"%04d-%02d-%02d", now.wYear, now.wMonth, now.wDay);
    const std::wstring year(today, 4);
    const Script second{L"Tab", Focused(IDC_DTPICKER1)};
    const Script third{L"Right '3"}; // a day that is not left yet
    const std::pair<Script, std::wstring> rows[] = {
        {Says(IDC_LBLINTERVALO, now.wYear % 4 == 0 ? L"366 días" : L"365 días"), whole(0)},
        {{L"^Prior ^Prior"}, whole(-2)},
        {{Preset(L'H'), Says(IDC_LBLINTERVALO, L"1 día")}, Accepted(today, today)},
        {Preset(L'O'), Accepted(year + L"-01-01", today)}, // the last one
        {{Preset(L'E'), L"^Next ^Next"}, whole(1)},
        {Preset(L'I'), whole(-1)}, // a period from the menu
        {{TypeDate(L"28", L"02", L"2090"), second,
          Says(IDC_LBLINTERVALO, L"La primera fecha es posterior a la última")},
         Accepted(L"2090-02-28", year + L"-12-31")},
        {{TypeDate(L"09", L"02", L"2024"), second, TypeDate(L"01", L"03", L"2024")},
         Accepted(L"2024-02-09", L"2024-03-01")},
        {third, Accepted(year + L"-01-03", year + L"-12-31")},
        {{second, third}, Accepted(year + L"-01-01", year + L"-12-03")},
    };
    for (const auto& [script, expected] : rows) {
        Show({script, L"Enter"});
        EXPECT_THAT(TakeLog(), ElementsAre(expected));
    }
    for (const Script& leave : {Script(L"Esc"), Close(), Tool(L"Cancelar")}) {
        Show({TypeDate(L"09", L"02", L"2024"), leave});
    }
    EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(FechaTest, AnOpenCalendarTakesEnterAndThePeriodKeys) {
    const auto isOpen = [] { return IsWindowVisible(DateTime_GetMonthCal(Item(IDC_DTPICKER0))) != FALSE; };
    const auto drop = [] {
        RECT picker{};
        GetClientRect(Item(IDC_DTPICKER0), &picker);
        const LPARAM button = MAKELPARAM(picker.right - 5, picker.bottom / 2);
        PostMessageW(Item(IDC_DTPICKER0), WM_LBUTTONDOWN, MK_LBUTTON, button);
        PostMessageW(Item(IDC_DTPICKER0), WM_LBUTTONUP, 0, button);
    };
    Show({Do(drop), Until("the calendar", [=](HWND) { return isOpen(); }), L"^Next Enter", Asked({}),
          Do([=] { isOpen() ? drop() : void(); }), Until("no calendar", [=](HWND) { return !isOpen(); }),
          L"Enter"});
    SYSTEMTIME now{};
    GetLocalTime(&now);
    EXPECT_THAT(TakeLog(), ElementsAre(HasSubstr(std::to_wstring(now.wYear))));
}

} // namespace
} // namespace tamvelo::testing
