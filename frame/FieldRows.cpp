#include "frame/FieldRows.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "base/RecordBoxes.h"
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

constexpr wchar_t kRequired[] = L" *";
constexpr wchar_t kMark[] = L" •";

struct KindOfControl {
    const wchar_t* windowClass;
    DWORD style;
    const wchar_t* array; // what its control array is called
    bool ownCaption;
};

const KindOfControl& ControlOf(Kind kind) {
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

HFONT FontOf(const Form& form) {
    return reinterpret_cast<HFONT>(SendMessageW(form.Window(), WM_GETFONT, 0, 0));
}

} // namespace

FieldRow::FieldRow(Form& form, const FieldLook& look, const Field& field, std::wstring caption, int first,
                   int labelWidth)
    : m_form(&form), m_field(field), m_first(first), m_caption(std::move(caption)) {
    const KindOfControl& kind = ControlOf(m_field.kind);
    const auto add = [&](int part, const wchar_t* windowClass, const wchar_t* text, DWORD style, SIZE units) {
        m_controls[part] = form.AddControl(first + part, windowClass, text, style, units);
    };
    const wchar_t* const text = m_caption.c_str();
    const int textWidth = form.WidthOf(text);
    if (!kind.ownCaption || look.fill) {
        add(kLabel, L"STATIC", kind.ownCaption ? L"" : text, SS_LEFT | look.labelStyle,
            {field.beside ? textWidth : labelWidth, kTextHeight});
    }
    const int usual = kind.ownCaption ? textWidth + kTickWidth : kUsualWidth;
    add(kEntry, kind.windowClass, kind.ownCaption ? text : L"",
        kind.style | WS_TABSTOP | (kind.ownCaption ? look.buttonStyle : 0),
        {field.width ? field.width : usual, HeightOf(field.kind, look)});
    if (field.lookup.className && field.kind != Kind::Button) {
        add(kButton, L"BUTTON", L"…", BS_PUSHBUTTON | look.buttonStyle | look.lookupStyle,
            {kButtonWidth, look.lookupHeight});
        if (look.lookupTip) {
            form.SetTip(first + kButton, look.lookupTip, kLookUp);
        }
    }
    if (field.note) {
        add(kNote, L"STATIC", field.note, SS_LEFT, {form.WidthOf(field.note), kTextHeight});
    }
    if (IsList()) {
        for (const wchar_t* entry : field.entries) {
            SendMessageW(Entry(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry));
        }
        const auto isOpening = [&](const wchar_t* entry) { return wcscmp(entry, field.opening) == 0; };
        m_opening =
            static_cast<short>(std::ranges::find_if(field.entries, isOpening) - field.entries.begin());
    } else if (IsText()) {
        if (field.size > 0) {
            SendMessageW(Entry(), EM_SETLIMITTEXT, static_cast<WPARAM>(field.size), 0);
        }
        if (field.required) {
            Edit_SetCueBannerText(Entry(), L"obligatorio");
        }
    }
    SetText(field.opening);
    Choose(m_opening);
    Object()->SetDataField(field.dataField);
}

com::ComPtr<objects::ControlObject> FieldRow::Object() const {
    return m_form->ObjectOf(Control(), ControlOf(m_field.kind).array, m_field.index);
}

std::wstring FieldRow::Text() const { return win::TextOf(Entry()); }

void FieldRow::SetText(const std::wstring& text) const {
    m_form->CheckStands(); // mostly it is a host that gave the text
    if (IsText()) {
        SetWindowTextW(Entry(), text.c_str());
    }
    Tick(!text.empty());
}

short FieldRow::Choice() const { return static_cast<short>(SendMessageW(Entry(), CB_GETCURSEL, 0, 0)); }

void FieldRow::Choose(short entry) const {
    if (IsList()) {
        SendMessageW(Entry(), CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
    }
}

bool FieldRow::IsTicked() const { return SendMessageW(Entry(), BM_GETCHECK, 0, 0) == BST_CHECKED; }

void FieldRow::Tick(bool ticked) const {
    if (m_field.kind == Kind::Check) {
        SendMessageW(Entry(), BM_SETCHECK, ticked ? BST_CHECKED : BST_UNCHECKED, 0);
    }
}

bool FieldRow::IsEmpty() const {
    return IsList() ? Choice() == m_opening : IsText() ? base::Trim(Text()).empty() : !IsTicked();
}

void FieldRow::Clear() const {
    SetText({});
    Choose(m_opening);
}

template <class Body>
void FieldRow::ForEachControl(const Body& body) const {
    for (const int part : {kLabel, kEntry, kButton, kNote}) {
        if (m_controls[part]) {
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

void FieldRows::Make(std::span<const Field> fields) {
    if (m_look.marks) {
        LOGFONTW font{};
        GetObjectW(FontOf(Host()), sizeof font, &font);
        font.lfWeight = FW_BOLD;
        m_markedFont.reset(CreateFontIndirectW(&font));
    }
    if (m_look.panel) {
        m_panel = std::make_unique<win::ScrollPanel>(Host().Window(), m_look.panel);
        SetWindowPos(m_panel->Window(), Control(m_look.panelAfter), 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        Host().SetContainer(m_panel->Window());
    }
    m_labelWidth = WidestLabel(fields);
    m_rows.clear();
    m_rows.reserve(fields.size());
    std::wstring keys = m_look.takenKeys ? m_look.takenKeys : L"";
    for (const Field& field : fields) {
        std::wstring caption = m_look.takenKeys ? base::WithAccessKey(field.caption, keys) : field.caption;
        caption += field.required ? kRequired : L"";
        caption += ControlOf(field.kind).ownCaption ? L"" : m_look.labelEnd;
        const int first = m_look.firstControl + static_cast<int>(m_rows.size()) * FieldRow::kParts;
        m_rows.emplace_back(Host(), m_look, field, std::move(caption), first, m_labelWidth);
    }
    if (m_panel) {
        m_panel->SetRows(Layout());
    }
}

int FieldRows::WidestLabel(std::span<const Field> fields) const {
    const wchar_t* const required = std::ranges::any_of(fields, &Field::required) ? kRequired : L"";
    const std::wstring end = std::wstring(required) + m_look.labelEnd + (m_look.marks ? kMark : L"");
    int width = m_look.leastLabel;
    for (const Field& field : fields) {
        if (!field.beside && !ControlOf(field.kind).ownCaption) {
            width = std::max(width, Host().WidthOf((field.caption + end).c_str(), m_markedFont.get()));
        }
    }
    return std::min(width, m_look.widestLabel);
}

std::vector<win::LayoutRow> FieldRows::Layout() const {
    std::vector<win::LayoutRow> rows;
    for (const FieldRow& row : m_rows) {
        if (!row.m_field.beside) {
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
        m_rows, [&](const FieldRow& row) { return row.m_field.kind == kind && row.m_field.index == index; });
    if (found == m_rows.end()) {
        throw com::Error(E_UNEXPECTED, L"El diálogo no tiene ese campo.");
    }
    return *found;
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

void FieldRows::Clear() const {
    m_clearing = true; // each tells of its change
    for (const FieldRow& row : m_rows) {
        row.Clear();
    }
    m_clearing = false;
}

bool FieldRows::Check(const std::wstring& title,
                      const std::function<std::wstring(const FieldRow&)>& complaint) const {
    for (const FieldRow& row : m_rows) {
        const std::wstring wrong = complaint(row);
        Host().CheckStands(); // the host may have been asked
        if (!wrong.empty()) {
            SetFocus(row.Entry());
            win::ShowMessage(Host().Window(), wrong, title, MB_OK | MB_ICONWARNING);
            return false;
        }
    }
    return true;
}

void FieldRows::Mark(const FieldRow& row) const {
    const bool marked = !row.IsEmpty();
    if (std::exchange(row.m_marked, marked) != marked) {
        const HWND label = row.m_controls[FieldRow::kLabel];
        SetWindowTextW(label, (row.m_caption + (marked ? kMark : L"")).c_str());
        const HFONT font = marked ? m_markedFont.get() : FontOf(Host());
        SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    }
}

void FieldRows::OnControl(int control, int code) {
    const FieldRow* const row = EntryAt(control);
    if (row && !m_clearing && (code == CBN_SELCHANGE || code == BN_CLICKED || code == EN_CHANGE)) {
        KeepInStep(*row);
        if (m_hooks.changed) {
            m_hooks.changed(*row);
        }
    }
}

/// A list and the check box that is a short way to its first entry.
void FieldRows::KeepInStep(const FieldRow& row) const {
    if (row.m_field.shortWay) {
        const FieldRow& list = *RowAt(row.m_first - 1);
        list.Choose(row.IsTicked() ? short{0} : list.m_opening);
    } else if (const FieldRow* const next = RowAt(row.m_first + FieldRow::kParts);
               next && next->m_field.shortWay) {
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
    const bool ticks = row && row->m_field.kind == Kind::Check && row->Control() == control;
    return row && row->m_field.lookup.className && !ticks;
}

void FieldRows::LookUp(int control) {
    if (m_hooks.lookingUp && !m_hooks.lookingUp(*RowAt(control))) {
        return;
    }
    // Held: the host may close the form meanwhile, and its rows go.
    const FieldRow& row = *RowAt(control);
    const std::wstring className = row.m_field.lookup.className;
    Lookup lookup = row.m_field.lookup;
    lookup.className = className.c_str();
    const com::ComPtr<objects::ControlObject> object = row.Object();
    OpenLookup(lookup, com::ComPtr<IDispatch>(m_clsMeEvents->Sink()), object.Get(),
               m_look.lookupByIndex ? row.m_field.index : short{0});
    Host().CheckStands();
    if (m_hooks.lookedUp) {
        m_hooks.lookedUp(row);
    }
}

void FieldRows::Answered(com::Invocation& call) {
    com::LateObject control(call[1].ToObject().Get(), L"ctl");
    const short index = control.Call(L"Index").ToShort();
    const std::wstring text = call[2].ToText();
    // A look-up of a button changes the host's own marks: nothing comes back into this dialog.
    const auto found = std::ranges::find_if(
        m_rows, [&](const FieldRow& row) { return row.IsText() && row.m_field.index == index; });
    if (found != m_rows.end()) {
        found->SetText(text);
        if (m_hooks.answered) {
            m_hooks.answered(*found);
        }
    }
}

} // namespace tamvelo::frame
