#pragma once

#include <functional>
#include <memory>
#include <string>

#include "win/Subclass.h"

namespace tamvelo::win {

/// Hears of a text box what its notifications do not tell: each character before it is typed, text before it
/// is pasted, and where the focus went. The handlers may throw nothing and may destroy the box.
class EditWatch final : public Subclass, public std::enable_shared_from_this<EditWatch> {
public:
    struct Handlers {
        /// A printable character; may be changed, 0 swallows it. The keys that edit are not asked about.
        std::function<void(wchar_t& letter)> typed;
        /// The focus has gone to another control of the dialog; false calls it back. Not asked when the
        /// dialog loses the focus as a whole or closes.
        std::function<bool()> left;
        /// Text from the clipboard; true when it is used up. May be empty.
        std::function<bool(const std::wstring& text)> pasted;
    };
    static std::shared_ptr<EditWatch> Start(HWND edit, Handlers handlers);

    /// `left` is asked with a message of its own, when the focus has settled. A command that must not run
    /// before asks here; false when the box called the focus back.
    bool Settle();

private:
    EditWatch(HWND edit, Handlers handlers) : Subclass(edit), m_handlers(std::move(handlers)) {}
    LRESULT Handle(UINT message, WPARAM first, LPARAM second) override;

    const Handlers m_handlers;
    bool m_left = false;
};

} // namespace tamvelo::win
