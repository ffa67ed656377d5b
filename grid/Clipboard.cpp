#include "grid/Clipboard.h"

#include <algorithm>

#include "com/Error.h"

namespace tamvelo::grid {

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

} // namespace tamvelo::grid
