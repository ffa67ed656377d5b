// A C++ program that throws and catches on its own, and gets an error of the library's in between.
#include <windows.h>

#include <ole2.h>

#include <cstdio>
#include <stdexcept>
#include <string>

namespace {

void Throw(const char* what) {
    try {
        throw std::runtime_error(std::string("Propio: ") + what);
    } catch (const std::exception& error) {
        std::puts(error.what());
    }
}

} // namespace

int main() {
    Throw("antes");
    CLSID id{};
    IDispatch* tamvelo = nullptr;
    CoInitialize(nullptr);
    HRESULT code = CLSIDFromProgID(L"Tamvelo.ClsShowSerch", &id);
    if (SUCCEEDED(code)) {
        code = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                reinterpret_cast<void**>(&tamvelo));
    }
    if (SUCCEEDED(code)) {
        wchar_t member[] = L"ShowSelec";
        LPOLESTR name = member;
        DISPID operation = 0;
        VARIANT nothing[3]{};
        for (VARIANT& one : nothing) {
            one.vt = VT_DISPATCH;
        }
        DISPPARAMS given{nothing, nullptr, 3, 0};
        EXCEPINFO thrown{};
        tamvelo->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &operation);
        code = tamvelo->Invoke(operation, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &given, nullptr,
                               &thrown, nullptr);
        std::printf("%ls: %ls\n", thrown.bstrSource, thrown.bstrDescription);
        SysFreeString(thrown.bstrSource);
        SysFreeString(thrown.bstrDescription);
        SysFreeString(thrown.bstrHelpFile);
        tamvelo->Release();
    }
    CoUninitialize();
    Throw("luego");
    return code == DISP_E_EXCEPTION ? 0 : 1;
}
