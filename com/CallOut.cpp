#include "com/CallOut.h"

#include <string>

#include "com/Trace.h"

namespace tamvelo::com {

namespace {

thread_local Watch* g_innermost = nullptr;

} // namespace

Watch::Watch(const HWND* window) noexcept : m_window(window), m_outer(g_innermost) { g_innermost = this; }

Watch::~Watch() { g_innermost = m_outer; }

Standing::Standing() noexcept
    : m_window(g_innermost ? g_innermost->m_window : nullptr), m_before(m_window ? *m_window : nullptr) {}

void QueryOut(IUnknown* object, REFIID id, void** found) {
    if (Trace::Enabled()) {
        wchar_t name[40] = L"";
        StringFromGUID2(id, name, ARRAYSIZE(name));
        Trace::Line(std::wstring(L"Objeto ? ") + name);
    }
    CallOut([&] { return object->QueryInterface(id, found); });
}

} // namespace tamvelo::com
