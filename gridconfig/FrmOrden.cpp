#include "gridconfig/FrmOrden.h"

#include "base/Commands.h"
#include "base/SortNumbers.h"
#include "gridconfig/Resources.h"

namespace tamvelo::gridconfig {

using win::CheckList;

namespace {

constexpr frame::ToolUse kTools[] = {{base::kAceptar}, {base::kCancelar}};

std::wstring CountAll(const CheckList& list) {
    return std::to_wstring(list.Count()) + (list.Count() == 1 ? L" columna" : L" columnas");
}

} // namespace

FrmOrden::FrmOrden()
    : Form({kName, IDD_ORDEN, kTools, {}}), m_list(*this, {CheckList::Kind::Plain, true, CountAll}) {}

std::span<const frame::CommandRow> FrmOrden::Commands() const {
    static constexpr frame::CommandRow kCommands[] = {{base::kAceptar, frame::Do<&FrmOrden::Aceptar>}};
    return kCommands;
}

void FrmOrden::Mostrar(short modo, IDispatch* sink, IDispatch* columns) {
    Show([&] {
        m_sink = contract::Sink(sink, L"ClsEventos");
        m_columns = contract::ColumnCollection(columns);
        Load();
        std::vector<win::ListEntry> entries;
        const short count = m_columns.Count();
        for (short i = 0; i < count; ++i) {
            entries.push_back({m_columns.Item(i).Caption()});
        }
        m_list.List().Fill(std::move(entries));
        iModo = modo;
        ShowModal();
    });
}

void FrmOrden::Aceptar() {
    contract::Sink sink = m_sink; // a copy: the host may close the form while it is told
    Deliver([&] {
        short column = base::SortNumber(m_list.List().Current());
        sink.ActualizaOrden(column, iModo);
    });
}

void FrmOrden::OnUnload() noexcept {
    m_columns.Reset();
    m_sink.Reset();
}

} // namespace tamvelo::gridconfig
