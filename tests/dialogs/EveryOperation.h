#pragma once

#include <algorithm>
#include <list>

#include "com/Collection.h"
#include "tests/dialogs/DialogFixture.h"
#include "tests/support/Component.h"
#include "tests/support/Operations.h"

namespace tamvelo::testing {

/// Opens the dialogs of all operations, one after the other in one host process.
class AllOperations : public DialogTest {
protected:
    AllOperations() {
        gdiSlack = 16; // what the system keeps of windows that were hidden first
        host.AddColumn(L"Código", L"Cod");
        m_report->Returns(L"Titulo", com::Variant(L"Dos"));
    }
    void WarmUp() override {
        for (const Operation& operation : Operations()) {
            Open(operation, Key(VK_ESCAPE));
        }
    }

    static bool HasDialog(const Operation& operation) { return !operation.name.starts_with(L"Print"); }

    /// Does that in its dialog, if it has one, and turns the host's loop until the dialog has gone.
    void Open(const Operation& operation, const Script& script) {
        const Script there = Until("the dialog", [](HWND top) { return top && top == Dialog(); });
        EXPECT_FALSE(Play(HasDialog(operation) ? Script{there, script} : Script(), [&] {
            EXPECT_FALSE(Unwatched(operation));
            TurnLoop();
            return S_OK;
        }));
    }

    /// Nobody there who would close it. The arguments are variables, as scripts have them.
    std::optional<com::Error> Unwatched(const Operation& operation) {
        std::list<com::Variant> variables;
        return CallLate(server.Get(), operation, [&](const Parameter& parameter) {
            com::Variant reference = com::Variant::Missing();
            if (!parameter.Optional()) {
                reference.Address()->vt = VT_BYREF | VT_VARIANT;
                reference.Address()->pvarVal = variables.emplace_back(Given(parameter)).Address();
            }
            return reference;
        });
    }

    /// A host's object as it reaches the library.
    virtual com::ComPtr<IDispatch> Reached(IDispatch* object, const wchar_t* /*name*/) { return object; }

private:
    com::Variant Given(const Parameter& parameter) {
        const std::pair<const wchar_t*, IDispatch*> objects[] = {{L"MyClase", data.Get()},
                                                                 {L"ctl", ctl.Get()},
                                                                 {L"Columns", columns.Get()},
                                                                 {L"cReports", m_reports.Get()},
                                                                 {L"objClsEvents", sink.Get()}};
        switch (parameter.type) {
        case VT_DISPATCH: {
            const auto named = [&](const auto& each) { return parameter.name == each.first; };
            const auto last = std::end(objects) - 1; // has several names
            const auto [name, object] = *std::find_if(std::begin(objects), last, named);
            return com::Variant(Reached(object, name).Get());
        }
        case VT_BSTR:
            return com::Variant(L"Pruebas");
        case VT_I4:
            return com::Variant(static_cast<long>(reinterpret_cast<LONG_PTR>(owner)));
        case VT_DATE:
            return com::Variant::Date(46000);
        default:
            return com::Variant(short{0});
        }
    }

    const com::ComPtr<HostObject> m_report = com::Make<HostObject>(L"informe", host.log);
    const com::ComPtr<IDispatch> m_reports =
        com::MakeCollection({com::Variant(L"Uno"), com::Variant(m_report.Get())});
};

/// The same with every component of the environment, and with all members that a host may have.
class WithEnvironment : public AllOperations {
protected:
    void SetUp() override {
        environment->Accepts({L"RestaurarPosicion", L"GuardarPosicion", L"LeerValor", L"GuardarValor",
                              L"CargarEtiquetas", L"GuardarLista", L"Recibir", L"GuardarCita"});
        environment->On(L"CargarLista", [](com::Invocation& call) {
            com::LateObject list(call[2].ToObject().Get(), L"lista");
            list.Call(L"AddItem", {L"Uno"});
            list.Call(L"AddItem", {L"Dos"});
            if (call.Count() > 4) {
                com::LateObject(call[4].ToObject().Get(), L"copias").Put(L"Text", L"1");
            }
        });
        environment->Returns(L"RutaBarra", com::Variant(L"C:\\no hay\\"));
        environment->Returns(L"CarpetaCuadriculas", com::Variant(L"C:\\no hay\\"));
        environment->Returns(L"Existe", com::Variant(false));
        environment->Returns(L"CrearClase", com::Variant(host.data.Get()));
        environment->Returns(L"ClaseRelacionada", com::Variant(L"clientes"));
        host.data->Returns(L"ValidaKey", com::Variant(true));
        host.data->Returns(L"ValidaValue", com::Variant(true));
        host.data->Returns(L"ValidaDefinedSize", com::Variant(9L));
        host.data->Returns(L"NuevoCodigo_Fam", com::Variant(L"71"));
        host.data->Accepts({L"InsertarArticulo", L"GetConnection", L"Aceptar_todos", L"Denegar_todos"});
        host.sink->Accepts(
            {L"AceptarNuevo", L"AceptarModificar", L"AceptarEliminar", L"clsEvents_AceptaSeleccion"});
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
