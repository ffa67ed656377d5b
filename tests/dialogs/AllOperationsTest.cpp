// Every operation of the library in one host process, one after the other.
#include "tests/dialogs/EveryOperation.h"
#include "tests/support/SystemAnswer.h"

namespace tamvelo::testing {
namespace {

TEST_F(AllOperations, EveryDialogIsOutOfTheWayWhileTheHostTakesItsAnswer) {
    int told = 0;
    for (const wchar_t* member :
         {L"AceptarBuscar", L"AceptarSeleccion", L"AceptarSeleccionParam", L"clsEvents_AceptaSeleccion",
          L"ActualizaColumnas", L"ActualizaOrden", L"AceptarFechaEntre", L"AceptarReports",
          L"AceptarReportsParam", L"AceptarReportsParamMail", L"AceptarReportsInformesParam",
          L"AceptarReportsParamHr", L"AceptarReportsFchAuto", L"AceptarInformesFchAuto",
          L"AceptarInformesFch", L"AceptarInformesFchAutoTipoTime", L"AceptarDocNumAut",
          L"AceptarListasParam", L"AceptarEtiqueta"}) {
        host.sink->On(member, [&](com::Invocation&) {
            ++told;
            EXPECT_TRUE(IsWindowEnabled(owner));
            EXPECT_FALSE(Dialog() && IsWindowVisible(Dialog()));
        });
    }
    for (const demo::Operation& operation : demo::Operations()) {
        const std::wstring name = operation.name;
        SCOPED_TRACE(::testing::PrintToString(name));
        Script script = Script().Until("the dialog", [](HWND top) { return top && top == Dialog(); });
        if (name.starts_with(L"Print")) {
            script = {};
        } else if (name == L"ShowNuevaCita") {
            script.Key(VK_ESCAPE); // there is no component that would keep it
        } else {
            script.Do([] { ClickTool(L"Aceptar"); });
        }
        told = 0;
        Open(operation, script);
        EXPECT_GE(told, 1);
    }
}

TEST_F(AllOperations, LiveWhenTheSystemHasNothingLeftToMeasureWith) {
    const SystemAnswer noUnits(L"kernelbase.dll", "MulDiv", 3, 0); // of which dialog units are made
    const SystemAnswer noContext(L"user32.dll", "GetDC", 1, 0);
    // The system's own calendar does not live then.
    OpenAll({}, {L"ShowSelecAdd", L"ShowSeleccionar"});
}

} // namespace
} // namespace tamvelo::testing
