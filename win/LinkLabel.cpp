#include "win/LinkLabel.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "win/MousePointer.h"
#include "win/Subclass.h"

namespace tamvelo::win {

namespace {

constexpr COLORREF kHot = RGB(255, 255, 255);

bool IsHot(HWND link) { return GetWindowLongPtrW(link, GWLP_USERDATA) != 0; }

int BrightnessOf(COLORREF color) {
    return (299 * GetRValue(color) + 587 * GetGValue(color) + 114 * GetBValue(color)) / 1000;
}

/// The system's colour of links where it can be read on a dialog; some schemes have none that can.
COLORREF LinkColor() {
    constexpr int kReadable = 110;
    const int face = BrightnessOf(GetSysColor(COLOR_BTNFACE));
    for (const COLORREF color : {GetSysColor(COLOR_HOTLIGHT), RGB(0, 0x5A, 0xB4)}) {
        if (std::abs(face - BrightnessOf(color)) >= kReadable) {
            return color;
        }
    }
    return GetSysColor(COLOR_BTNTEXT);
}

COLORREF BackUnderWhite() { return BrightnessOf(LinkColor()) < 128 ? LinkColor() : RGB(0, 0, 0); }

void Draw(HWND link, HDC dc) {
    RECT area{};
    GetClientRect(link, &area);
    SetBkColor(dc, IsHot(link) ? BackUnderWhite() : GetSysColor(COLOR_BTNFACE));
    SetTextColor(dc, IsHot(link) ? kHot : LinkColor());
    ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);

    const auto plain = reinterpret_cast<HFONT>(SendMessageW(link, WM_GETFONT, 0, 0));
    LOGFONTW look{};
    GetObjectW(plain, sizeof look, &look);
    look.lfUnderline = TRUE;
    const HFONT underlined = CreateFontIndirectW(&look);
    const HGDIOBJ before = SelectObject(dc, underlined);
    wchar_t caption[64];
    std::wstring_view text(caption, static_cast<size_t>(GetWindowTextW(link, caption, ARRAYSIZE(caption))));
    const size_t blanks = std::min(text.find_first_not_of(L' '), text.size());
    SIZE indent{};
    GetTextExtentPoint32W(dc, caption, static_cast<int>(blanks), &indent);
    text.remove_prefix(blanks);
    RECT words = area;
    words.left += indent.cx;
    DrawTextW(dc, text.data(), static_cast<int>(text.size()), &words,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    DeleteObject(SelectObject(dc, before));
    if (GetFocus() == link) {
        SetBkColor(dc, RGB(255, 255, 255)); // the frame is drawn by these two
        SetTextColor(dc, RGB(0, 0, 0));
        DrawFocusRect(dc, &area);
    }
}

void SetHot(HWND link, bool hot) {
    if (hot == IsHot(link)) {
        return;
    }
    SetWindowLongPtrW(link, GWLP_USERDATA, hot ? 1 : 0);
    if (hot) {
        TRACKMOUSEEVENT leaving{sizeof leaving, TME_LEAVE, link, 0};
        TrackMouseEvent(&leaving);
    }
    InvalidateRect(link, nullptr, FALSE);
}

class Link final : public Subclass {
public:
    explicit Link(HWND button) : Subclass(button) {}

private:
    LRESULT Handle(UINT message, WPARAM first, LPARAM second) override;
    void OnWindowGone() noexcept override { delete this; }
};

LRESULT Link::Handle(UINT message, WPARAM first, LPARAM second) {
    const HWND link = Window();
    switch (message) {
    case WM_PAINT: {
        PAINTSTRUCT paint;
        Draw(link, BeginPaint(link, &paint));
        EndPaint(link, &paint);
        return 0;
    }
    case WM_PRINTCLIENT:
        Draw(link, reinterpret_cast<HDC>(first));
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_MOUSEMOVE:
        SetHot(link, true);
        break;
    case WM_MOUSELEAVE:
        SetHot(link, false);
        break;
    case WM_SETCURSOR:
        if (!MousePointer::IsHourglass()) {
            SetCursor(LoadCursorW(nullptr, IDC_HAND));
            return TRUE;
        }
        break;
    case WM_SETFOCUS:
    case WM_KILLFOCUS: {
        const LRESULT answer = Default(message, first, second);
        InvalidateRect(link, nullptr, FALSE);
        return answer;
    }
    default:
        break;
    }
    return Default(message, first, second);
}

} // namespace

void MakeLink(HWND button) { new Link(button); } // goes with the button

} // namespace tamvelo::win
