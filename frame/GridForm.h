#pragma once

#include <memory>
#include <string>

#include "contract/DataClass.h"
#include "contract/HostControl.h"
#include "contract/Sink.h"
#include "frame/EventRelay.h"
#include "frame/Form.h"
#include "frame/GridLayoutStore.h"
#include "frame/Resources.h"
#include "grid/Grid.h"

namespace tamvelo::frame {

/// Commands of grid forms that have no tool.
inline constexpr wchar_t kApplySearch[] = L"{BUSCAR}";
inline constexpr wchar_t kChooseFont[] = L"{FUENTE}";
inline constexpr wchar_t kChooseColumns[] = L"{COLUMNAS}";
inline constexpr wchar_t kCopyCell[] = L"{COPIAR_CELDA}";
inline constexpr wchar_t kCopyRow[] = L"{COPIAR_FILA}";
inline constexpr wchar_t kCopyRowWithHeadings[] = L"{COPIAR_CABECERAS}";

/// A form around a grid over the host's record set: the host's objects, opening on a record, search strip,
/// sorting, moving, the grid's look kept per class, copying, the record view. A derived form decides what a
/// chosen record leads to, which keys there are and how the strip behaves.
class GridForm : public Form, public grid::GridEvents {
protected:
    explicit GridForm(const FormDesign& design) : Form(design) {}

    /// Keeps the host's objects and reads the class name.
    void Take(IDispatch* sink, IDispatch* data, const contract::HostControl& control, short column,
              short indx);
    /// Asks for the selection's records and stands on the one that the host's control names, if asked to.
    void OpenRecords(std::wstring_view selection, bool find);

    /// Runs the typed search (true), or takes it away (false).
    void AplicarBusqueda(bool apply);
    /// Whether something was typed that the grid does not show yet.
    bool IsSearchPending() const;
    void SetSearchText(const std::wstring& text);
    void ShowSearchStrip(bool shown);
    bool IsSearchStripShown() const;

    void Ordenar(bool descending);
    void MoveFirst();
    void MovePrevious();
    void MoveNext();
    void MoveLast();
    void OrdenAsc() { Ordenar(false); }
    void OrdenDesc() { Ordenar(true); }
    void ApplyTypedSearch() { AplicarBusqueda(true); }
    void ClearSearch() { AplicarBusqueda(false); }
    void CambiarFuenteGrid();
    void ChooseColumns();
    void VerRegistro();
    void CopyCell() { DataGrid().CopyCell(); }
    void CopyRow() { DataGrid().CopyRow(false); }
    void CopyRowWithHeadings() { DataGrid().CopyRow(true); }
    /// The answer of the column chooser: the columns are the grid's own, so what is left is to keep them.
    void clsMeEvents_ConfigurarColumnas();

    void OnLoad() override;
    void OnLaidOut() override;
    void OnBeforeUnload() override;
    void OnUnload() noexcept override;
    void OnControl(int control, int code) override;
    bool OnKey(UINT key, bool control, bool shift) override;
    HWND FirstFocus() const override { return Control(IDC_DATAGRID); }

    /// A record was chosen with the mouse.
    virtual void OnRowActivated() = 0;
    virtual std::span<const MenuItem> ContextMenu() const = 0;
    /// Whether this form offers its search strip now.
    virtual bool AllowsSearch() const { return true; }
    /// What stands after the record counter in the status line.
    virtual std::wstring StatusNote() const { return {}; }

    /// Throws when the form is gone, as after any host call it may be.
    grid::Grid& DataGrid() const {
        CheckStands();
        return *m_grid;
    }
    contract::DataClass& MyClase() { return m_data; }
    contract::Sink& Sink() { return m_sink; }
    contract::HostControl& Ctl() { return m_control; }
    const std::wstring& ClassName() const { return m_className; }
    short& Column() { return m_column; }
    short& Indx() { return m_indx; }
    void ShowStatus();
    /// The line above the grid: the filter in force; "" takes the line away.
    void SetHeading(const std::wstring& text);

private:
    void RowActivated() override;
    void HeadingClicked(short column) override;
    void ContextMenuAsked(POINT screen) override;
    void CurrentRowChanged() override;
    void LayoutChanged() override;
    void Failed(const com::Error& error) noexcept override;

    void LoadLook();
    void SaveLook();
    void BuildFilter();
    void NameSearchColumn();

    contract::Sink m_sink;
    contract::DataClass m_data;
    contract::HostControl m_control;
    std::wstring m_className;
    short m_column = 0;
    short m_indx = 0;
    std::unique_ptr<grid::Grid> m_grid;
    std::unique_ptr<OwnRelay> m_relay;
    GridLayoutStore m_layoutStore;
    bool m_lookChanged = false;
    std::wstring m_searched; // the box's text when the search was last applied
    short m_orderColumn = -1;
    bool m_orderDescending = false;
};

} // namespace tamvelo::frame
