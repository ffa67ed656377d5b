#include "frame/Keys.h"

#include <algorithm>
#include <iterator>

namespace tamvelo::frame {

namespace {

struct Name {
    UINT key;
    const wchar_t* text;
};

constexpr Name kHeld[] = {{kCtrl, L"Ctrl+"}, {kAlt, L"Alt+"}, {kShift, L"Mayús+"}};

constexpr Name kNames[] = {
    {VK_RETURN, L"Intro"},
    {VK_ESCAPE, L"Esc"},
    {VK_INSERT, L"Ins"},
    {VK_DELETE, L"Supr"},
    {VK_HOME, L"Inicio"},
    {VK_END, L"Fin"},
    {VK_PRIOR, L"Re Pág"},
    {VK_NEXT, L"Av Pág"},
    {VK_UP, L"Flecha arriba"},
    {VK_DOWN, L"Flecha abajo"},
    {VK_LEFT, L"Flecha izquierda"},
    {VK_RIGHT, L"Flecha derecha"},
    {VK_SPACE, L"Espacio"},
    {VK_ADD, L"+"},
};

constexpr UINT kCodes = kCtrl - 1;

} // namespace

std::wstring KeyName(UINT key) {
    std::wstring text;
    for (const Name& held : kHeld) {
        if (key & held.key) {
            text += held.text;
        }
    }
    const UINT code = key & kCodes;
    const auto* const known = std::ranges::find(kNames, code, &Name::key);
    if (known != std::end(kNames)) {
        return text + known->text;
    }
    return code >= VK_F1 && code <= VK_F24
               ? text + L"F" + std::to_wstring(code - VK_F1 + 1)
               : text + static_cast<wchar_t>(code); // letters and digits are their codes
}

bool IsTextKey(UINT key) {
    constexpr std::string_view kLetters = "ACVXZ";
    const UINT code = key & kCodes;
    return (key & kCtrl) && code < 128 && kLetters.find(static_cast<char>(code)) != std::string_view::npos;
}

} // namespace tamvelo::frame
