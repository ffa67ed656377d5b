// The new appointment: what is saved, the ways out, the look-ups, and life beside the host's own loop.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include <map>

#include "dates/Resources.h"
#include "frame/Resources.h"
#include "tests/dialogs/DialogFixture.h"
#include "tests/support/Component.h"

namespace tamvelo::testing {
namespace {

constexpr DATE kDay = 46347; // 21 November 2026, a Saturday

class Cita : public DialogTest {
protected:
    Cita() {
        gdiSlack = 16; // of a window that is hidden before it goes
        host.data->On(L"FindRecord", [this](com::Invocation& call) {
            host.set->SetPosition(std::wcstol(call[0].ToText().c_str() + 1, nullptr, 10)); // "f<record>c0"
        });
        environment->On(L"CrearClase", [this](com::Invocation& call) {
            host.className = call[0].ToText();
            call.Return(com::Variant(host.data.Get()));
        });
        environment->On(L"GuardarCita", [](com::Invocation&) {});
    }
    void WarmUp() override { Show(Keys({VK_ESCAPE})); }

    /// Opens the form and turns the host's own loop until it is gone.
    std::optional<com::Error> Show(Script script, DATE date = kDay) {
        return Play(std::move(script), [&] {
            long window = static_cast<long>(reinterpret_cast<LONG_PTR>(owner));
            const HRESULT result =
                server->ShowNuevaCita(sink.GetAddressOf(), data.GetAddressOf(), &window, &date);
            MSG message;
            while (Dialog() && GetMessageW(&message, nullptr, 0, 0) > 0) {
                TranslateMessage(&message);
                DispatchMessageW(&message);
            }
            return result;
        });
    }
    static void Offer(const wchar_t* setting) { SetValue(kEnvironmentKey, setting, Component::Name()); }
    static Script Focus(int id) {
        return Script().Until("focus on " + std::to_string(id),
                              [id](HWND) { return Item(id) && GetFocus() == Item(id); });
    }
    static Script TabTo(int id) { return Script().Key(VK_TAB).Append(Focus(id)); }
    static Script Panel() {
        return Script().Until("the panel",
                              [](HWND) { return GetDlgItem(Dialog(), IDC_DATAGRID) != nullptr; });
    }
    static Script Hour(WORD hour, WORD minute) {
        return Focus(IDC_DTPICHORA).Do([=] {
            SYSTEMTIME time{2026, 11, 6, 21, hour, minute, 0, 0};
            DateTime_SetSystemtime(Item(IDC_DTPICHORA), GDT_VALID, &time);
        });
    }
    static std::wstring Saved(const std::wstring& texts) {
        return L"GuardarCita(#2026-11-21#, #1899-12-30 10:15#, " + texts + L", Nothing)";
    }

    com::ComPtr<HostObject> environment = com::Make<HostObject>(L"Entorno", host.log);
    const Component component{environment.Get()};
};

const std::wstring kEmpty = L"\"000\", \"\", \"-.-\", \"000\", \"\", \"0\", \"-.-\"";
const std::wstring kTold = L"AceptarBuscar()";

TEST_F(Cita, OpensOnTheDayAndThePresentMinute) {
    Offer(L"Citas");
    SYSTEMTIME before{};
    SYSTEMTIME shown{};
    SYSTEMTIME after{};
    GetLocalTime(&before);
    const Script look = Focus(IDC_DTPICHORA).Do([&] {
        DateTime_GetSystemtime(Item(IDC_DTPICHORA), &shown);
        EXPECT_EQ(TextOf(Dialog()), L"Nueva Cita :  " + com::Variant::Date(kDay).ToText());
        EXPECT_EQ(ItemText(IDC_LBLDIA), L"sábado, semana 47");
        EXPECT_EQ(GetWindow(Dialog(), GW_OWNER), owner);
        // Asked for again it comes to the front, as it is.
        const HWND form = Dialog();
        SetWindowTextW(Item(IDC_TXTCITA13), L"7");
        SetFocus(Item(IDC_TXTCITA13));
        host.log.clear();
        long window = 0;
        DATE date = kDay + 1;
        SetActiveWindow(owner);
        EXPECT_EQ(server->ShowNuevaCita(sink.GetAddressOf(), data.GetAddressOf(), &window, &date), S_OK);
        EXPECT_EQ(GetActiveWindow(), form);
        EXPECT_EQ(GetFocus(), Item(IDC_TXTCITA13));
        EXPECT_EQ(ItemText(IDC_TXTCITA13), L"7");
        EXPECT_EQ(ItemText(IDC_LBLDIA), L"sábado, semana 47");
        EXPECT_THAT(host.log, IsEmpty());
        SetWindowTextW(Item(IDC_TXTCITA13), L"");
    });
    EXPECT_FALSE(Show(Script(look).Key(VK_RETURN)));
    GetLocalTime(&after);
    EXPECT_EQ(shown.wSecond, 0);
    EXPECT_TRUE((shown.wHour == before.wHour && shown.wMinute == before.wMinute) ||
                (shown.wHour == after.wHour && shown.wMinute == after.wMinute));
    EXPECT_THAT(host.log[host.log.size() - 2], HasSubstr(kEmpty + L", Nothing)"));
    EXPECT_EQ(host.log.back(), kTold);
    // A day that no calendar has is the host's error, and nothing stays open.
    EXPECT_TRUE(Show(Script(), -400000));
}

TEST_F(Cita, SavesWhatWasTypedInTheTablesOrder) {
    Offer(L"Citas");
    // Tab goes through the rows as they stand.
    Script fill = Hour(10, 7).Key(VK_PRIOR);
    for (const auto& [id, text] : {std::pair{IDC_TXTCITA10, L"C1"},
                                   {IDC_TXTCITA0, L"Ana"},
                                   {IDC_TXTCITA14, L"uno"},
                                   {IDC_TXTCITA6, L"E1"},
                                   {IDC_TXTCITA1, L"Luis"},
                                   {IDC_TXTCITA13, L"2"},
                                   {IDC_TXTCITA15, L"Prueba"}}) {
        fill.Append(TabTo(id)).Type(text);
        if (id == IDC_TXTCITA14) {
            fill.Key(VK_RETURN, VK_CONTROL).Type(L"dos");
        }
    }
    EXPECT_FALSE(Show(Forget().Append(fill).Append(TabTo(IDC_MTHVFECHA)).Key(VK_RETURN)));
    EXPECT_THAT(
        TakeLog(),
        ElementsAre(Saved(L"\"C1\", \"Ana\", \"uno\r\ndos\", \"E1\", \"Luis\", \"2\", \"Prueba\""), kTold));
}

TEST_F(Cita, EveryWayOutTellsTheHostOnceAndASinkThatFailsKeepsNobody) {
    Offer(L"Citas");
    const struct {
        Script leave;
        bool saves;
    } ways[] = {
        {Keys({VK_ESCAPE}), false},
        {Script().Do([] { PostMessageW(Dialog(), WM_CLOSE, 0, 0); }), false},
        {Script().Do([] { ClickTool(L"Cancelar"); }), false},
        {Script().Do([] { ClickTool(L"Aceptar"); }), true},
        {Keys({VK_RETURN}), true},
    };
    for (const bool fails : {false, true}) {
        if (fails) {
            host.sink->On(L"AceptarBuscar", [](com::Invocation&) { RaiseHostError(); });
        }
        for (const auto& [leave, saves] : ways) {
            Script script = Forget().Append(Hour(10, 15)).Append(leave);
            EXPECT_FALSE(Show(fails ? script.Box(kHostErrorText) : script));
            EXPECT_EQ(TakeLog(), saves ? Log({Saved(kEmpty), kTold}) : Log({kTold}));
        }
    }
    // The next one may be asked for from there.
    host.sink->On(L"AceptarBuscar", [&](com::Invocation&) {
        host.sink->On(L"AceptarBuscar", [](com::Invocation&) {});
        long window = 0;
        DATE date = kDay;
        EXPECT_EQ(server->ShowNuevaCita(sink.GetAddressOf(), data.GetAddressOf(), &window, &date), S_OK);
    });
    EXPECT_FALSE(Show(Focus(IDC_DTPICHORA)
                          .Type(L"1")
                          .Key(VK_ESCAPE)
                          .Until("the next", [](HWND top) { return top == Dialog() && IsWindowVisible(top); })
                          .Key(VK_ESCAPE)));
}

TEST_F(Cita, WhatCannotBeSavedStaysAsItWasTyped) {
    const Script stays = Script().Do([] { EXPECT_EQ(ItemText(IDC_TXTCITA13), L"7"); });
    environment->On(L"GuardarCita", [&](com::Invocation&) {
        environment->On(L"GuardarCita", [](com::Invocation&) {});
        RaiseHostError();
    });
    EXPECT_FALSE(Show(Forget()
                          .Append(Hour(10, 15))
                          .Do([] { SetFocus(Item(IDC_TXTCITA13)); })
                          .Type(L"7")
                          .Key(VK_RETURN)
                          .Box(L"ningún componente que guarde citas")
                          .Append(stays)
                          .Do([] { Offer(L"Citas"); })
                          .Key(VK_RETURN)
                          .Box(kHostErrorText)
                          .Append(stays)
                          .Key(VK_RETURN)));
    const std::wstring call = Saved(L"\"000\", \"\", \"-.-\", \"000\", \"\", \"7\", \"-.-\"");
    EXPECT_THAT(TakeLog(), ElementsAre(call, call, kTold));
}

TEST_F(Cita, LookUpsFillTheirBoxesAndMoveOn) {
    Offer(L"Clases");
    HWND form = nullptr;
    const auto lookUp = [&](int from, int next) {
        return Script()
            .Do([&form, from] {
                form = Dialog();
                SetFocus(Item(from));
            })
            .Key(VK_F4)
            .Append(Panel())
            .Do([&] { EXPECT_FALSE(IsWindowEnabled(form) || IsWindowEnabled(owner)); })
            .Key(VK_DOWN)
            .Key(VK_RETURN)
            .Append(Focus(next))
            .Do([&] { EXPECT_TRUE(IsWindowEnabled(form) && IsWindowEnabled(owner)); });
    };
    const auto boxes = [](std::vector<std::wstring> texts) {
        return Script().Do([texts] {
            size_t at = 0;
            for (const int id : {IDC_TXTCITA10, IDC_TXTCITA0, IDC_TXTCITA6, IDC_TXTCITA1, IDC_TXTCITA15}) {
                EXPECT_EQ(ItemText(id), texts[at++]) << id;
            }
        });
    };
    const auto typed = [](int id, const wchar_t* text) {
        return Script().Do([=] {
            SetFocus(Item(id));
            SetWindowTextW(Item(id), text);
        });
    };
    EXPECT_FALSE(
        Show(lookUp(IDC_TXTCITA10, IDC_TXTCITA14)
                 .Append(boxes({L"f1c0", L"f1c1", L"", L"", L""}))
                 .Append(lookUp(IDC_TXTCITA6, IDC_TXTCITA13))
                 .Append(lookUp(IDC_TXTCITA15, IDC_MTHVFECHA))
                 .Append(boxes({L"f1c0", L"f1c1", L"f1c0", L"f1c1", L"f1c1"}))
                 // From the name, also by its button.
                 .Append(typed(IDC_TXTCITA10, L""))
                 .Append(lookUp(IDC_TXTCITA0, IDC_TXTCITA14))
                 .Append(boxes({L"f1c0", L"f1c1", L"f1c0", L"f1c1", L"f1c1"}))
                 .Do([] { PostMessageW(Item(IDC_CMDCITA0), BM_CLICK, 0, 0); })
                 .Append(Panel())
                 .Key(VK_ESCAPE)
                 .Append(Focus(IDC_TXTCITA0))
                 // A code is read when Enter is pressed or the box is left; what is not found is said.
                 .Append(typed(IDC_TXTCITA10, L"F3C0"))
                 .Key(VK_RETURN)
                 .Append(Focus(IDC_TXTCITA14))
                 .Append(boxes({L"F3C0", L"f3c1", L"f1c0", L"f1c1", L"f1c1"}))
                 .Append(typed(IDC_TXTCITA6, L"no"))
                 .Append(TabTo(IDC_TXTCITA1))
                 .Until("the notice", [](HWND) { return !ItemText(IDC_LBLAVISO).empty(); })
                 .Append(boxes({L"F3C0", L"f3c1", L"no", L"", L"f1c1"}))
                 // Enter on it opens the list.
                 .Append(typed(IDC_TXTCITA6, L"no"))
                 .Key(VK_RETURN)
                 .Append(Panel())
                 .Key(VK_ESCAPE)
                 .Append(Focus(IDC_TXTCITA6))
                 .Append(typed(IDC_TXTCITA10, L""))
                 .Append(TabTo(IDC_TXTCITA0))
                 .Until("no name", [](HWND) { return ItemText(IDC_TXTCITA0).empty(); })
                 .Do([&] {
                     for (const wchar_t* line : {L"CrearClase(\"clientes\")", L"CrearClase(\"empleados\")",
                                                 L"CrearClase(\"tipos_cita\")", L"Requery(\"seleccion\")"}) {
                         EXPECT_THAT(host.log, ::testing::Contains(line));
                     }
                 })
                 .Key(VK_ESCAPE)));
}

TEST_F(Cita, ACodeTypedLastIsReadBeforeSavingAndANameOfOnesOwnStays) {
    Offer(L"Clases");
    Offer(L"Citas");
    EXPECT_FALSE(Show(Hour(10, 15).Do([] {
        SetFocus(Item(IDC_TXTCITA10));
        SetWindowTextW(Item(IDC_TXTCITA10), L"f2c0");
        SetWindowTextW(Item(IDC_TXTCITA6), L"otro");
        SetWindowTextW(Item(IDC_TXTCITA1), L"Sustituta");
        ClickTool(L"Aceptar");
    })));
    EXPECT_EQ(host.log[host.log.size() - 2],
              Saved(L"\"f2c0\", \"f2c1\", \"-.-\", \"otro\", \"Sustituta\", \"0\", \"-.-\""));
}

TEST_F(Cita, TheHostMayDestroyItsWindowOrPumpMessagesInsideALookUp) {
    Offer(L"Clases");
    Offer(L"Citas");
    const std::map<std::wstring, HostObject::Behaviour> usual{
        {L"CrearClase", [this](com::Invocation& call) { call.Return(com::Variant(host.data.Get())); }},
        {L"Requery", [](com::Invocation&) {}},
        {L"FindRecord", [](com::Invocation&) {}},
        {L"sClassName", [](com::Invocation& call) { call.Return(com::Variant(L"clientes")); }},
        {L"GuardarCita", [](com::Invocation&) {}},
    };
    /// The next call of a member also does something else.
    const auto once = [&](const std::wstring& member, std::function<void()> act) {
        const bool environments = member == L"CrearClase" || member == L"GuardarCita";
        HostObject& object = *(environments ? environment : host.data).Get();
        object.On(member, [&object, &usual, member, act](com::Invocation& call) {
            object.On(member, usual.at(member));
            act();
            usual.at(member)(call);
        });
    };
    const auto into = [](int id, const wchar_t* text) {
        return Script().Do([=] {
            SetFocus(Item(id));
            SetWindowTextW(Item(id), text);
        });
    };
    const struct {
        const wchar_t* member;
        Script way;
    } cases[] = {
        {L"CrearClase", into(IDC_TXTCITA10, L"").Key(VK_F4)},
        {L"CrearClase", into(IDC_TXTCITA6, L"f1c0").Key(VK_RETURN)},
        {L"CrearClase", into(IDC_TXTCITA6, L"f1c0").Key(VK_TAB)},
        {L"Requery", Script().Do([] { PostMessageW(Item(IDC_CMDCITA15), BM_CLICK, 0, 0); })},
        {L"FindRecord", into(IDC_TXTCITA10, L"f1c0").Do([] { ClickTool(L"Aceptar"); })},
        {L"sClassName", into(IDC_TXTCITA0, L"").Key(VK_F4)},
        {L"GuardarCita", Script().Do([] { ClickTool(L"Aceptar"); })},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(&row - cases);
        const HWND before = owner;
        owner = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 300, nullptr,
                                nullptr, nullptr, nullptr);
        SetActiveWindow(owner);
        EXPECT_FALSE(Show(Focus(IDC_DTPICHORA)
                              .Do([&] { once(row.member, [this] { DestroyWindow(owner); }); })
                              .Append(row.way)));
        EXPECT_EQ(Dialog(), nullptr);
        EXPECT_THAT(TakeLog(), ::testing::Not(::testing::Contains(kTold)));
        owner = before;
        SetActiveWindow(owner);
    }
    // A tool that is pressed meanwhile does nothing.
    EXPECT_FALSE(Show(Focus(IDC_DTPICHORA)
                          .Do([&] {
                              once(L"CrearClase", [] {
                                  ClickTool(L"Aceptar");
                                  MSG message;
                                  while (PeekMessageW(&message, nullptr, WM_COMMAND, WM_COMMAND, PM_REMOVE)) {
                                      DispatchMessageW(&message);
                                  }
                              });
                          })
                          .Append(into(IDC_TXTCITA10, L""))
                          .Key(VK_F4)
                          .Append(Panel())
                          .Key(VK_ESCAPE)
                          .Append(Focus(IDC_TXTCITA10))
                          .Do([&] { EXPECT_THAT(host.log, ::testing::Not(::testing::Contains(kTold))); })
                          .Key(VK_ESCAPE)));
}

TEST_F(Cita, GoesWithTheHostsWindowAndKeepsTheLibraryUntilThen) {
    Offer(L"Clases");
    host.log.clear();
    using CanUnload = HRESULT STDAPICALLTYPE();
    EXPECT_FALSE(Show(Focus(IDC_DTPICHORA).Do([&] {
        server.Reset();
        const HMODULE library = GetModuleHandleW(L"Tamvelo.dll");
        const auto mayUnload =
            reinterpret_cast<CanUnload*>(reinterpret_cast<void*>(GetProcAddress(library, "DllCanUnloadNow")));
        EXPECT_EQ(mayUnload(), S_FALSE);
        DestroyWindow(owner);
    })));
    EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()"));
}

} // namespace
} // namespace tamvelo::testing
