#include "win/Subclass.h"

#include <commctrl.h>

#include "com/FloatGuard.h"

namespace tamvelo::win {

Subclass::Subclass(HWND window) : m_window(window) {
    const auto self = reinterpret_cast<DWORD_PTR>(this);
    SetWindowSubclass(window, Procedure, self, self); // its own number beside others'
}

Subclass::~Subclass() {
    if (m_window) {
        RemoveWindowSubclass(m_window, Procedure, reinterpret_cast<UINT_PTR>(this));
    }
}

LRESULT Subclass::Default(UINT message, WPARAM first, LPARAM second) const {
    return m_window ? DefSubclassProc(m_window, message, first, second) : 0;
}

LRESULT CALLBACK Subclass::Procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                                     DWORD_PTR data) noexcept {
    const com::FloatGuard floats;
    auto* const self = reinterpret_cast<Subclass*>(data);
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, Procedure, id);
        self->m_window = nullptr;
        self->OnWindowGone();
        return DefSubclassProc(window, message, first, second);
    }
    try {
        return self->Handle(message, first, second);
    } catch (...) {
        return -1;
    }
}

} // namespace tamvelo::win
