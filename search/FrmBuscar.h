#pragma once

#include <array>
#include <memory>
#include <string>

#include "contract/ColumnCollection.h"
#include "contract/DataClass.h"
#include "contract/Sink.h"
#include "frame/CheckedBoxes.h"
#include "frame/RecordMoves.h"
#include "search/ModeOptions.h"
#include "search/ValueList.h"

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
    com::ComPtr<objects::ControlObject> Box(short index);
    void Watch(short index);
    void Remember(const std::wstring& name, int value);
    void RememberKind();

    void FillKinds();
    void ChooseKind();
    void ShowKind();
    void SetFields(const std::wstring& field);
    /// `enter`: the focus goes to the box that is typed into first.
    void SetMode(int mode, bool enter);
    void ChooseStyle(bool simple);
    void Normal() { ChooseStyle(false); }
    void Simple() { ChooseStyle(true); }
    void ShowParts();

    bool IsChecked(short index);
    bool PasteValues(const std::wstring& text);
    /// What is typed becomes a value of the list; false when there is nothing.
    bool TakeTyped();

    void BoxEntered();
    void AplicarBusqueda(bool apply);
    void BuildFilter();
    void ShowFilter();
    void Buscar();
    void Aceptar();
    void Cancelar();
    void Refresh() { m_data.Requery(); }

    void OnLoad() override;
    void OnUnload() noexcept override;
    void ResizeControls() override;
    void OnControl(int control, int code) override;
    HWND FirstFocus() const override;
    std::span<const frame::CommandRow> Commands() const override;
    std::vector<win::LayoutRow> Layout() const override;

    contract::Sink m_sink;
    contract::DataClass m_data;
    contract::ColumnCollection m_columns;
    std::wstring m_className;
    bool m_orders = false;
    bool m_simple = false;
    int m_kind = -1;        // the place of the kind that is searched by
    std::wstring m_heading; // of the searched column
    std::wstring m_filter;  // as last applied
    frame::CheckedBoxes m_boxes{*this, m_data};
    frame::RecordMoves m_moves{*this, m_data};
    ModeOptions m_modes{*this, [this](int mode, bool enter) { SetMode(mode, enter); }};
    ValueList m_values{*this};
};

} // namespace tamvelo::search
