#include "contract/DataClass.h"

#include "com/Error.h"

namespace tamvelo::contract {

using com::Argument;
using com::ComPtr;
using com::Variant;

namespace {

constexpr wchar_t kOrderedSelection[] = L"seleccion";

/// A host's "Not valid?" test negates the answer and then reads Null as False, so Null passes.
bool Accepted(const com::Answer& answer) { return answer.IsNull() || answer.ToBool(); }

} // namespace

std::wstring DataClass::sClassName() { return m_object.Call(L"sClassName").ToText(); }

void DataClass::Requery() { m_object.Call(L"Requery"); }

void DataClass::Requery(std::wstring_view selection) { m_object.Call(L"Requery", {selection}); }

void DataClass::FindRecord(std::wstring_view text, std::optional<short> number) {
    if (number) {
        m_object.Call(L"FindRecord", {text, *number});
    } else {
        m_object.Call(L"FindRecord", {text});
    }
}

std::wstring DataClass::GetFilter(std::wstring_view slot) {
    return m_object.Call(L"GetFilter", {slot}).ToText();
}

void DataClass::SetFilter(std::wstring& filter, std::wstring_view slot) {
    m_object.Call(L"SetFilter", {Argument::Ref(filter), slot});
}

std::wstring DataClass::CreateFilter(ComPtr<IDispatch> control, std::optional<short> bound) {
    if (bound) {
        return m_object.Call(L"CreateFilter", {Argument::Ref(control), *bound}).ToText();
    }
    return m_object.Call(L"CreateFilter", {Argument::Ref(control)}).ToText();
}

void DataClass::AplyFilter(std::wstring_view filter) { m_object.Call(L"AplyFilter", {filter}); }

bool DataClass::existenregistros() { return m_object.Call(L"existenregistros").ToBool(); }

void DataClass::MoveFirst() { m_object.Call(L"MoveFirst"); }

void DataClass::MoveLast() { m_object.Call(L"MoveLast"); }

void DataClass::MoveNext() { m_object.Call(L"MoveNext"); }

void DataClass::MovePrevious() { m_object.Call(L"MovePrevious"); }

void DataClass::SetOrder(short& column, bool descending) {
    m_object.Call(L"SetOrder", {Argument::Ref(column), descending ? L" DESC" : L"", kOrderedSelection});
}

bool DataClass::ValidaKey(ComPtr<IDispatch> box, short& key) {
    return Accepted(m_object.Call(L"ValidaKey", {Argument::Ref(box), Argument::Ref(key)}));
}

bool DataClass::ValidaValue(ComPtr<IDispatch> box) {
    return Accepted(m_object.Call(L"ValidaValue", {Argument::Ref(box)}));
}

long DataClass::ValidaDefinedSize(ComPtr<IDispatch> box) {
    return m_object.Call(L"ValidaDefinedSize", {Argument::Ref(box)}).ToLong();
}

Variant DataClass::GetConnection() { return m_object.Call(L"GetConnection"); }

void DataClass::Aceptar_todos(Variant& connection) {
    m_object.Call(L"Aceptar_todos", {Argument::Ref(connection)});
}

void DataClass::Denegar_todos(Variant& connection) {
    m_object.Call(L"Denegar_todos", {Argument::Ref(connection)});
}

std::wstring DataClass::NuevoCodigo_Fam(std::wstring_view family) {
    return m_object.Call(L"NuevoCodigo_Fam", {family}).ToText();
}

void DataClass::InsertarArticulo(std::vector<Variant> values) {
    Variant all;
    all.Address()->parray = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()));
    com::Check(all.Get().parray ? S_OK : E_OUTOFMEMORY);
    all.Address()->vt = VT_ARRAY | VT_VARIANT;
    for (LONG i = 0; i < static_cast<LONG>(values.size()); ++i) {
        com::Check(SafeArrayPutElement(all.Get().parray, &i, values[static_cast<size_t>(i)].Address()));
    }
    m_object.Call(L"InsertarArticulo", {std::move(all)});
}

} // namespace tamvelo::contract
