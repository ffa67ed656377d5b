#pragma once

#include <array>
#include <memory>
#include <string>

#include "base/SearchModes.h"
#include "contract/ColumnCollection.h"
#include "contract/DataClass.h"
#include "contract/Sink.h"
#include "frame/CheckedBoxes.h"
#include "frame/RecordMoves.h"

namespace tamvelo::search {

/// The search panel: values typed for one column of the host's grid become a filter of its data class. The
/// filter outlives the panel unless the user cancels.
class FrmBuscar final : public frame::Form {
public:
    static constexpr wchar_t kName[] = L"frmBuscar";
    FrmBuscar();

    /// Returns when the panel is closed. Throws com::Error when it cannot open; what fails while it is open
    /// goes to ControlErrores.
    void Mostrar(IDispatch* sink, IDispatch* data, IDispatch* columns);

private:
    const base::SearchMode& Mode() const { return base::kSearchModes.at(static_cast<size_t>(m_mode)); }
    com::ComPtr<frame::ControlObject> Box(short index);
    void Watch(short index);
    void Remember(const std::wstring& name, int value);
    void RememberKind();

    void FillKinds();
    void ChooseKind();
    void SetFields(const std::wstring& field);
    /// `enter`: the focus goes to the box that the mode types into first.
    void ChooseMode(int mode, bool enter);
    void ChooseStyle(bool simple);
    void ShowParts();
    void PlaceOptions();

    bool IsChecked(short index);
    bool PasteValues(const std::wstring& text);
    void AddValue(const std::wstring& value);
    void RemoveValue();
    void ShowCount();

    void BoxEntered();
    void AplicarBusqueda(bool apply);
    void BuildFilter();
    void ShowFilter();
    void Buscar() { AplicarBusqueda(true); }
    void Aceptar();
    void Cancelar();
    void Refresh() { m_data.Requery(); }

    void OnLoad() override;
    void OnUnload() noexcept override;
    void ResizeControls() override;
    void OnControl(int control, int code) override;
    bool OnKey(UINT key, bool control, bool shift) override;
    HWND FirstFocus() const override;
    std::span<const frame::CommandRow> Commands() const override;
    std::vector<frame::LayoutRow> Rows() const override;

    contract::Sink m_sink;
    contract::DataClass m_data;
    contract::ColumnCollection m_columns;
    std::wstring m_className;
    bool m_orders = false;
    bool m_simple = false;
    int m_mode = 0;
    int m_kind = -1;        // as remembered; the list knows better once it is there
    std::wstring m_heading; // of the searched column
    std::wstring m_filter;  // as last applied
    frame::CheckedBoxes m_boxes{*this, m_data};
    frame::RecordMoves m_moves{*this, m_data};
    POINT m_options[5] = {}; // places of the options in their frame
};

} // namespace tamvelo::search
