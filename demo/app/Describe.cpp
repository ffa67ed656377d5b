#include "demo/app/Describe.h"

#include "com/LateObject.h"
#include "demo/data/Database.h"

namespace tamvelo::demo {

namespace {

using com::Variant;

std::wstring DescribeObject(const com::ComPtr<IDispatch>& object) {
    com::LateObject late(object.Get(), L"objeto");
    if (!late) {
        return L"Nada";
    }
    if (late.Answers(L"Name") && late.Answers(L"Index")) {
        return late.Call(L"Name").ToText() + L'(' + late.Call(L"Index").ToText() + L')';
    }
    return late.Answers(L"Count") ? L"colección de " + late.Call(L"Count").ToText() : L"objeto";
}

std::wstring DescribeValue(const Variant& value) {
    switch (value.Type()) {
    case VT_EMPTY:
        return L"Vacío";
    case VT_NULL:
        return L"Nulo";
    case VT_ERROR:
        return L"omitido";
    case VT_BSTR:
        return L"«" + value.ToText() + L"»";
    case VT_BOOL:
        return value.ToBool() ? L"Verdadero" : L"Falso";
    case VT_DISPATCH:
        return DescribeObject(value.ToObject());
    default:
        return value.ToText();
    }
}

} // namespace

std::wstring Describe(std::wstring_view member, const com::Invocation& call) {
    std::wstring line = std::wstring(member) + L'(';
    for (std::size_t i = 0; i < call.Count(); ++i) {
        line += (i > 0 ? L", " : L"") + DescribeValue(call[i]);
    }
    return line + L')';
}

std::wstring Describe(const com::Error& error) {
    // Numbers of 16 bits are what the programmer of a host knows; others are the system's and read in
    // hexadecimal.
    const auto number = static_cast<unsigned>(error.number);
    wchar_t text[16];
    wsprintfW(text, HRESULT_FACILITY(error.number) == FACILITY_CONTROL ? L"%u" : L"%08X",
              HRESULT_FACILITY(error.number) == FACILITY_CONTROL ? number & 0xFFFF : number);
    return L"Error " + std::wstring(text) + L": " + error.description + L" (" + error.source + L')';
}

com::Error AnyCurrentError() {
    try {
        throw;
    } catch (const DataError& error) {
        return com::Error(E_FAIL, error.Message(), L"Pedidos");
    } catch (...) {
        return com::CurrentError();
    }
}

} // namespace tamvelo::demo
