#include "dates/FrmSeleccionFecha.h"

#include "base/Commands.h"
#include "dates/Resources.h"

namespace tamvelo::dates {

namespace {

constexpr frame::ToolUse kTools[] = {
    {base::kAceptar},
    {base::kCancelar},
};

} // namespace

FrmSeleccionFecha::FrmSeleccionFecha() : Form({kName, IDD_SELECCIONFECHA, kTools, {}}) {}

std::span<const frame::CommandRow> FrmSeleccionFecha::Commands() const {
    static constexpr frame::CommandRow kCommands[] = {
        {base::kAceptar, frame::Do<&FrmSeleccionFecha::Aceptar>},
    };
    return kCommands;
}

void FrmSeleccionFecha::Mostrar(IDispatch* sink) {
    Show([&] {
        m_sink = contract::Sink(sink, L"objClsEventos");
        ShowModal();
    });
}

void FrmSeleccionFecha::Aceptar() {
    const base::DateRange range = m_range.Range();
    contract::Sink sink = m_sink; // a copy: the host may close the form while it is told
    Deliver([&] { sink.AceptarFechaEntre(range.first, range.last); });
}

} // namespace tamvelo::dates
