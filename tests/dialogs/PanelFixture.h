#pragma once

#include "selection/Resources.h"
#include "tests/dialogs/DialogFixture.h"

namespace tamvelo::testing {

/// An operation that opens a grid over the host's records, with what it is told.
struct Opening {
    const wchar_t* operation = L"ShowSelec";
    short column = 0;
    short indx = 0;
    bool find = true;
    std::optional<short> last = {}; // bStock, or iModal of the direct ones
};

inline constexpr wchar_t kClear[] = L"AplyFilter(\"\")";
inline constexpr wchar_t kAscending[] = L"SetOrder(&0, \"\", \"seleccion\")";
inline constexpr wchar_t kDescending[] = L"SetOrder(&0, \" DESC\", \"seleccion\")";
/// What accepting the first record tells.
inline const Log kAccept{L"AceptarSeleccion(&0, &ctl, \"1\")", kClear};
/// What a search for "ma" asks.
inline const Log kSearch{L"CreateFilter(&TxtFields(0))", L"SetFilter(&\"campo=ma\", \"FilterSelec\")",
                         L"GetFilter(\"FilterSelec\")",  L"AplyFilter(\"campo=ma\")",
                         L"Requery(\"selec\")",          L"GetFilter(\"FilterSelec\")",
                         L"existenregistros()"};

/// The forms with a grid.
class PanelTest : public DialogTest {
protected:
    using DialogTest::DialogTest;
    /// Calls the operation with the script playing; the error that the host got, if any.
    std::optional<com::Error> Try(const Opening& how, const Script& script) {
        const com::Argument control = com::Argument::Ref(ctl);
        return how.last
                   ? PlayLate(how.operation,
                              {sink.Get(), data.Get(), control, how.column, how.indx, how.find, *how.last},
                              script)
                   : PlayLate(how.operation,
                              {sink.Get(), data.Get(), control, how.column, how.indx, how.find}, script);
    }
    void Show(const Opening& how, const Script& script) { EXPECT_FALSE(Try(how, script)); }
    void Show(const Script& script) { Show({}, script); }
    /// Expects that the host is asked just that after the opening, and gets no error.
    void Expect(const Opening& how, const Script& script, const Log& asked) {
        Show(how, {Forget(), script});
        EXPECT_THAT(TakeLog(), ElementsAreArray(asked));
    }
    void Expect(const Script& script, const Log& asked) { Expect({}, script, asked); }

    // Waits for a dialog over the panel, and for the panel again.
    static Script Elsewhere() {
        return Until("another dialog", [](HWND top) { return !GetDlgItem(top, IDC_DATAGRID); });
    }
    static Script Back() { return Showing(IDC_DATAGRID); }
    // Goes to the search box by its key, to the button beside it, to the list.
    static Script InBox() { return Key('E', VK_CONTROL).Append(Focused(IDC_TXTFIELDS0)); }
    static Script OnButton() { return Into(IDC_CMDBUSCAR); }
    static Script InGrid() { return Into(IDC_DATAGRID); }
    // The mouse in the first row of a column, in the column's heading; the menu of the grid.
    static Script Mouse(const std::vector<UINT>& messages, WPARAM column = 0, HWND (*where)() = Grid) {
        return Do([=] {
            const RECT place = HeadingOf(column);
            for (const UINT message : messages) {
                PostMessageW(
                    where(), message, MK_LBUTTON,
                    MAKELPARAM((place.left + place.right) / 2, where == Grid ? place.bottom + 4 : 5));
            }
        });
    }
    static Script ClickHeading(WPARAM column = 0) {
        return Mouse({WM_LBUTTONDOWN, WM_LBUTTONUP}, column, Heading);
    }
    static Script DoubleClick() { return Mouse({WM_LBUTTONDBLCLK}); }
    static Script GridMenu() {
        return Do([] { PostMessageW(Grid(), WM_CONTEXTMENU, 0, MAKELPARAM(-1, -1)); }).Append(InMenu());
    }

    /// Expects the grid below the search box, or in its place.
    static Script SearchHasRoom(bool room) {
        return Do([room] { EXPECT_EQ(PlaceOf(Grid()).top >= PlaceOf(Item(IDC_TXTFIELDS0)).bottom, room); });
    }

    static HWND Grid() { return Item(IDC_DATAGRID); }
    static HWND Heading() { return FindWindowExW(Grid(), nullptr, L"SysHeader32", nullptr); }
    /// A column's part of the heading.
    static RECT HeadingOf(WPARAM column) {
        RECT place{};
        SendMessageW(Heading(), HDM_GETITEMRECT, column, reinterpret_cast<LPARAM>(&place));
        return place;
    }
};

} // namespace tamvelo::testing
