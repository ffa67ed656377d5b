#include "win/Message.h"

#include "base/MessageText.h"
#include "com/Trace.h"
#include "win/MousePointer.h"

namespace tamvelo::win {

int ShowMessage(HWND owner, const std::wstring& text, const std::wstring& title, UINT style,
                const std::wstring& tail) noexcept {
    MousePointer::Default();
    try {
        std::wstring shown = base::MessageText(text);
        if (com::Trace::Enabled() && !shown.starts_with(text)) {
            com::Trace::Line(L"Mensaje: " + text);
        }
        shown += tail;
        return MessageBoxW(owner, shown.c_str(), base::Named(title).c_str(), style);
    } catch (...) { // out of memory: the system shows what it can
        return MessageBoxW(owner, text.c_str(), title.c_str(), style);
    }
}

} // namespace tamvelo::win
