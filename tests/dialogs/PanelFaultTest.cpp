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
    void Renew() {
        ctl.Reset();
        host = FakeHost();
    }
};

TEST_F(PanelFault, AHostWithoutRecordsOrClearingStillGetsItsAnswer) {
    host.data->Without(L"Recordset");
    EXPECT_FALSE(Show(Script().Box(L"no es un conjunto de registros").Key(VK_RETURN).Key(VK_ESCAPE)));
    EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()", L"Requery(\"seleccion\")"));
}

TEST_F(PanelFault, ARecordIsDeliveredEvenIfTheFilterCannotBeCleared) {
    host.data->On(L"AplyFilter", [](Invocation&) { RaiseHostError(); });
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
