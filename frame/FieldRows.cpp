#include "frame/FieldRows.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "base/Text.h"
#include "win/Message.h"
#include "win/WindowText.h"

namespace tamvelo::frame {

namespace {

using Kind = Field::Kind;

// Dialog units.
constexpr int kTextHeight = 9;
constexpr int kEntryHeight = 13;
constexpr int kButtonWidth = 16;
constexpr int kUsualWidth = 60;
constexpr int kTickWidth = 14;

constexpr wchar_t kMark[] = L" •";

struct KindOfControl {
    const wchar_t* windowClass;
    DWORD style;
    const wchar_t* array; // what its control array is called
    bool ownCaption;
};

const KindOfControl& Of(Kind kind) {
    static constexpr KindOfControl kKinds[] = {
        {L"EDIT", ES_AUTOHSCROLL, L"TxtFields", false},
        {L"EDIT", ES_AUTOHSCROLL, L"TxtFields", false},
        {L"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL, L"CmbFields", false},
        {L"BUTTON", BS_AUTOCHECKBOX, L"chkFields", true},
        {L"BUTTON", BS_PUSHBUTTON, L"Command", true},
    };
    return kKinds[static_cast<size_t>(kind)];
}

int HeightOf(Kind kind, const FieldLook& look) {
    return kind == Kind::Choice ? look.listHeight : kind == Kind::Button ? kEntryHeight + 1 : kEntryHeight;
}

} // namespace

FieldRow::FieldRow(Form& form, const FieldLook& look, const Field& field, int first, int labelWidth)
    : m_form(&form),
      m_kind(field.kind),
      m_index(field.index),
      m_first(first),
      m_beside(field.beside),
      m_shortWay(field.shortWay),
      m_lookup(field.lookup),
      m_caption(field.caption) {
    const KindOfControl& kind = Of(m_kind);
    const int textWidth = form.WidthOf(field.caption);
    if (!kind.ownCaption || look.fill) {
        m_label =
            form.AddControl(first + kLabel, L"STATIC", kind.ownCaption ? L"" : field.caption,
                            SS_LEFT | look.labelStyle, {field.beside ? textWidth : labelWidth, kTextHeight});
    }
    const int usual = kind.ownCaption ? textWidth + kTickWidth : kUsualWidth;
    m_entry = form.AddControl(Control(), kind.windowClass, kind.ownCaption ? field.caption : L"",
                              kind.style | WS_TABSTOP | (kind.ownCaption ? look.buttonStyle : 0),
                              {field.width ? field.width : usual, HeightOf(m_kind, look)});
    if (m_lookup.className && m_kind != Kind::Button) {
        form.AddControl(first + kButton, L"BUTTON", L"…", BS_PUSHBUTTON | look.buttonStyle | look.lookupStyle,
                        {kButtonWidth, look.lookupHeight});
        if (look.lookupTip) {
            form.SetTip(first + kButton, look.lookupTip, kLookUp);
        }
    }
    if (field.note) {
        form.AddControl(first + kNote, L"STATIC", field.note, SS_LEFT,
                        {form.WidthOf(field.note), kTextHeight});
    }
    if (IsList()) {
        for (const wchar_t* entry : field.entries) {
            SendMessageW(m_entry, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry));
        }
        const auto isOpening = [&](const wchar_t* entry) { return wcscmp(entry, field.opening) == 0; };
        m_opening =
            static_cast<short>(std::ranges::find_if(field.entries, isOpening) - field.entries.begin());
    } else if (IsText()) {
        if (field.size > 0) {
            SendMessageW(m_entry, EM_SETLIMITTEXT, static_cast<WPARAM>(field.size), 0);
        }
        if (field.required) {
            Edit_SetCueBannerText(m_entry, L"obligatorio");
        }
    }
    SetText(field.opening);
    Choose(m_opening);
    Object()->SetDataField(field.dataField);
}

com::ComPtr<objects::ControlObject> FieldRow::Object() const {
    return m_form->ObjectOf(Control(), Of(m_kind).array, m_index);
}

std::wstring FieldRow::Text() const { return win::TextOf(m_entry); }

void FieldRow::SetText(const std::wstring& text) {
    m_form->CheckStands(); // mostly it is a host that gave the text
    if (IsText()) {
        SetWindowTextW(m_entry, text.c_str());
    }
    Tick(!text.empty());
}

short FieldRow::Choice() const { return static_cast<short>(SendMessageW(m_entry, CB_GETCURSEL, 0, 0)); }

void FieldRow::Choose(short entry) {
    if (IsList()) {
        SendMessageW(m_entry, CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
    }
}

bool FieldRow::IsTicked() const { return SendMessageW(m_entry, BM_GETCHECK, 0, 0) == BST_CHECKED; }

void FieldRow::Tick(bool ticked) {
    if (m_kind == Kind::Check) {
        SendMessageW(m_entry, BM_SETCHECK, ticked ? BST_CHECKED : BST_UNCHECKED, 0);
    }
}

bool FieldRow::IsEmpty() const {
    return IsList() ? Choice() == m_opening : IsText() ? base::Trim(Text()).empty() : !IsTicked();
}

void FieldRow::Clear() {
    SetText({});
    Choose(m_opening);
}

template <class Body>
void FieldRow::ForEachControl(const Body& body) const {
    for (const int part : {kLabel, kEntry, kButton, kNote}) {
        if (m_form->Control(m_first + part)) {
            body(m_first + part);
        }
    }
}

void FieldRow::Show(bool shown) const {
    ForEachControl([&](int control) { m_form->ShowControl(control, shown); });
    m_form->Relayout();
}

void FieldRow::Enable(bool enabled, const wchar_t* whyNot) const {
    m_form->SetTip(Control(), enabled ? L"" : whyNot);
    ForEachControl([&](int control) { m_form->EnableControl(control, enabled); });
}

// Making the rows.

void FieldRows::Start(int labelWidth) {
    m_labelWidth = labelWidth;
    m_rows.clear();
    if (m_look.panel) {
        m_panel = std::make_unique<win::ScrollPanel>(Host().Window(), m_look.panel);
        SetWindowPos(m_panel->Window(), Control(m_look.panelAfter), 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        Host().SetContainer(m_panel->Window());
    }
}

FieldRow& FieldRows::Add(const Field& field) {
    const int first = m_look.firstControl + static_cast<int>(m_rows.size()) * FieldRow::kParts;
    return m_rows.emplace_back(Host(), m_look, field, first, m_labelWidth);
}

void FieldRows::Finish() {
    if (m_panel) {
        m_panel->SetRows(Layout());
    }
}

std::vector<win::LayoutRow> FieldRows::Layout() const {
    std::vector<win::LayoutRow> rows;
    for (const FieldRow& row : m_rows) {
        if (!row.m_beside) {
            rows.emplace_back();
        }
        row.ForEachControl([&](int control) {
            rows.back().cells.push_back(
                {control, m_look.fill && control == row.Control() ? win::kFill : win::kOwn});
        });
    }
    return rows;
}

void FieldRows::OnLoad() {
    const auto answered = [this](com::Invocation& call) { Answered(call); };
    m_clsMeEvents =
        Host().MakeRelay({{objects::AceptaSeleccion, answered}, {objects::AceptaSeleccionParam, answered}});
}

void FieldRows::OnUnload() noexcept {
    m_clsMeEvents.reset();
    m_rows.clear();
    m_panel.reset();
    m_markedFont.reset();
}

// The rows.

const FieldRow& FieldRows::Of(Kind kind, short index) const {
    const auto found = std::ranges::find_if(
        m_rows, [&](const FieldRow& row) { return row.m_kind == kind && row.m_index == index; });
    if (found == m_rows.end()) {
        throw com::Error(E_UNEXPECTED, L"El diálogo no tiene ese campo.");
    }
    return *found;
}

FieldRow& FieldRows::Of(Kind kind, short index) {
    return const_cast<FieldRow&>(std::as_const(*this).Of(kind, index));
}

const FieldRow* FieldRows::RowAt(int control) const {
    const int place = control - m_look.firstControl;
    const auto index = static_cast<size_t>(place / FieldRow::kParts);
    return place >= 0 && index < m_rows.size() ? &m_rows[index] : nullptr;
}

const FieldRow* FieldRows::EntryAt(int control) const {
    const FieldRow* const row = RowAt(control);
    return row && row->Control() == control ? row : nullptr;
}

void FieldRows::Clear() {
    m_clearing = true; // each tells of its change
    for (FieldRow& row : m_rows) {
        row.Clear();
    }
    m_clearing = false;
}

bool FieldRows::Check(const std::wstring& title,
                      const std::function<std::wstring(const FieldRow&)>& complaint) {
    for (const FieldRow& row : m_rows) {
        const std::wstring wrong = complaint(row);
        Host().CheckStands(); // the host may have been asked
        if (!wrong.empty()) {
            SetFocus(row.m_entry);
            win::ShowMessage(Host().Window(), wrong, title, MB_OK | MB_ICONWARNING);
            return false;
        }
    }
    return true;
}

HFONT FieldRows::MarkedFont() {
    if (!m_markedFont) {
        LOGFONTW font{};
        GetObjectW(reinterpret_cast<HFONT>(SendMessageW(Host().Window(), WM_GETFONT, 0, 0)), sizeof font,
                   &font);
        font.lfWeight = FW_BOLD;
        m_markedFont.reset(CreateFontIndirectW(&font));
    }
    return m_markedFont.get();
}

int FieldRows::MarkedWidth(const std::wstring& caption) {
    return Host().WidthOf((caption + kMark).c_str(), MarkedFont());
}

void FieldRows::Mark(FieldRow& row) {
    const bool marked = !row.IsEmpty();
    if (std::exchange(row.m_marked, marked) != marked) {
        SetWindowTextW(row.m_label, (row.m_caption + (marked ? kMark : L"")).c_str());
        SendMessageW(row.m_label, WM_SETFONT,
                     marked ? reinterpret_cast<WPARAM>(MarkedFont())
                            : static_cast<WPARAM>(SendMessageW(Host().Window(), WM_GETFONT, 0, 0)),
                     TRUE);
    }
}

void FieldRows::OnControl(int control, int code) {
    FieldRow* const row = EntryAt(control) ? RowAt(control) : nullptr;
    if (row && !m_clearing && (code == CBN_SELCHANGE || code == BN_CLICKED || code == EN_CHANGE)) {
        KeepInStep(*row);
        if (m_hooks.changed) {
            m_hooks.changed(*row);
        }
    }
}

/// A list and the check box that is a short way to its first entry.
void FieldRows::KeepInStep(FieldRow& row) {
    if (row.m_shortWay) {
        FieldRow& list = *RowAt(row.m_first - 1);
        list.Choose(row.IsTicked() ? short{0} : list.m_opening);
    } else if (FieldRow* const next = RowAt(row.m_first + FieldRow::kParts); next && next->m_shortWay) {
        next->Tick(row.Choice() == 0);
    }
}

// Look-ups: the button beside an entry, F4 and Alt+Down in it open the selection panel, which answers our
// relay.

std::span<const CommandRow> FieldRows::Commands() const {
    static constexpr CommandRow kCommands[] = {{kLookUp, Do<&FieldRows::LookUp>}};
    return kCommands;
}

bool FieldRows::Offers(std::wstring_view /*command*/, int control) const {
    const FieldRow* const row = RowAt(control);
    const bool ticks = row && row->m_kind == Kind::Check && row->Control() == control;
    return row && row->m_lookup.className && !ticks;
}

void FieldRows::LookUp(int control) {
    if (m_hooks.lookingUp && !m_hooks.lookingUp(*RowAt(control))) {
        return;
    }
    // Held: the host may close the form meanwhile, and its rows go.
    FieldRow& row = *RowAt(control);
    const std::wstring className = row.m_lookup.className;
    Lookup lookup = row.m_lookup;
    lookup.className = className.c_str();
    const com::ComPtr<objects::ControlObject> object = row.Object();
    OpenLookup(lookup, com::ComPtr<IDispatch>(m_clsMeEvents->Sink()), object.Get(),
               m_look.lookupByIndex ? row.m_index : short{0});
    Host().CheckStands();
    if (m_hooks.lookedUp) {
        m_hooks.lookedUp(row);
    }
}

void FieldRows::Answered(com::Invocation& call) {
    com::LateObject control(call[1].ToObject().Get(), L"ctl");
    const short index = control.Call(L"Index").ToShort();
    // A look-up of a button changes the host's own marks: nothing comes back into this dialog.
    const auto found = std::ranges::find_if(
        m_rows, [&](const FieldRow& row) { return row.IsText() && row.m_index == index; });
    if (found != m_rows.end()) {
        found->SetText(call[2].ToText());
        if (m_hooks.answered) {
            m_hooks.answered(*found);
        }
    }
}

} // namespace tamvelo::frame
