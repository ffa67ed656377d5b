#include "contract/ColumnCollection.h"

#include "com/Error.h"

namespace tamvelo::contract {

short ColumnCollection::Count() { return m_object.Call(L"Count").ToShort(); }

ColumnCollection::Column ColumnCollection::Item(short index) {
    const com::ComPtr<IDispatch> column = m_object.Call(L"Item", {index}).ToObject();
    if (!column) {
        throw com::Error(E_POINTER, L"«Columns» no devolvió la columna " + std::to_wstring(index) + L".");
    }
    return Column(column.Get());
}

short ColumnCollection::Current() {
    const long current = m_object.Answers(L"Col") ? m_object.Call(L"Col").ToLong() : 0;
    return current > 0 && current < Count() ? static_cast<short>(current) : short{0};
}

} // namespace tamvelo::contract
