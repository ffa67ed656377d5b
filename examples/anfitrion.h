// Los objetos de un anfitrión en C++, para los dos programas: una tabla en memoria.
#pragma once

#include <windows.h>

#include <ole2.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

/// Un objeto de automatización hecho de funciones. Los argumentos llegan del último al primero.
class Objeto final : public IDispatch {
public:
    using Miembro = std::function<VARIANT(const DISPPARAMS&)>;
    explicit Objeto(std::map<std::wstring, Miembro> miembros) : m_miembros(std::move(miembros)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        *out = id == IID_IUnknown || id == IID_IDispatch ? this : nullptr;
        return *out ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; } // viven lo que el programa
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        const auto found = m_miembros.find(names[0]);
        *ids = found == m_miembros.end() ? DISPID_UNKNOWN
                                         : static_cast<DISPID>(std::distance(m_miembros.begin(), found));
        return *ids == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        VARIANT answer = std::next(m_miembros.begin(), id)->second(*parameters);
        result ? void(*result = answer) : void(VariantClear(&answer));
        return S_OK;
    }

private:
    std::map<std::wstring, Miembro> m_miembros;
};

inline VARIANT Numero(long value) {
    VARIANT made{};
    made.vt = VT_I4;
    made.lVal = value;
    return made;
}
inline VARIANT Texto(const std::wstring& value) {
    VARIANT made{};
    made.vt = VT_BSTR;
    made.bstrVal = SysAllocString(value.c_str());
    return made;
}
inline VARIANT Cosa(IDispatch& value) {
    VARIANT made{};
    made.vt = VT_DISPATCH;
    made.pdispVal = &value;
    return made;
}
/// El argumento de ese lugar, contado desde el último, como texto; el de un control es lo que dice `miembro`.
inline std::wstring Leido(const DISPPARAMS& given, UINT place, const wchar_t* member = nullptr) {
    VARIANT value{};
    VariantCopyInd(&value, &given.rgvarg[place]);
    if (member && value.vt == VT_DISPATCH && value.pdispVal) {
        IDispatch* const object = value.pdispVal;
        LPOLESTR name = const_cast<LPOLESTR>(member);
        DISPID id = 0;
        DISPPARAMS none{};
        object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
        object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value, nullptr,
                       nullptr);
        object->Release();
    }
    VariantChangeType(&value, &value, 0, VT_BSTR);
    const std::wstring text = value.vt == VT_BSTR && value.bstrVal ? value.bstrVal : L"";
    VariantClear(&value);
    return text;
}

struct Anfitrion {
    long actual = 1;
    std::wstring elegido;
    std::wstring filtro;

    Objeto codigo = Campo(L"Codigo", {L"A-1", L"A-2", L"A-3"});
    Objeto nombre = Campo(L"Nombre", {L"Tornillo", L"Tuerca", L"Arandela"});
    Objeto campos{
        {{L"Count", [](auto&) { return Numero(2); }},
         {L"Item", [this](auto& given) { return Cosa(Leido(given, 0) == L"0" ? codigo : nombre); }}}};
    /// La clase de datos, que es su propio conjunto de registros.
    Objeto articulos{{
        {L"sClassName", [](auto&) { return Texto(L"articulos"); }},
        {L"RecordCount", [](auto&) { return Numero(3); }},
        {L"BOF", [this](auto&) { return Numero(actual < 1 ? -1 : 0); }},
        {L"EOF", [this](auto&) { return Numero(actual > 3 ? -1 : 0); }},
        {L"AbsolutePosition",
         [this](auto& given) {
             actual = given.cArgs == 1 ? std::stol(Leido(given, 0)) : actual; // se escribe o se lee
             return Numero(actual);
         }},
        {L"Fields", [this](auto&) { return Cosa(campos); }},
        {L"MoveFirst", [this](auto&) { return Numero(actual = 1); }},
        {L"MoveNext", [this](auto&) { return Numero(++actual); }},
        {L"Requery", [this](auto&) { return Numero(actual = 1); }},
        {L"FindRecord", [this](auto&) { return Numero(actual = 1); }},
        {L"ValidaKey", [](auto&) { return Numero(-1); }},
        {L"ValidaValue", [](auto&) { return Numero(-1); }},
        {L"ValidaDefinedSize", [](auto&) { return Numero(20); }},
        {L"CreateFilter",
         [](auto& given) {
             const UINT box = given.cArgs - 1;
             const std::wstring text = Leido(given, box, L"Text");
             return Texto(text.empty() ? L"" : Leido(given, box, L"DataField") + L"=" + text);
         }},
        {L"SetFilter", [this](auto& given) { return filtro = Leido(given, 1), VARIANT{}; }},
        {L"GetFilter", [this](auto&) { return Texto(filtro); }},
        {L"AplyFilter", [this](auto&) { return Numero(actual = 1); }},
    }};
    /// El control que pide el registro, y quien recibe la respuesta.
    Objeto pantalla{
        {{L"Text", [](auto&) { return Texto(L""); }},
         {L"AceptarSeleccion", [this](auto& given) { return elegido = Leido(given, 0), VARIANT{}; }},
         {L"AceptarBuscar", [](auto&) { return VARIANT{}; }}}};

private:
    /// Del registro actual; también sirve de columna.
    Objeto Campo(const wchar_t* name, std::vector<std::wstring> rows) {
        const auto named = [name](auto&) { return Texto(name); };
        return Objeto(
            {{L"Name", named},
             {L"Caption", named},
             {L"DataField", named},
             {L"Value", [this, rows](auto&) { return Texto(rows[static_cast<size_t>(actual - 1)]); }}});
    }
};
