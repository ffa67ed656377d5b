#pragma once

#include <memory>
#include <string>

#include "frame/Form.h"
#include "frame/Resources.h"
#include "win/CheckList.h"

namespace tamvelo::frame {

// Commands of every list form.
inline constexpr wchar_t kTickAll[] = L"{MARCAR_TODO}";
inline constexpr wchar_t kTickNone[] = L"{MARCAR_NADA}";
inline constexpr wchar_t kInvert[] = L"{INVERTIR_MARCAS}";
inline constexpr wchar_t kRestore[] = L"{RESTAURAR_MARCAS}";
inline constexpr wchar_t kEnterList[] = L"{LISTA}";
inline constexpr wchar_t kTickMenu[] = L"{MENU_MARCAS}";

inline constexpr std::array kListKeys = std::to_array<KeyRow>({
    {0, kCtrl | 'E', kGoToSearch},
    {IDC_TXTFILTRO, VK_DOWN, kEnterList},
    {0, kCtrl | 'A', kTickAll},
    {0, kCtrl | kShift | 'A', kTickNone},
    {0, kCtrl | 'I', kInvert},
    {0, kCtrl | 'Z', kRestore},
    {IDC_CMDMARCAS, kClick, kTickMenu},
});

/// A form around the list `List1`: a search box above it, the counter and the commands for ticks below it.
/// The template holds the controls of frame/ListPanel.rch; what the design leaves out is hidden.
class ListForm : public Form, public win::CheckListEvents {
protected:
    struct ListDesign {
        win::CheckList::Kind kind = win::CheckList::Kind::Ticks;
        bool searchBox = false;
        /// The counter's text; null for no counter.
        std::wstring (*counter)(const win::CheckList& list) = nullptr;
    };
    ListForm(const FormDesign& design, const ListDesign& list) : Form(design), m_listDesign(list) {}

    /// Throws when the form is gone, as after any host call it may be.
    win::CheckList& List() const {
        CheckStands();
        return *m_list;
    }
    /// The selected entry; -1 for none, also before there is a list.
    int CurrentEntry() const { return IsLoaded() && m_list ? m_list->Current() : -1; }
    /// The list as an environment component gets it.
    com::ComPtr<objects::ControlObject> ListObject() { return ObjectOf(IDC_LIST1, L"List1", 0); }

    void OnLoad() override;
    void OnControl(int control, int code) override;
    bool OnNotify(NMHDR& header, LRESULT& answer) override;
    HWND FirstFocus() const override { return Control(IDC_LIST1); }
    std::span<const CommandRow> SharedCommands() const override;
    std::span<const KeyRow> SharedKeys() const override { return kListKeys; }
    std::vector<win::LayoutRow> Layout() const override;

    /// An entry was double-clicked; a list with ticks toggles it.
    void EntryDoubleClicked() override;
    void CurrentChanged() override {}

private:
    void ListChanged() override;
    void ListMenuAsked(POINT screen) override;
    void Mark(void (*mark)(win::CheckList& list));
    void TickAll() {
        Mark([](win::CheckList& list) { list.TickAll(true); });
    }
    void TickNone() {
        Mark([](win::CheckList& list) { list.TickAll(false); });
    }
    void Invert() {
        Mark([](win::CheckList& list) { list.InvertTicks(); });
    }
    void Restore() {
        Mark([](win::CheckList& list) { list.RestoreTicks(); });
    }
    void GoToSearch();
    void EnterList() { List().Enter(); }
    void ShowTickMenu();
    static const MenuItem kMenu[5];

    const ListDesign m_listDesign;
    // Outlives its window, which may go while the list is telling something.
    std::unique_ptr<win::CheckList> m_list;
};

} // namespace tamvelo::frame
