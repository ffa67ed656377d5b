#pragma once

#include <functional>

#include "base/DateRanges.h"
#include "frame/FormPart.h"

namespace tamvelo::frame {

/// Two date pickers with their labels, a menu of presets, keys for the period before and after, and a note
/// that says how long the range is. The template includes DATE_RANGE_CONTROLS (frame/DateRange.rch),
/// inside the group box IDC_FRMPARAM.
class DateRangeControl final : public FormPart {
public:
    /// `opening` makes the range that every opening begins with out of today; `changed` hears of every other
    /// one, from the first on.
    DateRangeControl(Form& form, base::DateRange (*opening)(base::Day today),
                     std::function<void()> changed = {})
        : FormPart(form), m_opening(opening), m_changed(std::move(changed)) {}

    /// The rows of the layout that it takes.
    static std::vector<win::LayoutRow> Layout();
    HWND FirstFocus() const;
    /// What the pickers show, in their order and as the user left it: the first may lie after the last.
    base::DateRange Range();
    /// The same without what is still being typed.
    base::DateRange Shown() const;

private:
    void OnLoad() override;
    bool OnNotify(NMHDR& header, LRESULT& answer) override;
    std::span<const KeyRow> Keys() const override;
    std::span<const CommandRow> Commands() const override;

    void ShowMenu();
    void ChoosePreset(int preset);
    void GoToPeriodBefore() { Choose(base::Step(Range(), -1)); }
    void GoToPeriodAfter() { Choose(base::Step(Range(), 1)); }
    /// By a command.
    void Choose(const base::DateRange& range);
    void Set(const base::DateRange& range);
    void ShowLength();

    base::DateRange (*const m_opening)(base::Day today);
    const std::function<void()> m_changed;
};

} // namespace tamvelo::frame
