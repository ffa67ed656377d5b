#include "base/FilterText.h"
#include "base/SelectionAnswers.h"
#include "frame/GridForm.h"

// The host's call: how a form with a grid opens on a record, and answers with the one that the user wants.
namespace tamvelo::frame {

using base::NumberSource;

void GridForm::Take(IDispatch* sink, IDispatch* data, const contract::HostControl& control, short column,
                    short indx) {
    m_sink = contract::Sink(sink);
    m_data = contract::DataClass(data);
    m_control = control;
    m_column = column;
    m_indx = indx;
    m_className = m_data.sClassName();
    m_layoutStore = environment::GridLayoutStore(LayoutName());
}

void GridForm::Mostrar(IDispatch* sink, IDispatch* data, contract::HostControl& ctl, short column, short indx,
                       bool find) {
    Show([&] {
        Take(sink, data, ctl, column, indx);
        OpenRecords(base::kSeleccion, find);
        ShowFor(ctl, 1);
    });
}

void GridForm::OpenRecords(std::wstring_view selection, bool find) {
    m_data.Requery(selection);
    const std::optional<base::FindRule> rule = find ? base::FindRuleFor(m_column) : std::nullopt;
    if (!rule) {
        return;
    }
    const std::wstring text = m_control.Text();
    if (!text.empty()) {
        m_data.FindRecord(text, rule->number);
    }
}

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
