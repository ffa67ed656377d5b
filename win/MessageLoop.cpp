#include "win/MessageLoop.h"

namespace tamvelo::win {

void MessageLoop::Run(const bool& open, const std::function<bool(MSG&)>& preview,
                      const std::function<void()>& end) {
    m_running = true;
    while (open) {
        MSG message;
        const BOOL got = GetMessageW(&message, nullptr, 0, 0);
        if (got == 0) {
            end();
            PostQuitMessage(static_cast<int>(message.wParam));
        } else if (got > 0 && !preview(message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    m_running = false;
}

void MessageLoop::Wake() const noexcept {
    if (m_running) {
        PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
    }
}

} // namespace tamvelo::win
