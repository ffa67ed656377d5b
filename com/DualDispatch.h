#pragma once

#include "com/Object.h"
#include "com/TypedDispatch.h"

namespace tamvelo::com {

/// An object with a dual interface: what arrives late-bound is called through the interface's own
/// description, which the library's type library has. Where that cannot be read only early binding serves.
template <class Interface, class... Others>
class DualDispatch : public Object<Interface, Others...> {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (!count) {
            return E_POINTER;
        }
        *count = m_description ? 1 : 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** info) override {
        if (!info) {
            return E_POINTER;
        }
        *info = nullptr;
        return index == 0 && m_description ? m_description.CopyTo(info) : DISP_E_BADINDEX;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                                            DISPID* ids) override {
        if (!names || !ids) {
            return E_POINTER;
        }
        return m_description ? m_description->GetIDsOfNames(names, count, ids) : TYPE_E_CANTLOADLIBRARY;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID /*reserved*/, LCID /*locale*/, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* thrown,
                                     UINT* wrong) override {
        const ComPtr<IDispatch> alive(this);
        return m_description ? InvokeTyped(m_description.Get(), static_cast<Interface*>(this), id, flags,
                                           parameters, result, thrown, wrong)
                             : TYPE_E_CANTLOADLIBRARY;
    }

protected:
    bool IsDescribed() const { return static_cast<bool>(m_description); }

private:
    const ComPtr<ITypeInfo> m_description = OwnTypeInfo(__uuidof(Interface));
};

} // namespace tamvelo::com
