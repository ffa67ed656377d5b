#include "frame/Nested.h"

#include "com/Error.h"
#include "frame/Environment.h"

namespace tamvelo::frame {

namespace {

ShowSerchFactory g_factory = nullptr;

} // namespace

void SetShowSerchFactory(ShowSerchFactory factory) { g_factory = factory; }

com::LateObject NewShowSerch() {
    if (!g_factory) {
        throw com::Error(E_UNEXPECTED, L"No se pueden abrir diálogos desde este formulario.");
    }
    return {g_factory().Get(), L"ClsShowSerch"};
}

void OpenLookup(const Lookup& lookup, IDispatch* sink, IDispatch* control, short index) {
    com::LateObject data(Environment::Get().GetDataClasses().Create(lookup.className).Get(), L"MyClase");
    data.Call(L"Requery", {lookup.selection});
    com::ComPtr<IDispatch> ctl(control);
    short column = 0;
    NewShowSerch().Call(lookup.operation, {sink, data.Get(), com::Argument::Ref(ctl),
                                           com::Argument::Ref(column), com::Argument::Ref(index)});
}

} // namespace tamvelo::frame
