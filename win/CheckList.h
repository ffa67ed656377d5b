#pragma once

#include "com/WinHeaders.h"

#include <commctrl.h>

#include <string>
#include <string_view>
#include <vector>

#include "win/Subclass.h"

namespace tamvelo::win {

struct ListEntry {
    std::wstring caption;
    bool ticked = false;
    bool fixed = false; // shown as such; its tick does not change
};

/// What a list tells its form.
class CheckListEvents {
public:
    /// Entries, ticks, or what is shown of them.
    virtual void ListChanged() = 0;
    virtual void EntryDoubleClicked() = 0;
    /// Another entry is the selected one.
    virtual void CurrentChanged() = 0;
    virtual void ListMenuAsked(POINT screen) = 0;

protected:
    ~CheckListEvents() = default;
};

/// The list `List1` of a form: captions with or without ticks around a system list view. The entries are kept
/// here and counted from 0 whatever a search leaves visible; the window only shows them. Whoever holds the
/// window, an environment component through its control object say, works on the entries with the messages of
/// a list box (LB_ADDSTRING, LB_SETSEL and so on), which the window answers from here: nothing can get out of
/// step.
class CheckList final : public Subclass {
public:
    enum class Kind { Plain, Ticks };
    /// `list` is the form's list view, in report style without heading.
    CheckList(HWND list, Kind kind, CheckListEvents& events);

    /// Puts other entries in place of all; their ticks are the ones that `RestoreTicks` goes back to.
    void Fill(std::vector<ListEntry> entries);
    /// Makes the ticks of now the ones to go back to, after something else has filled the list.
    void RememberTicks();

    int Count() const { return static_cast<int>(m_entries.size()); }
    /// How many entries the search leaves visible.
    int ShownCount() const { return static_cast<int>(m_rows.size()); }
    int TickedCount() const;
    const std::wstring& Caption(int entry) const { return m_entries[static_cast<size_t>(entry)].caption; }
    bool IsTicked(int entry) const { return m_entries[static_cast<size_t>(entry)].ticked; }
    /// Does nothing to a fixed entry.
    void Tick(int entry, bool ticked);
    /// The selected entry; -1 for none.
    int Current() const;
    void SetCurrent(int entry);

    // All entries, visible or not, but the fixed ones.
    void TickAll(bool ticked);
    void InvertTicks();
    void RestoreTicks();

    /// Shows the entries whose caption contains `text`, whatever its case and accents, and selects the first
    /// of them if the selected one is not among them; "" shows all.
    void Find(std::wstring_view text);
    /// Gives the list the focus with an entry selected: for going on with the arrow keys.
    void Enter();

    /// Answers the list view's notifications; false when `header` is another control's.
    bool Notified(NMHDR& header, LRESULT& answer);

private:
    struct Entry : ListEntry {
        bool remembered = false;
    };

    LRESULT Handle(UINT message, WPARAM first, LPARAM second) override;
    bool Exists(LRESULT entry) const { return entry >= 0 && entry < Count(); }
    LRESULT Add(const wchar_t* caption);
    LRESULT Clear();
    LRESULT Selected(int entry) const;
    LRESULT Select(int entry, bool selected);
    bool Matches(const Entry& entry) const;
    template <class Rule>
    void SetTicks(const Rule& rule);
    void ShowAll();
    void InsertRow(int row);
    void ShowTick(int row);
    void SelectRow(int row, UINT state);
    int RowOf(int entry) const;
    bool StateChanging(const NMLISTVIEW& change) const;
    void StateChanged(const NMLISTVIEW& change);
    LRESULT Draw(NMLVCUSTOMDRAW& drawing) const;

    const Kind m_kind;
    CheckListEvents& m_events;
    std::vector<Entry> m_entries;
    std::vector<int> m_rows; // the entry of each row
    std::wstring m_find;
    bool m_showing = false; // the window is being brought up to date
};

} // namespace tamvelo::win
