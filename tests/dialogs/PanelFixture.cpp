#include "tests/dialogs/PanelFixture.h"

namespace tamvelo::testing {

std::optional<com::Error> PanelTest::Try(const Opening& how, const Script& script) {
    const com::Argument control = com::Argument::Ref(ctl);
    return how.last ? PlayLate(how.operation,
                               {sink.Get(), data.Get(), control, how.column, how.indx, how.find, *how.last},
                               script)
                    : PlayLate(how.operation,
                               {sink.Get(), data.Get(), control, how.column, how.indx, how.find}, script);
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
