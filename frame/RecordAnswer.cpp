#include "frame/RecordAnswer.h"

#include "frame/Resources.h"

namespace tamvelo::frame {

using base::NumberSource;

std::span<const CommandRow> RecordAnswer::Commands() const {
    static constexpr CommandRow kCommands[] = {{kRowCode, Do<&RecordAnswer::DeliverCode>}};
    return kCommands;
}

bool RecordAnswer::HasRecord() {
    // Enter on something typed but not searched yet means "find it": it is delivered at once only when it is
    // the one.
    if (m_search.IsPending() && GetFocus() == Control(IDC_TXTFIELDS0)) {
        m_search.AplicarBusqueda(true);
        if (!IsLoaded() || m_grid.Grid().RowCount() != 1) {
            return false;
        }
    }
    return m_grid.HasCurrentRecord(); // without one an empty text would overwrite the host's control
}

void RecordAnswer::ClampColumn() {
    m_request.column = base::ClampColumn(m_request.column, m_grid.Grid().ColumnCount());
}

std::vector<com::Variant> RecordAnswer::TextsFor(const base::Answer& answer) {
    std::vector<com::Variant> texts;
    for (const NumberSource& source : answer.Columns()) {
        const short column = source.Resolve(m_request.column, m_request.indx);
        com::Variant value = answer.asValue ? m_grid.Grid().Value(column) : com::Variant::Null();
        texts.push_back(value.IsNull() ? com::Variant(m_grid.Grid().Text(column)) : std::move(value));
    }
    return texts;
}

void RecordAnswer::Send(const base::Answer& answer) {
    const std::vector<com::Variant> texts = TextsFor(answer);
    contract::Sink& sink = m_request.sink;
    com::ComPtr<IDispatch>& control = m_request.control.Reference();
    short& first = answer.first.kind == NumberSource::Kind::Indx ? m_request.indx : m_request.column;
    if (answer.member == base::SinkMember::AceptarSeleccion) {
        sink.AceptarSeleccion(first, control, texts[0]);
    } else if (answer.first.kind == NumberSource::Kind::Fixed) {
        sink.AceptarSeleccionParamCode(answer.first.fixed, control, texts[0], texts[1], texts[2]);
    } else {
        sink.AceptarSeleccionParam(first, control, texts[0], texts[1], texts[2]);
    }
}

void RecordAnswer::DeliverCode() {
    const std::optional<base::DoubleClickAnswer> answer = base::DoubleClickAnswerFor(m_request.className);
    if (answer && m_grid.HasCurrentRecord()) {
        Deliver([&] {
            m_request.sink.AceptarSeleccionCode(answer->code, m_request.control.Reference(),
                                                m_grid.Grid().Value(answer->column));
        });
    }
}

} // namespace tamvelo::frame
