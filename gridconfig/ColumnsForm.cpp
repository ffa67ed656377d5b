#include "gridconfig/ColumnsForm.h"

#include "base/Commands.h"
#include "base/SortNumbers.h"
#include "gridconfig/Resources.h"

namespace tamvelo::gridconfig {

using win::CheckList;
using namespace frame::tables;

namespace {

constexpr ToolUse kTools[] = {{base::kAceptar}, {base::kCancelar}};

std::wstring CountVisible(const CheckList& list) {
    return std::to_wstring(list.TickedCount()) + L" de " + std::to_wstring(list.Count()) + L" visibles";
}

std::wstring CountAll(const CheckList& list) {
    return std::to_wstring(list.Count()) + (list.Count() == 1 ? L" columna" : L" columnas");
}

} // namespace

const ColumnsDesign kColumnas{L"frmColumnas", IDD_COLUMNAS, {CheckList::Kind::Ticks, true, CountVisible}};
const ColumnsDesign kOrden{L"frmOrden", IDD_ORDEN, {CheckList::Kind::Plain, true, CountAll}};

ColumnsForm::ColumnsForm(const ColumnsDesign& design)
    : Form({design.name, design.dialogTemplate, kTools, {}}),
      m_ticks(design.list.kind == CheckList::Kind::Ticks),
      m_list(*this, design.list) {}

std::span<const CommandRow> ColumnsForm::Commands() const {
    static constexpr CommandRow kCommands[] = {{base::kAceptar, Do<&ColumnsForm::Aceptar>}};
    return kCommands;
}

void ColumnsForm::Mostrar(IDispatch* sink, IDispatch* columns, short modo) {
    Show([&] {
        m_sink = contract::Sink(sink, L"ClsEventos");
        m_columns = contract::ColumnCollection(columns);
        Load();
        std::vector<win::ListEntry> entries;
        const short count = m_columns.Count();
        for (short i = 0; i < count; ++i) {
            contract::ColumnCollection::Column column = m_columns.Item(i);
            win::ListEntry& entry = entries.emplace_back(win::ListEntry{column.Caption()});
            if (m_ticks) {
                entry.ticked = column.Visible();
                entry.fixed = i == 0;
            }
        }
        m_list.List().Fill(std::move(entries));
        iModo = modo;
        ShowModal();
    });
}

void ColumnsForm::Aceptar() {
    // Copies: the host may close the form while it is told, and the form then lets go of its own.
    contract::Sink sink = m_sink;
    contract::ColumnCollection columns = m_columns;
    Deliver([&] {
        if (m_ticks) {
            TellVisible(sink, columns);
        } else {
            short column = base::SortNumber(m_list.List().Current());
            sink.ActualizaOrden(column, iModo);
        }
    });
}

void ColumnsForm::TellVisible(contract::Sink& sink, contract::ColumnCollection& columns) const {
    // The first column keeps the visibility that the host gave it.
    for (int i = 1; i < m_list.List().Count(); ++i) {
        columns.Item(static_cast<short>(i)).SetVisible(m_list.List().IsTicked(i));
    }
    CheckStands();
    com::ComPtr<IDispatch> reference(columns.Get());
    sink.ActualizaColumnas(reference);
}

void ColumnsForm::OnUnload() noexcept {
    m_columns.Reset();
    m_sink.Reset();
}

} // namespace tamvelo::gridconfig
