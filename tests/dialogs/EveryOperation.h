#pragma once

#include <algorithm>

#include "com/Collection.h"
#include "demo/app/Operations.h"
#include "tests/dialogs/DialogFixture.h"

namespace tamvelo::testing {

/// Opens the dialogs of all operations, one after the other in one host process.
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

    /// `look` sees each dialog; `only` these operations, if it names any.
    void OpenAll(const Script& look = {}, std::initializer_list<std::wstring_view> only = {}) {
        for (const demo::Operation& operation : demo::Operations()) {
            if (only.size() > 0 && std::ranges::find(only, operation.name) == only.end()) {
                continue;
            }
            SCOPED_TRACE(::testing::PrintToString(std::wstring(operation.name)));
            const bool shows = !std::wstring_view(operation.name).starts_with(L"Print");
            Open(operation, shows ? Script()
                                        .Until("the dialog", [](HWND top) { return top && top == Dialog(); })
                                        .Append(look)
                                        .Key(VK_ESCAPE)
                                  : Script());
        }
    }

    void Open(const demo::Operation& operation, Script script) {
        const Player player(std::move(script), [this] { return Notes(); });
        Unwatched(operation);
        while (Dialog() != nullptr) { // one that does not wait for its end
            MSG message;
            GetMessageW(&message, nullptr, 0, 0);
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }

    /// Nobody there who would close it.
    void Unwatched(const demo::Operation& operation) {
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
        operation.Perform(late, request);
    }
};

} // namespace tamvelo::testing
