// The selection panel with hosts that fail, come back in, or pull the ground away.
#include <float.h>

#include "base/Text.h"
#include "tests/dialogs/PanelFixture.h"

namespace tamvelo::testing {
namespace {

using com::Invocation;
using com::Variant;
using entry::IClsShowSerch;

constexpr HRESULT kAlreadyShown = static_cast<HRESULT>(0x800A0190);

class PanelFault : public PanelTest {
protected:
    enum class Fault { Missing, Raises, Null, WrongType };
    static constexpr Fault kFaults[] = {Fault::Missing, Fault::Raises, Fault::Null, Fault::WrongType};

    HostObject& Owner(const std::wstring& member) {
        return member == L"Text"                ? *host.ctl.Get()
               : member.starts_with(L"Aceptar") ? *host.sink.Get()
                                                : *host.data.Get();
    }
    void Break(const std::wstring& member, Fault fault) {
        if (fault == Fault::Missing) {
            Owner(member).Without(member);
            return;
        }
        Owner(member).On(member, [this, fault](Invocation& call) {
            if (fault == Fault::Raises) {
                RaiseHostError();
            }
            call.Return(fault == Fault::Null ? Variant::Null() : Variant(host.sink.Get()));
        });
    }
    static std::wstring MissingText(const std::wstring& member) {
        return L"no tiene el miembro «" + member + L"»";
    }
    void Renew() {
        ctl.Reset();
        host = FakeHost();
    }
};

/// The members that an opening calls, and whether their result counts (a procedure's is not looked at).
struct OpeningMember {
    const wchar_t* name;
    bool answers;
};

class PanelOpeningFault : public PanelFault, public ::testing::WithParamInterface<OpeningMember> {};

TEST_P(PanelOpeningFault, ReachesTheCallerAndLeavesNothingOpen) {
    const auto [member, answers] = GetParam();
    for (const Fault fault : kFaults) {
        for (const bool late : {false, true}) {
            SCOPED_TRACE(base::ToUtf8(member) + " fault " + std::to_string(static_cast<int>(fault)));
            host.text = L"A-1";
            const bool fails =
                fault == Fault::Missing || fault == Fault::Raises || (fault == Fault::WrongType && answers);
            Break(member, fault);
            const Script script = fails ? Script() : Keys({VK_ESCAPE});
            const auto error = late ? ShowLate(L"ShowSelecDirecta", script)
                                    : Show({&IClsShowSerch::ShowSelecDirecta, 0, 0, VARIANT_TRUE, 1}, script);
            ASSERT_EQ(error.has_value(), fails);
            EXPECT_EQ(Panel(), nullptr);
            if (fault == Fault::Raises) {
                EXPECT_EQ(error->number, kHostErrorNumber);
                EXPECT_EQ(error->description, kHostErrorText);
                EXPECT_EQ(error->source, kHostErrorSource);
            } else if (fault == Fault::Missing) {
                EXPECT_EQ(error->number, DISP_E_UNKNOWNNAME);
                EXPECT_NE(error->description.find(MissingText(member)), std::wstring::npos);
            } else if (fails) {
                EXPECT_EQ(error->number, DISP_E_TYPEMISMATCH);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    EachMember, PanelOpeningFault,
    ::testing::Values(OpeningMember{L"sClassName", true}, OpeningMember{L"Requery", false},
                      OpeningMember{L"FindRecord", false}, OpeningMember{L"CreateFilter", true},
                      OpeningMember{L"SetFilter", false}, OpeningMember{L"GetFilter", true},
                      OpeningMember{L"AplyFilter", false}, OpeningMember{L"existenregistros", true}));

/// A member, what makes the open panel call it, and whether its result counts.
struct LaterMember {
    const wchar_t* name;
    const wchar_t* tool; // or, without one, Enter in the search box or in the grid
    bool search;
    bool answers;
};

class PanelLaterFault : public PanelFault, public ::testing::WithParamInterface<LaterMember> {
protected:
    Script Provoke() const {
        const LaterMember& member = GetParam();
        Script script;
        if (member.tool) {
            return script.Do([tool = member.tool] { ClickTool(tool); });
        }
        return script.Do([search = member.search] { SetFocus(Item(search ? IDC_TXTFIELDS0 : IDC_DATAGRID)); })
            .Key(VK_RETURN);
    }
};

TEST_P(PanelLaterFault, IsReportedAndThePanelStays) {
    const LaterMember& member = GetParam();
    for (const Fault fault : kFaults) {
        SCOPED_TRACE(base::ToUtf8(member.name) + " fault " + std::to_string(static_cast<int>(fault)));
        const bool fails = fault == Fault::Missing || fault == Fault::Raises ||
                           (fault == Fault::WrongType && member.answers);
        if (std::wstring_view(member.name) == L"AceptarSeleccion" && !fails) {
            continue; // delivered: the panel goes
        }
        Break(member.name, fault);
        Script script;
        script.Key('E', VK_CONTROL).Type(L"ma").Append(Provoke());
        if (fails) {
            script.Box(fault == Fault::Raises
                           ? std::wstring(kHostErrorText) + L"\n\nOrigen: Gestión\nError: 513"
                       : fault == Fault::Missing ? MissingText(member.name)
                                                 : std::wstring(L"Error: 0x80020005"));
        }
        script.Do([] { EXPECT_EQ(ItemText(IDC_TXTFIELDS0), L"ma"); }).Key(VK_ESCAPE);
        EXPECT_FALSE(Show(script));
    }
}

INSTANTIATE_TEST_SUITE_P(EachMember, PanelLaterFault,
                         ::testing::Values(LaterMember{L"MoveFirst", L"Primer registro", false, false},
                                           LaterMember{L"MovePrevious", L"Registro anterior", false, false},
                                           LaterMember{L"MoveNext", L"Registro siguiente", false, false},
                                           LaterMember{L"MoveLast", L"Último registro", false, false},
                                           LaterMember{L"SetOrder", L"Orden ascendente", false, false},
                                           LaterMember{L"AplyFilter", L"Quitar el filtro", false, false},
                                           LaterMember{L"CreateFilter", nullptr, true, true},
                                           LaterMember{L"SetFilter", nullptr, true, false},
                                           LaterMember{L"GetFilter", nullptr, true, true},
                                           LaterMember{L"existenregistros", nullptr, true, true},
                                           LaterMember{L"AceptarSeleccion", nullptr, false, false}));

/// The host closes the form that the panel belongs to while it answers.
TEST_P(PanelLaterFault, AHostThatClosesItsFormTakesThePanelAlong) {
    Owner(GetParam().name).On(GetParam().name, [this](Invocation&) { DestroyWindow(owner); });
    EXPECT_FALSE(Show(Script().Key('E', VK_CONTROL).Type(L"ma").Append(Provoke())));
    EXPECT_EQ(Panel(), nullptr);
}

TEST_F(PanelFault, AHostWithoutRecordsOrClearingStillGetsItsAnswer) {
    host.data->Without(L"Recordset");
    EXPECT_FALSE(Show(Script().Box(L"no es un conjunto de registros").Key(VK_RETURN).Key(VK_ESCAPE)));
    EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()", L"Requery(\"seleccion\")"));
}

TEST_F(PanelFault, ARecordIsDeliveredEvenIfTheFilterCannotBeCleared) {
    Break(L"AplyFilter", Fault::Raises);
    EXPECT_FALSE(Show(Script().Key(VK_RETURN).Box(kHostErrorText)));
    EXPECT_EQ(host.log[2], L"AceptarSeleccion(&0, &ctl, \"1\")");
}

/// However a panel answers: by then it is hidden and the host's windows take input, the host may open the
/// same panel again, and if the sink fails the panel is back as it was.
TEST_F(PanelFault, APanelIsHiddenWhileTheHostTakesTheAnswer) {
    short zero = 0;
    VARIANT_BOOL no = VARIANT_FALSE;
    const auto selec = [&](auto operation) {
        return [&, operation] {
            return (server.Get()->*operation)(sink.GetAddressOf(), data.GetAddressOf(), ctl.GetAddressOf(),
                                              &zero, &zero, &no, &no);
        };
    };
    const auto selecAdd = [&](auto operation) {
        return [&, operation] {
            return (server.Get()->*operation)(sink.GetAddressOf(), data.GetAddressOf(), ctl.GetAddressOf(),
                                              &zero, &zero, &no);
        };
    };
    const Script enter = Script().Key(VK_RETURN);
    const Script verified = Script().Do([] { SetFocus(Item(IDC_CMD1)); }).Key(VK_SPACE);
    const Script twice =
        Script().Do([] { PostMessageW(Item(IDC_DATAGRID), WM_LBUTTONDBLCLK, MK_LBUTTON, FirstRow()); });
    const struct {
        std::function<HRESULT()> show;
        Script answer;
        int focus;
        const wchar_t* className;
    } cases[] = {
        {selec(&IClsShowSerch::ShowSelec), enter, IDC_DATAGRID, L"prueba"},
        {selec(&IClsShowSerch::ShowSelec), twice, IDC_DATAGRID, L"ordenes"},
        {selec(&IClsShowSerch::ShowSelecVerif), verified, IDC_CMD1, L"prueba"},
        {selecAdd(&IClsShowSerch::ShowSelecTrueFalse), enter, IDC_DATAGRID, L"prueba"},
        {selecAdd(&IClsShowSerch::ShowSelecAdd), enter, IDC_DATAGRID, L"prueba"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(&each - cases);
        host.className = each.className;
        int answers = 0;
        host.sink->On(L"AceptarSeleccion", [&](Invocation&) {
            EXPECT_FALSE(IsWindowVisible(Panel()));
            EXPECT_TRUE(IsWindowEnabled(owner));
            if (answers++ == 0) {
                RaiseHostError();
            }
            EXPECT_EQ(each.show(), S_OK);
        });
        const Script back = Script().Do([&] {
            EXPECT_TRUE(IsWindowVisible(Panel()));
            EXPECT_FALSE(IsWindowEnabled(owner));
            EXPECT_EQ(GetFocus(), Item(each.focus));
        });
        EXPECT_FALSE(
            Play(Script(each.answer).Box(kHostErrorText).Append(back).Append(each.answer).Key(VK_ESCAPE),
                 each.show));
        EXPECT_EQ(answers, 2);
        EXPECT_EQ(Panel(), nullptr);
    }
}

TEST_F(PanelFault, ASecondShowIsRefusedWhileThePanelIsOpen) {
    const auto again = [&](Invocation&) {
        short zero = 0;
        VARIANT_BOOL no = VARIANT_FALSE;
        const HRESULT code = server->ShowSelec(sink.GetAddressOf(), data.GetAddressOf(), ctl.GetAddressOf(),
                                               &zero, &zero, &no, &no);
        EXPECT_EQ(code, kAlreadyShown);
    };
    host.data->On(L"MoveFirst", again);
    EXPECT_FALSE(Show(Script().Key(VK_HOME).Do([] { EXPECT_NE(Panel(), nullptr); }).Key(VK_ESCAPE)));
    // While it is being opened just the same: the half-made panel has taken the first caller's objects.
    host.data->On(L"Requery", again);
    EXPECT_FALSE(Show(Keys({VK_RETURN})));
    EXPECT_THAT(host.log.back(), L"AplyFilter(\"\")");
}

TEST_F(PanelFault, ACommandIsNotStartedInsideAnother) {
    host.data->On(L"MoveFirst", [&](Invocation&) {
        PostMessageW(Item(IDC_DATAGRID), WM_KEYDOWN, VK_END, 1);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
    });
    EXPECT_FALSE(Show(Forget()
                          .Key(VK_HOME)
                          .Do([this] { EXPECT_THAT(host.log, ElementsAre(L"MoveFirst()")); })
                          .Key(VK_ESCAPE)));
}

TEST_F(PanelFault, TheEndOfTheProgramIsPassedOn) {
    EXPECT_FALSE(Show(Script().Do([] { PostQuitMessage(7); })));
    MSG message{};
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7U);
}

TEST_F(PanelFault, TheHostsWindowsWaitAndGetTheFocusBack) {
    EXPECT_FALSE(Show(Script()
                          .Do([this] {
                              EXPECT_FALSE(IsWindowEnabled(owner));
                              EXPECT_FALSE(hosts::Server().MayUnload());
                          })
                          .Key(VK_ESCAPE)));
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(GetActiveWindow(), owner);
    EXPECT_EQ(GetFocus(), ownerBox);
}

TEST_F(PanelFault, ModelessItLivesInTheHostsLoop) {
    for (const UINT last : {UINT{VK_RETURN}, UINT{VK_ESCAPE}}) {
        host.log.clear();
        host.text = L"ma";
        PanelCall call{&IClsShowSerch::ShowSelecDirecta, 0, 0, VARIANT_FALSE, 0};
        ASSERT_FALSE(Show(call, Script()));
        EXPECT_NE(Panel(), nullptr);
        EXPECT_TRUE(IsWindowEnabled(owner));
        EXPECT_FALSE(hosts::Server().MayUnload());
        EXPECT_EQ(Show(Script())->number, kAlreadyShown);
        Script script = Forget();
        script.Do([] { SetFocus(Item(IDC_DATAGRID)); }).Key(VK_HOME).Key(last);
        const Player player(script, [this] { return Notes(); });
        MSG message;
        while (Panel() && GetMessageW(&message, nullptr, 0, 0) > 0) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        if (last == VK_RETURN) {
            EXPECT_THAT(host.log, ElementsAre(L"MoveFirst()", L"AceptarSeleccion(&0, &ctl, \"1\")",
                                              L"AplyFilter(\"\")"));
        } else {
            EXPECT_THAT(host.log, ElementsAre(L"MoveFirst()"));
        }
    }
}

TEST_F(PanelFault, AHostsFloatingPointTrapsStaySetAndAreNotSprung) {
    constexpr unsigned kTraps = _EM_ZERODIVIDE | _EM_INVALID | _EM_OVERFLOW;
    const unsigned before = _controlfp(0, 0);
    _clearfp();
    _controlfp(before & ~kTraps, _MCW_EM);
    const unsigned unmasked = _controlfp(0, 0);
    const auto error =
        Show(Script().Key(VK_HOME).Key(VK_NEXT).Key(VK_F5).Append(Elsewhere()).Key(VK_ESCAPE).Key(VK_ESCAPE));
    const unsigned after = _controlfp(0, 0);
    _clearfp();
    _controlfp(before, _MCW_EM);
    EXPECT_FALSE(error);
    EXPECT_EQ(after, unmasked);
    EXPECT_EQ(unmasked & kTraps, 0U);
}

} // namespace
} // namespace tamvelo::testing
