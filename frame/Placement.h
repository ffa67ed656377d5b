#pragma once

#include <utility>

#include "environment/Environment.h"
#include "frame/FormControls.h"

namespace tamvelo::frame {

/// Where a form's window stands: at its opening, among the monitors, and as settings keep it.
class Placement final : public environment::PlacedForm {
public:
    /// Both outlive this.
    Placement(const FormControls& form, const wchar_t* name) : m_form(form), m_name(name) {}
    /// Forgets what belongs to one opening.
    void Forget() noexcept;

    void CentreOnOwner();
    /// Onto a monitor that is there, and not below the smallest size, in pixels.
    void PullOntoMonitor(SIZE smallest);
    /// What the window is to be shown as now: maximised only the first time.
    int TakeShowAs() { return std::exchange(m_showAs, SW_SHOW); }

    base::Rect Place() const override;
    void SetPlace(const base::Rect& place) override;
    bool IsMaximised() const override;
    void SetMaximised() override { m_showAs = SW_SHOWMAXIMIZED; }
    com::ComPtr<IDispatch> FormObject() override;

private:
    const FormControls& m_form;
    const wchar_t* const m_name;
    int m_showAs = SW_SHOW;
    com::ComPtr<IDispatch> m_object;
};

} // namespace tamvelo::frame
