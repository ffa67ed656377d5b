#include "frame/GridForm.h"

// How a form with a grid answers the host with the record that the user wants.
namespace tamvelo::frame {

using base::NumberSource;

void GridForm::ShowFor(contract::HostControl& control, short modal) {
    if (modal != 0) {
        m_caller = &control;
    }
    ShowAs(modal);
}

void GridForm::TakeControlBack() {
    if (m_caller) {
        *m_caller = m_control;
    }
}

bool GridForm::HasCurrentRecord() {
    if (DataGrid().CurrentRow() < 0) {
        MessageBeep(MB_ICONWARNING);
        return false;
    }
    return DataGrid().Confirm();
}

bool GridForm::HasRecordToDeliver() {
    // Enter on something typed but not searched yet means "find it": it is delivered at once only when it is
    // the one.
    if (IsSearchPending() && GetFocus() == Control(IDC_TXTFIELDS0)) {
        AplicarBusqueda(true);
        if (!IsLoaded() || DataGrid().RowCount() != 1) {
            return false;
        }
    }
    return HasCurrentRecord(); // without one an empty text would overwrite the host's control
}

std::vector<com::Variant> GridForm::TextsFor(const base::Answer& answer) {
    std::vector<com::Variant> texts;
    for (const NumberSource& source : answer.Columns()) {
        const short column = source.Resolve(m_column, m_indx);
        com::Variant value = answer.asValue ? DataGrid().Value(column) : com::Variant::Null();
        texts.push_back(value.IsNull() ? com::Variant(DataGrid().Text(column)) : std::move(value));
    }
    return texts;
}

void GridForm::SendAnswer(const base::Answer& answer) {
    const std::vector<com::Variant> texts = TextsFor(answer);
    com::ComPtr<IDispatch>& control = m_control.Reference();
    short& first = answer.first.kind == NumberSource::Kind::Indx ? m_indx : m_column;
    if (answer.member == base::SinkMember::AceptarSeleccion) {
        m_sink.AceptarSeleccion(first, control, texts[0]);
    } else if (answer.first.kind == NumberSource::Kind::Fixed) {
        m_sink.AceptarSeleccionParamCode(answer.first.fixed, control, texts[0], texts[1], texts[2]);
    } else {
        m_sink.AceptarSeleccionParam(first, control, texts[0], texts[1], texts[2]);
    }
}

} // namespace tamvelo::frame
