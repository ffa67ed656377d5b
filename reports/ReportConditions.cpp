#include <algorithm>

#include "base/HourText.h"
#include "reports/ReportForm.h"
#include "reports/Resources.h"
#include "win/Message.h"

// The conditions of a report dialog: controls made from its description.
namespace tamvelo::reports {

using namespace frame::tables;

namespace {

using Kind = Condition::Kind;

/// The numbers of one condition's controls, from its first.
enum Part { Label, Entry, Note, Button, Parts };

struct KindOfControl {
    const wchar_t* windowClass;
    DWORD style;
    const wchar_t* array; // what its control array is called
    int height;           // dialog units
};

const KindOfControl& Of(Kind kind) {
    constexpr int kLines = 13;
    constexpr int kDropped = 120; // with its list open
    static constexpr KindOfControl kKinds[] = {
        {L"EDIT", ES_AUTOHSCROLL | WS_TABSTOP, L"TxtFields", kLines},
        {L"EDIT", ES_AUTOHSCROLL | WS_TABSTOP, L"TxtFields", kLines},
        {L"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP, L"CmbFields", kDropped},
        {L"BUTTON", BS_AUTOCHECKBOX | WS_TABSTOP, L"chkFields", kLines},
        {L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP, L"Command", kLines + 1},
    };
    return kKinds[static_cast<size_t>(kind)];
}

constexpr int kTextHeight = 9;
constexpr int kButtonWidth = 16;
constexpr int kDateLabel = 46; // as the template has the one above

std::wstring NoHour(const std::wstring& text) {
    return L"«" + text + L"» no es una hora. Se escribe 7, 730, 7:30 o 7.30, de 0:00 a 23:59.";
}

bool HasOwnCaption(Kind kind) { return kind == Kind::Check || kind == Kind::Button; }

} // namespace

int ReportForm::ControlOf(const Condition& condition) const {
    return IDC_CONDITIONS + static_cast<int>(&condition - m_report.conditions.data()) * Parts;
}

const Condition& ReportForm::Find(Kind kind, short index) const {
    const auto found = std::ranges::find_if(
        m_report.conditions, [&](const Condition& c) { return c.kind == kind && c.index == index; });
    if (found == m_report.conditions.end()) {
        throw com::Error(E_UNEXPECTED, L"El diálogo no tiene esa condición.");
    }
    return *found;
}

void ReportForm::MakeConditions() {
    int firstColumn = kDateLabel;
    for (const Condition& condition : m_report.conditions) {
        if (!condition.beside && !HasOwnCaption(condition.kind)) {
            firstColumn = std::max(firstColumn, WidthOf(condition.caption));
        }
    }
    for (const Condition& condition : m_report.conditions) {
        const KindOfControl& kind = Of(condition.kind);
        const int first = ControlOf(condition);
        const bool ownCaption = HasOwnCaption(condition.kind);
        const int textWidth = WidthOf(condition.caption);
        if (!ownCaption) {
            AddControl(first + Label, L"STATIC", condition.caption, SS_LEFT,
                       {condition.beside ? textWidth : firstColumn, kTextHeight});
        }
        const int width = ownCaption ? textWidth + 14 : condition.width;
        AddControl(first + Entry, kind.windowClass, ownCaption ? condition.caption : L"", kind.style,
                   {width, kind.height});
        if (condition.lookup.className && condition.kind != Kind::Button) {
            AddControl(first + Button, L"BUTTON", L"…", BS_PUSHBUTTON | WS_TABSTOP,
                       {kButtonWidth, kTextHeight + 5});
        }
        if (condition.note) {
            AddControl(first + Note, L"STATIC", condition.note, SS_LEFT,
                       {WidthOf(condition.note), kTextHeight});
        }
        const HWND control = Control(first + Entry);
        for (const wchar_t* entry : condition.entries) {
            SendMessageW(control, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry));
        }
        if (condition.kind == Kind::Choice) {
            SendMessageW(control, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                         reinterpret_cast<LPARAM>(condition.opening));
        } else if (condition.kind == Kind::Check) {
            SendMessageW(control, BM_SETCHECK, *condition.opening ? BST_CHECKED : BST_UNCHECKED, 0);
        } else if (!ownCaption) {
            SetWindowTextW(control, condition.opening);
        }
        ObjectOf(first + Entry, kind.array, condition.index);
    }
}

std::vector<LayoutRow> ReportForm::ConditionRows() const {
    std::vector<LayoutRow> rows;
    for (const Condition& condition : m_report.conditions) {
        if (!condition.beside) {
            rows.push_back({});
        }
        for (const Part part : {Label, Entry, Button, Note}) {
            if (const int id = ControlOf(condition) + part; Control(id)) {
                rows.back().cells.push_back({id});
            }
        }
    }
    return rows;
}

std::wstring ReportForm::Text(short index) const {
    return ControlText(ControlOf(Find(Kind::Text, index)) + Entry);
}

void ReportForm::SetText(short index, const std::wstring& text) {
    CheckStands(); // mostly it is a host that gave the text
    SetControlText(ControlOf(Find(Kind::Text, index)) + Entry, text);
}

short ReportForm::Choice(short index) const {
    const HWND list = Control(ControlOf(Find(Kind::Choice, index)) + Entry);
    return static_cast<short>(SendMessageW(list, CB_GETCURSEL, 0, 0));
}

std::wstring ReportForm::ChoiceText(short index) const {
    return ControlText(ControlOf(Find(Kind::Choice, index)) + Entry);
}

DATE ReportForm::Hour(short index) const {
    constexpr double kMinutesPerDay = 24 * 60;
    const std::wstring text = ControlText(ControlOf(Find(Kind::Hour, index)) + Entry);
    const std::optional<int> minute = base::ParseHour(text);
    if (!minute) {
        throw com::Error(DISP_E_TYPEMISMATCH, NoHour(text));
    }
    return *minute / kMinutesPerDay;
}

/// Whether all hours are hours; the first that is none is said, and its box gets the focus.
bool ReportForm::CheckHours() const {
    for (const Condition& condition : m_report.conditions) {
        const int control = ControlOf(condition) + Entry;
        if (condition.kind == Kind::Hour && !base::ParseHour(ControlText(control))) {
            SetFocus(Control(control));
            win::ShowMessage(Window(), NoHour(ControlText(control)), m_report.caption,
                             MB_OK | MB_ICONWARNING);
            return false;
        }
    }
    return true;
}

void ReportForm::Choose(short index, const wchar_t* entry) {
    SendMessageW(Control(ControlOf(Find(Kind::Choice, index)) + Entry), CB_SELECTSTRING,
                 static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(entry));
}

void ReportForm::Tick(short index, bool ticked) {
    SendMessageW(Control(ControlOf(Find(Kind::Check, index)) + Entry), BM_SETCHECK,
                 ticked ? BST_CHECKED : BST_UNCHECKED, 0);
}

bool ReportForm::IsTicked(short index) const {
    const HWND box = Control(ControlOf(Find(Kind::Check, index)) + Entry);
    return SendMessageW(box, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void ReportForm::ShowCondition(Kind kind, short index, bool shown) {
    const int first = ControlOf(Find(kind, index));
    for (int part = 0; part < Parts; ++part) {
        if (Control(first + part)) {
            ShowControl(first + part, shown);
        }
    }
    Relayout();
}

void ReportForm::EnableCondition(Kind kind, short index, bool enabled, const wchar_t* whyNot) {
    const int first = ControlOf(Find(kind, index));
    SetTip(first + Entry, enabled ? L"" : whyNot);
    for (int part = 0; part < Parts; ++part) {
        if (Control(first + part)) {
            EnableControl(first + part, enabled);
        }
    }
}

// Look-ups: the button beside a box, F4 and Alt+Down in it open the selection panel, which answers our relay.

const Condition* ReportForm::LookupOf(int control) const {
    for (const Condition& condition : m_report.conditions) {
        const int first = ControlOf(condition);
        if (condition.lookup.className && control >= first && control < first + Parts) {
            return &condition;
        }
    }
    return nullptr;
}

bool ReportForm::Offers(std::wstring_view command, int control) const {
    return command != kLookUp || LookupOf(control);
}

void ReportForm::LookUp(int control) {
    const Condition& condition = *LookupOf(control);
    // Held: the host may close the form meanwhile.
    const com::ComPtr<objects::ControlObject> box =
        ObjectOf(ControlOf(condition) + Entry, Of(condition.kind).array, condition.index);
    const com::ComPtr<IDispatch> sink(m_clsEventos->Sink());
    frame::OpenLookup(condition.lookup, sink.Get(), box.Get(), condition.index);
}

void ReportForm::clsEventos_AceptaSeleccion(com::Invocation& call) {
    com::LateObject control(call[1].ToObject().Get(), L"ctl");
    const short index = control.Call(L"Index").ToShort();
    if (!IsLoaded()) {
        return;
    }
    // A look-up of a button changes the host's own marks: nothing comes back into this dialog.
    const auto isBox = [&](const Condition& c) { return c.kind == Kind::Text && c.index == index; };
    if (std::ranges::any_of(m_report.conditions, isBox)) {
        SetText(index, call[2].ToText());
    }
}

void ReportForm::OnConditionControl(int control, int code) {
    if (code == CBN_SELCHANGE || (code == BN_CLICKED && !LookupOf(control)) || code == EN_CHANGE) {
        const auto changed = std::ranges::find_if(
            m_report.conditions, [&](const Condition& c) { return ControlOf(c) + Entry == control; });
        if (changed != m_report.conditions.end() && m_report.changed) {
            m_report.changed(*this, *changed);
        }
    }
}

} // namespace tamvelo::reports
