#include "demo/app/Accessible.h"

#include <initguid.h> // the compiler's libraries do not define the identifiers of the next one
#include <oleacc.h>

#include "com/ComPtr.h"

namespace tamvelo::demo {

void SetAccessibleName(HWND control, const std::wstring& name) {
    com::ComPtr<IAccPropServices> properties;
    if (SUCCEEDED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                                   reinterpret_cast<void**>(&properties)))) {
        properties->SetHwndPropStr(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, PROPID_ACC_NAME,
                                   name.c_str());
    }
}

} // namespace tamvelo::demo
