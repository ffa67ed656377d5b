// The ways that lead to a record set.
#include <dispex.h>
#include <msdatsrc.h>

#include "tests/support/RecordSets.h"

__CRT_UUID_DECL(DataSource, 0x7c0ffab3, 0xcd84, 0x11d0, 0x94, 0x9a, 0x00, 0xa0, 0xc9, 0x11, 0x10, 0xed)

namespace tamvelo::testing {

using com::ComPtr;

namespace {

class ScriptObject final : public com::Object<IDispatchEx> {
public:
    explicit ScriptObject(IDispatch* object) : m_object(object) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* thrown,
                                     UINT* wrong) override {
        const HRESULT code = m_object->Invoke(id, reserved, locale, flags, parameters, result, thrown, wrong);
        if (SUCCEEDED(code) && result && result->vt == VT_DISPATCH && result->pdispVal) {
            IDispatch* const plain = result->pdispVal;
            result->pdispVal = AsScript(plain).Detach();
            plain->Release();
        }
        return code;
    }
    HRESULT STDMETHODCALLTYPE GetDispID(BSTR name, DWORD, DISPID* id) override {
        LPOLESTR names = name;
        return m_object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, id);
    }
    HRESULT STDMETHODCALLTYPE InvokeEx(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                       VARIANT* result, EXCEPINFO* thrown, IServiceProvider*) override {
        return Invoke(id, IID_NULL, locale, flags, parameters, result, thrown, nullptr);
    }
    HRESULT STDMETHODCALLTYPE DeleteMemberByName(BSTR, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeleteMemberByDispID(DISPID) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMemberProperties(DISPID, DWORD, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMemberName(DISPID, BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNextDispID(DWORD, DISPID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNameSpaceParent(IUnknown**) override { return E_NOTIMPL; }

private:
    const ComPtr<IDispatch> m_object;
};

class MemoryDataSource final : public com::Object<DataSource> {
public:
    explicit MemoryDataSource(std::function<ComPtr<IDispatch>()> set) : m_set(std::move(set)) {}

    HRESULT STDMETHODCALLTYPE getDataMember(DataMember name, REFIID id, IUnknown** out) override {
        *out = nullptr;
        if (!name || std::wstring_view(name) != L"Primary") {
            return E_INVALIDARG;
        }
        const ComPtr<IDispatch> set = m_set();
        return set ? set->QueryInterface(id, reinterpret_cast<void**>(out)) : E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE getDataMemberName(LONG, DataMember*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE getDataMemberCount(LONG* count) override { return *count = 1, S_OK; }
    HRESULT STDMETHODCALLTYPE addDataSourceListener(DataSourceListener*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE removeDataSourceListener(DataSourceListener*) override { return S_OK; }

private:
    const std::function<ComPtr<IDispatch>()> m_set;
};

} // namespace

ComPtr<IDispatch> AsScript(IDispatch* object) {
    return ComPtr<IDispatch>(com::Make<ScriptObject>(object).Get());
}

ComPtr<IUnknown> MakeDataSource(std::function<ComPtr<IDispatch>()> set) {
    return ComPtr<IUnknown>(com::Make<MemoryDataSource>(std::move(set)).Get());
}

} // namespace tamvelo::testing
