#include "tests/support/Component.h"

#include "com/Error.h"

namespace tamvelo::testing {

namespace {

constexpr CLSID kComponentId{0x5d1f2b50, 0x7c6e, 0x4b8b, {0x9e, 0x1a, 0x34, 0x0c, 0x61, 0x2d, 0x77, 0x0f}};

class SingleObject final : public com::Object<IClassFactory> {
public:
    explicit SingleObject(IDispatch* object) : m_object(object) {}
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** out) override {
        return m_object->QueryInterface(id, out);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    const com::ComPtr<IDispatch> m_object;
};

} // namespace

Component::Component(IDispatch* object) {
    com::Check(CoRegisterClassObject(kComponentId, com::Make<SingleObject>(object).Get(),
                                     CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &m_cookie));
}

Component::~Component() { CoRevokeClassObject(m_cookie); }

std::wstring Component::Name() {
    wchar_t id[40];
    StringFromGUID2(kComponentId, id, ARRAYSIZE(id));
    return id;
}

} // namespace tamvelo::testing
