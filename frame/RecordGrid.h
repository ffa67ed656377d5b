#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "environment/GridLayoutStore.h"
#include "frame/FormPart.h"
#include "frame/RecordRequest.h"
#include "grid/Grid.h"

namespace tamvelo::frame {

// Commands of a grid that have no tool.
inline constexpr wchar_t kChooseFont[] = L"{FUENTE}";
inline constexpr wchar_t kChooseColumns[] = L"{COLUMNAS}";
inline constexpr wchar_t kCopyCell[] = L"{COPIAR_CELDA}";
inline constexpr wchar_t kCopyRow[] = L"{COPIAR_FILA}";
inline constexpr wchar_t kCopyRowWithHeadings[] = L"{COPIAR_CABECERAS}";
inline constexpr wchar_t kFitColumn[] = L"{AJUSTAR}";
inline constexpr wchar_t kToggleMark[] = L"{MARCAR}"; // also a click on the mark
/// Of a double click on a record of the classes that get a code for it.
inline constexpr wchar_t kRowCode[] = L"{DOBLE_CLIC}";

/// What distinguishes the grid of one form.
struct RecordGridDesign {
    /// In the menu of the grid, after the record's own two commands.
    std::span<const MenuItem> menu = {};
    /// Whether a double click of certain classes is a command of its own, kRowCode; else it accepts.
    bool codes = false;
    /// Whether the user may tick Boolean columns; these stand first.
    bool marks = false;
    /// Of the file that keeps the grid's look, without folder and extension; null: by the class.
    std::wstring (*layoutName)(const RecordRequest& request) = nullptr;
    /// What stands after the record counter in the status line.
    std::function<std::wstring()> note = {};
};

/// The grid over the host's records in a form that shows them: moving, sorting, copying, the record view, the
/// look that is kept per class, and the status line below.
class RecordGrid final : public FormPart, private grid::GridEvents {
public:
    RecordGrid(Form& form, RecordRequest& request, RecordGridDesign design)
        : FormPart(form), m_request(request), m_design(std::move(design)) {}

    /// Throws when the form is gone, as after any host call it may be.
    grid::Grid& Grid() const {
        Host().CheckStands();
        return *m_grid;
    }
    /// Whether there is a record, and it is the one that is highlighted. Every command that does something
    /// with the current record asks first; if it is another one the user is told and nothing is to be done.
    bool HasCurrentRecord();
    /// Makes calls that may change the host's records; where they fail half way these are read again.
    template <class Calls>
    void AskHost(Calls&& calls) {
        try {
            calls();
        } catch (const com::Error&) {
            if (IsLoaded() && m_grid) {
                Host().Tried([&] { m_grid->Reordered(); });
            }
            throw;
        }
    }
    /// Hears of another current column, or that it has another caption.
    void OnColumn(std::function<void()> changed) { m_columnChanged = std::move(changed); }

    void ShowStatus();
    /// A line for the user in place of the status, with a beep; it stands until there is a new status.
    void Hint(const std::wstring& text);

private:
    void OnLoad() override;
    void OnLaidOut() override;
    void OnBeforeUnload() override;
    void OnUnload() noexcept override;
    std::span<const KeyRow> Keys() const override;
    std::span<const CommandRow> Commands() const override;

    void RowActivated() override;
    void HeadingClicked(short column) override;
    void ContextMenuAsked(POINT screen) override;
    void CurrentRowChanged() override { ShowStatus(); }
    void CurrentColumnChanged() override;
    void LayoutChanged() override { m_lookChanged = true; }
    void MarkClicked() override { Host().Input(kToggleMark); }
    void ShownWasAnother() override;
    void RowsShown() override;
    void Failed(const com::Error& error) noexcept override { Host().ControlErrores(error); }

    /// Moves the host's current record.
    void Move(void (contract::DataClass::*move)());
    void MoveFirst() { Move(&contract::DataClass::MoveFirst); }
    void MovePrevious() { Move(&contract::DataClass::MovePrevious); }
    void MoveNext() { Move(&contract::DataClass::MoveNext); }
    void MoveLast() { Move(&contract::DataClass::MoveLast); }
    void Ordenar(bool descending);
    void OrdenAsc() { Ordenar(false); }
    void OrdenDesc() { Ordenar(true); }
    void VerRegistro();
    void CopyCell() { Grid().CopyCell(); }
    void CopyRow() { Grid().CopyRow(false); }
    void CopyRowWithHeadings() { Grid().CopyRow(true); }
    void FitColumn();
    void CambiarFuenteGrid();
    void ChooseColumns();
    /// The answer of the column chooser: the columns are the grid's own, so what is left is to keep them.
    void clsMeEvents_ConfigurarColumnas() { SaveLook(); }

    /// False when there is none that the user left.
    bool LoadLook();
    void SaveLook();

    RecordRequest& m_request;
    const RecordGridDesign m_design;
    std::function<void()> m_columnChanged; // empty without a search strip
    std::unique_ptr<grid::Grid> m_grid;
    std::unique_ptr<objects::OwnRelay> m_relay; // hears the column chooser
    environment::GridLayoutStore m_layoutStore;
    bool m_lookChanged = false;
    short m_orderColumn = -1;
    bool m_orderDescending = false;
};

} // namespace tamvelo::frame
