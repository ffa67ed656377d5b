#include "selection/PanelForm.h"

#include "base/FilterText.h"
#include "base/SelectionAnswers.h"

namespace tamvelo::selection {

void PanelForm::ShowSearching(contract::HostControl& ctl, bool find, short modal) {
    OpenRecords(base::kSeleccion, find);
    Load();
    const std::wstring text = Ctl().Text();
    if (!text.empty()) {
        SetSearchText(base::kAnyText + text);
        AplicarBusqueda(true);
    }
    ShowFor(ctl, modal);
}

void PanelForm::OnLoad() {
    GridForm::OnLoad();
    Bar().SetBandVisible(base::kBandRegistros, true);
    Bar().SetBandVisible(base::kBandRegistro, true);
}

void PanelForm::Aceptar() {
    if (!HasRecordToDeliver()) {
        return;
    }
    ClampColumn();
    DeliverSelection([&] { TellSink(); });
}

void PanelForm::OnRowActivated() {
    Input(base::DoubleClickAnswerFor(ClassName()) ? kRowCode : base::kAceptar);
}

void PanelForm::DeliverCode() {
    const std::optional<base::DoubleClickAnswer> answer = base::DoubleClickAnswerFor(ClassName());
    if (HasCurrentRecord()) {
        DeliverAnswer([&] {
            Sink().AceptarSeleccionCode(answer->code, Ctl().Reference(), DataGrid().Value(answer->column));
        });
    }
}

bool PanelForm::MeansAll(std::wstring_view typed) const { return typed == base::kAnyText; }

void PanelForm::OnSearchStrip(bool shown) { SetHeading(shown ? Heading(Filter()) : std::wstring()); }

} // namespace tamvelo::selection
