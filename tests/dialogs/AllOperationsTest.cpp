// Every operation of the library in one host process, one after the other.
#include <algorithm>

#include "com/Collection.h"
#include "demo/app/Operations.h"
#include "tests/dialogs/DialogFixture.h"
#include "tests/support/SystemAnswer.h"

namespace tamvelo::testing {
namespace {

class AllOperations : public DialogTest {
protected:
    AllOperations() {
        gdiSlack = 16; // what the system keeps of windows that were hidden first
        host.AddColumn(L"Código", L"Cod");
        for (const wchar_t* member : {L"AceptarEtiqueta", L"AceptarDocNumAut"}) {
            host.sink->On(member, [](com::Invocation&) {});
        }
    }
    void WarmUp() override { OpenAll(); }

    void OpenAll(std::initializer_list<std::wstring_view> only = {}) {
        for (const demo::Operation& operation : demo::Operations()) {
            if (only.size() > 0 && std::ranges::find(only, operation.name) == only.end()) {
                continue;
            }
            SCOPED_TRACE(::testing::PrintToString(std::wstring(operation.name)));
            const bool shows = !std::wstring_view(operation.name).starts_with(L"Print");
            Open(operation, shows ? Script()
                                        .Until("the dialog", [](HWND top) { return top && top == Dialog(); })
                                        .Key(VK_ESCAPE)
                                  : Script());
        }
    }

    void Open(const demo::Operation& operation, Script script) {
        demo::Request request;
        request.sink = sink;
        request.dataClass = data;
        request.control = ctl;
        request.columns = columns;
        request.reports = com::MakeCollection({com::Variant(L"Uno"), com::Variant(L"Dos")});
        request.screen = L"Pruebas";
        request.window = static_cast<long>(reinterpret_cast<LONG_PTR>(owner));
        request.date = 46000;
        com::LateObject late(server.Get(), L"servidor");
        const Player player(std::move(script), [this] { return Notes(); });
        operation.Perform(late, request);
        while (Dialog() != nullptr) { // one that does not wait for its end
            MSG message;
            GetMessageW(&message, nullptr, 0, 0);
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
};

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

TEST_F(AllOperations, OpenAndCloseInOneProcessAndLeaveNothing) { OpenAll(); }

TEST_F(AllOperations, LiveWhenTheSystemHasNothingLeftToMeasureWith) {
    const SystemAnswer noUnits(L"kernelbase.dll", "MulDiv", 3, 0); // of which dialog units are made
    const SystemAnswer noContext(L"user32.dll", "GetDC", 1, 0);
    // The system's own calendar does not live then.
    OpenAll({L"ShowSelecAdd", L"ShowSeleccionar"});
}

} // namespace
} // namespace tamvelo::testing
