#pragma once

#include <memory>
#include <string>

#include "frame/FormPart.h"
#include "win/CheckList.h"

namespace tamvelo::frame {

/// The list `List1` of a form with or without ticks: a search box above it, the counter and the commands for
/// ticks below it. The template holds the controls of frame/ListPanel.rch; what the design leaves out is
/// hidden.
class TickList final : public FormPart, public win::CheckListEvents {
public:
    struct Design {
        win::CheckList::Kind kind = win::CheckList::Kind::Ticks;
        bool searchBox = false;
        /// The counter's text; null for no counter.
        std::wstring (*counter)(const win::CheckList& list) = nullptr;
    };
    /// `chosen` hears that another entry is the selected one.
    TickList(Form& form, const Design& design, std::function<void()> chosen = {})
        : FormPart(form), m_design(design), m_chosen(std::move(chosen)) {}

    /// Throws when the form is gone, as after any host call it may be.
    win::CheckList& List() const {
        Host().CheckStands();
        return *m_list;
    }
    /// The selected entry; -1 for none, also before there is a list.
    int CurrentEntry() const { return IsLoaded() && m_list ? m_list->Current() : -1; }
    /// The list as an environment component gets it.
    com::ComPtr<objects::ControlObject> Object() const;
    HWND FirstFocus() const;
    /// The rows of the layout that it takes.
    static std::vector<win::LayoutRow> Layout();

private:
    void OnLoad() override;
    void OnControl(int control, int code) override;
    bool OnNotify(NMHDR& header, LRESULT& answer) override;
    std::span<const CommandRow> Commands() const override;
    std::span<const KeyRow> Keys() const override;

    void ListChanged() override;
    /// Toggles the tick; in a list without ticks it accepts.
    void EntryDoubleClicked() override;
    void CurrentChanged() override;
    void ListMenuAsked(POINT screen) override;

    bool HasTicks() const { return m_design.kind == win::CheckList::Kind::Ticks; }
    template <auto Mark, auto... Arguments>
    void Ticks() {
        if (HasTicks()) {
            (List().*Mark)(Arguments...);
        }
    }
    void GoToSearch();
    void EnterList() { List().Enter(); }
    void ShowTickMenu();

    const Design m_design;
    const std::function<void()> m_chosen;
    // Outlives its window, which may go while the list is telling something.
    std::unique_ptr<win::CheckList> m_list;
};

} // namespace tamvelo::frame
