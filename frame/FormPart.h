#pragma once

#include "frame/Form.h"

namespace tamvelo::frame {

/// Controls with a behaviour of their own that several forms have: a member of the form, made with it. The
/// frame tells its parts what happens before it tells the form.
class FormPart {
public:
    FormPart(const FormPart&) = delete;
    FormPart& operator=(const FormPart&) = delete;

protected:
    explicit FormPart(Form& form) : m_form(form) { form.m_parts.push_back(this); }
    virtual ~FormPart() { std::erase(m_form.m_parts, this); }

    bool IsLoaded() const { return m_form.IsLoaded(); }
    template <class Body>
    void Trapped(const Body& body) noexcept {
        m_form.Trapped(body);
    }
    template <class Body>
    void Tried(const Body& body) {
        m_form.Tried(body);
    }

    using MenuItem = Form::MenuItem;
    HWND Control(int id) const { return m_form.Control(id); }
    void SetControlText(int id, const std::wstring& text) { m_form.SetControlText(id, text); }
    void RunMenu(std::span<const MenuItem> items, int button) { m_form.RunMenu(items, button); }

private:
    friend class Form;
    /// The controls exist; before the form's own OnLoad.
    virtual void OnLoad() {}
    virtual void OnControl(int /*control*/, int /*code*/) {}
    virtual void OnNotify(const NMHDR& /*header*/) {}
    /// Its keys; the form's own rows come first.
    virtual std::span<const KeyRow> Keys() const { return {}; }
    /// True when the command is the part's and was run.
    virtual bool OnCommand(std::wstring_view /*command*/) { return false; }

    Form& m_form;
};

} // namespace tamvelo::frame
