#include "tests/dialogs/PanelFixture.h"

#include <commctrl.h>

namespace tamvelo::testing {

std::optional<com::Error> PanelTest::Show(const Opening& how, Script script) {
    const com::Argument control = com::Argument::Ref(ctl);
    if (!how.last) {
        return PlayLate(how.operation, {sink.Get(), data.Get(), control, how.column, how.indx, how.find},
                        std::move(script));
    }
    return PlayLate(how.operation,
                    {sink.Get(), data.Get(), control, how.column, how.indx, how.find, *how.last},
                    std::move(script));
}

void PanelTest::WarmUp() {
    host.sink->Raises(L"AceptarSeleccion");
    Show({GridMenu(), Keys({VK_ESCAPE, VK_F5}), Elsewhere(), Keys({VK_ESCAPE, VK_F3}), Elsewhere(),
          Keys({VK_ESCAPE, VK_F6}), Elsewhere(), Do([] { PostMessageW(TopWindow(), WM_CLOSE, 0, 0); }),
          Back(), Key(VK_RETURN), Box(kHostErrorText), Key(VK_ESCAPE)});
    host.sink->Accepts({L"AceptarSeleccion"});
}

Script PanelTest::Mouse(std::initializer_list<UINT> messages, WPARAM column, HWND (*where)()) {
    return Do([=, sent = std::vector<UINT>(messages)] {
        const RECT place = HeadingOf(column);
        for (const UINT message : sent) {
            PostMessageW(where(), message, MK_LBUTTON,
                         MAKELPARAM((place.left + place.right) / 2, where == Grid ? place.bottom + 4 : 5));
        }
    });
}

RECT PanelTest::HeadingOf(WPARAM column) {
    RECT place{};
    SendMessageW(Heading(), HDM_GETITEMRECT, column, reinterpret_cast<LPARAM>(&place));
    return place;
}

} // namespace tamvelo::testing
