#pragma once

#include <memory>
#include <string>
#include <vector>

#include "selection/Panel.h"
#include "selection/RecordFields.h"
#include "win/EditWatch.h"
#include "win/ScrollPanel.h"

namespace tamvelo::selection {

/// Command of a family that was typed: asks the host for a code.
inline constexpr wchar_t kPropose[] = L"{PROPONER_CODIGO}";

/// The selection panel with a second panel beside the grid, where the user enters the record that the host
/// does not have yet and hands over its code at once.
class FrmSelecAdd final : public frame::Form {
public:
    static constexpr wchar_t kName[] = L"frmSelecAdd";
    FrmSelecAdd();

    /// `ctl` gets the control that the host put in its place, if any. Throws com::Error when the form cannot
    /// open; what fails while it is open goes to ControlErrores.
    void Mostrar(IDispatch* sink, IDispatch* data, contract::HostControl& ctl, short column, short indx,
                 bool find) {
        Show([&] { m_request.Mostrar(sink, data, ctl, column, indx, find); });
    }

private:
    /// A field of the new record on the panel: entry box, list or check box.
    struct Box : base::RecordBox {
        int control = 0; // of its entry; label and button are beside it
        std::vector<Choice> choices;
        bool list = false;
    };

    void Aceptar();
    void Cancelar();
    void Cerrar();

    std::wstring Title() const { return L"Selección de " + m_request.className; }
    void Nuevo();
    void AceptarAlta();
    void ShowStored(const std::wstring& code);
    void SetAddMode(bool on);
    bool MayDiscard();
    bool IsAnythingTyped() const;
    void ClearBoxes();

    void MakeBoxes();
    void MakeBox(Box& box, std::wstring& keys);
    void ShowBoxes(bool shown);
    int LabelWidth() const;
    std::vector<win::LayoutRow> BoxRows() const;
    const RecordField& FieldOf(const Box& box) const { return m_fields[box.field]; }
    const wchar_t* ArrayOf(const Box& box) const;
    const Box* BoxNumber(short number) const;
    const Box* BoxAt(int control) const;
    std::wstring Text(const Box& box) const;
    com::Variant ValueOf(const Box& box) const;
    void SetText(const Box& box, const std::wstring& text);

    /// False when a box is wrong; the user has been told, and the focus is there.
    bool CheckRecord();
    std::wstring Complaint(const Box& box);
    std::vector<com::Variant> Values() const;
    bool HasLookup(const Box& box) const;
    void LookUp(int control);
    bool FamilyLeft();
    void ProposeCode();
    void NewCode(const std::wstring& family);
    void clsMeEvents_AceptaSeleccion(com::Invocation& call);

    void OnLoad() override;
    void OnUnload() noexcept override;
    bool Offers(std::wstring_view command, int control) const override;
    void LayOutBeside(RECT& area) override;
    HWND FirstFocus() const override { return Control(IDC_DATAGRID); }
    std::wstring StatusNote() const;
    std::span<const frame::CommandRow> Commands() const override;
    std::vector<win::LayoutRow> Layout() const override;

    frame::RecordRequest m_request{*this};
    frame::RecordGrid m_grid;
    frame::SearchStrip m_search{*this, m_request, m_grid, PanelSearch()};
    frame::RecordAnswer m_answer{*this, m_request, m_grid, m_search};
    std::unique_ptr<objects::OwnRelay> m_clsMeEvents; // hears the look-ups
    bool m_adding = false;
    std::vector<RecordField> m_fields;
    std::vector<Box> m_boxes; // as they stand on the panel
    std::unique_ptr<win::ScrollPanel> m_panel;
    win::RowLayout m_panelLayout; // of the panel, its title and its buttons
    std::shared_ptr<win::EditWatch> m_familyWatch;
    short m_asked = 0;       // number of the box that a look-up was opened for
    std::wstring m_family;   // that a code was last asked for
    std::wstring m_proposed; // the answer
};

} // namespace tamvelo::selection
