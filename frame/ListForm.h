#pragma once

#include <memory>
#include <string>

#include "frame/CheckList.h"
#include "frame/Form.h"
#include "frame/Resources.h"

namespace tamvelo::frame {

/// A form around the list `List1`: a search box above it, the counter and the commands for ticks below it.
/// The template holds the controls of frame/ListPanel.rch; what the design leaves out is hidden.
class ListForm : public Form, public CheckListEvents {
protected:
    struct ListDesign {
        CheckList::Kind kind = CheckList::Kind::Ticks;
        bool searchBox = false;
        /// The counter's text; null for no counter.
        std::wstring (*counter)(const CheckList& list) = nullptr;
    };
    ListForm(const FormDesign& design, const ListDesign& list) : Form(design), m_listDesign(list) {}

    /// Throws when the form is gone, as after any host call it may be.
    CheckList& List() const {
        CheckStands();
        return *m_list;
    }
    /// The selected entry; -1 for none, also before there is a list.
    int CurrentEntry() const { return IsLoaded() && m_list ? m_list->Current() : -1; }
    /// The list as an environment component gets it.
    com::ComPtr<ControlObject> ListObject() { return ObjectOf(IDC_LIST1, L"List1", 0); }

    void OnLoad() override;
    void OnControl(int control, int code) override;
    bool OnNotify(NMHDR& header, LRESULT& answer) override;
    HWND FirstFocus() const override { return Control(IDC_LIST1); }
    std::span<const CommandRow> SharedCommands() const override;
    std::span<const KeyRow> SharedKeys() const override;
    std::vector<LayoutRow> Rows() const override;

    /// An entry was double-clicked; a list with ticks toggles it.
    void EntryDoubleClicked() override;
    void CurrentChanged() override {}

private:
    void ListChanged() override;
    void ListMenuAsked(POINT screen) override;
    void Mark(void (*mark)(CheckList& list));
    void TickAll() {
        Mark([](CheckList& list) { list.TickAll(true); });
    }
    void TickNone() {
        Mark([](CheckList& list) { list.TickAll(false); });
    }
    void Invert() {
        Mark([](CheckList& list) { list.InvertTicks(); });
    }
    void Restore() {
        Mark([](CheckList& list) { list.RestoreTicks(); });
    }
    void GoToSearch();
    void EnterList() { List().Enter(); }

    const ListDesign m_listDesign;
    // Outlives its window, which may go while the list is telling something.
    std::unique_ptr<CheckList> m_list;
};

} // namespace tamvelo::frame
