#pragma once

#include <list>

#include "tests/dialogs/DialogFixture.h"
#include "tests/support/Operations.h"

namespace tamvelo::testing {

/// Opens the dialogs of all operations, one after the other in one host process.
class AllOperations : public DialogTest {
protected:
    AllOperations() {
        host.AddColumn(L"Código", L"Cod");
        m_report->Returns(L"Titulo", Variant(L"Dos"));
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
        std::list<Variant> variables;
        return CallLate(server.Get(), operation, [&](const Parameter& parameter) {
            Variant reference = Variant::Missing();
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
    Variant Given(const Parameter& parameter) {
        const std::map<std::wstring, IDispatch*> objects{{L"MyClase", data.Get()},
                                                         {L"ctl", ctl.Get()},
                                                         {L"Columns", columns.Get()},
                                                         {L"cReports", m_reports.Get()}};
        switch (parameter.type) {
        case VT_DISPATCH: {
            const auto known = objects.find(parameter.name);
            return Variant(known == objects.end()
                               ? Reached(sink.Get(), L"objClsEvents").Get() // has several names
                               : Reached(known->second, known->first.c_str()).Get());
        }
        case VT_BSTR:
            return Variant(L"Pruebas");
        case VT_I4:
            return Variant(static_cast<long>(reinterpret_cast<LONG_PTR>(owner)));
        case VT_DATE:
            return Variant::Date(46000);
        default:
            return Variant(short{0});
        }
    }

    const com::ComPtr<HostObject> m_report = com::Make<HostObject>(L"informe", host.log);
    const com::ComPtr<IDispatch> m_reports = com::MakeCollection({Variant(L"Uno"), Variant(m_report.Get())});
};

/// The same with every component of the environment, and with all members that a host may have.
class WithEnvironment : public AllOperations {
protected:
    void SetUp() override {
        environment->Returns(L"CrearClase", Variant(host.data.Get()));
        environment->Returns(L"ClaseRelacionada", Variant(L"clientes"));
        host.data->Returns(L"ValidaKey", Variant(true));
        host.data->Returns(L"ValidaValue", Variant(true));
        host.data->Returns(L"ValidaDefinedSize", Variant(9L));
        host.data->Returns(L"NuevoCodigo_Fam", Variant(L"71"));
        host.data->Accepts({L"InsertarArticulo", L"GetConnection", L"Aceptar_todos", L"Denegar_todos"});
        host.sink->Accepts(
            {L"AceptarNuevo", L"AceptarModificar", L"AceptarEliminar", L"clsEvents_AceptaSeleccion"});
        AllOperations::SetUp();
        Offer({L"Configuracion", L"Archivos", L"Foco", L"Clases", L"Citas"},
              Reached(environment.Get(), L"Entorno").Get());
        Renew();
    }
    /// The library looks for its components anew.
    void Renew() {
        server.Reset();
        EXPECT_TRUE(hosts::Server().MayUnload());
        server = hosts::Server().Create();
    }
};

} // namespace tamvelo::testing
