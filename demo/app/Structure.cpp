#include "demo/app/Structure.h"

#include <commctrl.h>

#include <filesystem>
#include <fstream>

#include "base/Text.h"

namespace tamvelo::demo {

namespace {

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    return name;
}

/// One line: what breaks a line is a blank.
std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    for (wchar_t& letter : text) {
        letter = letter < L' ' ? L' ' : letter;
    }
    return L"«" + text + L"»";
}

class Writer {
public:
    Writer(HWND top, const std::wstring& path)
        : m_top(top), m_file(std::filesystem::path(path), std::ios::binary) {}

    void Write(HWND window, int depth) {
        RECT place;
        GetWindowRect(window, &place);
        if (window != m_top) {
            MapWindowPoints(nullptr, m_top, reinterpret_cast<POINT*>(&place), 2);
        } else {
            OffsetRect(&place, -place.left, -place.top);
        }
        Line(depth, ClassOf(window) + L' ' + std::to_wstring(window == m_top ? 0 : GetDlgCtrlID(window)) +
                        L' ' + std::to_wstring(place.left) + L',' + std::to_wstring(place.top) + L' ' +
                        std::to_wstring(place.right - place.left) + L'x' +
                        std::to_wstring(place.bottom - place.top) + L' ' + TextOf(window) +
                        (IsWindowEnabled(window) ? L"" : L" (no disponible)"));
        if (window == m_top) {
            WriteMenu(GetMenu(window));
        }
        if (ClassOf(window) == TOOLBARCLASSNAMEW) {
            WriteTools(window, depth + 1);
        }
        for (HWND child = GetWindow(window, GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT)) {
            if (IsWindowVisible(child)) {
                Write(child, depth + 1);
            }
        }
    }

private:
    void Line(int depth, const std::wstring& text) {
        m_file << std::string(static_cast<std::size_t>(2 * depth), ' ') << base::ToUtf8(text) << '\n';
    }

    void WriteMenu(HMENU bar) {
        for (int i = 0; i < GetMenuItemCount(bar); ++i) {
            wchar_t caption[64] = L"";
            GetMenuStringW(bar, static_cast<UINT>(i), caption, ARRAYSIZE(caption), MF_BYPOSITION);
            Line(1, L"menú «" + std::wstring(caption) + L"»");
        }
    }

    void WriteTools(HWND bar, int depth) {
        const auto count = static_cast<int>(SendMessageW(bar, TB_BUTTONCOUNT, 0, 0));
        for (int i = 0; i < count; ++i) {
            TBBUTTON button{};
            wchar_t caption[64] = L"";
            SendMessageW(bar, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
            SendMessageW(bar, TB_GETBUTTONTEXTW, static_cast<WPARAM>(button.idCommand),
                         reinterpret_cast<LPARAM>(caption));
            if (!(button.fsStyle & BTNS_SEP)) {
                Line(depth, L"herramienta «" + std::wstring(caption) + L"»" +
                                (button.fsState & TBSTATE_CHECKED ? L" (pulsada)" : L"") +
                                (button.fsState & TBSTATE_ENABLED ? L"" : L" (no disponible)"));
            }
        }
    }

    const HWND m_top;
    std::ofstream m_file;
};

} // namespace

void SaveStructure(HWND window, const std::wstring& path) { Writer(window, path).Write(window, 0); }

} // namespace tamvelo::demo
