#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "contract/DataClass.h"
#include "contract/Sink.h"
#include "frame/CheckedBoxes.h"
#include "frame/FieldRows.h"
#include "frame/RecordMoves.h"
#include "grid/RecordSource.h"
#include "selection/Criteria.h"
#include "selection/RecordFields.h"

namespace tamvelo::selection {

/// A criteria dialog: a box for each field of the host's data class. What is typed becomes a filter of it
/// when the user accepts. A description makes one of these into a certain dialog.
class CriteriaForm final : public frame::Form {
public:
    explicit CriteriaForm(const CriteriaDesign& design);

    /// Returns when the dialog is closed. Throws com::Error when it cannot open; what fails while it is open
    /// goes to ControlErrores.
    void Mostrar(IDispatch* sink, IDispatch* data);

private:
    struct Criterion : RecordField { // with the class that its codes are looked up in
        const wchar_t* selection = nullptr;
        std::wstring only = {}; // caption of the short way to "Sí", where there is a list
    };

    void ReadCriteria();
    void FindRelated();
    void MakeRows();
    bool IsCompared(const Criterion& field) const;
    const frame::FieldRow& RowOf(size_t index) const;
    void Judged(size_t index, bool valid);

    void ShowCriterion(size_t index);
    void ShowCriteria();
    void ShowStatus();
    void CountRecords();
    short Comparison() const;

    void Apply();
    void Buscar();
    void Aceptar();
    void Cancelar();
    void Limpiar();

    void OnLoad() override;
    void OnUnload() noexcept override;
    HWND FirstFocus() const override;
    std::span<const frame::CommandRow> Commands() const override;
    std::vector<win::LayoutRow> Layout() const override;

    const CriteriaDesign& m_dialog;
    contract::Sink m_sink;
    contract::DataClass m_data;
    grid::RecordSource m_records;
    std::wstring m_className;
    std::vector<Criterion> m_fields;
    std::optional<long> m_count;          // of the records, as last asked
    std::optional<std::wstring> m_before; // the host's filter, once a search has replaced it
    size_t m_unasked = 0;                 // fields beyond those that have a box
    frame::FieldRows m_rows;
    frame::CheckedBoxes m_boxes{*this, m_data};
    frame::RecordMoves m_moves{*this, m_data};
};

} // namespace tamvelo::selection
