#pragma once

#include <string>

#include "com/Automation.h"

namespace tamvelo::objects {

/// A control of a form as the host sees it when it is handed one: an automation object with the members that
/// a host of this kind reads. It may outlive the window; members that need it then raise an error.
class ControlObject : public com::Automation {
public:
    /// `name` and `index` are the control's own in its control array.
    ControlObject(HWND window, std::wstring name, short index)
        : m_window(window), m_name(std::move(name)), m_index(index) {}

    /// The field that the control stands for; hosts read it to know what was typed.
    void SetDataField(std::wstring field) { m_dataField = std::move(field); }
    const std::wstring& DataField() const { return m_dataField; }
    HWND Window() const { return m_window; }

protected:
    std::span<const com::Member> Members() const override;
    HWND Alive() const;

    void Name(com::Invocation& call);
    void Index(com::Invocation& call);
    void Text(com::Invocation& call);
    void Value(com::Invocation& call);
    void DataFieldMember(com::Invocation& call);
    void Enabled(com::Invocation& call);
    void Visible(com::Invocation& call);
    void MaxLength(com::Invocation& call);
    void SelStart(com::Invocation& call);
    void SelLength(com::Invocation& call);
    void ListCount(com::Invocation& call);
    void List(com::Invocation& call);
    void ListIndex(com::Invocation& call);
    void Selected(com::Invocation& call);
    void AddItem(com::Invocation& call);
    void Clear(com::Invocation& call);
    void Focus(com::Invocation& call);
    void Handle(com::Invocation& call);
    void Tag(com::Invocation& call);

private:
    HWND m_window;
    std::wstring m_name;
    short m_index;
    std::wstring m_dataField;
    com::Variant m_tag{L""};
};

} // namespace tamvelo::objects
