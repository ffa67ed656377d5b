#pragma once

#include <climits>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "frame/FormPart.h"
#include "frame/Lookup.h"
#include "objects/EventRelay.h"
#include "win/Handles.h"
#include "win/ScrollPanel.h"

namespace tamvelo::frame {

/// Whether a yes/no property must hold.
inline constexpr const wchar_t* kYesNoAll[] = {L"-1 - Sí", L" 0 - No", L" 2 - Todos"};
inline constexpr const wchar_t* kAllOfThem = kYesNoAll[2];

/// What a form asks the user for in one entry. Lengths are dialog units. The texts last while the rows are
/// made, those of the look-up as long as the form stands.
struct Field {
    enum class Kind { Text, Hour, Choice, Check, Button };
    Kind kind = Kind::Text;
    short index = 0; // in its control array: TxtFields (also hours), CmbFields, chkFields or Command
    const wchar_t* caption = L"";
    const wchar_t* opening = L""; // the text, or the entry that is selected; any text ticks a check box
    std::span<const wchar_t* const> entries = {};
    int width = 0;                 // of the entry; 0: what its caption takes, or the usual one
    const wchar_t* note = nullptr; // stands after the entry
    Lookup lookup = {};            // opened by a button beside it, or by the button that it is
    bool beside = false;           // on the same row as the field before
    bool shortWay = false;         // a check box: to the first entry of the list before it, and back
    const wchar_t* dataField = L"";
    long size = 0; // most letters of a text; 0 is any number
    bool required = false;
};

/// What the rows of one form have in common. Lengths are dialog units.
struct FieldLook {
    int firstControl; // they are numbered on from here
    int panel = 0;    // the number of a panel that they scroll in; 0: they stand in the form itself
    int panelAfter = 0;
    bool fill = false; // all that the labels leave is the entries', check boxes stand among them
    int leastLabel = 0;
    int widestLabel = INT_MAX;
    DWORD labelStyle = 0;
    const wchar_t* labelEnd = L"";
    bool marks = false; // labels may be marked
    const wchar_t* takenKeys =
        nullptr; // access keys of the form's other controls; null: the captions have theirs
    DWORD buttonStyle = 0;
    DWORD lookupStyle = WS_TABSTOP;
    int lookupHeight = 14;
    int listHeight = 120; // open
    const wchar_t* lookupTip = nullptr;
    bool lookupByIndex = false; // it is opened with the field's own index
};

/// The controls of one field.
class FieldRow {
public:
    /// `caption` as it is shown.
    FieldRow(Form& form, const FieldLook& look, const Field& field, std::wstring caption, int first,
             int labelWidth);

    Field::Kind Kind() const { return m_field.kind; }
    short Index() const { return m_field.index; }
    /// Of its entry.
    int Control() const { return m_first + kEntry; }
    HWND Entry() const { return m_controls[kEntry]; }
    /// The entry as the host is handed it.
    com::ComPtr<objects::ControlObject> Object() const;

    /// What is typed, or the entry that is selected.
    std::wstring Text() const;
    void SetText(const std::wstring& text) const;
    short Choice() const;
    void Choose(short entry) const;
    bool IsTicked() const;
    void Tick(bool ticked) const;
    /// Nothing typed but blanks, a list as it opened, no tick.
    bool IsEmpty() const;
    void Clear() const;
    bool IsMarked() const { return m_marked; }

    /// Takes the row with all that belongs to it away, or off.
    void Show(bool shown) const;
    void Enable(bool enabled, const wchar_t* whyNot = L"") const;

private:
    friend class FieldRows;
    // Its controls, from the first.
    static constexpr int kLabel = 0, kEntry = 1, kNote = 2, kButton = 3, kParts = 4;
    template <class Body>
    void ForEachControl(const Body& body) const;
    bool IsList() const { return Kind() == Field::Kind::Choice; }
    bool IsText() const { return Kind() == Field::Kind::Text || Kind() == Field::Kind::Hour; }

    Form* m_form;
    Field m_field;
    int m_first; // number of its controls
    std::wstring m_caption;
    HWND m_controls[kParts]{};     // looking windows up by number takes as long as there are many
    short m_opening = 0;           // of a list
    mutable bool m_marked = false; // as the label shows
};

/// What a form adds to its rows; any may be empty.
struct FieldHooks {
    std::function<void(const FieldRow& row)> changed = {};   // by the user or by code
    std::function<bool(const FieldRow& row)> lookingUp = {}; // false: not now
    std::function<void(const FieldRow& row)> answered = {};  // by a look-up; the row has the value
    std::function<void(const FieldRow& row)> lookedUp = {};  // with an answer or without
};

/// Rows of fields that a form makes at run time: their controls, what is entered, look-ups.
class FieldRows final : public FormPart {
public:
    FieldRows(Form& form, const FieldLook& look, FieldHooks hooks = {})
        : FormPart(form), m_look(look), m_hooks(std::move(hooks)) {}

    void Make(std::span<const Field> fields);
    int LabelWidth() const { return m_labelWidth; }

    /// Throws com::Error when there is none.
    const FieldRow& Of(Field::Kind kind, short index) const;
    const FieldRow* First() const { return m_rows.empty() ? nullptr : &m_rows.front(); }
    /// By the number of its entry; null when it is none.
    const FieldRow* EntryAt(int control) const;
    std::vector<win::LayoutRow> Layout() const;

    void Clear() const;
    /// False when a row has something wrong: the first is named in a box, with the focus there.
    bool Check(const std::wstring& title,
               const std::function<std::wstring(const FieldRow&)>& complaint) const;
    /// Shows at its label whether the row is empty. Bold alone is hard to tell in some fonts, and nothing to
    /// hear.
    void Mark(const FieldRow& row) const;

private:
    const FieldRow* RowAt(int control) const;
    int WidestLabel(std::span<const Field> fields) const;
    void KeepInStep(const FieldRow& row) const;
    void LookUp(int control);
    void Answered(com::Invocation& call);

    void OnLoad() override;
    void OnUnload() noexcept override;
    void OnControl(int control, int code) override;
    std::span<const CommandRow> Commands() const override;
    bool Offers(std::wstring_view command, int control) const override;

    const FieldLook m_look;
    const FieldHooks m_hooks;
    int m_labelWidth = 0;
    std::vector<FieldRow> m_rows;
    mutable bool m_clearing = false; // all at once: whoever clears looks at them afterwards
    std::unique_ptr<win::ScrollPanel> m_panel;
    win::UniqueFont m_markedFont;
    std::unique_ptr<objects::OwnRelay> m_clsMeEvents; // hears the look-ups
};

} // namespace tamvelo::frame
