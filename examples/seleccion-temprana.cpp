// El programa más corto en C++ con enlace temprano, por la interfaz. Tamvelo.h se hace de Tamvelo.idl: midl
// /h Tamvelo.h Tamvelo.idl, o widl -h -o Tamvelo.h Tamvelo.idl.
#include <cstdio>

#include "Tamvelo.h"
#include "anfitrion.h"

int main() {
    Anfitrion anfitrion;
    _ClsShowSerch* dialogos = nullptr;
    CoInitialize(nullptr);
    HRESULT code = CoCreateInstance(__uuidof(ClsShowSerch), nullptr, CLSCTX_INPROC_SERVER,
                                    __uuidof(_ClsShowSerch), reinterpret_cast<void**>(&dialogos));
    // Todo viaja por referencia; lo que puede faltar es un puntero nulo.
    IDispatch* pantalla = &anfitrion.pantalla;
    IDispatch* control = &anfitrion.pantalla;
    IDispatch* articulos = &anfitrion.articulos;
    IDispatch* columnas = &anfitrion.campos;
    if (SUCCEEDED(code)) {
        code = dialogos->ShowSelec(&pantalla, &articulos, &control, nullptr, nullptr, nullptr, nullptr);
        std::printf("Elegido: %ls\n", anfitrion.elegido.c_str());
    }
    if (SUCCEEDED(code)) {
        code = dialogos->ShowBuscar(&pantalla, &articulos, &columnas);
        std::printf("Filtro: %ls\n", anfitrion.filtro.c_str());
    }
    if (dialogos) {
        dialogos->Release();
    }
    CoUninitialize();
    return SUCCEEDED(code) ? 0 : 1;
}
