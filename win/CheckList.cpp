#include "win/CheckList.h"

#include <algorithm>
#include <utility>

#include "base/Text.h"
#include "win/BusyCursor.h"
#include "win/TextSearch.h"

namespace tamvelo::win {

namespace {

constexpr wchar_t kFixedMark[] = L" (fija)";

constexpr UINT StateImage(bool ticked) { return INDEXTOSTATEIMAGEMASK(ticked ? 2 : 1); }

bool TickChanges(const NMLISTVIEW& change) {
    return (change.uChanged & LVIF_STATE) != 0 &&
           ((change.uOldState ^ change.uNewState) & LVIS_STATEIMAGEMASK) != 0;
}

} // namespace

CheckList::CheckList(HWND list, Kind kind, CheckListEvents& events)
    : Subclass(list), m_kind(kind), m_events(events) {
    ListView_SetExtendedListViewStyle(Window(), LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP |
                                                    (kind == Kind::Ticks ? LVS_EX_CHECKBOXES : 0));
    LVCOLUMNW column{};
    SendMessageW(Window(), LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
}

// Entries

void CheckList::Fill(std::vector<ListEntry> entries) {
    m_entries.clear();
    for (ListEntry& entry : entries) {
        m_entries.push_back({std::move(entry), false});
    }
    RememberTicks();
    ShowAll();
}

void CheckList::RememberTicks() {
    for (Entry& entry : m_entries) {
        entry.remembered = entry.ticked;
    }
}

int CheckList::TickedCount() const {
    return static_cast<int>(std::ranges::count_if(m_entries, &Entry::ticked));
}

void CheckList::Tick(int entry, bool ticked) {
    Entry& changed = m_entries[static_cast<size_t>(entry)];
    if (changed.fixed || changed.ticked == ticked) {
        return;
    }
    changed.ticked = ticked;
    if (const int row = RowOf(entry); row >= 0) {
        ShowTick(row);
    }
    m_events.ListChanged();
}

template <class Rule>
void CheckList::SetTicks(const Rule& rule) {
    for (Entry& entry : m_entries) {
        entry.ticked = entry.fixed ? entry.ticked : rule(entry);
    }
    for (int row = 0; row < ShownCount(); ++row) {
        ShowTick(row);
    }
    m_events.ListChanged();
}

void CheckList::TickAll(bool ticked) {
    SetTicks([&](const Entry&) { return ticked; });
}

void CheckList::InvertTicks() {
    SetTicks([](const Entry& entry) { return !entry.ticked; });
}

void CheckList::RestoreTicks() {
    SetTicks([](const Entry& entry) { return entry.remembered; });
}

int CheckList::Current() const {
    const int row = ListView_GetNextItem(Window(), -1, LVNI_SELECTED);
    return row < 0 || row >= ShownCount() ? -1 : m_rows[static_cast<size_t>(row)];
}

void CheckList::SetCurrent(int entry) {
    if (const int row = RowOf(entry); row >= 0) {
        SelectRow(row, LVIS_SELECTED | LVIS_FOCUSED);
    } else {
        ListView_SetItemState(Window(), -1, 0, LVIS_SELECTED);
    }
}

void CheckList::Find(std::wstring_view text) {
    m_find = base::Trim(text);
    const int current = Current();
    ShowAll();
    if (RowOf(current) >= 0) {
        SetCurrent(current);
    } else if (!m_find.empty() && !m_rows.empty()) {
        SetCurrent(m_rows.front());
    }
}

void CheckList::Enter() {
    SetFocus(Window());
    if (Current() < 0 && !m_rows.empty()) {
        SetCurrent(m_rows.front());
    }
}

bool CheckList::Matches(const Entry& entry) const { return Contains(entry.caption, m_find); }

// The window

void CheckList::ShowAll() {
    const BusyWork busy(GetAncestor(Window(), GA_ROOT), m_entries.size());
    m_showing = true;
    SendMessageW(Window(), WM_SETREDRAW, FALSE, 0);
    SendMessageW(Window(), LVM_DELETEALLITEMS, 0, 0);
    m_rows.clear();
    for (int entry = 0; entry < Count(); ++entry) {
        if (Matches(m_entries[static_cast<size_t>(entry)])) {
            m_rows.push_back(entry);
            InsertRow(ShownCount() - 1);
        }
    }
    SendMessageW(Window(), WM_SETREDRAW, TRUE, 0);
    InvalidateRect(Window(), nullptr, TRUE);
    m_showing = false;
    m_events.ListChanged();
}

void CheckList::InsertRow(int row) {
    const Entry& entry = m_entries[static_cast<size_t>(m_rows[static_cast<size_t>(row)])];
    std::wstring caption = entry.caption + (entry.fixed ? kFixedMark : L"");
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.pszText = caption.data();
    SendMessageW(Window(), LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    ShowTick(row);
}

void CheckList::ShowTick(int row) {
    if (m_kind == Kind::Ticks) {
        const bool before = std::exchange(m_showing, true);
        ListView_SetItemState(Window(), row, StateImage(IsTicked(m_rows[static_cast<size_t>(row)])),
                              LVIS_STATEIMAGEMASK);
        m_showing = before;
    }
}

void CheckList::SelectRow(int row, UINT state) {
    ListView_SetItemState(Window(), row, state, state);
    SendMessageW(Window(), LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

int CheckList::RowOf(int entry) const {
    const auto found = std::ranges::lower_bound(m_rows, entry);
    return found == m_rows.end() || *found != entry ? -1 : static_cast<int>(found - m_rows.begin());
}

bool CheckList::Notified(NMHDR& header, LRESULT& answer) {
    if (header.hwndFrom != Window()) {
        return false;
    }
    answer = 0;
    switch (header.code) {
    case LVN_ITEMCHANGING:
        answer = StateChanging(reinterpret_cast<NMLISTVIEW&>(header));
        return true;
    case LVN_ITEMCHANGED:
        StateChanged(reinterpret_cast<NMLISTVIEW&>(header));
        return true;
    case NM_CUSTOMDRAW:
        answer = Draw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
        return true;
    case NM_DBLCLK: {
        LVHITTESTINFO hit{};
        hit.pt = reinterpret_cast<NMITEMACTIVATE&>(header).ptAction;
        // Each click on a tick box has already had its effect.
        if (ListView_HitTest(Window(), &hit) >= 0 && hit.flags != LVHT_ONITEMSTATEICON) {
            m_events.EntryDoubleClicked();
        }
        return true;
    }
    default:
        return false;
    }
}

/// True refuses the change: the window draws a fixed entry's tick as it is.
bool CheckList::StateChanging(const NMLISTVIEW& change) const {
    return !m_showing && TickChanges(change) && change.iItem >= 0 && change.iItem < ShownCount() &&
           m_entries[static_cast<size_t>(m_rows[static_cast<size_t>(change.iItem)])].fixed;
}

void CheckList::StateChanged(const NMLISTVIEW& change) {
    if (!m_showing && TickChanges(change) && change.iItem >= 0 && change.iItem < ShownCount()) {
        const int entry = m_rows[static_cast<size_t>(change.iItem)];
        Tick(entry, (change.uNewState & LVIS_STATEIMAGEMASK) == StateImage(true));
        SetCurrent(entry); // a click on the box alone selects nothing, yet this is the entry it is about
    }
    if ((change.uChanged & LVIF_STATE) && (change.uNewState & ~change.uOldState & LVIS_SELECTED)) {
        m_events.CurrentChanged();
    }
}

LRESULT CheckList::Draw(NMLVCUSTOMDRAW& drawing) const {
    if (drawing.nmcd.dwDrawStage == CDDS_PREPAINT) {
        return CDRF_NOTIFYITEMDRAW;
    }
    const size_t row = drawing.nmcd.dwItemSpec;
    if (drawing.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && row < m_rows.size() &&
        m_entries[static_cast<size_t>(m_rows[row])].fixed) {
        drawing.clrText = GetSysColor(COLOR_GRAYTEXT);
    }
    return CDRF_DODEFAULT;
}

// The messages of a list box

LRESULT CheckList::Add(const wchar_t* caption) {
    m_entries.push_back({{caption}, false});
    if (Matches(m_entries.back())) {
        m_rows.push_back(Count() - 1);
        InsertRow(ShownCount() - 1);
    }
    m_events.ListChanged();
    return Count() - 1;
}

LRESULT CheckList::Clear() {
    m_entries.clear();
    ShowAll();
    return 0;
}

LRESULT CheckList::Selected(int entry) const {
    if (!Exists(entry)) {
        return LB_ERR;
    }
    return m_kind == Kind::Ticks ? IsTicked(entry) : Current() == entry;
}

LRESULT CheckList::Select(int entry, bool selected) {
    if (!Exists(entry)) {
        return LB_ERR;
    }
    if (m_kind == Kind::Ticks) {
        Tick(entry, selected);
    } else if (selected || Current() == entry) {
        SetCurrent(selected ? entry : -1);
    }
    return 0;
}

LRESULT CheckList::Handle(UINT message, WPARAM first, LPARAM second) {
    const int entry = static_cast<int>(first);
    switch (message) {
    case LB_GETCOUNT:
        return Count();
    case LB_GETTEXTLEN:
        return Exists(entry) ? static_cast<LRESULT>(m_entries[first].caption.size()) : LB_ERR;
    case LB_GETTEXT:
        if (!Exists(entry)) {
            return LB_ERR;
        }
        lstrcpyW(reinterpret_cast<wchar_t*>(second), m_entries[first].caption.c_str());
        return static_cast<LRESULT>(m_entries[first].caption.size());
    case LB_ADDSTRING:
        return Add(reinterpret_cast<const wchar_t*>(second));
    case LB_RESETCONTENT:
        return Clear();
    case LB_GETCURSEL:
        return Current();
    case LB_SETCURSEL:
        SetCurrent(entry);
        return Current();
    case LB_GETSEL:
        return Selected(entry);
    case LB_SETSEL:
        return Select(static_cast<int>(second), first != FALSE);
    case WM_SIZE:
        ListView_SetColumnWidth(Window(), 0, LOWORD(second));
        break;
    case WM_SETFOCUS:
        // Where the keys go is seen at once; what a plain list selects is the user's alone to say.
        if (Current() < 0 && !m_rows.empty()) {
            SelectRow(0, LVIS_FOCUSED | (m_kind == Kind::Ticks ? LVIS_SELECTED : 0));
        }
        break;
    case WM_KEYDOWN:
        if ((first == VK_DOWN || first == VK_UP) && Current() < 0) {
            Enter();
            return 0;
        }
        break;
    case WM_CONTEXTMENU: {
        POINT place{static_cast<short>(LOWORD(second)), static_cast<short>(HIWORD(second))};
        if (second == -1) { // by key: below the entry that it is for
            RECT row{};
            ListView_GetItemRect(Window(), RowOf(Current()), &row, LVIR_BOUNDS);
            place = {row.left, row.bottom};
            ClientToScreen(Window(), &place);
        }
        m_events.ListMenuAsked(place);
        return 0;
    }
    default:
        break;
    }
    return Default(message, first, second);
}

} // namespace tamvelo::win
