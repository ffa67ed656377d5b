// The new appointment: what is saved, the ways out, the look-ups, and life beside the host's own loop; the
// date picker: what its keys, its menu and its calendar make of the two dates.
#include "dates/Resources.h"
#include "tests/dialogs/DialogFixture.h"

namespace tamvelo::testing {
namespace {

constexpr DATE kDay = 46347; // 21 November 2026, a Saturday

class Cita : public DialogTest {
protected:
    Cita() {
        host.TextCells();
        host.data->On(L"FindRecord", [this](Invocation& call) {
            host.set->SetPosition(std::wcstol(call[0].ToText().c_str() + 1, nullptr, 10)); // "f<record>c0"
        });
    }

    HRESULT Ask(HWND over, DATE date) {
        long window = static_cast<long>(reinterpret_cast<LONG_PTR>(over));
        return server->ShowNuevaCita(sink.GetAddressOf(), data.GetAddressOf(), &window, &date);
    }
    /// Opens the form and turns the host's own loop until it is gone.
    std::optional<com::Error> Try(const Script& script, DATE date = kDay) {
        return Play(script, [&] {
            const HRESULT result = Ask(owner, date);
            TurnLoop();
            return result;
        });
    }
    void Show(const Script& script) { EXPECT_FALSE(Try(script)); }
    static Script Hour(WORD hour, WORD minute) {
        return {Focused(IDC_DTPICHORA), Do([=] {
                    SYSTEMTIME time{2026, 11, 6, 21, hour, minute, 0, 0};
                    DateTime_SetSystemtime(Item(IDC_DTPICHORA), GDT_VALID, &time);
                })};
    }
    /// A whole text in place of what stands there, by a user who is there.
    static Script Set(int id, const wchar_t* text) { return {Into(id), DialogTest::Set(id, text)}; }
    static Script ClickDay(WORD day) {
        return Do([day] {
            MCHITTESTINFO at{};
            at.cbSize = MCHITTESTINFO_V1_SIZE;
            for (LONG place = 0; place < 5000 && !(at.uHit == MCHT_CALENDARDATE && at.st.wDay == day);
                 ++place) {
                at.pt = {place % 70 * 4, place / 70 * 4};
                MonthCal_HitTest(Item(IDC_MTHVFECHA), &at);
            }
            PostMessageW(Item(IDC_MTHVFECHA), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.pt.x, at.pt.y));
            PostMessageW(Item(IDC_MTHVFECHA), WM_LBUTTONUP, 0, MAKELPARAM(at.pt.x, at.pt.y));
        });
    }
    static std::wstring Saved(const std::wstring& texts,
                              const std::wstring& when = L"21#, #1899-12-30 10:15") {
        return L"GuardarCita(#2026-11-" + when + L"#, " + texts + L", Nothing)";
    }
};

const std::wstring kEmpty = LR"("000", "", "-.-", "000", "", "0", "-.-")";
const std::wstring kTold = L"AceptarBuscar()";

TEST_F(Cita, OpensOnTheDayAndThePresentMinuteAndComesToTheFrontAsItIs) {
    SYSTEMTIME before{};
    SYSTEMTIME shown{};
    SYSTEMTIME after{};
    GetLocalTime(&before);
    const Script look = Do([&] {
        const HWND calendar = Item(IDC_MTHVFECHA);
        DateTime_GetSystemtime(Item(IDC_DTPICHORA), &shown);
        EXPECT_EQ(TextOf(Dialog()), L"Nueva Cita :  " + Variant::Date(kDay).ToText());
        EXPECT_EQ(LOWORD(MonthCal_GetFirstDayOfWeek(calendar)), 0) << "Monday";
        EXPECT_TRUE(GetWindowLongW(calendar, GWL_STYLE) & MCS_WEEKNUMBERS); // as Spanish calendars count
        EXPECT_EQ(GetWindow(Dialog(), GW_OWNER), owner);
        SetActiveWindow(owner);
    });
    const Script again = Do([&] {
        const HWND form = Dialog();
        SetActiveWindow(owner);
        EXPECT_EQ(Ask(nullptr, kDay + 1), S_OK);
        EXPECT_EQ(GetActiveWindow(), form);
        EXPECT_EQ(GetFocus(), Item(IDC_TXTCITA13));
    });
    const Script day = Says(IDC_LBLDIA, L"sábado, semana 47");
    Show({Focused(IDC_DTPICHORA), look, day, Into(IDC_TXTCITA13, L"7"), Forget(), again, day,
          Says(IDC_TXTCITA13, L"7"), Asked({}), L"Esc"});
    GetLocalTime(&after);
    EXPECT_EQ(shown.wSecond, 0);
    EXPECT_TRUE((shown.wHour == before.wHour && shown.wMinute == before.wMinute) ||
                (shown.wHour == after.wHour && shown.wMinute == after.wMinute));
    // A day that no calendar has is the host's error, and nothing stays open.
    EXPECT_TRUE(Try({}, -400000));
}

TEST_F(Cita, SavesWhatWasTypedInTheTablesOrder) {
    Offer({L"Citas"});
    // Tab goes through the rows as they stand.
    Show({Forget(), Hour(10, 7), L"Prior", TabTo(IDC_TXTCITA10), L"'C1", TabTo(IDC_TXTCITA0), L"'Ana",
          TabTo(IDC_TXTCITA14), L"'uno ^Enter 'dos", TabTo(IDC_TXTCITA6), L"'E1", TabTo(IDC_TXTCITA1),
          L"'Luis", TabTo(IDC_TXTCITA13), L"'2", TabTo(IDC_TXTCITA15), L"'Prueba", TabTo(IDC_MTHVFECHA),
          L"Enter"});
    const std::wstring texts = L"\"C1\", \"Ana\", \"uno\r\ndos\", \"E1\", \"Luis\", \"2\", \"Prueba\"";
    EXPECT_THAT(TakeLog(), ElementsAre(Saved(texts), kTold));
    // Another day; an hour that is still being typed; a code without look-ups is nothing to wait for.
    Show({Forget(), Hour(11, 45), ClickDay(23), Says(IDC_LBLDIA, L"lunes, semana 48"),
          Into(IDC_TXTCITA10, L"1"), L"Enter", Focused(IDC_TXTCITA14), Into(IDC_DTPICHORA),
          L"Right '1 Enter"});
    EXPECT_THAT(TakeLog(), ElementsAre(Saved(L"\"1\"" + kEmpty.substr(5), L"23#, #1899-12-30 01:45"), kTold));
}

TEST_F(Cita, EveryWayOutTellsTheHostOnceAndASinkThatFailsKeepsNobody) {
    const Log left{kTold};
    const Log saved{Saved(kEmpty), kTold};
    Show({Forget(), Hour(10, 15), Into(IDC_TXTCITA13, L"7"), L"Enter",
          Box(L"ningún componente que guarde citas"), Says(IDC_TXTCITA13, L"7"),
          Do([this] { Offer({L"Citas"}); }), L"Enter"});
    EXPECT_THAT(TakeLog(), ElementsAre(Saved(LR"("000", "", "-.-", "000", "", "7", "-.-")"), kTold));
    const std::pair<Script, Log> ways[] = {{L"Esc", left},
                                           {Close(), left},
                                           {Tool(L"Cancelar"), left},
                                           {Tool(L"Aceptar"), saved},
                                           {{Into(IDC_TXTCITA10), L"Enter"}, saved}};
    for (const auto& [leave, asked] : ways) {
        Show({Forget(), Hour(10, 15), leave});
        EXPECT_EQ(TakeLog(), asked);
    }
    host.sink->Raises(L"AceptarBuscar");
    Show({Forget(), Hour(10, 15), L"Enter", Box(kHostErrorText)});
    EXPECT_EQ(TakeLog(), saved);
    // The next one may be asked for from there.
    host.sink->On(L"AceptarBuscar", [&](Invocation&) {
        host.sink->Accepts({L"AceptarBuscar"});
        EXPECT_EQ(Ask(nullptr, kDay), S_OK);
    });
    Show({Focused(IDC_DTPICHORA), L"Esc",
          Until("the next", [](HWND top) { return top == Dialog() && IsWindowVisible(top); }), L"Esc"});
}

TEST_F(Cita, LookUpsFillTheirBoxesAndMoveOn) {
    Offer({L"Clases", L"Citas"});
    HWND form = nullptr;
    const auto enabled = [&](bool is) {
        return Do([&form, is, this] {
            EXPECT_TRUE((IsWindowEnabled(form) != FALSE) == is && (IsWindowEnabled(owner) != FALSE) == is);
        });
    };
    const auto lookUp = [&](int from, int next) {
        return Script({Into(from), Do([&] { form = Dialog(); }), L"F4", Showing(IDC_DATAGRID), enabled(false),
                       L"Down Enter", Focused(next), enabled(true)});
    };
    const auto boxes = [](const std::wstring& texts) {
        return Do([texts] {
            std::wstring shown;
            for (const int id : {IDC_TXTCITA10, IDC_TXTCITA0, IDC_TXTCITA6, IDC_TXTCITA1, IDC_TXTCITA15}) {
                shown += ItemText(id) + L"|";
            }
            EXPECT_EQ(shown, texts);
        });
    };
    const Script notice = Until("the notice", [](HWND) { return !ItemText(IDC_LBLAVISO).empty(); });
    const Script noNotice = Says(IDC_LBLAVISO, L"");
    Show({lookUp(IDC_TXTCITA10, IDC_TXTCITA14), boxes(L"f1c0|f1c1||||"), lookUp(IDC_TXTCITA6, IDC_TXTCITA13),
          lookUp(IDC_TXTCITA15, IDC_MTHVFECHA), boxes(L"f1c0|f1c1|f1c0|f1c1|f1c1|"), noNotice,
          // From the name, also by its button.
          Set(IDC_TXTCITA10, L""), lookUp(IDC_TXTCITA0, IDC_TXTCITA14), boxes(L"f1c0|f1c1|f1c0|f1c1|f1c1|"),
          Click(IDC_CMDCITA0), Showing(IDC_DATAGRID), L"Esc", Focused(IDC_TXTCITA0),
          // A code is read when Enter is pressed or the box is left; what is not found is said.
          Set(IDC_TXTCITA10, L"F3C0"), L"Enter", Focused(IDC_TXTCITA14), noNotice,
          boxes(L"F3C0|f3c1|f1c0|f1c1|f1c1|"), Set(IDC_TXTCITA6, L"no"), TabTo(IDC_TXTCITA1), notice,
          boxes(L"F3C0|f3c1|no||f1c1|"),
          // Enter on it opens the list; a code that was read is not asked for again.
          Set(IDC_TXTCITA6, L"no"), L"Enter", Showing(IDC_DATAGRID), L"Esc", Focused(IDC_TXTCITA6), Forget(),
          TabTo(IDC_TXTCITA1), Asked({}), lookUp(IDC_TXTCITA6, IDC_TXTCITA13), noNotice,
          Set(IDC_TXTCITA10, L""), TabTo(IDC_TXTCITA0),
          Until("no name", [](HWND) { return ItemText(IDC_TXTCITA0).empty(); }),
          // One that is typed last is read before saving, and a name of the user's own stays.
          Set(IDC_TXTCITA10, L"otro"), Set(IDC_TXTCITA0, L"Sustituta"), Into(IDC_DTPICHORA), Hour(10, 15),
          Set(IDC_TXTCITA6, L"f2c0"), Tool(L"Aceptar")});
    EXPECT_EQ(host.log[host.log.size() - 2],
              Saved(LR"("otro", "Sustituta", "-.-", "f2c0", "f2c1", "0", "f1c1")"));
    EXPECT_THAT(host.log, IsSupersetOf({L"CrearClase(\"clientes\")", L"CrearClase(\"empleados\")",
                                        L"FindRecord(\"otro\")", L"FindRecord(\"f2c0\")"}));
}

TEST_F(Cita, GoesWithTheHostsWindowAndKeepsTheLibraryUntilThen) {
    host.log.clear();
    Show({Focused(IDC_DTPICHORA), Do([&] {
              server.Reset();
              EXPECT_FALSE(hosts::Server().MayUnload());
              DestroyWindow(owner);
          })});
    EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()"));
}

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
    // A date is typed field by field into the picker with the focus, which is Spanish.
    const std::pair<Script, std::wstring> rows[] = {
        {Says(IDC_LBLINTERVALO, now.wYear % 4 == 0 ? L"366 días" : L"365 días"), whole(0)},
        {{L"^Prior ^Prior"}, whole(-2)},
        {{Preset(L'H'), Says(IDC_LBLINTERVALO, L"1 día")}, Accepted(today, today)},
        {Preset(L'O'), Accepted(year + L"-01-01", today)}, // the last one
        {{Preset(L'E'), L"^Next ^Next"}, whole(1)},
        {Preset(L'I'), whole(-1)}, // a period from the menu
        {{L"Right '28 Right '02 Right '2090", second,
          Says(IDC_LBLINTERVALO, L"La primera fecha es posterior a la última")},
         Accepted(L"2090-02-28", year + L"-12-31")},
        {{L"Right '09 Right '02 Right '2024", second, L"Right '01 Right '03 Right '2024"},
         Accepted(L"2024-02-09", L"2024-03-01")},
        {third, Accepted(year + L"-01-03", year + L"-12-31")},
        {{second, third}, Accepted(year + L"-01-01", year + L"-12-03")},
    };
    for (const auto& [script, expected] : rows) {
        Show({script, L"Enter"});
        EXPECT_THAT(TakeLog(), ElementsAre(expected));
    }
    CountObjects();
    for (const Script& leave : {Script(L"Esc"), Close(), Tool(L"Cancelar")}) {
        Show({L"Right '09 Right '02 Right '2024", leave});
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
