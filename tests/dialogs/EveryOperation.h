#pragma once

#include <algorithm>

#include "com/Collection.h"
#include "demo/app/Operations.h"
#include "tests/dialogs/DialogFixture.h"
#include "tests/support/Component.h"

namespace tamvelo::testing {

/// Opens the dialogs of all operations, one after the other in one host process.
class AllOperations : public DialogTest {
protected:
    AllOperations() {
        gdiSlack = 16; // what the system keeps of windows that were hidden first
        host.AddColumn(L"Código", L"Cod");
        m_report->On(L"Titulo", [](com::Invocation& call) { call.Return(com::Variant(L"Dos")); });
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
        request.sink = Reached(sink.Get(), L"objClsEvents");
        request.dataClass = Reached(data.Get(), L"MyClase");
        request.control = Reached(ctl.Get(), L"ctl");
        request.columns = Reached(columns.Get(), L"Columns");
        request.reports = Reached(
            com::MakeCollection({com::Variant(L"Uno"), com::Variant(m_report.Get())}).Get(), L"cReports");
        request.screen = L"Pruebas";
        request.window = static_cast<long>(reinterpret_cast<LONG_PTR>(owner));
        request.date = 46000;
        com::LateObject late(server.Get(), L"servidor");
        operation.Perform(late, request);
    }

    /// A host's object as it reaches the library.
    virtual com::ComPtr<IDispatch> Reached(IDispatch* object, const wchar_t* /*name*/) { return object; }

private:
    com::ComPtr<HostObject> m_report = com::Make<HostObject>(L"informe", host.log);
};

/// The same with every component of the environment, and with all members that a host may have.
class WithEnvironment : public AllOperations {
protected:
    void SetUp() override {
        const auto answers = [](com::Variant value) {
            return [value](com::Invocation& call) { call.Return(value); };
        };
        const auto nothing = [](com::Invocation&) {};
        for (const wchar_t* member : {L"RestaurarPosicion", L"GuardarPosicion", L"LeerValor", L"GuardarValor",
                                      L"CargarEtiquetas", L"GuardarLista", L"Recibir", L"GuardarCita"}) {
            environment->On(member, nothing);
        }
        environment->On(L"CargarLista", [](com::Invocation& call) {
            com::LateObject list(call[2].ToObject().Get(), L"lista");
            list.Call(L"AddItem", {L"Uno"});
            list.Call(L"AddItem", {L"Dos"});
            if (call.Count() > 4) {
                com::LateObject(call[4].ToObject().Get(), L"copias").Put(L"Text", L"1");
            }
        });
        environment->On(L"RutaBarra", answers(com::Variant(L"C:\\no hay\\")));
        environment->On(L"CarpetaCuadriculas", answers(com::Variant(L"C:\\no hay\\")));
        environment->On(L"Existe", answers(com::Variant(false)));
        environment->On(L"CrearClase", answers(com::Variant(host.data.Get())));
        environment->On(L"ClaseRelacionada", answers(com::Variant(L"clientes")));
        host.data->On(L"ValidaKey", answers(com::Variant(true)));
        host.data->On(L"ValidaValue", answers(com::Variant(true)));
        host.data->On(L"ValidaDefinedSize", answers(com::Variant(9L)));
        host.data->On(L"NuevoCodigo_Fam", answers(com::Variant(L"71")));
        for (const wchar_t* member :
             {L"InsertarArticulo", L"GetConnection", L"Aceptar_todos", L"Denegar_todos"}) {
            host.data->On(member, nothing);
        }
        for (const wchar_t* member :
             {L"AceptarReports", L"AceptarReportsParam", L"AceptarReportsParamMail",
              L"AceptarReportsInformesParam", L"AceptarReportsParamHr", L"AceptarReportsFchAuto",
              L"AceptarInformesFchAuto", L"AceptarInformesFch", L"AceptarInformesFchAutoTipoTime",
              L"AceptarListasParam", L"AceptarNuevo", L"AceptarModificar", L"AceptarEliminar",
              L"clsEvents_AceptaSeleccion"}) {
            host.sink->On(member, nothing);
        }
        AllOperations::SetUp();
        m_component.emplace(Reached(environment.Get(), L"Entorno").Get());
        for (const wchar_t* part : {L"Configuracion", L"Archivos", L"Foco", L"Clases", L"Citas"}) {
            SetValue(kEnvironmentKey, part, Component::Name());
        }
        Renew();
    }
    void TearDown() override {
        m_component.reset();
        AllOperations::TearDown();
    }
    /// The library looks for its components anew.
    void Renew() {
        server.Reset();
        EXPECT_TRUE(hosts::Server().MayUnload());
        server = hosts::Server().Create();
    }
    void NewOwner() {
        if (!IsWindow(owner)) {
            owner = CreateWindowExW(0, L"STATIC", L"Gestión", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 500,
                                    400, nullptr, nullptr, nullptr, nullptr);
        }
        SetActiveWindow(owner);
    }

    com::ComPtr<HostObject> environment = com::Make<HostObject>(L"entorno", host.log);

private:
    std::optional<Component> m_component;
};

} // namespace tamvelo::testing
