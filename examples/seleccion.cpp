// El programa más corto en C++ con enlace tardío: de la biblioteca solo hace falta el nombre. Tiene que estar
// registrada, o el programa llevar un manifiesto.
#include <cstdio>

#include "anfitrion.h"

/// Llama a una operación; los argumentos, del último al primero.
template <size_t Count>
HRESULT Llama(IDispatch* object, const wchar_t* operation, VARIANT (&arguments)[Count]) {
    LPOLESTR name = const_cast<LPOLESTR>(operation);
    DISPID id = 0;
    DISPPARAMS given{arguments, nullptr, Count, 0};
    const HRESULT found = object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    return FAILED(found) ? found
                         : object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &given, nullptr,
                                          nullptr, nullptr);
}

int main() {
    Anfitrion anfitrion;
    CLSID id{};
    IDispatch* dialogos = nullptr;
    CoInitialize(nullptr);
    HRESULT code = CLSIDFromProgID(L"Tamvelo.ClsShowSerch", &id);
    if (SUCCEEDED(code)) {
        code = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                reinterpret_cast<void**>(&dialogos));
    }
    if (SUCCEEDED(code)) {
        VARIANT elegir[] = {Cosa(anfitrion.pantalla), Cosa(anfitrion.articulos), Cosa(anfitrion.pantalla)};
        code = Llama(dialogos, L"ShowSelec", elegir);
        std::printf("Elegido: %ls\n", anfitrion.elegido.c_str());
    }
    if (SUCCEEDED(code)) {
        VARIANT buscar[] = {Cosa(anfitrion.campos), Cosa(anfitrion.articulos), Cosa(anfitrion.pantalla)};
        code = Llama(dialogos, L"ShowBuscar", buscar);
        std::printf("Filtro: %ls\n", anfitrion.filtro.c_str());
    }
    if (dialogos) {
        dialogos->Release();
    }
    CoUninitialize();
    return SUCCEEDED(code) ? 0 : 1;
}
