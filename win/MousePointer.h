#pragma once

namespace tamvelo::win {

/// The screen's pointer for the calling thread: the hourglass while a command runs, the default afterwards.
class MousePointer {
public:
    static void Hourglass();
    static void Default();
    static bool IsHourglass();
};

} // namespace tamvelo::win
