#pragma once

#include <string>

#include "com/Automation.h"

namespace tamvelo::objects {

/// A form as a component of the environment sees it: place and size in screen pixels, name, caption, window
/// handle.
class FormObject final : public com::Automation {
public:
    FormObject(HWND window, std::wstring name) : m_window(window), m_name(std::move(name)) {}

private:
    std::span<const com::Member> Members() const override;
    RECT Place() const;
    void Move(long left, long top, long width, long height);
    void Left(com::Invocation& call);
    void Top(com::Invocation& call);
    void Width(com::Invocation& call);
    void Height(com::Invocation& call);
    void Name(com::Invocation& call);
    void Caption(com::Invocation& call);
    void Handle(com::Invocation& call);

    HWND m_window;
    std::wstring m_name;
};

} // namespace tamvelo::objects
