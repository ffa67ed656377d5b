#include "frame/RecordRequest.h"

#include "base/FilterText.h"
#include "base/SelectionAnswers.h"

namespace tamvelo::frame {

void RecordRequest::Mostrar(IDispatch* hostSink, IDispatch* hostData, contract::HostControl& caller,
                            short columnAsked, short numberAsked, bool find) {
    Take(hostSink, hostData, caller, columnAsked, numberAsked);
    OpenRecords(base::kSeleccion, find);
    ShowFor(caller, 1);
}

void RecordRequest::Take(IDispatch* hostSink, IDispatch* hostData, const contract::HostControl& hostControl,
                         short columnAsked, short numberAsked) {
    sink = contract::Sink(hostSink);
    data = contract::DataClass(hostData);
    control = hostControl;
    column = columnAsked;
    indx = numberAsked;
    className = data.sClassName();
}

void RecordRequest::OnUnload() noexcept {
    m_caller = nullptr;
    control.Reset();
    data.Reset();
    sink.Reset();
}

void RecordRequest::OpenRecords(std::wstring_view selection, bool find) {
    data.Requery(selection);
    const std::optional<base::FindRule> rule = find ? base::FindRuleFor(column) : std::nullopt;
    if (!rule) {
        return;
    }
    const std::wstring text = control.Text();
    if (!text.empty()) {
        data.FindRecord(text, rule->number);
    }
}

void RecordRequest::ShowFor(contract::HostControl& caller, short modal) {
    if (modal != 0) {
        m_caller = &caller;
    }
    ShowAs(modal);
}

void RecordRequest::TakeControlBack() {
    if (m_caller) {
        *m_caller = control;
    }
}

} // namespace tamvelo::frame
