#pragma once

#include <memory>
#include <string>
#include <vector>

#include "contract/DataClass.h"
#include "frame/FieldRows.h"
#include "selection/RecordFields.h"
#include "win/EditWatch.h"

namespace tamvelo::selection {

/// The panel where the user enters a record that the host does not have yet: a box for each field of the
/// record set, the family's first, which proposes the code.
class RecordEntry final : public frame::FormPart {
public:
    /// `data` is the form's own, which it may let go of at any time.
    RecordEntry(frame::Form& form, contract::DataClass& data);

    bool IsOpen() const { return m_open; }
    /// Makes the boxes the first time; the form lays itself out afterwards.
    void Open();
    void Close();
    HWND FirstFocus() const;
    /// Takes the room of the open panel away from `area`.
    void LayOutBeside(RECT& area);
    bool IsEntry(int control) const { return m_rows.EntryAt(control) != nullptr; }

    bool IsAnythingTyped() const;
    /// For a family that was typed: only once for each, and never over a code of the user's own.
    void ProposeCode();
    /// False when a box is wrong; the user has been told, and the focus is there.
    bool Check(const std::wstring& title);
    std::wstring Code() const { return Text(*BoxNumber(base::kCodeBox)); }
    /// For each field of the record set, in its order.
    std::vector<com::Variant> Values() const;

private:
    struct Box : base::RecordBox {
        frame::Field::Kind kind = frame::Field::Kind::Text;
        std::vector<Choice> choices = {}; // of a list
        std::vector<const wchar_t*> shown = {};
    };

    std::vector<Box> ReadBoxes();
    void MakeBoxes();
    frame::Field FieldFor(const Box& box) const;
    void Show(bool shown);
    const RecordField& FieldOf(const Box& box) const { return m_fields[box.field]; }
    const frame::FieldRow& RowOf(const Box& box) const { return m_rows.Of(box.kind, box.number); }
    const Box* BoxNumber(short number) const;
    std::wstring Text(const Box& box) const;
    std::wstring Complaint(const Box& box);
    bool FamilyLeft();
    void NewCode(const std::wstring& family);

    std::span<const frame::CommandRow> Commands() const override;
    void OnUnload() noexcept override;

    contract::DataClass& m_data;
    frame::FieldRows m_rows;
    bool m_open = false;
    std::vector<RecordField> m_fields;
    std::vector<Box> m_boxes; // as they stand on the panel
    win::RowLayout m_layout;  // of the panel, its title and its buttons
    std::shared_ptr<win::EditWatch> m_familyWatch;
    std::wstring m_family;   // that a code was last asked for
    std::wstring m_proposed; // the answer
};

} // namespace tamvelo::selection
