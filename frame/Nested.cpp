#include "frame/Nested.h"

#include "com/Error.h"

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

} // namespace tamvelo::frame
