#pragma once

#include "com/WinHeaders.h"

#include <functional>

namespace tamvelo::win {

/// The loop in which a thread waits while a modal window is open.
class MessageLoop {
public:
    /// Goes on as long as `open` says, which `Wake` has looked at again. `preview` sees each message first,
    /// and says whether it was used up. When the program is to end `end` is called, which closes the window,
    /// and the loop outside hears of it next.
    void Run(const bool& open, const std::function<bool(MSG&)>& preview, const std::function<void()>& end);
    /// What closes a window may have been sent, not posted; the loop waits for something posted.
    void Wake() const noexcept;

private:
    bool m_running = false;
};

} // namespace tamvelo::win
