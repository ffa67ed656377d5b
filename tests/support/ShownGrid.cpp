#include "tests/support/ShownGrid.h"

#include <oleacc.h>

#include "com/Variant.h"

namespace tamvelo::testing {

ShownGrid ReadGrid(HWND grid) {
    ShownGrid shown;
    com::ComPtr<IAccessible> object;
    if (FAILED(AccessibleObjectFromWindow(grid, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                          reinterpret_cast<void**>(&object)))) {
        return shown;
    }
    LONG count = 0;
    object->get_accChildCount(&count);
    for (LONG child = 1; child <= count; ++child) {
        const com::Variant number(child);
        com::Variant role;
        com::Bstr name;
        object->get_accRole(number.Get(), role.Address());
        if (!role.IsEmpty() && role.ToLong() == ROLE_SYSTEM_ROW &&
            SUCCEEDED(object->get_accName(number.Get(), name.Address()))) {
            shown.rows.emplace_back(name.View());
        }
    }
    com::Variant selection;
    if (SUCCEEDED(object->get_accSelection(selection.Address())) && selection.Type() == VT_I4) {
        shown.selected = static_cast<int>(selection.ToLong()) - 1;
    }
    return shown;
}

} // namespace tamvelo::testing
