#pragma once

#include "frame/Form.h"

namespace tamvelo::frame {

/// A piece of a form with controls, commands and a behaviour of its own: a member of the form, made with it,
/// that works through the form's public functions. The frame tells its parts what happens before it tells
/// the form, at the end after it and the last part first, and asks the form for commands and keys before its
/// parts.
class FormPart : public CommandTarget {
public:
    FormPart(const FormPart&) = delete;
    FormPart& operator=(const FormPart&) = delete;

protected:
    explicit FormPart(Form& form) : m_form(form) { form.m_parts.push_back(this); }
    ~FormPart() { std::erase(m_form.m_parts, this); }

    Form& Host() const { return m_form; }
    bool IsLoaded() const { return m_form.IsLoaded(); }
    HWND Control(int id) const { return m_form.Control(id); }
    // Within a show method of the form.
    void Load() { m_form.Load(); }
    void ShowAs(short modal) { m_form.ShowAs(modal); }

private:
    friend class Form;
    // As Form has them.
    virtual void OnLoad() {}
    virtual void OnLaidOut() {}
    virtual void OnBeforeUnload() {}
    virtual void OnUnload() noexcept {}
    virtual void OnControl(int /*control*/, int /*code*/) {}
    virtual bool OnNotify(NMHDR& /*header*/, LRESULT& /*answer*/) { return false; }

    Form& m_form;
};

} // namespace tamvelo::frame
