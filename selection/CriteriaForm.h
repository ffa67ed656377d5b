#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "contract/DataClass.h"
#include "contract/Sink.h"
#include "frame/CheckedBoxes.h"
#include "frame/RecordMoves.h"
#include "grid/CellText.h"
#include "grid/RecordSource.h"
#include "objects/EventRelay.h"
#include "selection/Criteria.h"
#include "win/Handles.h"
#include "win/ScrollPanel.h"

namespace tamvelo::selection {

/// A criteria dialog: a box for each field of the host's data class. What is typed becomes a filter of it
/// when the user accepts. A description makes one of these into a certain dialog.
class CriteriaForm final : public frame::Form {
public:
    explicit CriteriaForm(const CriteriaDesign& design);
    /// The calling thread's instance of a dialog.
    static std::shared_ptr<CriteriaForm> Instance(const CriteriaDesign& design);

    /// Returns when the dialog is closed. Throws com::Error when it cannot open; what fails while it is open
    /// goes to ControlErrores.
    void Mostrar(IDispatch* sink, IDispatch* data);

private:
    struct Field {
        std::wstring name;
        std::wstring caption;
        grid::CellKind kind = grid::CellKind::Any;
        bool isShort = false; // so is its box
        std::wstring related; // class that its codes are looked up in; "" for none
        const wchar_t* selection = nullptr;
        bool marked = false; // shown as one that has a condition
        HWND label = nullptr;
        HWND entry = nullptr;
        HWND onlyYes = nullptr; // in the dialogs with lists
    };

    /// The numbers of one field's controls, from its first.
    enum Part { Label, Entry, OnlyYes, Search, Parts };
    static int ControlOf(size_t field, Part part);
    // Places in a yes/no list.
    static constexpr int kYes = 0;
    static constexpr int kAll = 2;

    void ReadFields();
    void FindRelated();
    void MakeFields();
    void MakeField(size_t index, int labelWidth);
    static std::wstring LabelOf(const Field& field, bool marked);
    bool IsList(const Field& field) const;
    bool IsCompared(const Field& field) const;
    com::ComPtr<objects::ControlObject> Box(size_t index);
    bool HasCondition(size_t index) const;
    void Judged(size_t index, bool valid);
    void ChooseYesNo(size_t index, int entry);

    void Mark(size_t index);
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
    void LookUp(int control);
    /// The field that a control belongs to.
    std::optional<size_t> FieldAt(int control) const;
    void clsMeEvents_AceptaSeleccion(com::Invocation& call);

    void OnLoad() override;
    void OnUnload() noexcept override;
    void OnControl(int control, int code) override;
    bool Offers(std::wstring_view command, int control) const override;
    HWND FirstFocus() const override;
    std::span<const frame::CommandRow> Commands() const override;
    std::vector<win::LayoutRow> Layout() const override;

    const CriteriaDesign& m_dialog;
    contract::Sink m_sink;
    contract::DataClass m_data;
    grid::RecordSource m_records;
    std::wstring m_className;
    std::vector<Field> m_fields;
    std::optional<long> m_count;          // of the records, as last asked
    std::optional<std::wstring> m_before; // the host's filter, once a search has replaced it
    long m_unasked = 0;                   // fields beyond those that have a box
    bool m_clearing = false;              // all boxes at once: one look at them afterwards
    win::UniqueFont m_bold;
    std::unique_ptr<win::ScrollPanel> m_panel;
    std::unique_ptr<objects::OwnRelay> m_clsMeEvents; // hears the look-ups
    frame::CheckedBoxes m_boxes{*this, m_data};
    frame::RecordMoves m_moves{*this, m_data};
};

} // namespace tamvelo::selection
