// The smallest host in C++, with nothing of the library but its identifiers: a table in memory, and the user
// picks one of its articles. The library must be registered.
#include <windows.h>

#include <ole2.h>

#include <cstdio>
#include <functional>
#include <map>
#include <string>

/// An automation object made of functions. Arguments come last first, as automation has them.
class Object final : public IDispatch {
public:
    using Member = std::function<VARIANT(const DISPPARAMS&)>;
    explicit Object(std::map<std::wstring, Member> members) : m_members(std::move(members)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        *out = id == IID_IUnknown || id == IID_IDispatch ? this : nullptr;
        return *out ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; } // objects live as long as the program
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        const auto found = m_members.find(names[0]);
        *ids = found == m_members.end() ? DISPID_UNKNOWN
                                        : static_cast<DISPID>(std::distance(m_members.begin(), found));
        return *ids == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        VARIANT answer = std::next(m_members.begin(), id)->second(*parameters);
        result ? void(*result = answer) : void(VariantClear(&answer));
        return S_OK;
    }

private:
    std::map<std::wstring, Member> m_members;
};

VARIANT Number(long value) {
    VARIANT made{};
    made.vt = VT_I4;
    made.lVal = value;
    return made;
}
VARIANT Text(const wchar_t* value) {
    VARIANT made{};
    made.vt = VT_BSTR;
    made.bstrVal = SysAllocString(value);
    return made;
}
VARIANT Thing(IDispatch& value) {
    VARIANT made{};
    made.vt = VT_DISPATCH;
    made.pdispVal = &value;
    return made;
}
VARIANT Done() { return {}; }

int main() {
    const wchar_t* const names[] = {L"Codigo", L"Nombre"};
    const wchar_t* const rows[][2] = {{L"A-1", L"Tornillo"}, {L"A-2", L"Tuerca"}, {L"A-3", L"Arandela"}};
    constexpr long kRows = 3;
    long at = 1;
    std::wstring chosen;
    const auto move = [&](auto change) {
        return [&at, change](const DISPPARAMS&) { return at = change(at), Done(); };
    };
    const auto first = move([](long) { return 1; });

    Object fields0({{L"Name", [&](auto&) { return Text(names[0]); }},
                    {L"Value", [&](auto&) { return Text(rows[at - 1][0]); }}});
    Object fields1({{L"Name", [&](auto&) { return Text(names[1]); }},
                    {L"Value", [&](auto&) { return Text(rows[at - 1][1]); }}});
    Object fields({{L"Count", [](auto&) { return Number(2); }},
                   {L"Item", [&](const DISPPARAMS& given) {
                        VARIANT index{};
                        VariantChangeType(&index, &given.rgvarg[0], 0, VT_I4);
                        return Thing(index.lVal == 0 ? fields0 : fields1);
                    }}});
    Object data({{L"sClassName", [](auto&) { return Text(L"articulos"); }},
                 {L"existenregistros", [](auto&) { return Number(-1); }},
                 {L"RecordCount", [](auto&) { return Number(kRows); }},
                 {L"BOF", [&](auto&) { return Number(at < 1 ? -1 : 0); }},
                 {L"EOF", [&](auto&) { return Number(at > kRows ? -1 : 0); }},
                 {L"AbsolutePosition",
                  [&](const DISPPARAMS& given) {
                      if (given.cArgs == 1) {
                          VARIANT position{};
                          VariantChangeType(&position, &given.rgvarg[0], 0, VT_I4);
                          at = position.lVal;
                      }
                      return Number(at);
                  }},
                 {L"Fields", [&](auto&) { return Thing(fields); }},
                 {L"MoveFirst", first},
                 {L"MoveLast", move([](long) { return kRows; })},
                 {L"MoveNext", move([](long now) { return now + 1; })},
                 {L"MovePrevious", move([](long now) { return now - 1; })},
                 {L"Requery", first},
                 {L"FindRecord", first},
                 {L"AplyFilter", first}});
    Object screen(
        {{L"Text", [](auto&) { return Text(L""); }}, {L"AceptarSeleccion", [&](const DISPPARAMS& given) {
                                                          chosen = given.rgvarg[0].bstrVal;
                                                          return Done();
                                                      }}});

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
        VARIANT arguments[] = {Thing(screen), Thing(data), Thing(screen)};
        DISPPARAMS given{arguments, nullptr, 3, 0};
        tamvelo->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &operation);
        code = tamvelo->Invoke(operation, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &given, nullptr,
                               nullptr, nullptr);
        tamvelo->Release();
    }
    std::printf("Elegido: %ls\n", chosen.c_str());
    CoUninitialize();
    return SUCCEEDED(code) ? 0 : 1;
}
