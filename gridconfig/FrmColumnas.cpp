#include "gridconfig/FrmColumnas.h"

#include "base/Commands.h"
#include "gridconfig/Resources.h"

namespace tamvelo::gridconfig {

using win::CheckList;

namespace {

constexpr frame::ToolUse kTools[] = {{base::kAceptar}, {base::kCancelar}};

std::wstring CountVisible(const CheckList& list) {
    return std::to_wstring(list.TickedCount()) + L" de " + std::to_wstring(list.Count()) + L" visibles";
}

} // namespace

FrmColumnas::FrmColumnas()
    : Form({kName, IDD_COLUMNAS, kTools, {}}), m_list(*this, {CheckList::Kind::Ticks, true, CountVisible}) {}

std::span<const frame::CommandRow> FrmColumnas::Commands() const {
    static constexpr frame::CommandRow kCommands[] = {{base::kAceptar, frame::Do<&FrmColumnas::Aceptar>}};
    return kCommands;
}

void FrmColumnas::Mostrar(IDispatch* sink, IDispatch* columns) {
    Show([&] {
        m_sink = contract::Sink(sink, L"ClsEventos");
        m_columns = contract::ColumnCollection(columns);
        Load();
        std::vector<win::ListEntry> entries;
        const short count = m_columns.Count();
        for (short i = 0; i < count; ++i) {
            contract::ColumnCollection::Column column = m_columns.Item(i);
            entries.push_back({column.Caption(), column.Visible(), i == 0});
        }
        m_list.List().Fill(std::move(entries));
        ShowModal();
    });
}

void FrmColumnas::Aceptar() {
    // Copies: the host may close the form while it is told, and the form then lets go of its own.
    contract::Sink sink = m_sink;
    contract::ColumnCollection columns = m_columns;
    com::ComPtr<IDispatch> reference(columns.Get());
    Deliver([&] {
        // The first column keeps the visibility that the host gave it.
        for (int i = 1; i < m_list.List().Count(); ++i) {
            columns.Item(static_cast<short>(i)).SetVisible(m_list.List().IsTicked(i));
        }
        CheckStands();
        sink.ActualizaColumnas(reference);
    });
}

void FrmColumnas::OnUnload() noexcept {
    m_columns.Reset();
    m_sink.Reset();
}

} // namespace tamvelo::gridconfig
