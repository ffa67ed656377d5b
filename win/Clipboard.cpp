#include "win/Clipboard.h"

#include <algorithm>

#include "com/Error.h"

namespace tamvelo::win {

void CopyText(HWND owner, const std::wstring& text) {
    if (!OpenClipboard(owner)) {
        com::ThrowLastError(L"No se pudo abrir el portapapeles.");
    }
    EmptyClipboard();
    const size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    if (const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes)) {
        std::copy_n(text.c_str(), text.size() + 1, static_cast<wchar_t*>(GlobalLock(memory)));
        GlobalUnlock(memory);
        if (!SetClipboardData(CF_UNICODETEXT, memory)) {
            GlobalFree(memory); // cppcheck-suppress doubleFree ; still ours: the clipboard did not take it
        }
    }
    CloseClipboard();
}

std::wstring CopiedText(HWND owner) {
    std::wstring text;
    if (OpenClipboard(owner)) {
        const HANDLE held = GetClipboardData(CF_UNICODETEXT);
        if (const auto* letters = held ? static_cast<const wchar_t*>(GlobalLock(held)) : nullptr) {
            const std::wstring_view all(letters, GlobalSize(held) / sizeof(wchar_t));
            text = all.substr(0, all.find(L'\0'));
            GlobalUnlock(held);
        }
        CloseClipboard();
    }
    return text;
}

} // namespace tamvelo::win
