// Hosts that write into what they are given by reference: other values, Variants of other types.
#include "frame/Resources.h"
#include "tests/dialogs/EveryOperation.h"

namespace tamvelo::testing {
namespace {

TEST_F(AllOperations, WhatAHostWritesIntoItsArgumentsGoesNoFurtherThanTheCall) {
    const Script use = {Do([] {
                            if (IsShown(IDC_TXTFIELDS0)) {
                                SetFocus(Item(IDC_TXTFIELDS0));
                            }
                        }),
                        Type(L"7"), Key(VK_TAB), Do([] {
                            for (const wchar_t* tool : {L"Orden descendente", L"Aceptar"}) {
                                if (ToolCommand(tool) >= 0) {
                                    ClickTool(tool);
                                }
                            }
                        })};
    host.sink->Accepts({L"AceptarReports", L"AceptarReportsParam", L"AceptarReportsParamMail",
                        L"AceptarReportsInformesParam", L"AceptarReportsParamHr", L"AceptarReportsFchAuto",
                        L"AceptarInformesFchAuto", L"AceptarInformesFch", L"AceptarInformesFchAutoTipoTime",
                        L"AceptarListasParam"});
    for (const demo::Operation& operation : demo::Operations()) {
        const std::wstring name = operation.name;
        SCOPED_TRACE(::testing::PrintToString(name));
        const auto run = [&](bool changes) {
            const bool shows = !name.starts_with(L"Print");
            const Script script = {Until("the dialog", [](HWND top) { return top && top == Dialog(); }),
                                   name == L"ShowNuevaCita" ? Key(VK_ESCAPE) : use};
            checks->changesReferences = changes;
            host.set->SetFilter(L"");
            host.set->SetSort(L"");
            host.stored.clear();
            Open(operation, shows ? script : Script());
            checks->changesReferences = false;
            ctl = com::ComPtr<IDispatch>(host.ctl.Get()); // the caller's own, which the sink has replaced
            return TakeLog();
        };
        const Log clean = run(false);
        EXPECT_FALSE(clean.empty());
        run(true);
        EXPECT_THAT(run(false), ElementsAreArray(clean)) << "something was kept";
    }
}

} // namespace
} // namespace tamvelo::testing
