#include "demo/host/Lookup.h"

#include "demo/host/HostError.h"

namespace tamvelo::demo {

const TableInfo& TableOf(std::wstring_view className) {
    const TableInfo* table = FindTable(className);
    if (table == nullptr) {
        throw HostError(kItemNotFound, L"No hay ninguna clase «" + std::wstring(className) + L"».");
    }
    return *table;
}

std::size_t ColumnIndex(const TableInfo& table, const com::Variant& which) {
    if (which.Type() == VT_BSTR) {
        if (const Column* column = table.FindColumn(which.ToText())) {
            return static_cast<std::size_t>(column - table.columns.data());
        }
    } else if (const long index = which.ToLong();
               index >= 0 && index < static_cast<long>(table.columns.size())) {
        return static_cast<std::size_t>(index);
    }
    throw HostError(kItemNotFound,
                    std::wstring(table.title) + L": no hay ningún campo «" + which.ToText() + L"».");
}

} // namespace tamvelo::demo
