#pragma once

#include <memory>
#include <string>

#include "base/SelectionAnswers.h"
#include "contract/DataClass.h"
#include "contract/HostControl.h"
#include "contract/Sink.h"
#include "environment/GridLayoutStore.h"
#include "frame/Form.h"
#include "frame/Resources.h"
#include "grid/Grid.h"
#include "objects/EventRelay.h"

namespace tamvelo::frame {

/// Commands of grid forms that have no tool.
inline constexpr wchar_t kApplySearch[] = L"{BUSCAR}";
inline constexpr wchar_t kChooseFont[] = L"{FUENTE}";
inline constexpr wchar_t kChooseColumns[] = L"{COLUMNAS}";
inline constexpr wchar_t kCopyCell[] = L"{COPIAR_CELDA}";
inline constexpr wchar_t kCopyRow[] = L"{COPIAR_FILA}";
inline constexpr wchar_t kCopyRowWithHeadings[] = L"{COPIAR_CABECERAS}";
inline constexpr wchar_t kFitColumn[] = L"{AJUSTAR}";

/// A form around a grid over the host's record set: the host's objects, opening on a record, search strip,
/// sorting, moving, the grid's look kept per class, copying, the record view. A derived form decides what a
/// chosen record leads to, which keys there are and how the strip behaves.
class GridForm : public Form, public grid::GridEvents {
public:
    /// The way to open that forms with a grid have in common, with the records of "seleccion". `ctl` gets the
    /// control that the host put in its place, if any. Throws com::Error when the form cannot open; what
    /// fails while it is open goes to ControlErrores.
    void Mostrar(IDispatch* sink, IDispatch* data, contract::HostControl& ctl, short column, short indx,
                 bool find);

protected:
    explicit GridForm(const FormDesign& design) : Form(design) {}

    /// Keeps the host's objects and reads the class name.
    void Take(IDispatch* sink, IDispatch* data, const contract::HostControl& control, short column,
              short indx);
    /// Asks for the selection's records and stands on the one that the host's control names, if asked to.
    void OpenRecords(std::wstring_view selection, bool find);
    /// Shows the form, modeless for 0. While a modal one is open, a control that the host puts in place of
    /// its own gets into `control`.
    void ShowFor(contract::HostControl& control, short modal);

    /// "ID_Aceptar": whether the current record is what the user wants now. What was typed in the box and not
    /// searched yet is searched first, and meant only when it leaves one record.
    bool HasRecordToDeliver();
    /// Whether there is a record, and it is the one that is highlighted. Every command that does something
    /// with the current record asks first; if it is another one the user is told and nothing is to be done.
    bool HasCurrentRecord();
    /// Makes calls that may change the host's rows; where they fail half way the rows are read again.
    template <class Calls>
    void AskHost(Calls&& calls) {
        try {
            calls();
        } catch (const com::Error&) {
            if (IsLoaded() && m_grid) {
                Tried([&] { m_grid->Reordered(); });
            }
            throw;
        }
    }
    /// Hands the current record to the sink; for DeliverAnswer.
    void SendAnswer(const base::Answer& answer);
    /// Those of the current record that the answer carries.
    std::vector<com::Variant> TextsFor(const base::Answer& answer);
    /// What accepting comes to: hides the form, runs `tell`, which calls the sink, and unloads. If the sink
    /// fails the form comes back as it was, with the rows read again.
    template <class Tell>
    void DeliverAnswer(const Tell& tell) {
        Deliver([&] {
            AskHost(tell);
            TakeControlBack();
        });
    }
    /// The same in a selection panel, which takes the filter away afterwards.
    template <class Tell>
    void DeliverSelection(const Tell& tell) {
        Deliver([&] {
            AskHost(tell);
            TakeControlBack();
            if (IsLoaded()) {
                // The record is delivered: whatever becomes of the filter, the panel has done its work.
                Tried([&] { m_data.AplyFilter(L""); });
            }
        });
    }
    void TakeControlBack();

    /// Runs the typed search (true), or takes it away (false).
    void AplicarBusqueda(bool apply);
    /// "ID_Filtrar": brings the strip back, or applies what was typed and puts it away, or goes to its box.
    void Filtrar();
    /// Whether something was typed that the grid does not show yet, or shows of another column.
    bool IsSearchPending() const;
    /// Whether the text asks for every record rather than for something.
    virtual bool MeansAll(std::wstring_view /*typed*/) const { return false; }
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
    void FitColumn();
    /// The answer of the column chooser: the columns are the grid's own, so what is left is to keep them.
    void clsMeEvents_ConfigurarColumnas();
    /// The answer of a look-up that was opened with this form's relay as its sink: index, control, and the
    /// value, or the first of the three that some classes answer with.
    virtual void clsMeEvents_AceptaSeleccion(com::Invocation& /*call*/) {}
    IDispatch* Relay() const { return m_relay->Sink(); }

    void OnLoad() override;
    void OnLaidOut() override;
    void OnBeforeUnload() override;
    void OnUnload() noexcept override;
    /// What every form with a grid can do; a form's own rows come first.
    std::span<const CommandRow> SharedCommands() const override;
    std::span<const KeyRow> SharedKeys() const override;
    HWND FirstFocus() const override { return Control(IDC_DATAGRID); }
    std::vector<win::LayoutRow> Layout() const override;

    /// A record was chosen with the mouse.
    virtual void OnRowActivated() = 0;
    /// What this form has in the menu of the grid, after the record's own two commands.
    virtual std::span<const MenuItem> OwnMenu() const { return {}; }
    /// Whether this form offers its search strip now.
    virtual bool AllowsSearch() const { return true; }
    /// What the line above the grid says while `filter` is in force; "" takes the line away.
    virtual std::wstring Heading(const std::wstring& filter) const;
    /// The strip was shown or put away.
    virtual void OnSearchStrip(bool /*shown*/) {}
    /// A filter came into force, or went.
    virtual void OnFiltered(bool /*filtered*/) {}
    /// The grid has its columns, and the user has arranged none of them yet.
    virtual void OnDefaultLook() {}
    /// Of the file that keeps the grid's look, without folder and extension.
    virtual std::wstring LayoutName() const { return L"frmSelec" + m_className; }
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
    /// The host's own numbers; a sink may change the one that it is called with.
    short Column() const { return m_column; }
    short Indx() const { return m_indx; }
    /// From here on the column is one of the grid's.
    void ClampColumn() { m_column = base::ClampColumn(m_column, DataGrid().ColumnCount()); }
    /// Hands the host's number and control to a member that the sink may have; whether it has.
    bool Offer(const wchar_t* member) { return m_sink.Offer(member, m_indx, m_control.Reference()); }
    /// The short answer: the column and one value.
    void SendValue(const com::Variant& value) {
        m_sink.AceptarSeleccion(m_column, m_control.Reference(), value);
    }
    void ShowStatus();
    /// A line for the user in place of the status, with a beep; it stands until there is a new status.
    void Hint(const std::wstring& text);
    /// The line above the grid; "" takes it away.
    void SetHeading(const std::wstring& text);
    /// After the host has other records than before, with `filter` in force and nothing searched.
    void ShowRecords(const std::wstring& filter);
    const std::wstring& Filter() const { return m_filter; }
    bool IsFiltered() const { return !m_filter.empty(); }

private:
    void RowActivated() override;
    void HeadingClicked(short column) override;
    void ContextMenuAsked(POINT screen) override;
    void CurrentRowChanged() override;
    void CurrentColumnChanged() override { NameSearchColumn(); }
    void ShownWasAnother() override;
    void LayoutChanged() override;
    void Failed(const com::Error& error) noexcept override;

    /// False when there is none that the user left.
    bool LoadLook();
    void SaveLook();
    /// What a search would look for, and where.
    struct Search {
        std::wstring text;
        short column = kNoColumn; // of a text that is looked for
        bool operator==(const Search&) const = default;
    };
    static constexpr short kNoColumn = -1;
    Search TypedSearch() const;
    com::ComPtr<objects::ControlObject> SearchBox() { return ObjectOf(IDC_TXTFIELDS0, L"TxtFields", 0); }
    void BuildFilter(const std::wstring& typed);
    void NameSearchColumn();
    void GoToSearch();
    void ShowFilter(const std::wstring& filter);
    void SetEmptyText(bool noMatch);

    contract::Sink m_sink;
    contract::DataClass m_data;
    contract::HostControl m_control;
    std::wstring m_className;
    short m_column = 0;
    short m_indx = 0;
    std::unique_ptr<grid::Grid> m_grid;
    std::unique_ptr<objects::OwnRelay> m_relay;
    environment::GridLayoutStore m_layoutStore;
    bool m_lookChanged = false;
    std::wstring m_filter;                     // in force, as far as this form knows
    contract::HostControl* m_caller = nullptr; // the host's reference, while its call waits for us
    Search m_searched;                         // what the grid shows
    short m_orderColumn = -1;
    bool m_orderDescending = false;
};

} // namespace tamvelo::frame
